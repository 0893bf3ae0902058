#include "support/RecordingEditor.h"
#include "support/TestGraph.h"

#include <gtest/gtest.h>

using namespace TAV_marlo_v1;
using tav_test::Calls;
using tav_test::RecordingEditor;

namespace {

/// Handles that outlive what they came from answer empty, false or "".
TEST(GraphTakenApart, HandlesStaySafe)
{
    AddRefWrapper<Node> node;
    AddRefWrapper<Port> port;
    AddRefWrapper<Port> inside;
    AddRefWrapper<Compound> group;
    AddRefWrapper<Annotation> note;
    AddRefWrapper<Annotation> strayNote;
    AddRefWrapper<Node> strayNode = Node::createNew(nullptr, "stray");
    AddRefWrapper<PortList> list;
    {
        TestGraph graph;
        group = graph.addCompound("group");
        group->createCompoundPort(eInput, "p", graph.type, PortProperties());
        inside = group->innerInputs()[0u];
        node = graph.addNode("node", {"in"}, {"out"}, group.get());
        port = node->inputs()[0u];
        port->addConnection(inside, false);
        list = AddRefWrapper<PortList>(&node->inputs());
        note = group->createCompoundAnnotation(Annotation::eBackdrop, "note");
        strayNote = Annotation::createNew(Annotation::eBackdrop, group.get(), "stray");
        strayNode->setParentCompound(group.get());
    }
    EXPECT_FALSE(group->getAsNode());
    EXPECT_STREQ(group->getName(), "group");
    EXPECT_EQ(group->createCompoundPort(eInput, "q", {}, PortProperties()), kNotFound);
    EXPECT_EQ(node->getContainer(), nullptr);
    EXPECT_STREQ(node->getFullPathName().getName(), "/node");
    node->setName("renamed");
    group = nullptr;
    EXPECT_EQ(node->getParentCompound(), nullptr);
    EXPECT_EQ(note->getParentCompound(), nullptr);
    EXPECT_EQ(strayNote->getParentCompound(), nullptr);
    EXPECT_EQ(strayNode->getParentCompound(), nullptr);
    note->setName("other");
    note->setMetadataValue("text", "x");
    EXPECT_EQ(inside->getParent(), nullptr);
    EXPECT_FALSE(inside->isConnected());
    node = nullptr;
    EXPECT_EQ(port->getParent(), nullptr);
    EXPECT_TRUE(list->empty());
    EXPECT_TRUE(list->addPort("late", {}, eNoPortFlags)) << "a list without owner";
    EXPECT_FALSE(port->getParentNode() || port->getParentCompound());
    port->notifyChange(ePortRenamed);
}

TEST(DeepGraphs, AreDestroyedWithoutDeepStacks)
{
    constexpr int kDepth = 200000;
    AddRefWrapper<Node> const top = Node::createNew(nullptr, "top");
    AddRefWrapper<Compound> innermost = Compound::createNew(top, nullptr);
    for (int i = 0; i < kDepth; ++i) {
        AddRefWrapper<Node> const node = Node::createNew(nullptr, "n");
        AddRefWrapper<Compound> const compound = Compound::createNew(node, nullptr);
        ASSERT_TRUE(innermost->nodes().add(node));
        innermost = compound;
    }
    AddRefWrapper<Port> const port = Port::createNew("top", eInput);
    AddRefWrapper<Port> deepest = port;
    for (int i = 0; i < kDepth; ++i)
        deepest = deepest->createChildrenList()->addPort("c", {}, eNoPortFlags);
    port->setFlag(eDetached);
    EXPECT_TRUE(deepest->testFlag(eDetached));
    // A chain of connected nodes: each port keeps the next one's port, not its node.
    AddRefWrapper<Compound> const chain = Compound::createNew(Node::createNew(nullptr, "chain"), nullptr);
    EXPECT_FALSE(chain->getAsNode()) << "nobody holds the owner node";
    AddRefWrapper<Node> previous;
    for (int i = 0; i < kDepth; ++i) {
        AddRefWrapper<Node> const node = Node::createNew(nullptr, "n");
        node->createNodePort(eInput, "in", {}, PortProperties());
        node->createNodePort(eOutput, "out", {}, PortProperties());
        if (previous)
            node->inputs()[0u]->addConnection(previous->outputs()[0u], false);
        chain->nodes().add(node);
        previous = node;
    }
}

TEST(HubOfManyConnections, IsCutFromEitherSide)
{
    constexpr unsigned kCount = 20000;
    AddRefWrapper<Port> const hub = Port::createNew("hub", eOutput);
    std::vector<AddRefWrapper<Port>> ends;
    for (unsigned i = 0; i < kCount; ++i) {
        ends.push_back(Port::createNew("end", eInput));
        ASSERT_TRUE(ends.back()->addConnection(hub, false));
    }
    for (unsigned i = 0; i < kCount; i += 2)
        ASSERT_TRUE(ends[i]->removeConnection(hub));
    EXPECT_EQ(hub->connectedTo().size(), kCount / 2);
    EXPECT_EQ(hub->connectedTo()[7u], ends[15]) << "the order of the rest stays";
    hub->removeAllConnections();
    for (AddRefWrapper<Port> const& end : ends)
        ASSERT_FALSE(end->isConnected());
}

/// Editors and brackets in a real graph: what is told, when, and while things change under the teller.
TEST(NotificationFromWithin, EditorMayChangeTheGraphWhileItIsTold)
{
    TestGraph graph;
    AddRefWrapper<Node> const node = graph.addNode("n", {"in"}, {});
    RecordingEditor editor;
    editor.reaction = [&](std::string const& call) {
        if (call == "node added top extra")
            graph.top->removeNode("extra");
        if (call == "nodePort valuesChanged in")
            node->inputs()[0u]->setName("renamed");
    };
    graph.container.getEditorNotifier().registerEditor(&editor);
    node->inputs()[0u]->setPortDefaultValues(StringArray("1"));
    graph.addNode("extra", {}, {});
    EXPECT_EQ(editor.take(), Calls({"nodePort valuesChanged in", "nodePort renamed renamed", "node added top extra",
                                    "node deleted top extra", "node removed top extra"}));
    EXPECT_EQ(graph.top->nodes().size(), 1u);
}

TEST(NotificationFromWithin, BracketOutlivesTheCompoundItWasOpenedOn)
{
    TestGraph graph;
    RecordingEditor editor;
    graph.topNode->registerEditor(&editor);
    AddRefWrapper<Compound> group = graph.addCompound("group");
    editor.take();
    {
        ChangeBracket const bracket = graph.container.createChangeBracket(group.get());
        graph.addNode("inner", {}, {}, group.get());
        group = nullptr;
        graph.top->removeNode("group");
        EXPECT_TRUE(editor.take().empty());
    }
    EXPECT_EQ(editor.take(), Calls({"node removed top group"}));
}

TEST(NotificationFromWithin, NodeThatLeftTheGraphStillTellsItsOwnEditors)
{
    TestGraph graph;
    AddRefWrapper<Node> const node = graph.addNode("n", {"in"}, {});
    Calls order;
    RecordingEditor ofGraph(order, "graph: ");
    RecordingEditor ofNode(order, "node: ");
    graph.container.getEditorNotifier().registerEditor(&ofGraph);
    node->registerEditor(&ofNode);
    graph.container.openChangeBracket();
    node->setName("m");
    graph.top->removeNode("m");
    node->setName("gone");
    EXPECT_TRUE(order.empty());
    graph.container.closeChangeBracket();
    EXPECT_EQ(order,
              Calls({"graph: node renamed top gone", "graph: node deleted top gone", "graph: node removed top gone",
                     "node: node renamed top gone", "node: node deleted top gone", "node: node renamed - gone"}));
}

} // namespace
