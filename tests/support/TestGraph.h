#pragma once

#include <tav/tav.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

/// A runtime with nothing but data types, and what the tests switch on in it.
class TestRuntime : public TAV_marlo_v1::Runtime {
public:
    explicit TestRuntime(char const* name = "test")
        : Runtime(name)
    {
    }
    bool isLegalName(char const* name) const override { return std::string(name) != forbiddenName; }

    std::string forbiddenName;
};

class TestContainer : public TAV_marlo_v1::Container {
public:
    explicit TestContainer(TAV_marlo_v1::Runtime* runtime = nullptr)
        : m_runtime(runtime)
    {
    }
    char const* getName() const override { return "test"; }
    char const* getFilePath() const override { return ""; }
    void rebuildCompounds() override {}
    bool isReadOnly() const override { return false; }
    TAV_marlo_v1::Runtime* getRuntime() const override { return m_runtime; }

private:
    TAV_marlo_v1::Runtime* m_runtime;
};

/// A container with a top compound, and short ways to fill it.
struct TestGraph {
    TestRuntime runtime;
    TestContainer container{&runtime};
    TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Node> topNode = TAV_marlo_v1::Node::createNew(&container, "top");
    TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Compound> top = TAV_marlo_v1::Compound::createNew(topNode, nullptr);
    TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::PortDataType> type = runtime.createPortDataType("float", "0");

    TestGraph() { container.setTopNode(topNode); }
    ~TestGraph() { container.setTopNode({}); }

    TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Node> addNode(char const* name, std::initializer_list<char const*> inputs,
                                                            std::initializer_list<char const*> outputs,
                                                            TAV_marlo_v1::Compound* parent = nullptr)
    {
        using namespace TAV_marlo_v1;
        AddRefWrapper<Node> const node = Node::createNew(&container, name);
        for (char const* input : inputs)
            node->createNodePort(eInput, input, type, PortProperties());
        for (char const* output : outputs)
            node->createNodePort(eOutput, output, type, PortProperties());
        (parent ? parent : top.get())->nodes().add(node);
        return node;
    }

    TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Compound> addCompound(char const* name,
                                                                    TAV_marlo_v1::Compound* parent = nullptr)
    {
        using namespace TAV_marlo_v1;
        AddRefWrapper<Node> const node = Node::createNew(&container, name);
        AddRefWrapper<Compound> const compound = Compound::createNew(node, nullptr);
        (parent ? parent : top.get())->nodes().add(node);
        return compound;
    }

    TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Node> addIONode(TAV_marlo_v1::Compound& compound,
                                                              TAV_marlo_v1::NodeFlags flag, char const* name)
    {
        using namespace TAV_marlo_v1;
        AddRefWrapper<Node> const node = Node::createNew(&container, name);
        node->setFlag(flag);
        compound.nodes().add(node);
        return node;
    }
};

template <class List>
std::vector<std::string> namesOf(List const& list)
{
    std::vector<std::string> names;
    for (auto const& item : list)
        names.emplace_back(item->getName());
    return names;
}

inline std::vector<std::string> textsOf(TAV_marlo_v1::StringArray const& array)
{
    std::vector<std::string> texts;
    for (char const* text : array)
        texts.emplace_back(text);
    return texts;
}

/// What checkConsistency finds in a graph: nothing, in a sound one.
inline std::vector<std::string> problemsOf(TAV_marlo_v1::Compound const& compound)
{
    TAV_marlo_v1::StringArray problems;
    compound.checkConsistency(problems);
    return textsOf(problems);
}
