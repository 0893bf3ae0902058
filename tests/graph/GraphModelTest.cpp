#include "support/TestGraph.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>

using namespace TAV_marlo_v1;

namespace {

/// What can be seen of a graph, object by object.
struct Picture {
    struct PortFacts {
        std::string name, type, values, metadata;
        unsigned flags = 0;
        std::multiset<Port*> links;
        bool operator==(PortFacts const& o) const
        {
            return std::tie(name, type, values, metadata, flags, links)
                   == std::tie(o.name, o.type, o.values, o.metadata, o.flags, o.links);
        }
    };
    struct NodeFacts {
        std::string name, metadata;
        std::vector<Port*> inputs, outputs;
        bool operator==(NodeFacts const& o) const
        {
            return std::tie(name, metadata, inputs, outputs) == std::tie(o.name, o.metadata, o.inputs, o.outputs);
        }
    };
    std::map<Port*, PortFacts> ports;
    std::map<Node*, NodeFacts> nodes;
    std::map<Compound*, std::set<Node*>> children;
    std::map<Annotation*, std::pair<std::string, std::string>> annotations;

    static std::string textOf(PropertyList const& list) { return list.serialize(eSerializeLossless).toChar(); }

    static PortFacts factsOf(Port& port)
    {
        PortFacts facts;
        facts.name = port.getName();
        facts.type = port.getDataType() ? port.getDataType()->getName() : "";
        if (StringArray values; port.getPortDefaultValues(values))
            facts.values = "=" + std::string(values.serialize(eSerializeLossless).toChar());
        facts.metadata = port.getPortMetaDataValue("key").toChar();
        facts.flags = port.getFlags();
        for (AddRefWrapper<Port> const& other : port.connectedTo())
            facts.links.insert(other.get());
        return facts;
    }

    std::vector<Port*> seePorts(PortList const& list)
    {
        std::vector<Port*> seen;
        for (AddRefWrapper<Port> const& port : list) {
            ports[port.get()] = factsOf(*port);
            seen.push_back(port.get());
        }
        return seen;
    }

    void see(Node& node)
    {
        nodes[&node] = {node.getName(), textOf(node.getPropertyList()), seePorts(node.inputs()),
                        seePorts(node.outputs())};
        if (AddRefWrapper<Compound> const compound = node.getAsCompound())
            see(*compound);
    }

    void see(Annotation& annotation)
    {
        annotations[&annotation] = {annotation.getName(), textOf(annotation.getPropertyList())};
    }

    void see(Compound& compound)
    {
        std::set<Node*>& inside = children[&compound];
        inside.clear();
        for (AddRefWrapper<Node> const& node : compound.nodes()) {
            inside.insert(node.get());
            see(*node);
        }
        for (AddRefWrapper<Annotation> const& annotation : compound.annotations())
            see(*annotation);
        seePorts(compound.innerInputs());
        seePorts(compound.innerOutputs());
    }
};

/// Keeps a picture by what it is told: it looks at a whole object when the object appears, and afterwards
/// only at the one thing that is said to have changed.
class PictureKeeper : public HostEditor {
public:
    Picture picture;
    // What it was told of, so that an address means one object for the whole test.
    std::vector<AddRefWrapper<Port>> keptPorts;
    std::vector<AddRefWrapper<Node>> keptNodes;

    void tav_onConnectionChange(ECnxChangeType type, AddRefWrapper<Port> const& a,
                                AddRefWrapper<Port> const& b) override
    {
        link(type, a.get(), b.get());
        link(type, b.get(), a.get());
    }
    void tav_onCompoundConnectionChange(ECnxChangeType type, AddRefWrapper<Port> const& a,
                                        AddRefWrapper<Port> const& b) override
    {
        tav_onConnectionChange(type, a, b);
    }
    void tav_onNodePortChange(EPortChangeType type, AddRefWrapper<Port> const& port) override { change(type, port); }
    void tav_onCompoundPortChange(EPortChangeType type, AddRefWrapper<Port> const& port) override
    {
        change(type, port);
    }

