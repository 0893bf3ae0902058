#include "Row.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <map>
#include <vector>

namespace bench {

namespace {

struct Entry {
    void (*run)(Row&);
    Sizes sizes;
};

/// By name, so that a row's yardsticks follow it whatever order the linker chose.
std::map<std::string, Entry>& entries()
{
    static std::map<std::string, Entry> all;
    return all;
}

/// What is written over to empty the caches; empty when they are to stay warm.
std::vector<unsigned char> g_coolant;

/// What a run of all rows has minutes for; more of the largest where few sizes are run.
int roundsAt(unsigned size, bool growthOnly)
{
    return static_cast<int>(std::clamp((growthOnly ? 200000u : 50000u) / size, 1u, 10u));
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

Row::Row(benchmark::State& state, char const* name)
    : m_state(state)
    , m_name(name)
    , m_size(static_cast<unsigned>(state.range(0)))
{
    m_state.counters["size"] = m_size;
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
    auto const [noted, isNew] = m_state.counters.try_emplace(what, figure);
    if (!isNew && figure < noted->second.value)
        noted->second = figure;
}

void Row::require(bool done, char const* what) const
{
    if (done)
        return;
    std::fprintf(stderr, "bench: %s: at size %u, this did not hold: %s\n", m_name, m_size, what);
    std::exit(1);
}

void Row::coolCaches()
{
    constexpr std::size_t kLine = 64;
    for (std::size_t place = 0; place < g_coolant.size(); place += kLine)
        ++g_coolant[place];
}

RowEntry::RowEntry(char const* name, void (*run)(Row&), Sizes sizes)
{
    entries()[name] = {run, sizes};
}

void registerRows(Manner const& manner)
{
    constexpr std::size_t kMoreThanACore = 64u << 20;
    if (manner.growthOnly)
        g_coolant.assign(kMoreThanACore, 0);
    for (auto const& [name, entry] : entries()) {
        unsigned const last = std::min(manner.largest, entry.sizes.last);
        for (unsigned size = entry.sizes.first; size <= last; size *= 10) {
            if (manner.growthOnly && size != entry.sizes.first && size * 10 <= last)
                continue;
            benchmark::RegisterBenchmark(name.c_str(),
                                         [run = entry.run, name = name.c_str()](benchmark::State& state) {
                                             Row row(state, name);
                                             run(row);
                                         })
                ->Arg(size)
                ->Iterations(roundsAt(size, manner.growthOnly))
                ->UseManualTime()
                ->Unit(benchmark::kMillisecond);
        }
    }
}

} // namespace bench
