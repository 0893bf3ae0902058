#include "ToolRun.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>

#include <gtest/gtest.h>

ToolRun runTool(QStringList const& arguments, QByteArray const& input, QString const& folder, int seconds)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(TAV_TOOL, arguments);
    process.write(input);
    process.closeWriteChannel();
    bool const ended = process.waitForFinished(1000 * seconds);
    if (!ended)
        process.kill();
    ToolRun run;
    run.out = process.readAllStandardOutput();
    run.err = process.readAllStandardError();
    if (ended && process.exitStatus() == QProcess::NormalExit)
        run.exitCode = process.exitCode();
    return run;
}

QString exampleFile(char const* relativePath)
{
    return QString(TAV_EXAMPLES_DIR) + '/' + relativePath;
}

QByteArray readBytes(QString const& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

void writeBytes(QString const& path, QByteArray const& bytes)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()) << path.toStdString();
}
