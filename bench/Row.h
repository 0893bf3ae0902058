#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

namespace bench {

/// The processor time of this process so far. The programs have one thread, and on a machine that others
/// use too it is steadier than the time of day.
double processorSeconds();

/// Runs the work and says how many seconds it took.
template <class Work>
double secondsOf(Work&& work)
{
    double const start = processorSeconds();
    work();
    return processorSeconds() - start;
}

/// One row of the table at one size. Its rounds all do the same work on fresh objects, and the best
/// round counts: whatever else the machine does can only make a round slower.
class Row {
public:
    Row(benchmark::State& state, char const* name);

    /// What the row grows with: the number of nodes, unless the row says otherwise.
    unsigned size() const noexcept { return m_size; }
    /// Whether there is another round to do.
    bool next() { return m_state.KeepRunning(); }
    /// The work of this round, timed, which is done on so many items. Once a round.
    template <class Work>
    void time(std::uint64_t items, Work&& work)
    {
        coolCaches();
        count(items, secondsOf(work));
    }
    /// As time, for work that timed itself.
    void count(std::uint64_t items, double seconds);
    /// A figure besides the time of an item; of several rounds the least is kept.
    void note(char const* what, double figure);
    /// Ends the program when the work was not really done: no figure must come out of that.
    void require(bool done, char const* what) const;

private:
    static void coolCaches();

    benchmark::State& m_state;
    char const* m_name;
    unsigned m_size;
    double m_bestSecondsPerItem = 0;
};

/// From `first` to `last`, each ten times the one before.
struct Sizes {
    unsigned first = 1000, last = 1000000;
};

/// A row that the program knows: `static RowEntry const entry("save", save);` beside the function.
/// "save.bare" is a yardstick of the row "save".
struct RowEntry {
    RowEntry(char const* name, void (*run)(Row&), Sizes sizes = {});
};

/// How the rows are run.
struct Manner {
    unsigned largest = 1000000;
    /// Only the growth is wanted: of each row its smallest and its largest size, both with the caches
    /// cooled, since a small graph that is still in them says nothing about a large one.
    bool growthOnly = false;
};

/// Hands all rows to Google Benchmark.
void registerRows(Manner const& manner);

} // namespace bench
