#include "support/RecordingEditor.h"
#include "support/TestGraph.h"

#include <gtest/gtest.h>

using namespace TAV_marlo_v1;
using tav_test::Calls;
using tav_test::RecordingEditor;
using Names = std::vector<std::string>;

namespace {

struct NodeInGraph : testing::Test {
    TestGraph graph;
    AddRefWrapper<Node> source = graph.addNode("source", {"a", "b"}, {"out", "more"});
    AddRefWrapper<Node> sink = graph.addNode("sink", {"in", "side"}, {"out"});

    AddRefWrapper<Port> out() { return source->outputs()["out"]; }
    AddRefWrapper<Port> in() { return sink->inputs()["in"]; }
};

TEST_F(NodeInGraph, DefaultPortIsTheFirstThatFits)
{
    ASSERT_TRUE(in()->addConnection(out(), false));
    EXPECT_EQ(source->getDefaultPort(eOutput, eConnectable), out()) << "an output serves many";
    EXPECT_STREQ(sink->getDefaultPort(eInput, eConnectable)->getName(), "side");
    EXPECT_EQ(sink->getDefaultPort(eInput, eFirst), in());
    sink->inputs()["side"]->addConnection(out(), false);
    EXPECT_FALSE(sink->getDefaultPort(eInput, eConnectable));
    EXPECT_FALSE(sink->getDefaultPort(eInput, static_cast<DefaultPortFilter>(2)));
}

TEST_F(NodeInGraph, ConnectionsListsInputsThenOutputs)
{
    ASSERT_TRUE(in()->addConnection(out(), false));
    ASSERT_TRUE(source->inputs()["a"]->addConnection(sink->outputs()[0u], false));
    CnxInfoArray const all = source->connections(eAllCnx);
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[0], CnxInfo(sink->outputs()[0u], source->inputs()["a"]));
    EXPECT_EQ(all[1], CnxInfo(out(), in()));
    EXPECT_EQ(source->connections(eInputCnx).size(), 1u);
    EXPECT_EQ(source->connections(eOutputCnx)[0].getInputPort(), in());
    EXPECT_TRUE(source->connections(eThroughCnx).empty());
}

TEST_F(NodeInGraph, NamesStayUniqueLegalAndInStepWithTheCompound)
{
    sink->setName("source");
    EXPECT_STREQ(sink->getName(), "source1");
    graph.runtime.forbiddenName = "bad";
    sink->setName("bad");
    sink->setName(nullptr);
    EXPECT_STREQ(sink->getName(), "source1");
    EXPECT_EQ(graph.top->nodes()["source1"], sink);
    EXPECT_FALSE(graph.top->nodes()["sink"]);
    sink->appendString("x");
    EXPECT_STREQ(sink->getName(), "source1x");

    AddRefWrapper<Compound> const compound = graph.addCompound("group");
    compound->setName("source");
    EXPECT_STREQ(compound->getAsNode()->getName(), "source1");
    compound->getAsNode()->setName("node");
    EXPECT_STREQ(compound->getName(), "node");
    EXPECT_STREQ(graph.addNode("in", {}, {}, compound.get())->getFullPathName().getName(), "/node/in");
    EXPECT_STREQ(graph.topNode->getFullPathName().getName(), "/");
    graph.top->createCompoundPort(eInput, "p", graph.type, PortProperties());
    EXPECT_STREQ(graph.topNode->inputs()[0u]->getFullPathName().getName(), ".p");
}

