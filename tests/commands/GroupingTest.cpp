#include "support/EditableGraph.h"

#include <gtest/gtest.h>

#include <set>

using namespace tav_test;

namespace {

using Names = std::vector<std::string>;

struct Grouping : testing::Test {
    EditableGraph graph;
    CreateCompoundCommand group;
    ExplodeCompoundCommand explode;

    void SetUp() override
    {
        group.setParentCompound(&graph.container, "/");
        explode.setParentCompound(&graph.container, "/");
    }
    static Names sourcesOf(AddRefWrapper<Port> const& port)
    {
        Names sources;
        for (AddRefWrapper<Port> const& other : port->connectedTo())
            sources.emplace_back(other->getFullPathName().getName());
        return sources;
    }
};

TEST_F(Grouping, RoutesWhatCrossesTheBorderThroughOnePortForEachSource)
{
    group.addNode("sink"); // named out of order: the parent's order counts
    group.addNode("mix");
    group.addAnnotation("note");
    group.setCompoundName("group"); // which is taken
    ASSERT_TRUE(group.doit());
    EXPECT_STREQ(group.getCreatedCompoundName(), "group1");
    EXPECT_EQ(namesOf(graph.top->nodes()), Names({"hub", "group", "ref", "group1"}));
    AddRefWrapper<Compound> const made = graph.compound("/group1");
    EXPECT_EQ(namesOf(made->nodes()), Names({"mix", "sink", "input", "output"}));
    EXPECT_EQ(namesOf(made->annotations()), Names({"note"}));
    // hub.out feeds mix.x first, group.s feeds mix.y; both feed sink as well.
    EXPECT_EQ(namesOf(graph.node("/group1")->inputs()), Names({"x", "y", "first"}));
    EXPECT_EQ(sourcesOf(graph.in("/group1", 0)), Names({"/hub.out"}));
    EXPECT_EQ(sourcesOf(graph.in("/group1/mix", 0)), Names({"/group1.x"}));
    EXPECT_EQ(sourcesOf(graph.in("/group1/sink", 1)), Names({"/group1.x"}));
    EXPECT_EQ(sourcesOf((*graph.in("/group1/mix", 2)->children())[1u]), Names({"/group1.x"}));
    EXPECT_EQ(graph.in("/group1", 0)->getDataType(), graph.type);
    EXPECT_STREQ(graph.in("/group1", 0)->getPortMetaDataValue("key").toChar(), "value");
    StringArray outside, inside;
    EXPECT_TRUE(graph.in("/group1", 1)->getPortDefaultValues(outside));
    EXPECT_TRUE(made->innerInputs()[1u]->getPortDefaultValues(inside));
    EXPECT_EQ(textsOf(outside), Names({"one;two"}));
    EXPECT_EQ(outside, inside);
    EXPECT_TRUE(graph.in("/group1/mix", 0)->getWatchPoint());
    EXPECT_EQ(problemsOf(*graph.top), Names());
}

TEST_F(Grouping, ChangesNothingWhereItMakesNoSense)
{
    std::string const before = graph.picture();
    EXPECT_FALSE(group.doit()) << "nothing to group";
    CreateCompoundCommand withIO, inReferenced;
    withIO.setParentCompound(&graph.container, "/group");
    withIO.addNode("left");
    withIO.addNode("input");
    EXPECT_FALSE(withIO.doit());
    EXPECT_FALSE(inReferenced.setParentCompound(&graph.container, "/mix")) << "no compound";
    explode.addCompound("ref");
    explode.addCompound("mix");
    EXPECT_FALSE(explode.doit());
    EXPECT_FALSE(explode.undo());
    EXPECT_EQ(graph.picture(), before);
}

TEST_F(Grouping, ExplodingIsTheReverse)
{
    for (char const* const name : {"mix", "group", "sink"})
        group.addNode(name);
    group.addAnnotation("back");
    std::multiset<std::string> connections;
    auto const facts = [&] {
        std::multiset<std::string> found;
        StringArray const names = [&] {
            StringArray all;
            for (AddRefWrapper<Node> const& node : graph.top->nodes())
                all.add(node->getName());
            return all;
        }();
        for (CnxInfo const& connection : graph.top->searchConnections(eAllCnx, names))
            found.insert(std::string(connection.getOutputPort()->getFullPathName().getName()) + " "
                         + connection.getInputPort()->getFullPathName().getName());
        for (AddRefWrapper<Node> const& node : graph.top->nodes())
            found.insert(node->isCompound() ? node->getName() : node->saveToString(nullptr).toChar());
        return found;
    };
    connections = facts();
    ASSERT_TRUE(group.doit());
    EXPECT_NE(facts(), connections);
    explode.addCompound(group.getCreatedCompoundName());
    ASSERT_TRUE(explode.doit());
    EXPECT_EQ(textsOf(explode.getCreatedNodeNames()), Names({"mix", "group", "sink"}));
    EXPECT_EQ(textsOf(explode.getCreatedAnnotationNames()), Names({"back"}));
    EXPECT_EQ(facts(), connections);
    EXPECT_EQ(problemsOf(*graph.top), Names());
}

TEST_F(Grouping, ExplodingJoinsThroughConnectionsAndHandsOnValues)
{
    AddRefWrapper<Compound> const inner = graph.compound("/group");
    graph.in("/group", 0)->removeAllConnections(); // "p" feeds left.b and left.a; its outside holds 2
    graph.out("/hub", 1)->addConnection(graph.in("/group", 2), false); // "t" goes straight to "q"
    graph.top->createNodeFromPreset("adder")->setName("left");
    explode.addCompound("group");
    ASSERT_TRUE(explode.doit());
    EXPECT_EQ(textsOf(explode.getCreatedNodeNames()), Names({"left1", "deep"}));
    StringArray values;
    EXPECT_TRUE(graph.in("/left1", 1)->getPortDefaultValues(values));
    EXPECT_EQ(textsOf(values), Names({"2"}));
    EXPECT_EQ(sourcesOf(graph.in("/hub", 0)), Names({"/hub.spare"})) << "by way of t and q";
    EXPECT_EQ(sourcesOf(graph.in("/sink", 0)), Names({"/hub.spare", "/left1.d"}));
    EXPECT_EQ(sourcesOf(graph.in("/deep", 0)), Names({"/left1.c", "/hub.out", "/hub.spare", "/hub.spare"}));
    EXPECT_FALSE(graph.node("/input"));
    EXPECT_EQ(problemsOf(*graph.top), Names());
}

} // namespace
