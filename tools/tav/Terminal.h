#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QElapsedTimer>
#include <QtCore/QString>

#include <cstdio>

namespace tool {

/// Texts leave as the bytes they are: no line end is translated.
void useBinaryStreams();

bool isTerminal(std::FILE* stream);
/// Colour is for people: never in a file or pipe, nor where NO_COLOR is set.
bool wantsColour(std::FILE* stream);

/// Writes to standard output. @return false, after a message, when it cannot be written
bool writeOut(QByteArray const& bytes);
/// Writes one line to standard error.
void writeError(QString const& line);

/// Says on a terminal how long something takes that has no measure.
void showWaiting(QString const& what, qint64 milliseconds);
/// Takes away what showWaiting or a progress bar has drawn; so does whatever is written.
void clearBar();

/// A bar on standard error for work on many files; shown on a terminal only, and only once the work
/// has taken a second.
class Progress {
public:
    explicit Progress(qsizetype total);
    ~Progress();
    void step(QString const& what);

private:
    qsizetype m_total;
    qsizetype m_done = 0;
    bool m_visible;
    QElapsedTimer m_clock;
};

} // namespace tool