    void tav_onNodeChange(ENodeChangeType type, AddRefWrapper<Compound> const& compound,
                          AddRefWrapper<Node> const& node) override
    {
        keptNodes.push_back(node);
        if (type == eNodeAdded && compound->nodes().findNode(node) != kNotFound) {
            picture.see(*node);
            picture.children[compound.get()].insert(node.get());
        }
        if (type == eNodeRenamed && picture.nodes.count(node.get()))
            picture.nodes[node.get()].name = node->getName();
        if (type == eNodeMetadataChanged && picture.nodes.count(node.get()))
            picture.nodes[node.get()].metadata = Picture::textOf(node->getPropertyList());
        if (type == eNodeDeleted)
            forget(node.get());
        if (type == eNodeRemoved)
            picture.children[compound.get()].erase(node.get());
    }

    void tav_onAnnotationChange(EAnnotationChangeType type, AddRefWrapper<Compound> const&,
                                AddRefWrapper<Annotation> const& annotation) override
    {
        if (type == eAnnotationRemoved)
            picture.annotations.erase(annotation.get());
        else if (annotation->getParentCompound())
            picture.see(*annotation);
    }

private:
    void link(ECnxChangeType type, Port* port, Port* other)
    {
        auto const found = picture.ports.find(port);
        if (found == picture.ports.end())
            return;
        std::multiset<Port*>& links = found->second.links;
        if (type == eCnxRemoved)
            links.erase(other);
        else if (links.count(other) == 0)
            links.insert(other);
    }

    void change(EPortChangeType type, AddRefWrapper<Port> const& port)
    {
        keptPorts.push_back(port);
        AddRefWrapper<Node> const node = port->getParentNode();
        if (type == ePortRemoved) {
            picture.ports.erase(port.get());
            for (auto& [known, facts] : picture.nodes) {
                std::erase(facts.inputs, port.get());
                std::erase(facts.outputs, port.get());
            }
            return;
        }
        if (!port->getParent())
            return; // its node is gone by now, which will be told too
        if (type == ePortAdded)
            picture.ports[port.get()] = Picture::factsOf(*port);
        if (type == ePortAdded || type == ePortMoved) {
            for (auto& [known, facts] : picture.nodes) {
                if (known == node.get() || known->testFlag(eAnyIO))
                    arrange(*known, facts);
            }
        }
        auto const found = picture.ports.find(port.get());
        if (found == picture.ports.end())
            return;
        Picture::PortFacts const now = Picture::factsOf(*port);
        switch (type) {
        case ePortRenamed:
            found->second.name = now.name;
            break;
        case ePortDataTypeChanged:
            found->second.type = now.type;
            break;
        case ePortValuesChanged:
        case ePortValuesReset:
            found->second.values = now.values;
            break;
        case ePortMetadataChanged:
            found->second.metadata = now.metadata;
            break;
        case ePortFlagsChanged:
        case ePortExposureChanged:
        case ePortFanInChanged:
            found->second.flags = now.flags;
            break;
        default:
            break;
        }
    }

    static void arrange(Node& node, Picture::NodeFacts& facts)
    {
        auto const order = [](PortList const& list) {
            std::vector<Port*> ports;
            for (AddRefWrapper<Port> const& port : list)
                ports.push_back(port.get());
            return ports;
        };
        facts.inputs = order(node.inputs());
        facts.outputs = order(node.outputs());
    }

    void forget(Node* node)
    {
        auto const found = picture.nodes.find(node);
        if (found == picture.nodes.end())
            return;
        std::vector<Port*> gone(found->second.inputs);
        gone.insert(gone.end(), found->second.outputs.begin(), found->second.outputs.end());
        picture.nodes.erase(found);
        if (AddRefWrapper<Compound> const compound = node->getAsCompound()) {
            picture.children.erase(compound.get());
            for (AddRefWrapper<Annotation> const& annotation : compound->annotations())
                picture.annotations.erase(annotation.get());
        }
        for (Port* port : gone)
            forget(port);
    }

