// A container's editors, its bracket over a whole graph, its death, and the registry by UUID.

#include "CountingContainer.h"
#include "support/RecordingEditor.h"

#include <tav/NodeList.h>
#include <tav/PortList.h>
#include <tav/PortProperties.h>
#include <tav/Runtime.h>

#include <gtest/gtest.h>

#include <memory>

using namespace TAV_marlo_v1;
using tav_test::Calls;
using tav_test::RecordingEditor;

namespace {

struct ContainerScope : testing::Test {
    std::unique_ptr<CountingContainer> container = std::make_unique<CountingContainer>();
    AddRefWrapper<Node> const n = add("n");
    AddRefWrapper<Node> const m = add("m");
    Calls calls;
    RecordingEditor ofContainer{calls, "container: "};
    RecordingEditor ofN{calls, "n: "};
    RecordingEditor ofM{calls, "m: "};

    ContainerScope()
    {
        container->getEditorNotifier().registerEditor(&ofContainer);
        n->registerEditor(&ofN);
        m->registerEditor(&ofM);
    }

    AddRefWrapper<Node> add(char const* name)
    {
        AddRefWrapper<Node> node = Node::createNew(container.get(), name);
        node->createNodePort(eInput, "in", {}, PortProperties());
        container->compound().nodes().add(node);
        return node;
    }
};

TEST_F(ContainerScope, HearsEveryChangeInTheGraphAndNothingOfAFreeNode)
{
    n->setName("a");
    m->inputs()[0u]->setName("i");
    AddRefWrapper<Node> const free = Node::createNew(container.get(), "free");
    free->setName("other");
    EXPECT_EQ(calls, Calls({"container: node renamed top a", "n: node renamed top a", "container: nodePort renamed i",
                            "m: nodePort renamed i"}));
}

TEST_F(ContainerScope, ItsBracketHoldsBackAllAndDeliversInTheOrderOfTheFirstChanges)
{
    container->openChangeBracket();
    m->setName("a");
    n->setName("b");
    m->setName("c");
    {
        ChangeBracket const onNode(n.get()); // its end delivers nothing while the container is bracketed
        n->setName("d");
    }
    EXPECT_TRUE(calls.empty());
    container->closeChangeBracket();
    EXPECT_EQ(calls,
              Calls({"container: node renamed top c", "container: node renamed top d", "container: node renamed top c",
                     "container: node renamed top d", "m: node renamed top c", "n: node renamed top d"}));
    EXPECT_EQ(container->executed, 1u);
}

TEST_F(ContainerScope, ANodeThatLeftInsideTheBracketStillTellsItsEditorsAfterwards)
{
    container->openChangeBracket();
    n->setName("a");
    container->compound().nodes().remove(n);
    n->setName("b");
    container->getEditorNotifier().unregisterEditor(&ofContainer);
    EXPECT_TRUE(calls.empty());
    container->closeChangeBracket();
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls.front(), "n: node renamed top b");
    EXPECT_EQ(calls.back(), "n: node renamed - b");
}

TEST_F(ContainerScope, ABracketOnOneNodeLeavesTheContainersEditorsAlone)
{
    {
        ChangeBracket const bracket(n.get());
        n->setName("a");
        EXPECT_EQ(calls, Calls({"container: node renamed top a"}));
    }
    EXPECT_EQ(calls.back(), "n: node renamed top a");
}

TEST_F(ContainerScope, ANodeWithABracketOfItsOwnOutlastsThatOfTheContainer)
{
    {
        ChangeBracket const onNode(n.get());
        {
            ChangeBracket const bracket = container->createChangeBracket(m.get());
            n->setName("a");
            m->setName("b");
            EXPECT_TRUE(m->activeChangeBracket());
        }
        EXPECT_EQ(calls,
                  Calls({"container: node renamed top a", "container: node renamed top b", "m: node renamed top b"}));
    }
    EXPECT_EQ(calls.back(), "n: node renamed top a");
}

TEST_F(ContainerScope, AnEditorThatChangesTheGraphDuringTheBatchKeepsTheOrderForTheOthers)
{
    ofContainer.reaction = [&](std::string const& call) {
        if (call == "container: node renamed top a")
            m->setName("b");
    };
    container->openChangeBracket();
    m->inputs()[0u]->setName("i");
    n->setName("a");
    container->closeChangeBracket();
    EXPECT_EQ(calls,
              Calls({"container: nodePort renamed i", "container: node renamed top a", "container: node renamed top b",
                     "m: nodePort renamed i", "m: node renamed top b", "n: node renamed top a"}));
}

TEST_F(ContainerScope, DyingInsideItsBracketItLeavesNoNodeWaiting)
{
    ChangeBracket const bracket = container->createChangeBracket(nullptr);
    n->setName("a");
    container.reset();
    EXPECT_EQ(calls, Calls({"n: node renamed top a"}));
    EXPECT_EQ(n->getContainer(), nullptr);
    n->setName("b");
    EXPECT_EQ(calls.size(), 2u);
}

TEST_F(ContainerScope, ItsEditorMayDeleteItWhenTheBracketCloses)
{
    ofContainer.reaction = [&](std::string const&) { container.reset(); };
    {
        ChangeBracket const bracket = container->createChangeBracket(nullptr);
        n->setName("a");
        m->setName("b");
    }
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls.front(), "container: node renamed top a");
    EXPECT_EQ(ofContainer.peekNotifierRegisteredWithCount(), 0u);
}

// ---- registry by UUID

TEST(ContainerUuid, LeadsToTheLastOneRegisteredUntilItDies)
{
    String uuid("untouched");
    auto first = std::make_unique<CountingContainer>();
    auto second = std::make_unique<CountingContainer>();
    EXPECT_FALSE(Container::getUUIDFromContainer(first.get(), uuid));
    EXPECT_EQ(uuid, "untouched");
    Container::registerWithUUID("b", first.get());
    Container::registerWithUUID("a", first.get());
    EXPECT_EQ(Container::getFromUUID("b"), first.get());
    EXPECT_TRUE(Container::getUUIDFromContainer(first.get(), uuid));
    EXPECT_EQ(uuid, "a");
    Container::registerWithUUID("a", second.get());
    EXPECT_TRUE(Container::getUUIDFromContainer(first.get(), uuid));
    EXPECT_EQ(uuid, "b");
    first.reset();
    EXPECT_EQ(Container::getFromUUID("b"), nullptr);
    EXPECT_EQ(Container::getFromUUID("a"), second.get());
    Container::unregisterWithUUID("a");
    Container::unregisterWithUUID("unknown");
    EXPECT_EQ(Container::getFromUUID("a"), nullptr);
    EXPECT_EQ(Container::getFromUUID(nullptr), nullptr);
}

} // namespace
