// One graph from its first node to its last byte: built, saved, loaded, and both copies destroyed.

#include "Row.h"
#include "SampleGraph.h"

#include <memory>

namespace bench {

namespace {

/// Nanoseconds a node.
struct Steps {
    double build = 0, save = 0, load = 0, destroy = 0;

    double sum() const { return build + save + load + destroy; }
};

Steps liveOnce(Row const& row)
{
    double const perNode = 1e9 / row.size();
    Steps steps;
    auto document = std::make_unique<SampleDocument>();
    steps.build = perNode * secondsOf([&] { fillSample(*document, row.size()); });
    row.require(countConnections(document->top()) == SampleWiring::connections(row.size()), "the graph is built");

    TAV_marlo_v1::String text;
    steps.save = perNode * secondsOf([&] { text = document->top().saveToString(nullptr); });
    row.require(text.size() > 100ull * row.size(), "the text holds the graph");

    steps.destroy = perNode * secondsOf([&] { document.reset(); });

    SampleDocument loaded;
    TAV_marlo_v1::StatusStr status;
    steps.load = perNode * secondsOf([&] { status = loaded.top().restoreFromString(text.toChar()); });
    row.require(!*status.getErrorString(), status.getErrorString());
    row.require(loaded.top().nodes().size() == row.size(), "the loaded graph has every node");
    row.require(countConnections(loaded.top()) == SampleWiring::connections(row.size()),
                "the loaded graph has every connection");
    return steps;
}

void lifecycle(Row& row)
{
    while (row.next()) {
        Steps const steps = liveOnce(row);
        row.count(row.size(), steps.sum() * row.size() / 1e9);
        row.note("build_ns", steps.build);
        row.note("save_ns", steps.save);
        row.note("load_ns", steps.load);
        row.note("destroy_ns", steps.destroy);
    }
}

RowEntry const entry("lifecycle", lifecycle);

} // namespace

} // namespace bench
