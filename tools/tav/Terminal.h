#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstdio>
#include <memory>
#include <optional>
#include <string>

namespace tool {

/// Prepares the standard streams while it lives: texts leave as the bytes they are, and a terminal takes them
/// for UTF-8. A terminal gets back the settings that it had.
class Streams {
public:
    Streams();
    ~Streams();
    Streams(Streams const&) = delete;
    Streams& operator=(Streams const&) = delete;

private:
    struct Console;
    std::unique_ptr<Console> m_console; // null where there is nothing to give back
};

bool isTerminal(std::FILE* stream);
/// The next line that is typed, in UTF-8 and without its end; nothing when there is no more.
std::optional<std::string> readTypedLine();
/// Colour is for people: never in a file or pipe, nor where NO_COLOR is set.
bool wantsColour(std::FILE* stream);

/// Writes to standard output. @return false, after a message, when it cannot be written
bool writeOut(QByteArray const& bytes);
/// Writes one line to standard error.
void writeError(QString const& line);

/// Says on a terminal what the tool is at, in one line that the next one replaces; nowhere else. Nothing
/// is shown of a run that ends within a second.
void showStage(QString const& what);
/// The same for work on a text of that size that can say nothing until it is over: named at once when the
/// text is a long one.
void showSilentStage(QString const& what, qint64 bytes);
/// Takes away what showStage has drawn; so does whatever is written.
void clearStage();
/// How messages of a stage name a file: the end of a long name.
QString shortName(QString const& name);

/// Puts a bar in front of the stages while several files are worked on.
class Progress {
public:
    explicit Progress(qsizetype total);
    ~Progress();
    void step(QString const& name);

private:
    qsizetype m_total;
    qsizetype m_done = 0;
};

} // namespace tool
