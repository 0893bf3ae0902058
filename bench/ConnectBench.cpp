// Connecting two ports that the caller has at hand.

#include "BareGraph.h"
#include "Row.h"
#include "SampleGraph.h"

namespace bench {

namespace {

void connect(Row& row)
{
    unsigned const connections = SampleWiring::connections(row.size());
    while (row.next()) {
        SampleDocument document;
        addSampleNodes(document, document.top(), sampleNames(row.size()));
        SamplePorts const ports(document.top());
        unsigned made = 0;
        row.time(connections, [&] { made = connectSampleNodes(ports); });
        row.require(made == connections && countConnections(document.top()) == connections,
                    "every connection is listed");
    }
}

void connectBare(Row& row)
{
    while (row.next()) {
        BareGraph graph;
        graph.addSampleNodes(sampleNames(row.size()));
        std::vector<BareNode*> const nodes = bareNodesOf(graph);
        row.time(SampleWiring::connections(row.size()), [&] { connectBareNodes(nodes); });
        row.require(nodes[1]->inputs[0]->connections.size() == 1, "bare ports list each other");
    }
}

RowEntry const entry("connect", connect);
RowEntry const bareEntry("connect.bare", connectBare);

} // namespace

} // namespace bench
