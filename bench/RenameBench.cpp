// Renaming nodes in random order; whoever refers to a node has its new name at once.

#include "BareGraph.h"
#include "Row.h"
#include "SampleGraph.h"

#include <cstring>

namespace bench {

namespace {

/// Two sets of names, so that each round finds every name free.
std::vector<std::string> namesOfRound(unsigned count, bool even)
{
    return sampleNames(count, even ? "even" : "odd");
}

void rename(Row& row)
{
    SampleDocument document;
    fillSample(document, row.size());
    std::vector<AddRefWrapper<Node>> nodes;
    for (unsigned const index : shuffled(row.size()))
        nodes.push_back(document.top().nodes()[index]);
    bool even = false;
    while (row.next()) {
        std::vector<std::string> const names = namesOfRound(row.size(), even = !even);
        row.time(row.size(), [&] {
            for (unsigned i = 0; i < nodes.size(); ++i)
                nodes[i]->setName(names[i].c_str());
        });
        for (unsigned i = 0; i < nodes.size(); ++i)
            row.require(document.top().nodes()[names[i].c_str()] == nodes[i], "the new name finds the node");
        AddRefWrapper<Node> const last = document.top().nodes()[row.size() - 1];
        AddRefWrapper<Port> const feeding = last->inputs()[0u]->connectedTo()[0u];
        std::string const path = std::string("/") + document.top().nodes()[row.size() - 2]->getName() + ".out";
        row.require(path == feeding->getFullPathName().getName(), "a connected port is seen under the new name");
    }
}

void renameBare(Row& row)
{
    BareGraph graph;
    graph.fillSample(row.size());
    std::vector<BareNode*> const inOrder = bareNodesOf(graph);
    std::vector<BareNode*> nodes;
    for (unsigned const index : shuffled(row.size()))
        nodes.push_back(inOrder[index]);
    bool even = false;
    while (row.next()) {
        std::vector<std::string> const names = namesOfRound(row.size(), even = !even);
        row.time(row.size(), [&] {
            for (unsigned i = 0; i < nodes.size(); ++i)
                graph.rename(*nodes[i], names[i]);
        });
        row.require(graph.byName.count(names[0]) == 1, "the bare node is filed under its new name");
    }
}

RowEntry const entry("rename", rename);
RowEntry const bareEntry("rename.bare", renameBare);

} // namespace

} // namespace bench
