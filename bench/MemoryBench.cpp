// What a node and a connection take, measured at the heap.

#include "BareGraph.h"
#include "HeapUse.h"
#include "Row.h"
#include "SampleGraph.h"

#include <memory>

namespace bench {

namespace {

struct HeapMarks {
    std::ptrdiff_t withNodes, withConnections;

    void noteIn(Row& row) const
    {
        unsigned const connections = SampleWiring::connections(row.size());
        row.note("bytes_per_node", static_cast<double>(withNodes) / row.size());
        row.note("bytes_per_connection", static_cast<double>(withConnections - withNodes) / connections);
    }
};

void memory(Row& row)
{
    std::vector<std::string> const names = sampleNames(row.size());
    while (row.next()) {
        HeapMarks marks{};
        row.time(row.size(), [&] {
            SampleDocument document;
            HeapWatch const heap;
            addSampleNodes(document, document.top(), names);
            marks.withNodes = heap.inUse();
            // One port at a time: what the caller keeps is not the graph's.
            unsigned made = 0;
            TAV_marlo_v1::NodeList const& nodes = document.top().nodes();
            for (unsigned node = 0; node < row.size(); ++node) {
                unsigned const sources[] = {SampleWiring::sourceOfA(node), SampleWiring::sourceOfB(node)};
                for (unsigned input = 0; input < 2; ++input) {
                    if (sources[input] != SampleWiring::kNone)
                        made +=
                            nodes[sources[input]]->outputs()[0u]->addConnection(nodes[node]->inputs()[input], false);
                }
            }
            marks.withConnections = heap.inUse();
            row.require(made == SampleWiring::connections(row.size()), "every connection is made");
        });
        marks.noteIn(row);
    }
}

void memoryBare(Row& row)
{
    std::vector<std::string> const names = sampleNames(row.size());
    while (row.next()) {
        HeapMarks marks{};
        row.time(row.size(), [&] {
            BareGraph graph;
            std::vector<BareNode*> nodes;
            nodes.reserve(names.size());
            HeapWatch const heap;
            graph.addSampleNodes(names);
            marks.withNodes = heap.inUse();
            for (BareNode& node : graph.nodes)
                nodes.push_back(&node);
            connectBareNodes(nodes);
            marks.withConnections = heap.inUse();
        });
        marks.noteIn(row);
    }
}

RowEntry const entry("memory", memory);
RowEntry const bareEntry("memory.bare", memoryBare);

} // namespace

} // namespace bench
