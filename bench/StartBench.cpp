// From the start of a process to its first usable graph: small programs, started again and again.

#include "Row.h"

#include <QProcess>

#include <algorithm>
#include <chrono>

namespace bench {

namespace {

struct Run {
    double milliseconds;      // from asking for the process to its end, by the time of day
    double nanosecondsInMain; // as it said itself
};

Run runOnce(Row const& row, char const* program)
{
    auto const begin = std::chrono::steady_clock::now();
    QProcess process;
    process.start(QString::fromUtf8(program), QStringList());
    bool const done =
        process.waitForFinished() && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    std::chrono::duration<double, std::milli> const taken = std::chrono::steady_clock::now() - begin;
    row.require(done, program);
    return {taken.count(), process.readAllStandardOutput().toDouble()};
}

/// The best of several, each figure by itself.
Run best(Row const& row, char const* program)
{
    Run least = runOnce(row, program);
    for (unsigned start = 1; start < row.size(); ++start) {
        Run const run = runOnce(row, program);
        least.milliseconds = std::min(least.milliseconds, run.milliseconds);
        least.nanosecondsInMain = std::min(least.nanosecondsInMain, run.nanosecondsInMain);
    }
    return least;
}

void start(Row& row)
{
    while (row.next()) {
        Run const nothing = best(row, TAV_BENCH_START_NOTHING);
        Run const qt = best(row, TAV_BENCH_START_QT);
        Run const graph = best(row, TAV_BENCH_START_GRAPH);
        row.count(1, graph.milliseconds / 1e3);
        row.require(graph.nanosecondsInMain > 0, "the program tells its time");
        row.note("nothing_ms", nothing.milliseconds);
        row.note("qt_ms", qt.milliseconds);
        row.note("graph_ms", graph.milliseconds);
        row.note("main_to_graph_ns", graph.nanosecondsInMain);
    }
}

RowEntry const entry("start", start, Sizes{20, 20}); // starts of each program in a round

} // namespace

} // namespace bench