TEST_F(NodeInGraph, OddNamesAreFoundByNameAndByPath)
{
    std::string const names[] = {"a/b",  "a.b",    ".",     "/", "with blank",
                                 "\"q'", "日本語", "עברית", "😀", std::string(1000000, 'n')};
    for (std::string const& name : names) {
        AddRefWrapper<Compound> const compound = graph.addCompound(name.c_str());
        AddRefWrapper<Node> const inner = graph.addNode(name.c_str(), {name.c_str()}, {}, compound.get());
        EXPECT_EQ(graph.top->nodes()[name.c_str()], compound->getAsNode());
        EXPECT_EQ(graph.container.findNodeFromPath(inner->getFullPathName().getName()), inner) << name.substr(0, 20);
        EXPECT_EQ(graph.container.findPortFromPath(inner->inputs()[0u]->getFullPathName().getName(),
                                                   Container::eSearchInput, Container::eSearchOwnPorts),
                  inner->inputs()[0u]);
    }
    EXPECT_EQ(problemsOf(*graph.top), Names());
}

TEST_F(NodeInGraph, ListsCopyAsFreeSelectionsAndTakeAnyIndex)
{
    NodeList selection(graph.top->nodes());
    EXPECT_EQ(selection.getParentCompound(), nullptr);
    EXPECT_TRUE(selection.remove(source));
    EXPECT_EQ(source->getParentCompound(), graph.top.get());
    EXPECT_EQ(graph.top->nodes().size(), 2u);
    EXPECT_FALSE(graph.top->nodes()[nullptr]);
    EXPECT_FALSE(graph.top->nodes()[2u]);
    EXPECT_TRUE(selection.insert(source, 9));
    EXPECT_EQ(namesOf(selection), Names({"sink", "source"}));
    for (auto const& [name, index] : {std::pair{"x", 1u}, {"y", 9u}, {"z", kNotFound}})
        EXPECT_TRUE(graph.top->nodes().insert(Node::createNew(nullptr, name), index));
    EXPECT_EQ(namesOf(graph.top->nodes()), Names({"source", "x", "sink", "y", "z"})) << "past the end appends";
}

/// Refuses what it is told to refuse.
struct StrictCompound : Compound {
    explicit StrictCompound(AddRefWrapper<Node> const& owner)
        : Compound(owner, nullptr)
    {
    }
    bool onNodeAdd(AddRefWrapper<Node> const&) override { return allow; }
    bool onNodeRemove(AddRefWrapper<Node> const&) override { return allow; }
    bool allow = true;
};

TEST_F(NodeInGraph, RefusedAdditionKeepsTheEarlierParentAndRefusedRemovalEverything)
{
    AddRefWrapper<Node> const owner = Node::createNew(&graph.container, "strict");
    AddRefWrapper<StrictCompound> const strict(new StrictCompound(owner));
    owner->setOwnedCompound(strict);
    AddRefWrapper<Node> const node = Node::createNew(nullptr, "free");
    node->setParentCompound(graph.top.get());
    strict->allow = false;
    EXPECT_FALSE(strict->nodes().add(node));
    EXPECT_EQ(node->getParentCompound(), graph.top.get());
    strict->allow = true;
    EXPECT_TRUE(strict->nodes().add(node));
    EXPECT_FALSE(graph.top->nodes().add(node)) << "it has to leave its compound first";
    EXPECT_FALSE(strict->nodes().add(owner)) << "a compound cannot hold itself";
    strict->allow = false;
    EXPECT_FALSE(strict->nodes().remove(node));
    EXPECT_FALSE(strict->removeNode("free"));
    EXPECT_EQ(strict->nodes()[0u], node);
}

TEST_F(NodeInGraph, RemovalCutsItOffAndTellsDeletedThenRemoved)
{
    in()->addConnection(out(), false);
    RecordingEditor editor;
    graph.container.getEditorNotifier().registerEditor(&editor);
    EXPECT_TRUE(graph.top->removeNode("source"));
    EXPECT_FALSE(in()->isConnected());
    EXPECT_EQ(editor.take(), Calls({"node deleted top source", "node removed top source"}));
    EXPECT_EQ(source->getParentCompound(), nullptr);
    EXPECT_STREQ(source->getFullPathName().getName(), "/");
}

