#include "BareGraph.h"

#include "SampleGraph.h"

#include <algorithm>

namespace bench {

namespace {

std::string const kFloat = "float";
std::string const kMix = "mix";

void cut(BarePort& port)
{
    for (BarePort* const other : port.connections) {
        auto& back = other->connections;
        back.erase(std::find(back.begin(), back.end(), &port));
    }
    port.connections.clear();
}

} // namespace

BareNode& BareGraph::addSampleNode(std::string const& name)
{
    BareNode& node = nodes.emplace_back();
    node.name = name;
    node.type = &kMix;
    for (char const* const input : {"a", "b"}) {
        node.inputs.push_back(std::make_unique<BarePort>(BarePort{&node, input, &kFloat, {}, {}}));
        node.inputs.back()->values.push_back("0.5");
    }
    node.outputs.push_back(std::make_unique<BarePort>(BarePort{&node, "out", &kFloat, {}, {}}));
    node.metadata["uiPosition"].push_back("120 80");
    byName.emplace(name, std::prev(nodes.end()));
    return node;
}

void BareGraph::addSampleNodes(std::vector<std::string> const& names)
{
    for (std::string const& name : names)
        addSampleNode(name);
}

void BareGraph::fillSample(unsigned count)
{
    addSampleNodes(sampleNames(count));
    connectBareNodes(bareNodesOf(*this));
}

void BareGraph::rename(BareNode& node, std::string const& name)
{
    auto entry = byName.extract(node.name);
    entry.key() = name;
    byName.insert(std::move(entry));
    node.name = name;
}

bool BareGraph::remove(std::string const& name)
{
    auto const found = byName.find(name);
    if (found == byName.end())
        return false;
    BareNode& node = *found->second;
    for (auto const& port : node.inputs)
        cut(*port);
    for (auto const& port : node.outputs)
        cut(*port);
    nodes.erase(found->second);
    byName.erase(found);
    return true;
}

void connectBare(BarePort& output, BarePort& input)
{
    output.connections.push_back(&input);
    input.connections.push_back(&output);
}

void connectBareNodes(std::vector<BareNode*> const& nodes)
{
    for (unsigned node = 0; node < nodes.size(); ++node) {
        if (unsigned const source = SampleWiring::sourceOfA(node); source != SampleWiring::kNone)
            connectBare(*nodes[source]->outputs[0], *nodes[node]->inputs[0]);
        if (unsigned const source = SampleWiring::sourceOfB(node); source != SampleWiring::kNone)
            connectBare(*nodes[source]->outputs[0], *nodes[node]->inputs[1]);
    }
}

std::vector<BareNode*> bareNodesOf(BareGraph& graph)
{
    std::vector<BareNode*> nodes;
    for (BareNode& node : graph.nodes)
        nodes.push_back(&node);
    return nodes;
}

} // namespace bench
