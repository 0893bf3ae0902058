// A node with two inputs, an output, their values and a metadata entry, made and added.

#include "BareGraph.h"
#include "Row.h"
#include "SampleGraph.h"

namespace bench {

namespace {

void create(Row& row)
{
    std::vector<std::string> const names = sampleNames(row.size());
    while (row.next()) {
        SampleDocument document;
        row.time(row.size(), [&] { addSampleNodes(document, document.top(), names); });
        row.require(document.top().nodes().size() == row.size(), "every node is in the compound");
        row.require(bool(document.top().nodes()[names.back().c_str()]), "a node is found under its name");
    }
}

void createBare(Row& row)
{
    std::vector<std::string> const names = sampleNames(row.size());
    while (row.next()) {
        BareGraph graph;
        row.time(row.size(), [&] { graph.addSampleNodes(names); });
        row.require(graph.byName.size() == row.size(), "every bare node is filed");
    }
}

RowEntry const entry("create", create);
RowEntry const bareEntry("create.bare", createBare);

} // namespace

} // namespace bench
