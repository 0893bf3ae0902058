// A runtime's containers, data types, capabilities and preset paths.

#include "CountingContainer.h"

#include <tav/Host.h>
#include <tav/RuntimeNotifierClient.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>

using namespace TAV_marlo_v1;

namespace {

struct RuntimeOf : testing::Test {
    std::optional<TestRuntime> runtime{"runtime"};
};

TEST_F(RuntimeOf, ContainersStandInTheOrderOfTheirAddressesAndLeaveWhenTheyDie)
{
    auto first = std::make_unique<CountingContainer>();
    auto second = std::make_unique<CountingContainer>();
    for (Container* const container : {first.get(), second.get(), first.get()})
        runtime->registerContainer(container);
    runtime->registerContainer(nullptr);
    EXPECT_EQ(runtime->getNumberOfContainers(), 2u);
    EXPECT_TRUE(std::less<Container*>()(runtime->getContainerAt(0), runtime->getContainerAt(1)));
    EXPECT_EQ(runtime->getContainerAt(2), nullptr);
    runtime->forceRebuildCompounds();
    EXPECT_EQ(first->rebuilds + second->rebuilds, 2u);
    first.reset();
    EXPECT_EQ(runtime->getNumberOfContainers(), 1u);
    EXPECT_EQ(runtime->getContainerAt(0), second.get());
    runtime.reset(); // the one that is left must not look for its runtime when it dies
}

TEST_F(RuntimeOf, AContainerDeletedWhileOthersAreRebuiltIsNotRebuilt)
{
    struct Deleting final : CountingContainer {
        void rebuildCompounds() override
        {
            CountingContainer::rebuildCompounds();
            victim->reset();
        }
        std::unique_ptr<Deleting>* victim = nullptr;
    };
    auto first = std::make_unique<Deleting>();
    auto second = std::make_unique<Deleting>();
    first->victim = &second;
    second->victim = &first;
    runtime->registerContainer(first.get());
    runtime->registerContainer(second.get());
    runtime->forceRebuildCompounds();
    ASSERT_NE(static_cast<bool>(first), static_cast<bool>(second));
    EXPECT_EQ((first ? first : second)->rebuilds, 1u);
}

TEST_F(RuntimeOf, AClientMayDeleteTheNextClientAndTheRuntime)
{
    struct Client final : RuntimeNotifierClient {
        void containerChange(Runtime*, EContainerChangeType, Container*) override
        {
            ++calls;
            if (reaction)
                reaction();
        }
        std::function<void()> reaction;
        unsigned calls = 0;
    };
    auto first = std::make_unique<Client>();
    auto second = std::make_unique<Client>();
    first->reaction = [&] { second.reset(); };
    second->reaction = [&] { first.reset(); };
    CountingContainer container;
    runtime->registerNotifierClient(first.get());
    runtime->registerNotifierClient(second.get());
    runtime->registerContainer(&container);
    ASSERT_NE(static_cast<bool>(first), static_cast<bool>(second));
    Client& left = first ? *first : *second;
    EXPECT_EQ(left.calls, 1u);
    left.reaction = [&] { runtime.reset(); };
    runtime->unregisterContainer(&container);
    EXPECT_EQ(left.calls, 2u);
}

TEST_F(RuntimeOf, ADataTypeIsMadeOnce)
{
    AddRefWrapper<PortDataType> const type = runtime->createPortDataType("float", "0");
    EXPECT_EQ(runtime->createPortDataType("float", "1"), type);
    EXPECT_STREQ(type->getDefaultValue(), "0");
    EXPECT_EQ(runtime->getNumberOfPortDataTypes(), 1u);
    EXPECT_EQ(runtime->getPortDataType(0u), type);
    EXPECT_EQ(runtime->getPortDataType("float"), type);
    EXPECT_FALSE(runtime->getPortDataType("Float"));
    EXPECT_FALSE(runtime->getPortDataType(static_cast<char const*>(nullptr)));
    EXPECT_FALSE(runtime->getPortDataType(1u));
}

TEST_F(RuntimeOf, CapabilitiesAreSupportedUntilDisabled)
{
    runtime->disableCapability(eFanInFeature);
    runtime->disableCapability(eWatchPointFeature);
    EXPECT_FALSE(runtime->supports(eFanInFeature));
    EXPECT_FALSE(runtime->supports(eFanInFeature | eCompoundFeature));
    EXPECT_TRUE(runtime->supports(eCompoundFeature));
    runtime->disableCapabilities(eCompoundFeature);
    EXPECT_FALSE(runtime->supports(eCompoundFeature));
    EXPECT_TRUE(runtime->supports(eFanInFeature));
    runtime->disableCapabilities(0);
    EXPECT_TRUE(runtime->supports(~eNoUIFeature));
}

TEST_F(RuntimeOf, MetadataToCopyStartsWithTwoNames)
{
    auto const names = [this] {
        StringArray array;
        runtime->getPortMetaDatasToCopy(array);
        std::vector<std::string> sorted = textsOf(array);
        std::sort(sorted.begin(), sorted.end());
        return sorted;
    };
    EXPECT_EQ(names(), std::vector<std::string>({"UIWidget", "UIWidgetProp"}));
    for (char const* const name : {"a", "a", static_cast<char const*>(nullptr)})
        runtime->registerPortMetaDataToCopy(name);
    runtime->unregisterPortMetaDataToCopy("UIWidget");
    runtime->unregisterPortMetaDataToCopy("unknown");
    EXPECT_EQ(names(), std::vector<std::string>({"UIWidgetProp", "a"}));
}

TEST_F(RuntimeOf, PresetPathsLeadThroughTheLibraries)
{
    EXPECT_FALSE(runtime->getNodeDefinitionFromPresetPath("x"));
    EXPECT_FALSE(runtime->findLibrary("root"));
    AddRefWrapper<NodeLibrary> const root = NodeLibrary::createNew("root", "Root");
    AddRefWrapper<NodeLibrary> const lib = NodeLibrary::createNew("lib", "");
    AddRefWrapper<NodeLibrary> const sub = NodeLibrary::createNew("sub", "");
    AddRefWrapper<NodeLibrary> const slashed = NodeLibrary::createNew("lib/sub", "");
    root->addSubLibrary(lib);
    lib->addSubLibrary(sub);
    root->addSubLibrary(slashed);
    runtime->setNodeLibrary(root);
    auto const deep = sub->addNode("x", "");
    auto const inLib = lib->addNode("y", "");
    auto const inRoot = root->addNode("y", "");
    auto const inSlashed = slashed->addNode("z", "");
    auto const withSlash = lib->addNode("a/b", "");

    struct Row {
        char const* path;
        AddRefWrapper<NodeDefinition> definition;
    };
    Row const rows[] = {{"lib/sub/x", deep},      {"lib/y", inLib},       {"y", inRoot},     {"x", deep},
                        {"lib/sub/z", inSlashed}, {"lib/a/b", withSlash}, {"a/b", withSlash}};
    for (Row const& row : rows)
        EXPECT_EQ(runtime->getNodeDefinitionFromPresetPath(row.path), row.definition) << row.path;
    for (char const* const path : {"root/y", "lib/x", "sub/x", "", "lib/", "/y"})
        EXPECT_FALSE(runtime->getNodeDefinitionFromPresetPath(path)) << path;
    EXPECT_FALSE(runtime->getNodeDefinitionFromPresetPath(nullptr));
    EXPECT_EQ(runtime->findLibrary("Root"), root);
    EXPECT_EQ(runtime->getNodeLibrary(AddRefWrapper<Compound>()), root);
}

} // namespace
