#include "support/FailingAllocations.h"
#include "support/TestGraph.h"

#include <gtest/gtest.h>

#include <functional>

using namespace TAV_marlo_v1;

namespace {

/// What a graph holds, as text, so that "as it was" can be checked.
std::string dumpOf(Compound const& compound)
{
    StringArray lines;
    compound.debug(lines);
    for (AddRefWrapper<Node> const& node : compound.nodes()) {
        if (AddRefWrapper<Compound> const nested = node->getAsCompound()) {
            for (AddRefWrapper<Annotation> const& annotation : nested->annotations())
                lines.add(annotation->getName());
        }
    }
    std::string text;
    for (char const* line : lines)
        text.append(line).append("\n");
    return text;
}

struct ChangeWithoutMemory : testing::TestWithParam<unsigned> {
    TestGraph graph;
    AddRefWrapper<Compound> group = graph.addCompound("group");
    AddRefWrapper<Node> source = graph.addNode("source", {}, {"out"}, group.get());
    AddRefWrapper<Node> sink = graph.addNode("sink", {"in"}, {}, group.get());
    AddRefWrapper<Node> fresh = Node::createNew(&graph.container, "sink");
    AddRefWrapper<Annotation> note = Annotation::createNew(Annotation::eBackdrop, nullptr, "note");

    std::vector<std::function<void()>> const changes = {
        [this] { group->nodes().add(fresh); },
        [this] { sink->inputs()[0u]->addConnection(source->outputs()[0u], false); },
        [this] { sink->createNodePort(eInput, "in", graph.type, PortProperties(eFanIn, {}, StringArray("1"))); },
        [this] { group->createCompoundPort(eInput, "p", graph.type, PortProperties()); },
        [this] { sink->setName("source"); },
        [this] { sink->inputs()[0u]->setName("a name longer than what a string keeps inside"); },
        [this] { group->annotations().add(note); },
        [this] { group->createLinkedPort(sink->inputs()[0u]); },
    };
};

TEST_P(ChangeWithoutMemory, LeavesTheGraphAsItWas)
{
    for (int i = 0; i < 70; ++i) // lists long enough to be indexed and cut into chunks
        graph.addNode("sink", {}, {}, group.get());
    group->annotations().add(
        Annotation::createNew(Annotation::eStickyNote, nullptr, "other")); // the first needs no memory
    std::string const before = dumpOf(*graph.top);
    long const failures = tav_test::failEachAllocation(changes[GetParam()], [&] {
        ASSERT_TRUE(dumpOf(*graph.top) == before);
        ASSERT_EQ(problemsOf(*graph.top), std::vector<std::string>());
    });
    EXPECT_GT(failures, 0);
    EXPECT_TRUE(dumpOf(*graph.top) != before);
    EXPECT_EQ(problemsOf(*graph.top), std::vector<std::string>());
}

INSTANTIATE_TEST_SUITE_P(EachChange, ChangeWithoutMemory, testing::Range(0u, 8u));

} // namespace
