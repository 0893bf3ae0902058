#include "support/RecordingOwner.h"
#include "support/TestGraph.h"

#include <gtest/gtest.h>

using namespace TAV_marlo_v1;
using Calls = RecordingOwner::Calls;
using Names = std::vector<std::string>;

namespace {

/// Two owners with a port each: `out` of the one, `in` of the other.
struct TwoPorts : testing::Test {
    RecordingOwner giver;
    RecordingOwner taker;
    AddRefWrapper<PortList> outputs = PortList::createNew();
    AddRefWrapper<PortList> inputs = PortList::createNew();
    AddRefWrapper<Port> out;
    AddRefWrapper<Port> in;

    void SetUp() override
    {
        outputs->setParent(&giver);
        outputs->setPortIOType(eOutput);
        inputs->setParent(&taker);
        out = outputs->addPort("out", {}, eNoPortFlags);
        in = inputs->addPort("in", {}, eNoPortFlags);
        giver.takeCalls();
        taker.takeCalls();
    }
    void TearDown() override { out->removeAllConnections(); }
};

TEST_F(TwoPorts, OutputActsFromWhicheverSideItIsConnected)
{
    for (bool fromInput : {false, true}) {
        EXPECT_TRUE(fromInput ? in->addConnection(out, false) : out->addConnection(in, false));
        EXPECT_EQ(giver.takeCalls(), Calls({"onPortAddConnection out in", "onPortConnectionAdded out in"}));
        EXPECT_EQ(namesOf(out->connectedTo()), Names({"in"}));
        EXPECT_EQ(namesOf(in->connectedTo()), Names({"out"}));
        EXPECT_TRUE(fromInput ? out->removeConnection(in) : in->removeConnection(out));
        EXPECT_EQ(giver.takeCalls(), Calls({"onPortRemoveConnection out in", "onPortConnectionRemoved out in"}));
        EXPECT_FALSE(in->isConnected());
    }
    EXPECT_TRUE(taker.takeCalls().empty());
}

TEST_F(TwoPorts, RemovalOfNoConnectionFailsButIsTold)
{
    EXPECT_FALSE(in->removeConnection(out));
    EXPECT_EQ(giver.takeCalls(), Calls({"onPortRemoveConnection out in", "onPortConnectionRemoved out in"}));
    EXPECT_FALSE(in->removeConnection({}));
}

TEST_F(TwoPorts, VetoAndUnconnectablePortsChangeNothing)
{
    EXPECT_FALSE(out->addConnection({}, false));
    in->setFlag(eUnconnectable);
    giver.takeCalls();
    EXPECT_FALSE(out->addConnection(in, false));
    EXPECT_TRUE(giver.takeCalls().empty()) << "nobody is asked about an unconnectable port";
    in->clearFlag(eUnconnectable);
    giver.refuse("onPortAddConnection");
    EXPECT_FALSE(in->addConnection(out, false));
    EXPECT_FALSE(in->isConnected() || out->isConnected());
}

TEST_F(TwoPorts, RemoveAllGoesPastWhatIsRefused)
{
    AddRefWrapper<Port> const second = inputs->addPort("second", {}, eNoPortFlags);
    RecordingOwner stubborn;
    AddRefWrapper<PortList> const others = PortList::createNew();
    others->setParent(&stubborn);
    others->setPortIOType(eOutput);
    AddRefWrapper<Port> const kept = others->addPort("kept", {}, eNoPortFlags);
    stubborn.refuse("onPortRemoveConnection");
    ASSERT_TRUE(in->addConnection(kept, false) && in->addConnection(out, false));
    in->removeAllConnections();
    EXPECT_EQ(namesOf(in->connectedTo()), Names({"kept"}));
    others->onParentNodeDeleted();
}

TEST(TwoInputs, ConnectAndStillComeToAnEnd)
{
    AddRefWrapper<Port> const a = Port::createNew("a", eInput);
    AddRefWrapper<Port> const b = Port::createNew("b", eInput);
    EXPECT_TRUE(a->addConnection(b, false));
    EXPECT_TRUE(b->removeConnection(a));
    EXPECT_TRUE(a->addConnection(a, false)) << "whether a port may feed itself is its owner's business";
    a->removeAllConnections();
    EXPECT_FALSE(a->isConnected());
}

TEST_F(TwoPorts, FlagsAreAskedForAndToldOnce)
{
    out->setFlag(eExposed);
    out->setFlag(eExposed);
    EXPECT_EQ(giver.takeCalls(),
              Calls({"onPortCanSetFlag out 4", "onPortSetFlag out 4", "onPortExposureChanged out on"}));
    out->setFlag(eExposed | eUnconnectable);
    EXPECT_EQ(giver.takeCalls(), Calls({"onPortCanSetFlag out 32", "onPortSetFlag out 32"})) << "only what is new";
    out->clearFlag(eFanIn | eExposed | eUnconnectable);
    EXPECT_EQ(giver.takeCalls(),
              Calls({"onPortCanClearFlag out 36", "onPortClearFlag out 36", "onPortExposureChanged out off"}));
    out->clearFlag(eFanIn | eExposed);
    out->setFlag(eNoPortFlags);
    out->setFlag(eFanIn | eExposed);
    EXPECT_EQ(giver.takeCalls(), Calls()) << "an owner that is no node is not even asked about fan-in";
    giver.refuse("onPortCanSetFlag");
    out->setFlag(eExposed | eDetached);
    EXPECT_EQ(out->getFlags(), eNoPortFlags);
    EXPECT_FALSE(out->canSetFlag(eFanIn)) << "only a node can accept fan-in";
    in->addConnection(out, false);
    EXPECT_FALSE(in->canSetFlag(eUnconnectable | eExposed));
}

TEST_F(TwoPorts, ValuesAreAskedKeptAndToldOnlyWhenTheyChange)
{
    StringArray values("1");
    EXPECT_TRUE(in->setPortDefaultValues(values));
    EXPECT_TRUE(in->setPortDefaultValues(values));
    EXPECT_EQ(taker.takeCalls(), Calls({"onPortSetDefaultValues in", "onPortValuesChanged in"}));
    StringArray kept;
    EXPECT_TRUE(in->getPortDefaultValues(kept));
    EXPECT_EQ(kept, values);
    EXPECT_TRUE(in->setPortDefaultValues(StringArray())) << "an empty list is a value";
    EXPECT_TRUE(in->getPortDefaultValues(kept));
    EXPECT_TRUE(in->resetPortDefaultValues());
    EXPECT_FALSE(in->getPortDefaultValues(kept));
    taker.takeCalls();
    EXPECT_TRUE(in->resetPortDefaultValues());
    EXPECT_TRUE(taker.takeCalls().empty());
    AddRefWrapper<Port> const orphan = Port::createNew("orphan", eInput);
    EXPECT_FALSE(orphan->setPortDefaultValues(values));
    EXPECT_TRUE(orphan->getPortMetaDataValue("uiName").empty());
}

TEST(FanInPort, HasMembersWhileTheFlagIsSet)
{
    TestGraph graph;
    AddRefWrapper<Node> const source = graph.addNode("source", {}, {"out"});
    AddRefWrapper<Node> const sink = graph.addNode("sink", {"in"}, {});
    AddRefWrapper<Port> const in = sink->inputs()[0u];
    in->setFlag(eFanIn | eUnconnectable);
    in->clearFlag(eUnconnectable);
    AddRefWrapper<Port> const member = in->children()->addPort("m", graph.type, eNoPortFlags);
    EXPECT_TRUE(member->isMemberFanIn());
    ASSERT_TRUE(member->addConnection(source->outputs()[0u], false));
    in->setFlag(eDetached | eExposed);
    EXPECT_EQ(member->getFlags(), eDetached) << "being detached goes on to the members, nothing else does";
    in->clearFlag(eDetached | eExposed);
    EXPECT_FALSE(member->testFlag(eDetached));
    EXPECT_EQ(problemsOf(*graph.top), Names());
    in->clearFlag(eFanIn | eUnconnectable);
    EXPECT_FALSE(in->children());
    EXPECT_FALSE(source->outputs()[0u]->isConnected()) << "a dropped member lets go of its source";
}

/// An inner compound port and a node inside, and what connecting them copies.
TEST(ConnectingWithMetadata, CopiesTheListedNamesOntoTheOutsidePort)
{
    TestGraph graph;
    AddRefWrapper<Compound> const compound = graph.addCompound("c");
    AddRefWrapper<Node> const inner = graph.addNode("n", {"in"}, {"out"}, compound.get());
    compound->createCompoundPort(eOutput, "result", graph.type, PortProperties());
    AddRefWrapper<Port> const source = inner->outputs()[0u];
    source->setPortMetaDataValue("UIWidget", "slider");
    source->setPortMetaDataValue("min", "0");
    source->setPortMetaDataValue("max", "9");
    source->setPortMetaDataValue("metaDataToCopy", "min, ,absent ,,\tmax");
    AddRefWrapper<Port> const inside = compound->innerOutputs()[0u];
    AddRefWrapper<Port> const outside = compound->getReversePort(inside);
    ASSERT_TRUE(inside->addConnection(source, /*copyMetadata=*/true));
    for (auto const& [key, value] : {std::pair{"UIWidget", "slider"},
                                     {"min", "0"},
                                     {"max", "9"},
                                     {"absent", ""},
                                     {"metaDataToCopy", "min, ,absent ,,\tmax"}})
    {
        EXPECT_EQ(outside->getPortMetaDataValue(key), value) << key;
        EXPECT_EQ(inside->getPortMetaDataValue(key), value) << key << " is in step inside";
    }
    compound->createCompoundPort(eInput, "source", graph.type, PortProperties());
    inner->inputs()[0u]->setPortMetaDataValue("UIWidgetProp", "x");
    ASSERT_TRUE(inner->inputs()[0u]->addConnection(compound->innerInputs()[0u], /*copyMetadata=*/false));
    EXPECT_TRUE(graph.top->nodes()["c"]->inputs()[0u]->getPortMetaDataValue("UIWidgetProp").empty());
}

} // namespace
