// Nodes that all bear a taken name are renamed to the next free one, behind N taken ones.

#include "Row.h"
#include "SampleGraph.h"

#include <unordered_set>

namespace bench {

namespace {

unsigned newcomers(unsigned taken)
{
    return taken < 100000 ? taken : 100000;
}

void nextFreeName(Row& row)
{
    unsigned const count = newcomers(row.size());
    std::vector<std::string> const others = sampleNames(count, "other");
    while (row.next()) {
        SampleDocument document;
        for (std::string const& name : sampleNames(row.size()))
            document.top().nodes().add(Node::createNew(&document, name.c_str()));
        std::vector<AddRefWrapper<Node>> nodes;
        for (std::string const& name : others) {
            nodes.push_back(Node::createNew(&document, name.c_str()));
            document.top().nodes().add(nodes.back());
        }
        row.time(count, [&] {
            for (AddRefWrapper<Node> const& node : nodes)
                node->setName("node0");
        });
        for (unsigned i = 0; i < count; ++i) {
            row.require("node" + std::to_string(row.size() + i) == nodes[i]->getName(),
                        "each node gets the next free name");
        }
    }
}

/// A set of the taken names and the number that was given last.
void nextFreeNameBare(Row& row)
{
    unsigned const count = newcomers(row.size());
    std::vector<std::string> const others = sampleNames(count, "other");
    while (row.next()) {
        std::unordered_set<std::string> taken;
        for (std::string const& name : sampleNames(row.size()))
            taken.insert(name);
        taken.insert(others.begin(), others.end());
        unsigned last = row.size() - 1;
        row.time(count, [&] {
            for (std::string const& other : others) {
                std::string name = "node" + std::to_string(++last);
                while (taken.count(name) != 0)
                    name = "node" + std::to_string(++last);
                auto entry = taken.extract(other);
                entry.value() = std::move(name);
                taken.insert(std::move(entry));
            }
        });
        row.require(taken.count("node" + std::to_string(row.size() + count - 1)) == 1, "the bare names are taken");
    }
}

RowEntry const entry("next free name", nextFreeName);
RowEntry const bareEntry("next free name.bare", nextFreeNameBare);

} // namespace

} // namespace bench
