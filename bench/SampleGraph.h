#pragma once

#include <tav/Compound.h>
#include <tav/Container.h>
#include <tav/NodeList.h>
#include <tav/PortList.h>

#include <string>
#include <vector>

namespace bench {

using TAV_marlo_v1::AddRefWrapper;
using TAV_marlo_v1::Compound;
using TAV_marlo_v1::Node;
using TAV_marlo_v1::Port;

/// A top-level graph without editors. All documents share one runtime, which knows the sample node's type.
class SampleDocument final : public TAV_marlo_v1::Container {
public:
    SampleDocument();

    Compound& top() const { return *m_top; }

    char const* getName() const override { return "sample"; }
    char const* getFilePath() const override { return ""; }
    void rebuildCompounds() override {}
    bool isReadOnly() const override { return false; }
    TAV_marlo_v1::Runtime* getRuntime() const override;

private:
    AddRefWrapper<Compound> m_top;
};

/// "node0", "node1" and so on, or the same behind another stem.
std::vector<std::string> sampleNames(unsigned count, char const* stem = "node");

/// The node of all rows: inputs "a" and "b" with a value each, an output "out", and one metadata entry.
AddRefWrapper<Node> addSampleNode(SampleDocument& document, Compound& compound, char const* name);
void addSampleNodes(SampleDocument& document, Compound& compound, std::vector<std::string> const& names);

/// Which outputs feed a node's inputs: "a" the node before it, and of each second node "b" one of the 64
/// before it, which is 1.5 connections a node. kNone where an input stays free.
struct SampleWiring {
    static constexpr unsigned kNone = ~0u;
    static unsigned sourceOfA(unsigned node) { return node == 0 ? kNone : node - 1; }
    static unsigned sourceOfB(unsigned node);
    static unsigned connections(unsigned nodes);
};

/// The ports of the sample nodes of a compound, node by node.
struct SamplePorts {
    explicit SamplePorts(Compound const& compound);
    std::vector<AddRefWrapper<Port>> a, b, out;
};
/// @return the number of connections made
unsigned connectSampleNodes(SamplePorts const& ports);

/// N sample nodes, all connected, in the top compound.
void fillSample(SampleDocument& document, unsigned nodes);

/// A chain of compounds "c1" to "c<depth>", one in the other, below the top one; from the outermost on.
std::vector<AddRefWrapper<Compound>> addNesting(SampleDocument& document, unsigned depth);
/// N sample nodes in equal parts in the compounds of such a chain, connected within each.
void fillNested(SampleDocument& document, unsigned nodes, unsigned depth);

/// The numbers below `count`, shuffled, in every run in the same way.
std::vector<unsigned> shuffled(unsigned count);

unsigned countConnections(Compound const& compound);

} // namespace bench