    void forget(Port* port)
    {
        auto const found = picture.ports.find(port);
        if (found == picture.ports.end())
            return;
        for (Port* other : found->second.links) {
            if (auto const end = picture.ports.find(other); end != picture.ports.end())
                end->second.links.erase(port);
        }
        picture.ports.erase(port);
    }
};

/// Makes one random change after the other.
class RandomChanges {
public:
    RandomChanges(TestGraph& graph, unsigned seed)
        : m_graph(graph)
        , m_random(seed)
    {
        m_types = {graph.type, graph.runtime.createPortDataType("int", "0")};
    }

    void step()
    {
        Compound& compound = *anyCompound();
        AddRefWrapper<Node> const node = any(compound.nodes());
        AddRefWrapper<Node> const second = any(compound.nodes());
        AddRefWrapper<Node> const owner = compound.getAsNode();
        AddRefWrapper<Port> const port = node ? any(below(2) ? node->inputs() : node->outputs()) : nullptr;
        AddRefWrapper<Port> const compoundPort = any(below(2) ? compound.innerInputs() : compound.innerOutputs());
        AddRefWrapper<Annotation> const annotation = any(compound.annotations());
        switch (below(26)) {
        case 0:
        case 1:
        case 2:
            m_graph.addNode(name().c_str(), {"a", "b"}, {"out"}, &compound);
            break;
        case 3:
            if (depth(compound) < 4)
                m_graph.addCompound(name().c_str(), &compound);
            break;
        case 4:
            compound.nodes().remove(node);
            break;
        case 5:
            if (node)
                node->setName(name().c_str());
            break;
        case 6:
            if (node)
                node->setMetadataValue("m", name().c_str());
            break;
        case 7:
            if (node && !node->isCompound() && !node->testFlag(eAnyIO))
                node->createNodePort(static_cast<PortIOType>(below(2)), name().c_str(), m_types[0], PortProperties());
            break;
        case 8:
            if (port && !node->isCompound() && !node->testFlag(eAnyIO)) {
                port->removeAllConnections();
                (port->getPortIOType() == eInput ? node->inputs() : node->outputs()).remove(port);
            }
            break;
        case 9:
            if (port)
                port->setName(name().c_str());
            break;
        case 10:
            if (port)
                port->setDataType(m_types[below(2)]);
            break;
        case 11:
            if (port)
                port->setPortDefaultValues(StringArray(name().c_str()));
            break;
        case 12:
            if (port)
                port->resetPortDefaultValues();
            break;
        case 13:
            if (port)
                port->setPortMetaDataValue("key", below(3) ? name().c_str() : nullptr);
            break;
        case 14:
            if (port) {
                if (below(2))
                    port->setFlag(eExposed);
                else
                    port->clearFlag(eExposed);
            }
            break;
        case 15:
            if (node && !node->testFlag(eAnyIO) && !node->isCompound() && node->inputs().size())
                node->inputs().movePort(below(node->inputs().size()), below(node->inputs().size()));
            break;
        case 16:
        case 17:
        case 18:
            if (node && second)
                connect(any(node->outputs()), any(second->inputs()));
            break;
        case 19:
            if (compoundPort && node)
                connect(compoundPort, any(compoundPort->getPortIOType() == eOutput ? node->inputs() : node->outputs()));
            break;
        case 20:
            if (port && port->isConnected())
                port->removeConnection(any(port->connectedTo()));
            break;
        case 21:
            compound.createCompoundPort(static_cast<PortIOType>(below(2)), name().c_str(), m_types[0],
                                        PortProperties());
            break;
        case 22:
            if (compoundPort && below(3) == 0)
                compound.deleteCompoundPort(compoundPort);
            else if (compoundPort)
                compoundPort->setName(name().c_str());
            break;
        case 23:
            if (compound.innerInputs().size())
                compound.innerInputs().movePort(below(compound.innerInputs().size()),
                                                below(compound.innerInputs().size()));
            break;
        case 24:
            if (below(3) == 0)
                m_graph.addIONode(compound, below(2) ? eInputIO : eOutputIO, name().c_str());
            break;
        case 25:
            if (!annotation || below(3) == 0)
                compound.createCompoundAnnotation(Annotation::eBackdrop, name().c_str());
            else if (below(3) == 0)
                compound.removeAnnotation(annotation);
            else if (below(2))
                annotation->setName(name().c_str());
            else
                annotation->setMetadataValue("text", name().c_str());
            break;
        }
    }

