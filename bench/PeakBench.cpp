// The most memory that loading and saving take at any moment, beside the size of the text.

#include "HeapUse.h"
#include "Row.h"
#include "SampleGraph.h"

namespace bench {

namespace {

using TAV_marlo_v1::String;

/// Per byte of the text: the most that was in use, and what is left at the end.
void note(Row& row, HeapWatch const& heap, String const& text)
{
    row.note("peak_per_text", static_cast<double>(heap.peak()) / text.size());
    row.note("left_per_text", static_cast<double>(heap.inUse()) / text.size());
}

void load(Row& row)
{
    String text;
    {
        SampleDocument document;
        fillSample(document, row.size());
        text = document.top().saveToString(nullptr);
    }
    while (row.next()) {
        SampleDocument document;
        HeapWatch const heap;
        row.time(row.size(), [&] { document.top().restoreFromString(text.toChar()); });
        note(row, heap, text);
        row.require(countConnections(document.top()) == SampleWiring::connections(row.size()), "the graph is there");
    }
}

void save(Row& row)
{
    SampleDocument document;
    fillSample(document, row.size());
    while (row.next()) {
        HeapWatch const heap;
        String text;
        row.time(row.size(), [&] { text = document.top().saveToString(nullptr); });
        row.require(text.size() > 100ull * row.size(), "the text holds the graph");
        if (heap.inUse() >= static_cast<std::ptrdiff_t>(text.size())) // elsewhere not every block is counted
            note(row, heap, text);
    }
}

RowEntry const loadEntry("peak memory of load", load);
RowEntry const saveEntry("peak memory of save", save);

} // namespace

} // namespace bench
