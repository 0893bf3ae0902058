// Opening a document: its text replaces what is in a compound.

#include "Row.h"
#include "SampleGraph.h"
#include "XmlPasses.h"

namespace bench {

namespace {

using TAV_marlo_v1::StatusStr;
using TAV_marlo_v1::String;

constexpr unsigned kManyLevels = 32;

/// Flat, or spread over a chain of compounds.
String sampleText(unsigned nodes, unsigned depth = 0)
{
    SampleDocument document;
    if (depth == 0)
        fillSample(document, nodes);
    else
        fillNested(document, nodes, depth);
    return document.top().saveToString(nullptr);
}

void load(Row& row)
{
    String const text = sampleText(row.size());
    while (row.next()) {
        SampleDocument document;
        StatusStr status;
        row.time(row.size(), [&] { status = document.top().restoreFromString(text.toChar()); });
        row.require(!*status.getErrorString(), status.getErrorString());
        row.require(document.top().nodes().size() == row.size(), "every node is there");
        row.require(countConnections(document.top()) == SampleWiring::connections(row.size()),
                    "every connection is there");
        row.require(document.top().getNumberOfNodesWithMessage(TAV_marlo_v1::eAnyMessage) == 0,
                    "no node has a warning");
        row.require(document.top().saveToString(nullptr) == text, "saving again gives the same bytes");
    }
}

void loadDeep(Row& row)
{
    String const text = sampleText(row.size(), kManyLevels);
    while (row.next()) {
        SampleDocument document;
        StatusStr status;
        row.time(row.size(), [&] { status = document.top().restoreFromString(text.toChar()); });
        row.require(!*status.getErrorString(), status.getErrorString());
        row.require(document.top().saveToString(nullptr) == text, "saving again gives the same bytes");
    }
}

void readText(Row& row, String const& text)
{
    while (row.next()) {
        XmlPass const pass = readerPass({text.toChar(), text.size()});
        row.count(row.size(), pass.seconds);
        row.require(pass.good && pass.elements > row.size(), "the raw reader takes the text");
    }
}

RowEntry const entry("load", load);
RowEntry const readerEntry("load.reader", [](Row& row) { readText(row, sampleText(row.size())); });

// Most of a deep text is indentation, and its largest size would need gigabytes of that.
constexpr Sizes kDeep{1000, 100000};
RowEntry const deepEntry("load, 32 levels deep", loadDeep, kDeep);
RowEntry const deepReaderEntry(
    "load, 32 levels deep.reader", [](Row& row) { readText(row, sampleText(row.size(), kManyLevels)); }, kDeep);

} // namespace

} // namespace bench
