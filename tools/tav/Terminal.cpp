#include "Terminal.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QtGlobal>

#include <cerrno>
#include <cstring>
#include <iostream>

#if defined(_WIN32)
#    include <windows.h>

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

#if defined(_WIN32)

namespace {

HANDLE consoleOf(std::FILE* stream)
{
    return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
}

/// Lets the console understand the few sequences that clear a line and give colour.
/// @return the mode that it had; zero where there is no console
DWORD allowSequences(std::FILE* stream)
{
    DWORD mode = 0;
    if (GetConsoleMode(consoleOf(stream), &mode))
        SetConsoleMode(consoleOf(stream), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    return mode;
}

void setMode(std::FILE* stream, DWORD mode)
{
    if (mode != 0)
        SetConsoleMode(consoleOf(stream), mode);
}

} // namespace

/// What the console had before; zero where there is none.
struct Streams::Console {
    Console()
    {
        if (codePage != 0)
            SetConsoleOutputCP(CP_UTF8);
    }
    Console(Console const&) = delete;
    Console& operator=(Console const&) = delete;
    ~Console()
    {
        setMode(stderr, errorMode);
        setMode(stdout, outputMode);
        if (codePage != 0)
            SetConsoleOutputCP(codePage);
    }

    UINT codePage = GetConsoleOutputCP();
    DWORD outputMode = allowSequences(stdout);
    DWORD errorMode = allowSequences(stderr);
};

Streams::Streams()
    : m_console(std::make_unique<Console>())
{
    for (std::FILE* const stream : {stdin, stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
}

bool isTerminal(std::FILE* stream)
{
    // _isatty() takes the null device for a terminal, too.
    DWORD mode = 0;
    return GetConsoleMode(consoleOf(stream), &mode) != 0;
}

std::optional<std::string> readTypedLine()
{
    // As bytes a console gives nothing but its own code page.
    QString line;
    while (!line.endsWith('\n')) {
        wchar_t piece[256];
        DWORD count = 0;
        if (!ReadConsoleW(consoleOf(stdin), piece, 256, &count, nullptr) || count == 0)
            return {};
        line += QString::fromWCharArray(piece, static_cast<qsizetype>(count));
    }
    line.chop(line.endsWith("\r\n") ? 2 : 1);
    // Ctrl+Z at the begin of a line ends the input there.
    return line.startsWith(QChar(0x1a)) ? std::nullopt : std::optional<std::string>(line.toStdString());
}

#else

struct Streams::Console {};

Streams::Streams() = default;

bool isTerminal(std::FILE* stream)
{
    return isatty(fileno(stream)) != 0;
}

std::optional<std::string> readTypedLine()
{
    std::string line;
    return std::getline(std::cin, line) ? std::optional<std::string>(line) : std::nullopt;
}

#endif

Streams::~Streams() = default;

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
