#include "Terminal.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QtGlobal>

#include <cerrno>
#include <cstring>

#if defined(_WIN32)
#    include <fcntl.h>
#    include <io.h>
#else
#    include <unistd.h>
#endif

namespace tool {

namespace {

constexpr qint64 kPatience = 1000; // milliseconds until a person wonders
constexpr qint64 kRedrawPause = 100;
constexpr qint64 kLongText = 150000000; // bytes that take the library about as long

/// What stands on the one terminal there is.
struct Display {
    Display() { sinceStart.start(); }

    QElapsedTimer sinceStart;
    QElapsedTimer sinceDrawn;
    QString bar;
    bool isDrawn = false;
};

Display& display()
{
    static Display theOne;
    return theOne;
}

void draw(QString const& what)
{
    if (!isTerminal(stderr))
        return;
    clearStage();
    Display& shown = display();
    QByteArray const bytes = (shown.bar + what).toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
    std::fflush(stderr);
    shown.isDrawn = true;
    shown.sinceDrawn.start();
}

} // namespace

void showStage(QString const& what)
{
    Display const& shown = display();
    if (shown.sinceStart.elapsed() > kPatience
        && (!shown.sinceDrawn.isValid() || shown.sinceDrawn.elapsed() > kRedrawPause))
        draw(what);
}

void showSilentStage(QString const& what, qint64 bytes)
{
    if (bytes > kLongText || display().sinceStart.elapsed() > kPatience)
        draw(what);
}

void clearStage()
{
    if (display().isDrawn)
        std::fputs("\r\x1b[K", stderr);
    display().isDrawn = false;
}

QString shortName(QString const& name)
{
    return name.right(40);
}

void useBinaryStreams()
{
#if defined(_WIN32)
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
#endif
}

bool isTerminal(std::FILE* stream)
{
#if defined(_WIN32)
    return _isatty(_fileno(stream)) != 0;
#else
    return isatty(fileno(stream)) != 0;
#endif
}

bool wantsColour(std::FILE* stream)
{
    return isTerminal(stream) && qEnvironmentVariableIsEmpty("NO_COLOR") && qgetenv("TERM") != "dumb";
}

bool writeOut(QByteArray const& bytes)
{
    clearStage();
    std::size_t const size = static_cast<std::size_t>(bytes.size());
    // Flushed here: a full disk shows only then.
    if (std::fwrite(bytes.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0)
        return true;
    writeError("tav: standard output cannot be written: " + QString::fromLocal8Bit(std::strerror(errno)));
    return false;
}

void writeError(QString const& line)
{
    clearStage();
    QByteArray const bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
}

Progress::Progress(qsizetype total)
    : m_total(total)
{
}

Progress::~Progress()
{
    clearStage();
    display().bar.clear();
}

void Progress::step(QString const& name)
{
    if (m_total > 1) {
        constexpr qsizetype width = 30;
        qsizetype const filled = width * m_done / m_total;
        QString const bar = QString(filled, '#') + QString(width - filled, '.');
        display().bar = QString("[%1] %2/%3 ").arg(bar).arg(m_done).arg(m_total);
        showStage(shortName(name));
    }
    ++m_done;
}

} // namespace tool
