#include "Row.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <map>

namespace bench {

namespace {

struct Entry {
    void (*run)(Row&);
    unsigned largest;
};

/// By name, so that a row's yardsticks follow it whatever order the linker chose.
std::map<std::string, Entry>& entries()
{
    static std::map<std::string, Entry> all;
    return all;
}

int roundsAt(unsigned size)
{
    return static_cast<int>(std::clamp(200000u / size, 1u, 20u)); // which a run of all rows has minutes for
}

} // namespace

double processorSeconds()
{
#if defined(CLOCK_PROCESS_CPUTIME_ID)
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
#else
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
#endif
}

Row::Row(benchmark::State& state)
    : m_state(state)
    , m_size(static_cast<unsigned>(state.range(0)))
{
    m_state.counters["nodes"] = m_size;
}

void Row::count(std::uint64_t items, double seconds)
{
    m_state.SetIterationTime(seconds);
    double const perItem = seconds / static_cast<double>(items);
    if (m_bestSecondsPerItem == 0 || perItem < m_bestSecondsPerItem)
        m_bestSecondsPerItem = perItem;
    m_state.counters["items"] = static_cast<double>(items);
    m_state.counters["ns_per_item"] = m_bestSecondsPerItem * 1e9;
}

void Row::note(char const* what, double figure)
{
    m_state.counters[what] = figure;
}

void Row::require(bool done, char const* what) const
{
    if (done)
        return;
    std::fprintf(stderr, "bench: at %u nodes, this did not hold: %s\n", m_size, what);
    std::exit(1);
}

RowEntry::RowEntry(char const* name, void (*run)(Row&), unsigned largest)
{
    entries()[name] = {run, largest};
}

void registerRows(unsigned largest)
{
    for (auto const& [name, entry] : entries()) {
        for (unsigned size = 1000; size <= std::min(largest, entry.largest); size *= 10) {
            benchmark::RegisterBenchmark(name.c_str(),
                                         [run = entry.run](benchmark::State& state) {
                                             Row row(state);
                                             run(row);
                                         })
                ->Arg(size)
                ->Iterations(roundsAt(size))
                ->UseManualTime()
                ->Unit(benchmark::kMillisecond);
        }
    }
}

} // namespace bench
