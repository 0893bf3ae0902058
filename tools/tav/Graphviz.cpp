#include "Graphviz.h"

#include "Terminal.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QProcess>

namespace tool {

bool drawWithGraphviz(QString const& program, QString const& format, QByteArray const& dotText, QByteArray& picture,
                      QString& error)
{
    QStringList arguments{"-T" + format, "-q"};
    if (program == "neato")
        arguments.prepend("-n");
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForStarted()) {
        error = QString("the Graphviz program \"%1\" cannot be started (%2); \"-o picture.dot\" works without it")
                    .arg(program, process.errorString());
        return false;
    }
    process.write(dotText);
    process.closeWriteChannel();
    QElapsedTimer clock;
    clock.start();
    while (process.state() != QProcess::NotRunning && !process.waitForFinished(1000))
        showStage(QString("Graphviz is drawing (%1 s)").arg(clock.elapsed() / 1000));
    clearStage();
    picture = process.readAllStandardOutput();
    if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0)
        return true;
    QString const said = QString::fromUtf8(process.readAllStandardError()).trimmed();
    error =
        QString("the Graphviz program \"%1\" failed: %2").arg(program, said.isEmpty() ? process.errorString() : said);
    return false;
}

} // namespace tool
