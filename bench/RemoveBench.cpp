// Half of the nodes, in random order, removed by name with their connections, and destroyed.

#include "BareGraph.h"
#include "Row.h"
#include "SampleGraph.h"

namespace bench {

namespace {

std::vector<std::string> namesToRemove(unsigned count)
{
    std::vector<std::string> names;
    std::vector<unsigned> const order = shuffled(count);
    for (unsigned i = 0; i < count / 2; ++i)
        names.push_back("node" + std::to_string(order[i]));
    return names;
}

unsigned connectionsLeft(std::vector<std::string> const& removed, unsigned count)
{
    std::vector<bool> gone(count);
    for (std::string const& name : removed)
        gone[std::stoul(name.substr(4))] = true;
    unsigned left = 0;
    for (unsigned node = 0; node < count; ++node) {
        for (unsigned const source : {SampleWiring::sourceOfA(node), SampleWiring::sourceOfB(node)})
            left += source != SampleWiring::kNone && !gone[node] && !gone[source] ? 1 : 0;
    }
    return left;
}

void remove(Row& row)
{
    std::vector<std::string> const names = namesToRemove(row.size());
    while (row.next()) {
        SampleDocument document;
        fillSample(document, row.size());
        unsigned removed = 0;
        row.time(names.size(), [&] {
            for (std::string const& name : names)
                removed += document.top().removeNode(name.c_str()) ? 1 : 0;
        });
        row.require(removed == names.size(), "every removal is done");
        row.require(document.top().nodes().size() == row.size() - removed, "the other nodes stay");
        row.require(countConnections(document.top()) == connectionsLeft(names, row.size()),
                    "the connections between the others stay, and no other");
    }
}

void removeBare(Row& row)
{
    std::vector<std::string> const names = namesToRemove(row.size());
    while (row.next()) {
        BareGraph graph;
        graph.fillSample(row.size());
        unsigned removed = 0;
        row.time(names.size(), [&] {
            for (std::string const& name : names)
                removed += graph.remove(name) ? 1 : 0;
        });
        row.require(removed == names.size(), "every bare removal is done");
    }
}

RowEntry const entry("remove at random", remove);
RowEntry const bareEntry("remove at random.bare", removeBare);

} // namespace

} // namespace bench
