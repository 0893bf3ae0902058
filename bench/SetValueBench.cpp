// Giving ports new values, node by node: unobserved, and with an editor at the container or at each node.

#include "BareGraph.h"
#include "CountingEditor.h"
#include "Row.h"
#include "SampleGraph.h"

#include <tav/StringArray.h>

namespace bench {

namespace {

using TAV_marlo_v1::StringArray;

void setValues(Row& row, SampleDocument& document, CountingEditor const& editor, bool observed)
{
    std::vector<AddRefWrapper<Port>> const ports = SamplePorts(document.top()).a;
    // Alternately, since a value that is there already is no change.
    StringArray const values[] = {StringArray("0.25"), StringArray("0.75")};
    unsigned round = 0;
    while (row.next()) {
        StringArray const& value = values[round++ % 2];
        unsigned const toldBefore = editor.told;
        unsigned set = 0;
        row.time(row.size(), [&] {
            for (AddRefWrapper<Port> const& port : ports)
                set += port->setPortDefaultValues(value) ? 1 : 0;
        });
        row.require(set == row.size(), "every value is taken");
        row.require(editor.told - toldBefore == (observed ? row.size() : 0), "the editor hears of each change once");
        StringArray now;
        ports.back()->getPortDefaultValues(now);
        row.require(now == value, "the port has the new value");
    }
}

void unobserved(Row& row)
{
    SampleDocument document;
    addSampleNodes(document, document.top(), sampleNames(row.size()));
    setValues(row, document, CountingEditor(), /*observed=*/false);
}

void containerObserved(Row& row)
{
    SampleDocument document;
    addSampleNodes(document, document.top(), sampleNames(row.size()));
    CountingEditor editor;
    document.getEditorNotifier().registerEditor(&editor);
    setValues(row, document, editor, /*observed=*/true);
}

void nodesObserved(Row& row)
{
    SampleDocument document;
    addSampleNodes(document, document.top(), sampleNames(row.size()));
    CountingEditor editor;
    for (AddRefWrapper<Node> const node : document.top().nodes())
        node->registerEditor(&editor);
    setValues(row, document, editor, /*observed=*/true);
}

void setValuesBare(Row& row)
{
    BareGraph graph;
    graph.addSampleNodes(sampleNames(row.size()));
    std::vector<BareNode*> const nodes = bareNodesOf(graph);
    std::vector<std::string> const values[] = {{"0.25"}, {"0.75"}};
    unsigned round = 0;
    while (row.next()) {
        std::vector<std::string> const& value = values[round++ % 2];
        row.time(row.size(), [&] {
            for (BareNode* const node : nodes)
                node->inputs[0]->values = value;
        });
        row.require(nodes.back()->inputs[0]->values == value, "the bare port has the new value");
    }
}

RowEntry const entry("set value", unobserved);
RowEntry const bareEntry("set value.bare", setValuesBare);
RowEntry const containerEntry("set value, editor at the container", containerObserved);
RowEntry const nodesEntry("set value, editor at the node", nodesObserved);

} // namespace

} // namespace bench