TEST_F(NodeInGraph, EveryChangeIsReportedOnceAndNoChangeNever)
{
    RecordingEditor editor;
    graph.container.getEditorNotifier().registerEditor(&editor);
    auto const expect = [&](Calls const& calls) { EXPECT_EQ(editor.take(), calls); };
    for (int again = 0; again < 2; ++again)
        sink->setName("drain");
    expect({"node renamed top drain"});
    for (int again = 0; again < 2; ++again)
        sink->stateFlags().set(eBypassedState, true);
    expect({"node stateChanged top drain"});
    EXPECT_EQ(sink->stateFlags()[0], eBypassedState);
    for (int again = 0; again < 2; ++again)
        sink->setNodeTypeName("drain");
    expect({"node metadataChanged top drain"});
    for (int again = 0; again < 2; ++again)
        sink->setMetadataValue("color", "red");
    expect({"node metadataChanged top drain"});
    for (int again = 0; again < 2; ++again)
        in()->setPortMetaDataValue("uiName", "In");
    expect({"nodePort metadataChanged in"});
    for (int again = 0; again < 2; ++again)
        in()->setDataType(graph.runtime.createPortDataType("int", "0"));
    expect({"nodePort dataTypeChanged in"});
    in()->setFlag(eUnconnectable);
    in()->clearFlag(eUnconnectable);
    in()->setFlag(eExposed);
    in()->setFlag(eFanIn);
    expect({"nodePort flagsChanged in", "nodePort flagsChanged in", "nodePort exposureChanged in",
            "nodePort fanInChanged in"});
    AddRefWrapper<Port> const member = in()->children()->addPort("m", graph.type, eNoPortFlags);
    member->addConnection(out(), false);
    member->removeConnection(out());
    expect({"nodePort added m", "connection fanInAdded out m", "nodePort connected m", "connection removed out m",
            "nodePort disconnected out", "nodePort disconnected m"});
    sink->inputs().movePort(0, 1);
    sink->inputs().movePort(1, 1);
    sink->inputs().remove(sink->inputs()["side"]);
    expect({"nodePort moved in", "nodePort removed side"});
    in()->setPortDefaultValues(StringArray("1"));
    in()->resetPortDefaultValues();
    expect({"nodePort valuesChanged in", "nodePort valuesReset in"});
}

TEST_F(NodeInGraph, MessagesAreCountedAndReportedAtEveryLevel)
{
    AddRefWrapper<Compound> const group = graph.addCompound("group");
    AddRefWrapper<Node> const inner = graph.addNode("inner", {}, {}, group.get());
    EXPECT_FALSE(inner->getErrorState());
    RecordingEditor editor;
    graph.container.getEditorNotifier().registerEditor(&editor);
    inner->addMessage("inner", "is odd", eWarning);
    EXPECT_EQ(editor.take(), Calls({"node messagesChanged group inner", "node messagesChanged top group",
                                    "node messagesChanged - top"}));
    inner->addMessage("inner", "is broken", eError);
    EXPECT_EQ(graph.top->getNumberOfNodesWithMessage(eAnyMessage), 1u);
    EXPECT_EQ(graph.top->getNumberOfNodesWithMessage(eWarning), 1u);
    EXPECT_EQ(graph.top->getNumberOfNodesWithMessage(eInfo), 0u);
    editor.take();
    EXPECT_FALSE(inner->getErrorState()->clearMessages(eInfo));
    EXPECT_TRUE(editor.take().empty());
    EXPECT_EQ(problemsOf(*graph.top), Names());
    AddRefWrapper<ErrorState> const errors = inner->getErrorState();
    graph.top->removeNode("group");
    EXPECT_EQ(graph.top->getNumberOfNodesWithMessage(eAnyMessage), 0u);
    errors->clearMessages(eAnyMessage);
    EXPECT_EQ(group->getNumberOfNodesWithMessage(eAnyMessage), 0u);
}

} // namespace
