#pragma once

#include <QtCore/QString>

#include <vector>

namespace tool {

/// A place in a text, both counted from 1; line 0 stands for the text as a whole.
struct Position {
    qint64 line = 0;
    qint64 column = 0;
};

enum class Severity { note, warning, error };

/// One thing to say about a text.
struct Problem {
    Severity severity;
    Position position;
    QString text;
};

using Problems = std::vector<Problem>;

/// The number of problems of that severity.
qsizetype countOf(Problems const& problems, Severity severity);

/// In the order of their places.
void sortByPosition(Problems& problems);

/// Writes "file:line:column: error: text" lines to standard error.
void report(QString const& fileName, Problems const& problems);

/// The problem that a reader's message "line L, column C: text" tells.
Problem problemFromMessage(QString const& message);

} // namespace tool
