#include "SampleGraph.h"

#include <tav/NodeLibrary.h>
#include <tav/OptionalStringArray.h>
#include <tav/PortProperties.h>
#include <tav/kit/StandardRuntime.h>

#include <algorithm>
#include <numeric>
#include <random>

using namespace TAV_marlo_v1;

namespace bench {

namespace {

constexpr char kNodeType[] = "mix";

kit::StandardRuntime& sharedRuntime()
{
    static kit::StandardRuntime runtime("bench");
    static bool const knowsType = [] {
        runtime.getNodeLibrary()->addNode(kNodeType, "Mix");
        return true;
    }();
    static_cast<void>(knowsType);
    return runtime;
}

} // namespace

namespace {

/// A compound that a command can make others in.
class SampleCompound final : public Compound {
public:
    static AddRefWrapper<Compound> create(AddRefWrapper<Node> const& owner)
    {
        AddRefWrapper<Compound> const compound(new SampleCompound(owner));
        owner->setOwnedCompound(compound);
        return compound;
    }
    AddRefWrapper<Compound> createNewCompound(char const* name) override
    {
        AddRefWrapper<Node> const owner = Node::createNew(getAsNode()->getContainer(), name);
        AddRefWrapper<Compound> const compound = create(owner);
        return nodes().add(owner) ? compound : AddRefWrapper<Compound>();
    }

private:
    explicit SampleCompound(AddRefWrapper<Node> const& owner)
        : Compound(owner, nullptr)
    {
    }
};

} // namespace

SampleDocument::SampleDocument()
{
    AddRefWrapper<Node> const owner = Node::createNew(this, "sample");
    m_top = SampleCompound::create(owner);
    setTopNode(owner);
}

Runtime* SampleDocument::getRuntime() const
{
    return &sharedRuntime();
}

std::vector<std::string> sampleNames(unsigned count, char const* stem)
{
    std::vector<std::string> names;
    names.reserve(count);
    for (unsigned i = 0; i < count; ++i)
        names.push_back(stem + std::to_string(i));
    return names;
}

AddRefWrapper<Node> addSampleNode(SampleDocument& document, Compound& compound, char const* name)
{
    static AddRefWrapper<PortDataType> const type = sharedRuntime().getPortDataType("float");
    static PortProperties const half(eNoPortFlags, PropertyList(), OptionalStringArray(StringArray("0.5")));
    static PortProperties const plain;

    AddRefWrapper<Node> const node = Node::createNew(&document, name);
    node->setNodeTypeName(kNodeType);
    node->createNodePort(eInput, "a", type, half);
    node->createNodePort(eInput, "b", type, half);
    node->createNodePort(eOutput, "out", type, plain);
    node->setMetadataValue("uiPosition", "120 80");
    compound.nodes().add(node);
    return node;
}

void addSampleNodes(SampleDocument& document, Compound& compound, std::vector<std::string> const& names)
{
    for (std::string const& name : names)
        addSampleNode(document, compound, name.c_str());
}

unsigned SampleWiring::sourceOfB(unsigned node)
{
    if (node % 2 == 0)
        return kNone;
    unsigned const back = 1 + node * 2654435761u % 64;
    return back > node ? 0 : node - back;
}

unsigned SampleWiring::connections(unsigned nodes)
{
    return nodes == 0 ? 0 : nodes - 1 + nodes / 2;
}

SamplePorts::SamplePorts(Compound const& compound)
{
    for (AddRefWrapper<Node> const node : compound.nodes()) {
        if (node->isCompound())
            continue; // it is part of a chain, and has no ports
        a.push_back(node->inputs()[0u]);
        b.push_back(node->inputs()[1u]);
        out.push_back(node->outputs()[0u]);
    }
}

unsigned connectSampleNodes(SamplePorts const& ports)
{
    unsigned made = 0;
    for (unsigned node = 0; node < ports.a.size(); ++node) {
        if (unsigned const source = SampleWiring::sourceOfA(node); source != SampleWiring::kNone)
            made += ports.out[source]->addConnection(ports.a[node], /*copyMetadata=*/false) ? 1 : 0;
        if (unsigned const source = SampleWiring::sourceOfB(node); source != SampleWiring::kNone)
            made += ports.out[source]->addConnection(ports.b[node], /*copyMetadata=*/false) ? 1 : 0;
    }
    return made;
}

void fillSample(SampleDocument& document, unsigned nodes)
{
    addSampleNodes(document, document.top(), sampleNames(nodes));
    connectSampleNodes(SamplePorts(document.top()));
}

std::vector<AddRefWrapper<Compound>> addNesting(SampleDocument& document, unsigned depth)
{
    std::vector<AddRefWrapper<Compound>> chain;
    Compound* parent = &document.top();
    for (unsigned level = 1; level <= depth; ++level) {
        AddRefWrapper<Node> const owner = Node::createNew(&document, ("c" + std::to_string(level)).c_str());
        owner->setNodeTypeName("compound");
        chain.push_back(Compound::createNew(owner, nullptr));
        parent->nodes().add(owner);
        parent = chain.back().get();
    }
    return chain;
}

void fillNested(SampleDocument& document, unsigned nodes, unsigned depth)
{
    for (AddRefWrapper<Compound> const& compound : addNesting(document, depth)) {
        addSampleNodes(document, *compound, sampleNames(nodes / depth));
        connectSampleNodes(SamplePorts(*compound));
    }
}

std::vector<unsigned> shuffled(unsigned count)
{
    std::vector<unsigned> order(count);
    std::iota(order.begin(), order.end(), 0u);
    std::mt19937 random(1);
    std::shuffle(order.begin(), order.end(), random);
    return order;
}

unsigned countConnections(Compound const& compound)
{
    unsigned count = 0;
    for (AddRefWrapper<Node> const node : compound.nodes()) {
        for (AddRefWrapper<Port> const port : node->outputs())
            count += port->connectedTo().size();
    }
    return count;
}

} // namespace bench
