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
    explicit Row(benchmark::State& state);

    /// The number of nodes that the row is measured at.
    unsigned size() const noexcept { return m_size; }
    /// Whether there is another round to do.
    bool next() { return m_state.KeepRunning(); }
    /// The work of this round, timed, which is done on so many items. Once a round.
    template <class Work>
    void time(std::uint64_t items, Work&& work)
    {
        count(items, secondsOf(work));
    }
    /// As time, for work that timed itself.
    void count(std::uint64_t items, double seconds);
    /// A figure besides the time of an item.
    void note(char const* what, double figure);
    /// Ends the program when the work was not really done: no figure must come out of that.
    void require(bool done, char const* what) const;

private:
    benchmark::State& m_state;
    unsigned m_size;
    double m_bestSecondsPerItem = 0;
};

/// A row that the program knows: `static RowEntry const entry("save", save);` beside the function.
/// "save.bare" is a yardstick of the row "save".
struct RowEntry {
    /// @param largest sizes above it are left out
    RowEntry(char const* name, void (*run)(Row&), unsigned largest = 1000000);
};

/// Hands all rows to Google Benchmark, at the sizes up to `largest`.
void registerRows(unsigned largest);

} // namespace bench
