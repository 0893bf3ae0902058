#include "Problem.h"

#include "Terminal.h"

#include <QtCore/QRegularExpression>

#include <algorithm>
#include <tuple>

namespace tool {

namespace {

struct SeverityWord {
    char const* word;
    char const* colour;
};

SeverityWord wordOf(Severity severity)
{
    switch (severity) {
    case Severity::error:
        return {"error", "\x1b[1;31m"};
    case Severity::warning:
        return {"warning", "\x1b[1;33m"};
    default:
        return {"note", "\x1b[1;36m"};
    }
}

} // namespace

qsizetype countOf(Problems const& problems, Severity severity)
{
    return std::count_if(problems.begin(), problems.end(), [=](Problem const& p) { return p.severity == severity; });
}

void sortByPosition(Problems& problems)
{
    std::stable_sort(problems.begin(), problems.end(), [](Problem const& a, Problem const& b) {
        return std::tie(a.position.line, a.position.column) < std::tie(b.position.line, b.position.column);
    });
}

void report(QString const& fileName, Problems const& problems)
{
    bool const colour = wantsColour(stderr);
    for (Problem const& problem : problems) {
        SeverityWord const word = wordOf(problem.severity);
        QString line = fileName + ':';
        if (problem.position.line > 0)
            line += QString("%1:%2:").arg(problem.position.line).arg(problem.position.column);
        line += colour ? QString(" %1%2:\x1b[0m ").arg(word.colour, word.word) : QString(" %1: ").arg(word.word);
        writeError(line + problem.text);
    }
}

Problem problemFromMessage(QString const& message)
{
    static QRegularExpression const form("^line (\\d+), column (\\d+): (.*)$",
                                         QRegularExpression::DotMatchesEverythingOption);
    QRegularExpressionMatch const match = form.match(message);
    if (!match.hasMatch())
        return {Severity::error, {}, message};
    return {Severity::error, {match.captured(1).toLongLong(), match.captured(2).toLongLong()}, match.captured(3)};
}

} // namespace tool
