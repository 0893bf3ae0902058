// A whole graph let go at once.

#include "BareGraph.h"
#include "Row.h"
#include "SampleGraph.h"

#include <memory>

namespace bench {

namespace {

void destroy(Row& row)
{
    while (row.next()) {
        auto document = std::make_unique<SampleDocument>();
        fillSample(*document, row.size());
        AddRefWrapper<Node> const kept = document->top().nodes()[row.size() / 2];
        row.time(row.size(), [&] { document.reset(); });
        row.require(!kept->getParentCompound() && !kept->outputs()[0u]->isConnected(),
                    "a node that somebody still holds has no graph any more");
    }
}

void destroyBare(Row& row)
{
    while (row.next()) {
        auto graph = std::make_unique<BareGraph>();
        graph->fillSample(row.size());
        row.time(row.size(), [&] { graph.reset(); });
    }
}

RowEntry const entry("destroy", destroy);
RowEntry const bareEntry("destroy.bare", destroyBare);

} // namespace

} // namespace bench
