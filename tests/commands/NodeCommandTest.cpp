#include "support/EditableGraph.h"

#include <gtest/gtest.h>

using namespace tav_test;

namespace {

using Names = std::vector<std::string>;

struct NodeCommands : testing::Test {
    EditableGraph graph;
    NodeCommand command;
    Names createdNames() const { return textsOf(command.getCreatedNodeNames()); }
};

TEST_F(NodeCommands, RecordingRefusesWhatIsNotThere)
{
    AddRefWrapper<Compound> const group = graph.compound("/group");
    EXPECT_FALSE(command.createNode({}, "adder", nullptr));
    for (unsigned const flags : {0u, 24u, 1u})
        EXPECT_FALSE(command.createIONode(group, static_cast<NodeFlags>(flags), nullptr)) << flags;
    EXPECT_FALSE(command.removeNode(group, graph.node("/hub")));
    EXPECT_FALSE(command.removeNode(group, "hub"));
    EXPECT_FALSE(command.removeNode(group, static_cast<char const*>(nullptr)));
    EXPECT_FALSE(command.renameNode(graph.top, "nobody", "x"));
    EXPECT_FALSE(command.doit()) << "nothing was recorded";
    EXPECT_FALSE(command.undo());

    command.createNode(graph.top, "adder", nullptr);
    NodeCommand taker(std::move(command));
    EXPECT_FALSE(command.doit()) << "it was moved from";
    EXPECT_FALSE(command.createNode(graph.top, "adder", nullptr));
    EXPECT_TRUE(taker.doit());
    EXPECT_EQ(textsOf(taker.getCreatedNodeNames()), Names({"adder"}));
}

TEST_F(NodeCommands, TellTheNamesOfWhatCameAndCarryOutWhatCanBeDone)
{
    command.removeNode(graph.top, "mix");
    command.removeNode(graph.top, "sink");
    command.createNode(graph.top, "no such preset", nullptr);
    command.createNode(graph.top, "adder", "hub");
    command.createNode(graph.top, "adder", nullptr);
    command.renameNode(graph.top, "hub", "group");
    graph.top->removeNode("sink");
    std::string const before = graph.picture();

    EXPECT_FALSE(command.doit()) << "one removal and one creation could not be carried out";
    EXPECT_EQ(createdNames(), Names({"adder", "adder1"}));
    EXPECT_FALSE(graph.node("/mix"));
    EXPECT_EQ(graph.in("/adder", 0)->connectedTo()[0u], graph.out("/group1", 0));
    EXPECT_FALSE(command.undo());
    EXPECT_EQ(createdNames(), Names({"mix"}));
    EXPECT_EQ(graph.picture(), before);
}

TEST_F(NodeCommands, ACreationMayTakeTheNameThatARemovalFrees)
{
    graph.top->createNodeFromPreset("adder");
    std::string const before = graph.picture();
    command.createNode(graph.top, "adder", nullptr);
    command.removeNode(graph.top, "adder");
    EXPECT_TRUE(command.doit());
    EXPECT_EQ(createdNames(), Names({"adder"}));
    EXPECT_TRUE(command.undo());
    EXPECT_EQ(graph.picture(), before);
}

// Two wanted oddities: renames are undone last and in the order of recording, so a name that was passed on
// within one command comes back counted up; and a referenced compound comes back as a node.

TEST_F(NodeCommands, ConnectionsFollowANodeThatComesBackUnderAnotherName)
{
    command.removeNode(graph.top, "mix");
    command.renameNode(graph.top, "hub", "mix");
    EXPECT_TRUE(command.doit());
    EXPECT_TRUE(command.undo());
    EXPECT_EQ(createdNames(), Names({"mix1"}));
    EXPECT_EQ(graph.in("/mix1", 0)->connectedTo()[0u], graph.out("/hub", 0));
    EXPECT_EQ(graph.in("/mix1", 1)->connectedTo()[0u], graph.out("/group", 0));
    EXPECT_EQ(problemsOf(*graph.top), Names());
    EXPECT_TRUE(command.redo());
    EXPECT_FALSE(graph.node("/mix1"));
}

TEST_F(NodeCommands, AReferencedCompoundComesBackAsANode)
{
    command.removeNode(graph.top, "ref");
    EXPECT_TRUE(command.doit());
    EXPECT_TRUE(command.undo());
    EXPECT_TRUE(graph.node("/ref"));
    EXPECT_FALSE(graph.node("/ref")->isCompound());
}

TEST_F(NodeCommands, APlainNodeComesBackWithNamesThatTextCantCarry)
{
    AddRefWrapper<Node> const node = Node::createNew(&graph.container, "\x01");
    node->createNodePort(eInput, "\xff", {}, PortProperties());
    graph.top->nodes().add(node);
    command.removeNode(graph.top, node);
    EXPECT_TRUE(command.doit());
    EXPECT_TRUE(command.undo());
    AddRefWrapper<Node> const back = graph.top->nodes()["\x01"];
    ASSERT_TRUE(back);
    EXPECT_NE(back, node);
    EXPECT_TRUE(back->inputs()["\xff"]);
}

TEST_F(NodeCommands, TakingBackAnIONodeLeavesThePortsThatWereThere)
{
    NodeCommand byPreset;
    command.createIONode(graph.compound("/group/deep"), eInputIO, nullptr);
    byPreset.createNode(graph.compound("/group/deep"), "way in", nullptr);
    for (NodeCommand* const each : {&command, &byPreset}) {
        EXPECT_TRUE(each->doit());
        EXPECT_EQ(namesOf(graph.node("/group/deep/input")->outputs()), Names({"i"}));
        EXPECT_TRUE(each->undo());
        EXPECT_EQ(namesOf(graph.node("/group/deep")->inputs()), Names({"i"}));
    }
}

/// Does what it is made for when it is told of anything.
struct Meddler : HostEditor {
    std::function<void()> act;
    void tav_onNodeChange(ENodeChangeType, AddRefWrapper<Compound> const&, AddRefWrapper<Node> const&) override
    {
        if (act)
            std::exchange(act, nullptr)();
    }
};

TEST_F(NodeCommands, EditorsMayEditLeaveAndThrowWhileTheyAreTold)
{
    Meddler editor, leaver, thrower;
    HostEditorNotifier& notifier = graph.container.getEditorNotifier();
    editor.act = [&] { graph.top->createNodeFromPreset("adder"); };
    leaver.act = [&] {
        notifier.unregisterEditor(&editor);
        notifier.unregisterEditor(&leaver);
    };
    thrower.act = [] { throw 1; };
    for (Meddler* const each : {&thrower, &editor, &leaver})
        notifier.registerEditor(each);

    std::string const before = graph.picture();
    command.removeNode(graph.top, "mix");
    EXPECT_TRUE(command.doit());
    EXPECT_TRUE(graph.node("/adder"));
    EXPECT_TRUE(command.undo());
    EXPECT_EQ(problemsOf(*graph.top), Names());
    graph.top->removeNode("adder");
    EXPECT_EQ(graph.picture(), before);
    notifier.unregisterEditor(&thrower);
}

// ---- connections

TEST(ConnectCommands, ActAtOnceAndTakeThePortsInEitherOrder)
{
    for (bool const swapped : {false, true}) {
        EditableGraph graph;
        std::string const before = graph.picture();
        AddRefWrapper<Port> const a = swapped ? graph.in("/mix", 0) : graph.out("/hub", 1);
        AddRefWrapper<Port> const b = swapped ? graph.out("/hub", 1) : graph.in("/mix", 0);
        ConnectCommand command;
        EXPECT_FALSE(command.undo()) << "nothing was done";
        EXPECT_FALSE(command.connect(nullptr, a, b, false));
        EXPECT_FALSE(command.connect(&graph.container, a, {}, false));
        EXPECT_TRUE(command.connect(&graph.container, a, b, false));
        EXPECT_EQ(graph.in("/mix", 0)->connectedTo().size(), 1u) << "an input keeps one source";
        EXPECT_TRUE(graph.in("/mix", 0)->getWatchPoint()) << "it is connected still";
        EXPECT_TRUE(command.undo());
        EXPECT_EQ(graph.picture(), before);
        EXPECT_TRUE(command.redo());
        EXPECT_EQ(graph.in("/mix", 0)->connectedTo()[0u], graph.out("/hub", 1));
    }
}

TEST(ConnectCommands, DisconnectingTakesTheWatchPointsAlong)
{
    EditableGraph graph;
    std::string const before = graph.picture();
    ConnectCommand cut, strangers, hub, again;
    EXPECT_FALSE(strangers.disconnect(&graph.container, graph.out("/hub", 1), graph.in("/mix", 0)));
    EXPECT_TRUE(cut.disconnect(&graph.container, graph.in("/mix", 0), graph.out("/hub", 0)));
    EXPECT_FALSE(graph.in("/mix", 0)->getWatchPoint());
    EXPECT_TRUE(hub.disconnectAll(&graph.container, graph.out("/hub", 0)));
    EXPECT_TRUE(again.disconnectAll(&graph.container, graph.out("/hub", 0))) << "there is nothing left to cut";
    EXPECT_FALSE(graph.in("/group", 0)->getWatchPoint());
    EXPECT_TRUE(again.undo());
    EXPECT_TRUE(hub.undo());
    EXPECT_TRUE(cut.undo());
    EXPECT_EQ(graph.picture(), before);
}

TEST(ConnectCommands, ActOnTheVeryPortsTheyAreGiven)
{
    EditableGraph graph;
    AddRefWrapper<Node> const hub = graph.node("/hub");
    AddRefWrapper<Port> const output = graph.out("/hub", 0);
    graph.container.setTopNode({}); // no path leads to them any more
    RecursiveDisconnectAllCommand all;
    EXPECT_TRUE(all.disconnectAll(&graph.container, hub, false));
    EXPECT_FALSE(output->isConnected());
    EXPECT_FALSE(all.undo());
    graph.container.setTopNode(graph.topNode);
}

TEST(ConnectCommands, WhatWasThereComesBackAgainstTheRulesOfToday)
{
    EditableGraph graph;
    std::string const before = graph.picture();
    ConnectCommand command;
    EXPECT_TRUE(command.disconnectAll(&graph.container, graph.in("/hub", 0)));
    Questions::get().left = 0; // whatever is asked first is refused
    EXPECT_TRUE(command.undo());
    Questions::get() = Questions();
    EXPECT_EQ(graph.picture(), before);
}

TEST(ConnectCommands, TheSidesOfACompoundPortAreNotMixedUp)
{
    EditableGraph graph;
    AddRefWrapper<Compound> const group = graph.compound("/group");
    AddRefWrapper<Port> const inside = group->innerInputs()[1u]; // "s", as an output is called too
    std::string const before = graph.picture();
    NewConnectCommand command;
    EXPECT_TRUE(command.disconnectAll(&graph.container, inside));
    EXPECT_TRUE(inside->isConnected()) << "it was only recorded";
    EXPECT_TRUE(command.doit());
    EXPECT_FALSE(inside->isConnected());
    EXPECT_TRUE(graph.in("/group", 1)->isConnected());
    EXPECT_TRUE(graph.out("/group", 0)->isConnected());
    EXPECT_TRUE(command.undo());
    EXPECT_EQ(graph.picture(), before);
}

TEST(ConnectCommands, ACompoundPortWithoutTypeGetsThatOfItsFirstConnection)
{
    EditableGraph graph;
    AddRefWrapper<Compound> const group = graph.compound("/group");
    group->createCompoundPort(eOutput, "untyped", {}, PortProperties());
    std::string const before = graph.picture();
    ConnectCommand command;
    EXPECT_TRUE(command.connect(&graph.container, graph.out("/group/left", 0), group->innerOutputs()[2u], false));
    EXPECT_EQ(graph.out("/group", 2)->getDataType(), graph.type);
    EXPECT_TRUE(command.undo());
    EXPECT_EQ(graph.picture(), before);
}

TEST(ConnectCommands, RecursiveOnesReachChildrenAndOtherSides)
{
    EditableGraph graph;
    std::string const before = graph.picture();
    RecursiveDisconnectAllCommand members, io;
    EXPECT_TRUE(members.disconnectAll(&graph.container, graph.in("/mix", 2)));
    EXPECT_FALSE((*graph.in("/mix", 2)->children())[1u]->isConnected());
    EXPECT_TRUE(io.disconnectAll(&graph.container, graph.node("/group/input"), true));
    for (AddRefWrapper<Port> const& port : graph.node("/group")->inputs())
        EXPECT_FALSE(port->isConnected()) << port->getName();
    EXPECT_TRUE(io.undo());
    EXPECT_TRUE(io.redo());
    EXPECT_TRUE(io.undo());
    EXPECT_TRUE(members.undo());
    EXPECT_EQ(graph.picture(), before);
}

TEST(ConnectCommands, ChainsRefusePairsThatMakeNoSense)
{
    EditableGraph graph;
    ConnectNodesCommand command;
    EXPECT_FALSE(command.connect(graph.node("/hub"), graph.node("/hub")));
    EXPECT_FALSE(command.connect(graph.node("/hub"), {}));
    EXPECT_FALSE(command.connect(graph.node("/hub"), graph.node("/group/left")));
    EXPECT_FALSE(command.connect(graph.node("/group/output"), graph.node("/group/left")));
    EXPECT_FALSE(command.connect(graph.node("/group/left"), graph.node("/group/input")));
    NodeList one;
    one.add(graph.node("/hub"));
    EXPECT_FALSE(command.connect(one));
    EXPECT_FALSE(command.doit());
    EXPECT_TRUE(command.connect(graph.node("/sink"), graph.node("/hub")));
    EXPECT_FALSE(command.doit()) << "the hub has no input left";
    EXPECT_FALSE(command.undo());
}

} // namespace
