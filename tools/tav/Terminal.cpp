#include "Terminal.h"

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

bool barIsDrawn = false; // there is one terminal

void drawBar(QString const& text)
{
    QByteArray const bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
    std::fflush(stderr);
    barIsDrawn = true;
}

} // namespace

void clearBar()
{
    if (barIsDrawn)
        std::fputs("\r\x1b[K", stderr);
    barIsDrawn = false;
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
    clearBar();
    std::size_t const size = static_cast<std::size_t>(bytes.size());
    // Flushed here: a full disk shows only then.
    if (std::fwrite(bytes.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0)
        return true;
    writeError("tav: standard output cannot be written: " + QString::fromLocal8Bit(std::strerror(errno)));
    return false;
}

void writeError(QString const& line)
{
    clearBar();
    QByteArray const bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
}

void showWaiting(QString const& what, qint64 milliseconds)
{
    if (!isTerminal(stderr))
        return;
    clearBar();
    drawBar(QString("%1 (%2 s)").arg(what).arg(milliseconds / 1000));
}

Progress::Progress(qsizetype total)
    : m_total(total)
    , m_visible(total > 1 && isTerminal(stderr))
{
    m_clock.start();
}

Progress::~Progress()
{
    clearBar();
}

void Progress::step(QString const& what)
{
    clearBar();
    if (m_visible && m_clock.elapsed() > 1000) {
        constexpr qsizetype width = 30;
        qsizetype const filled = width * m_done / m_total;
        QString const bar = QString(filled, '#') + QString(width - filled, '.');
        drawBar(QString("[%1] %2/%3 %4").arg(bar).arg(m_done).arg(m_total).arg(what.right(40)));
    }
    ++m_done;
}

} // namespace tool
