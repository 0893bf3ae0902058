// All nodes of a compound copied into the same compound, where every name is taken.

#include "Row.h"
#include "SampleGraph.h"
#include "XmlPasses.h"

namespace bench {

namespace {

using TAV_marlo_v1::String;
using TAV_marlo_v1::StringArray;

String copyOfAll(Compound const& compound)
{
    StringArray names;
    for (AddRefWrapper<Node> const node : compound.nodes())
        names.add(node->getName());
    return compound.saveItemsToString(names, StringArray(), TAV_marlo_v1::eSaveInnerConnections);
}

void paste(Row& row)
{
    while (row.next()) {
        SampleDocument document;
        fillSample(document, row.size());
        String const text = copyOfAll(document.top());
        StringArray nodes, annotations, sources;
        bool pasted = false;
        row.time(row.size(),
                 [&] { pasted = document.top().createItemsFromString(text.toChar(), nodes, annotations, &sources); });
        row.require(pasted && nodes.size() == row.size() && sources.size() == row.size(), "every node is pasted");
        row.require(document.top().nodes().size() == 2 * row.size(), "the old and the new nodes are there");
        row.require("node" + std::to_string(2 * row.size() - 1) == nodes[row.size() - 1], "the names count up");
        row.require(countConnections(document.top()) == 2 * SampleWiring::connections(row.size()),
                    "the copies are connected as the nodes are");
    }
}

void pasteReader(Row& row)
{
    SampleDocument document;
    fillSample(document, row.size());
    String const text = copyOfAll(document.top());
    while (row.next()) {
        XmlPass const pass = readerPass({text.toChar(), text.size()});
        row.count(row.size(), pass.seconds);
        row.require(pass.good, "the raw reader takes the copied text");
    }
}

RowEntry const entry("paste, every name taken", paste);
RowEntry const readerEntry("paste, every name taken.reader", pasteReader);

} // namespace

} // namespace bench
