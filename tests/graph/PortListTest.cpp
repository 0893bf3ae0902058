#include "support/RecordingOwner.h"
#include "support/TestGraph.h"

#include <gtest/gtest.h>

using namespace TAV_marlo_v1;
using Calls = RecordingOwner::Calls;
using Names = std::vector<std::string>;

namespace {

struct OwnedPortList : testing::Test {
    RecordingOwner owner;
    AddRefWrapper<PortList> list = PortList::createNew();
    AddRefWrapper<Port> a = Port::createNew("a", eInput);

    void SetUp() override
    {
        list->setParent(&owner);
        list->add(a);
        for (char const* name : {"b", "c", "d"})
            list->addPort(name, {}, eNoPortFlags);
        owner.takeCalls();
    }
};

TEST_F(OwnedPortList, AddAsksThenTellsWithTheOwnerSetBeforehand)
{
    AddRefWrapper<Port> const port = Port::createNew("e", eInput);
    port->setFlag(eDetached);
    EXPECT_TRUE(list->add(port));
    EXPECT_EQ(owner.takeCalls(), Calls({"onPortListPortAdd e", "onPortListPortAdded e"}));
    EXPECT_EQ(port->getParent(), &owner);
    EXPECT_FALSE(port->testFlag(eDetached));
    EXPECT_FALSE(list->add(port)) << "a port stands in a list of an owner once";
    EXPECT_FALSE(list->add({}));
}

TEST_F(OwnedPortList, RefusedPortKeepsAnOwnerThatMayDieFirst)
{
    AddRefWrapper<Port> const port = Port::createNew("e", eInput);
    {
        RecordingOwner shortLived;
        AddRefWrapper<PortList> const other = PortList::createNew();
        other->setParent(&shortLived);
        shortLived.refuse("onPortListPortAdd");
        EXPECT_FALSE(other->add(port));
        EXPECT_EQ(port->getParent(), &shortLived);
        EXPECT_TRUE(other->empty());
    }
    EXPECT_EQ(port->getParent(), nullptr);
    EXPECT_STREQ(port->getFullPathName().getName(), "e");
}

TEST_F(OwnedPortList, RemoveAsksThenTellsAndLetsGo)
{
    EXPECT_TRUE(list->remove(a));
    EXPECT_EQ(owner.takeCalls(), Calls({"onPortListPortRemove a", "onPortListPortRemoved a"}));
    EXPECT_TRUE(a->testFlag(eDetached));
    EXPECT_EQ(a->getParent(), nullptr);
    EXPECT_FALSE(list->remove(a));
    EXPECT_TRUE(owner.takeCalls().empty()) << "a stranger is not asked about";
}

TEST_F(OwnedPortList, VetoChangesNothing)
{
    owner.refuse("onPortListPortRemove");
    owner.refuse("onPortListPortMove");
    EXPECT_FALSE(list->remove(a));
    EXPECT_FALSE(list->movePort(0, 2));
    EXPECT_EQ(namesOf(*list), Names({"a", "b", "c", "d"}));
    EXPECT_EQ(a->getParent(), &owner);
}

TEST_F(OwnedPortList, MoveShiftsThePortsBetween)
{
    EXPECT_TRUE(list->movePort(0, 2));
    EXPECT_EQ(namesOf(*list), Names({"b", "c", "a", "d"}));
    EXPECT_TRUE(list->movePort(3, 1));
    EXPECT_EQ(namesOf(*list), Names({"b", "d", "c", "a"}));
    EXPECT_EQ(owner.takeCalls(), Calls({"onPortListPortMove 0 2", "onPortListPortMoved 0 2", "onPortListPortMove 3 1",
                                        "onPortListPortMoved 3 1"}));
    EXPECT_TRUE(list->movePort(1, 1));
    EXPECT_FALSE(list->movePort(0, 4));
    EXPECT_TRUE(owner.takeCalls().empty());
}

TEST_F(OwnedPortList, InsertingPastTheEndAppendsAndNothingStandsThere)
{
    for (auto const& [name, index] : {std::pair{"x", 1u}, {"y", 9u}, {"z", kNotFound}, {"w", 0u}})
        EXPECT_TRUE(list->insert(Port::createNew(name, eInput), index));
    EXPECT_EQ(namesOf(*list), Names({"w", "a", "x", "b", "c", "d", "y", "z"}));
    EXPECT_FALSE((*list)[8u] || (*list)[kNotFound]);
}

TEST_F(OwnedPortList, TakenNamesAreCountedUp)
{
    EXPECT_STREQ(list->addPort("a", {}, eNoPortFlags)->getName(), "a1");
    EXPECT_STREQ(list->addPort("a", {}, eNoPortFlags)->getName(), "a2");
    a->setName("b");
    EXPECT_STREQ(a->getName(), "b1");
    unsigned index = 0;
    EXPECT_EQ(list->findPort("b1", index), a);
    EXPECT_EQ(index, 0u);
    EXPECT_FALSE(list->findPort("a", index));
    EXPECT_EQ(index, kNotFound);
}

TEST_F(OwnedPortList, DottedNamesLeadToChildrenUnlessAPortBearsThem)
{
    AddRefWrapper<Port> const child = a->createChildrenList()->addPort("r", {}, eNoPortFlags);
    unsigned index = 0;
    EXPECT_EQ(list->findPortRecursive("a.r", index), child);
    EXPECT_EQ(index, 0u);
    EXPECT_STREQ(child->getFullName().getName(), "a.r");
    AddRefWrapper<Port> const namesake = list->addPort("a.r", {}, eNoPortFlags);
    EXPECT_EQ(list->findPortRecursive("a.r", index), namesake);
    EXPECT_TRUE(list->removeMemberPort(child));
    EXPECT_TRUE(a->children()->empty());
    EXPECT_EQ(child->getParentPort(), nullptr);
}

TEST(FreePortList, LeavesTheOwnerAndTheDetachedFlagAlone)
{
    RecordingOwner owner;
    AddRefWrapper<PortList> const owned = PortList::createNew();
    owned->setParent(&owner);
    AddRefWrapper<Port> const port = owned->addPort("p", {}, eNoPortFlags);
    AddRefWrapper<PortList> const freeList = PortList::createNew();
    owner.takeCalls();
    EXPECT_TRUE(freeList->add(port));
    EXPECT_TRUE(freeList->remove(port));
    EXPECT_TRUE(owner.takeCalls().empty());
    EXPECT_EQ(port->getParent(), &owner);
    EXPECT_FALSE(port->testFlag(eDetached));
}

TEST(DyingPortOwner, CutsConnectionsSilently)
{
    RecordingOwner ofSource;
    AddRefWrapper<PortList> const sources = PortList::createNew();
    sources->setParent(&ofSource);
    sources->setPortIOType(eOutput);
    AddRefWrapper<Port> const source = sources->addPort("out", {}, eNoPortFlags);
    AddRefWrapper<Port> const sink = Port::createNew("in", eInput);
    ASSERT_TRUE(sink->addConnection(source, false));
    ofSource.takeCalls();
    sources->onParentNodeDeleted();
    EXPECT_TRUE(ofSource.takeCalls().empty());
    EXPECT_TRUE(sources->empty());
    EXPECT_FALSE(sink->isConnected());
    EXPECT_FALSE(source->isConnected());
    EXPECT_TRUE(source->testFlag(eDetached));
}

} // namespace
