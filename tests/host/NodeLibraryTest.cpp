#include <tav/NodeLibrary.h>
#include <tav/NodeLibraryNotifierClient.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

using namespace TAV_marlo_v1;

namespace {

struct RecordingClient final : NodeLibraryNotifierClient {
    void libraryChanged(NodeLibrary& library, ENodeLibraryChangeType type, unsigned index) override
    {
        calls.push_back(std::string(library.getName()) + " " + std::to_string(type) + " " + std::to_string(index));
        if (reaction)
            reaction();
    }
    std::function<void()> reaction;
    std::vector<std::string> calls;
};

struct Library : testing::Test {
    using Calls = std::vector<std::string>;
    AddRefWrapper<NodeLibrary> library = NodeLibrary::createNew("lib", "Library");

    static std::vector<std::string> names(NodeLibrary const& library)
    {
        std::vector<std::string> names;
        for (auto const& definition : library.nodeDefs())
            names.emplace_back(definition->getName());
        return names;
    }
};

TEST_F(Library, KeepsOneDefinitionOfAName)
{
    AddRefWrapper<NodeDefinition> const first = library->addNode("a", "A");
    AddRefWrapper<NodeDefinition> const second = library->addNode("a", "other");
    library->addNode(NodeDefinition::createNew("a", ""));
    library->addNode(AddRefWrapper<NodeDefinition>());
    EXPECT_EQ(library->getNumberOfNodes(), 1u);
    EXPECT_EQ(library->findNode("a"), first);
    ASSERT_TRUE(second); // returned, though not filed
    EXPECT_NE(second, first);
    EXPECT_EQ(second->parent(), library.get());
    EXPECT_FALSE(library->findNode("A"));
    EXPECT_FALSE(library->findNode(nullptr));
    EXPECT_FALSE(library->getNodeAt(1));
}

TEST_F(Library, FindsADefinitionUnderTheNameItHasNow)
{
    AddRefWrapper<NodeLibrary> const other = NodeLibrary::createNew("other", "");
    AddRefWrapper<NodeDefinition> const a = library->addNode("a", "");
    AddRefWrapper<NodeDefinition> const b = library->addNode("b", "");
    other->addNode(a);
    a->setName("c");
    for (auto const& each : {library, other}) {
        EXPECT_FALSE(each->findNode("a"));
        EXPECT_EQ(each->findNode("c"), a);
    }
    b->setName("c");
    EXPECT_EQ(library->findNode("c"), a); // the first of the two
    library->addNode("b", "");
    EXPECT_EQ(library->getNumberOfNodes(), 3u);
}

TEST_F(Library, SortsItsOwnDefinitionsByBytes)
{
    AddRefWrapper<NodeLibrary> const sub = NodeLibrary::createNew("z", "");
    library->addSubLibrary(sub);
    library->addSubLibrary(NodeLibrary::createNew("y", ""));
    for (char const* const name : {"b", "é", "ab", "a", "B"}) {
        library->addNode(name, "");
        sub->addNode(name, "");
    }
    library->sort();
    EXPECT_EQ(names(*library), std::vector<std::string>({"B", "a", "ab", "b", "é"}));
    EXPECT_EQ(names(*sub).front(), "b");
    EXPECT_EQ(library->getSubLibraryAt(0), sub);
    EXPECT_STREQ(library->findNode("ab")->getName(), "ab");
}

TEST_F(Library, FindsADirectSubLibraryBeforeADeeperOne)
{
    AddRefWrapper<NodeLibrary> const first = NodeLibrary::createNew("first", "First");
    AddRefWrapper<NodeLibrary> const deep = NodeLibrary::createNew("wanted", "Deep");
    AddRefWrapper<NodeLibrary> const direct = NodeLibrary::createNew("wanted", "Direct");
    library->addSubLibrary(first);
    first->addSubLibrary(deep);
    library->addSubLibrary(direct);
    EXPECT_EQ(library->findLibrary("wanted"), direct);
    EXPECT_EQ(first->findLibrary("wanted"), deep);
    EXPECT_EQ(library->findLibrary("Deep"), deep);
    EXPECT_EQ(library->findLibrary("Library"), library);
    EXPECT_FALSE(library->findLibrary("first/wanted"));
    EXPECT_FALSE(library->findLibrary(nullptr));
}

TEST_F(Library, IsNoPartOfItself)
{
    AddRefWrapper<NodeLibrary> const sub = NodeLibrary::createNew("sub", "");
    library->addSubLibrary(sub);
    sub->addSubLibrary(library);
    library->addSubLibrary(library);
    library->addSubLibrary({});
    EXPECT_EQ(library->getNumberOfSubLibraries(), 1u);
    EXPECT_EQ(sub->getNumberOfSubLibraries(), 0u);
}

TEST_F(Library, PartsForgetItWhenItDiesOrRemovesThem)
{
    AddRefWrapper<NodeLibrary> const twice = NodeLibrary::createNew("twice", "");
    AddRefWrapper<NodeLibrary> const kept = NodeLibrary::createNew("kept", "");
    for (auto const& sub : {twice, kept, twice})
        library->addSubLibrary(sub);
    library->removeSubLibraryAt(0);
    library->removeSubLibraryAt(9);
    EXPECT_EQ(twice->parent(), library.get());
    library->removeSubLibraryAt(1);
    EXPECT_EQ(twice->parent(), nullptr);
    AddRefWrapper<NodeDefinition> const filed = library->addNode("a", "");
    AddRefWrapper<NodeDefinition> const orphan = library->addNode("a", "");
    library.reset();
    EXPECT_EQ(kept->parent(), nullptr);
    EXPECT_EQ(filed->parent(), nullptr);
    EXPECT_EQ(orphan->parent(), nullptr);
}

TEST_F(Library, TellsItsClientsWithAnIndex)
{
    RecordingClient client;
    library->registerNotifierClient(&client);
    library->registerNotifierClient(&client);
    EXPECT_EQ(library->peekNotifierClientCount(), 1u);
    library->addNode("a", "");
    library->addNode("a", "");
    library->addNode("b", "");
    library->addSubLibrary(NodeLibrary::createNew("s", ""));
    library->addSubLibrary(NodeLibrary::createNew("t", ""));
    library->removeSubLibraryAt(0);
    library->removeSubLibraryAt(1);
    library->sort();
    EXPECT_EQ(client.calls, Calls({"lib 0 0", "lib 0 1", "lib 1 0", "lib 1 1", "lib 2 0", "lib 3 0"}));
}

TEST_F(Library, ClientsLeaveInAnyOrder)
{
    RecordingClient first;
    auto second = std::make_unique<RecordingClient>();
    AddRefWrapper<NodeLibrary> const other = NodeLibrary::createNew("other", "");
    for (auto const& each : {library, other}) {
        each->registerNotifierClient(&first);
        each->registerNotifierClient(second.get());
    }
    EXPECT_EQ(first.peekNotifierRegisteredWithCount(), 2u);
    first.reaction = [&] { second.reset(); };
    library->sort();
    EXPECT_EQ(other->peekNotifierClientCount(), 1u);
    first.unregisterFromAll();
    EXPECT_EQ(first.peekNotifierRegisteredWithCount(), 0u);
    other->sort();
    EXPECT_EQ(first.calls, Calls({"lib 3 0"}));
    library->registerNotifierClient(&first);
    first.reaction = [&] { library.reset(); };
    library->sort();
    EXPECT_EQ(first.peekNotifierRegisteredWithCount(), 0u);
}

} // namespace
