#include "support/PictureKeeper.h"
#include "support/TestGraph.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>

using namespace TAV_marlo_v1;
using tav_test::Picture;
using tav_test::PictureKeeper;

namespace {

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