    unsigned below(unsigned n) { return m_random() % n; }

private:
    template <class List>
    auto any(List const& list) -> decltype(list[0u])
    {
        return list.size() ? list[below(list.size())] : decltype(list[0u])();
    }

    std::string name() { return std::string(1, static_cast<char>('a' + below(4))); }

    AddRefWrapper<Compound> anyCompound()
    {
        AddRefWrapper<Compound> compound = m_graph.top;
        while (below(3)) {
            AddRefWrapper<Node> const node = any(compound->nodes());
            if (!node || !node->isCompound())
                break;
            compound = node->getAsCompound();
        }
        return compound;
    }

    static unsigned depth(Compound const& compound)
    {
        unsigned levels = 0;
        for (Compound const* c = &compound; c; c = c->getAsNode()->getParentCompound())
            ++levels;
        return levels;
    }

    void connect(AddRefWrapper<Port> const& a, AddRefWrapper<Port> const& b)
    {
        if (a && b && a->getPortIOType() != b->getPortIOType() && a->connectedTo().findPort(b) == kNotFound)
            a->addConnection(b, below(2) != 0);
    }

    TestGraph& m_graph;
    std::mt19937 m_random;
    std::vector<AddRefWrapper<PortDataType>> m_types;
};

Picture trueOf(TestGraph const& graph)
{
    Picture picture;
    picture.see(*graph.topNode);
    return picture;
}

TEST(EditorThatKnowsOnlyWhatItIsTold, AlwaysAgreesWithTheGraph)
{
    for (unsigned seed = 1; seed <= 3; ++seed) {
        TestGraph graph;
        PictureKeeper keeper;
        keeper.picture = trueOf(graph);
        graph.container.getEditorNotifier().registerEditor(&keeper);
        RandomChanges changes(graph, seed);
        for (int batch = 0; batch < 800; ++batch) {
            {
                unsigned const size = changes.below(3) ? 1 : 1 + changes.below(8);
                ChangeBracket const bracket(size > 1 ? &graph.container : nullptr);
                for (unsigned i = 0; i < size; ++i) {
                    changes.step();
                    ASSERT_EQ(problemsOf(*graph.top), std::vector<std::string>())
                        << "seed " << seed << " batch " << batch;
                }
            }
            Picture const truth = trueOf(graph);
            ASSERT_TRUE(keeper.picture.nodes == truth.nodes) << "seed " << seed << " batch " << batch;
            ASSERT_TRUE(keeper.picture.children == truth.children) << "seed " << seed << " batch " << batch;
            ASSERT_TRUE(keeper.picture.annotations == truth.annotations) << "seed " << seed << " batch " << batch;
            for (auto const& [port, facts] : truth.ports) {
                ASSERT_EQ(keeper.picture.ports.count(port), 1u) << facts.name << " seed " << seed << " batch " << batch;
                ASSERT_TRUE(keeper.picture.ports[port] == facts)
                    << facts.name << " seed " << seed << " batch " << batch;
            }
        }
    }
}

} // namespace
