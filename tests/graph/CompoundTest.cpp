#include "support/RecordingEditor.h"
#include "support/TestGraph.h"

#include <gtest/gtest.h>

using namespace TAV_marlo_v1;
using tav_test::Calls;
using tav_test::RecordingEditor;
using Names = std::vector<std::string>;

namespace {

struct CompoundWithPorts : testing::Test {
    TestGraph graph;
    AddRefWrapper<Compound> group = graph.addCompound("group");
    AddRefWrapper<Node> owner = group->getAsNode();

    void SetUp() override
    {
        for (char const* name : {"a", "b", "c"})
            group->createCompoundPort(eInput, name, graph.type, PortProperties());
        group->createCompoundPort(eOutput, "a", graph.type, PortProperties());
    }
    void TearDown() override { EXPECT_EQ(problemsOf(*graph.top), Names()); }

    AddRefWrapper<Port> outside(char const* name) { return owner->inputs()[name]; }
    AddRefWrapper<Port> inside(char const* name) { return group->innerInputs()[name]; }
};

TEST_F(CompoundWithPorts, SidesPointAtEachOtherInOppositeDirections)
{
    EXPECT_EQ(group->getReversePort(outside("b")), inside("b"));
    EXPECT_EQ(group->getReversePort(inside("b")), outside("b"));
    EXPECT_EQ(inside("b")->getPortIOType(), eOutput);
    EXPECT_EQ(group->getReversePort(group->innerOutputs()["a"]), owner->outputs()["a"])
        << "an input and an output may share a name";
    EXPECT_EQ(inside("a")->getParentNode(), owner);
    EXPECT_EQ(inside("a")->getParentCompound(), group);
    EXPECT_EQ(outside("a")->getParentCompound(), graph.top);
    AddRefWrapper<Compound> const other = graph.addCompound("other");
    EXPECT_FALSE(other->getReversePort(outside("b"))) << "another compound's port";
    AddRefWrapper<Port> const child = outside("a")->createChildrenList()->addPort("r", graph.type, eNoPortFlags);
    EXPECT_FALSE(group->getReversePort(child));
    AddRefWrapper<Port> const twin = inside("a")->createChildrenList()->addPort("r", graph.type, eNoPortFlags);
    EXPECT_EQ(group->getReversePort(child), twin);
}

TEST_F(CompoundWithPorts, SidesAreKeptInStepWhicheverIsChanged)
{
    outside("a")->setName("first");
    EXPECT_TRUE(inside("first"));
    inside("first")->setName("b");
    EXPECT_TRUE(outside("b1")) << "the next free name on both sides";
    AddRefWrapper<PortDataType> const integer = graph.runtime.createPortDataType("int", "0");
    inside("c")->setDataType(integer);
    EXPECT_EQ(outside("c")->getDataType(), integer);
    outside("c")->setPortMetaDataValue("uiName", "C");
    EXPECT_EQ(inside("c")->getPortMetaDataValue("uiName"), "C");
    inside("c")->setFlag(eExposed);
    EXPECT_TRUE(outside("c")->testFlag(eExposed));
    group->innerInputs().movePort(0, 2);
    EXPECT_EQ(namesOf(owner->inputs()), Names({"b", "c", "b1"}));
    owner->inputs().movePort(1, 0);
    EXPECT_EQ(namesOf(group->innerInputs()), Names({"c", "b", "b1"}));
    inside("c")->setPortDefaultValues(StringArray("in"));
    StringArray values;
    EXPECT_FALSE(outside("c")->getPortDefaultValues(values)) << "each side has its own values";
}

TEST_F(CompoundWithPorts, BothSidesReportTheirOwnChange)
{
    RecordingEditor editor;
    graph.container.getEditorNotifier().registerEditor(&editor);
    outside("a")->setName("x");
    outside("x")->setPortMetaDataValue("uiName", "X");
    group->innerInputs().movePort(0, 1);
    EXPECT_EQ(editor.take(), Calls({"nodePort renamed x", "compoundPort renamed x", "nodePort metadataChanged x",
                                    "compoundPort metadataChanged x", "compoundPort moved x", "nodePort moved x"}));
    AddRefWrapper<Node> const io = graph.addIONode(*group, eInputIO, "io");
    editor.take();
    inside("x")->setPortDefaultValues(StringArray("1"));
    EXPECT_EQ(editor.take(), Calls({"nodePort valuesChanged x"})) << "as a port of the IO node";
    EXPECT_EQ(group->getAssociatedIONode(inside("x")), io);
    EXPECT_FALSE(group->getAssociatedIONode(outside("x")));
}

TEST_F(CompoundWithPorts, MaskOfFlagsReportsEachKindOfChangeOnceAndExposureOnBothSides)
{
    RecordingEditor editor;
    graph.container.getEditorNotifier().registerEditor(&editor);
    outside("a")->setFlag(eFanIn | eExposed | eUnconnectable | eReconnecting);
    EXPECT_EQ(editor.take(), Calls({"nodePort flagsChanged a", "nodePort fanInChanged a", "nodePort exposureChanged a",
                                    "compoundPort exposureChanged a"}));
    EXPECT_TRUE(outside("a")->children());
    EXPECT_EQ(inside("a")->getFlags(), eExposed);
    inside("a")->setFlag(eExposed | eUnconnectable);
    inside("a")->setFlag(eExposed | eUnconnectable);
    EXPECT_EQ(editor.take(), Calls({"compoundPort flagsChanged a"}));
    inside("a")->clearFlag(eFanIn | eExposed);
    EXPECT_EQ(editor.take(), Calls({"compoundPort exposureChanged a", "nodePort exposureChanged a"}));
    EXPECT_TRUE(outside("a")->isFanIn());
    EXPECT_EQ(problemsOf(*graph.top), Names());
}

TEST_F(CompoundWithPorts, DeletingAPortCutsBothSidesTellingAsItGoes)
{
    AddRefWrapper<Node> const before = graph.addNode("before", {}, {"out"});
    AddRefWrapper<Node> const within = graph.addNode("within", {"in"}, {}, group.get());
    ASSERT_TRUE(outside("b")->addConnection(before->outputs()[0u], false));
    ASSERT_TRUE(inside("b")->addConnection(within->inputs()[0u], false));
    RecordingEditor editor;
    graph.container.getEditorNotifier().registerEditor(&editor);
    EXPECT_TRUE(group->deleteCompoundPort(inside("b")));
    EXPECT_FALSE(before->outputs()[0u]->isConnected() || within->inputs()[0u]->isConnected());
    EXPECT_EQ(editor.take(), Calls({"compoundConnection removed b in", "compoundPort disconnected b",
                                    "nodePort disconnected in", "connection removed out b", "nodePort disconnected out",
                                    "nodePort disconnected b", "nodePort removed b", "compoundPort removed b"}));
    EXPECT_FALSE(group->deleteCompoundPort(within->inputs()[0u]));
}

TEST_F(CompoundWithPorts, FirstIONodeShowsTheInnerPortsWhateverHappensToThem)
{
    AddRefWrapper<Node> const first = graph.addIONode(*group, eInputIO, "first");
    AddRefWrapper<Node> const second = graph.addIONode(*group, eInputIO, "second");
    EXPECT_EQ(first->outputs()[1u], inside("b")) << "the very port objects";
    EXPECT_TRUE(second->outputs().empty());
    group->createCompoundPort(eInput, "d", graph.type, PortProperties());
    group->innerInputs().movePort(3, 0);
    outside("b")->setName("e");
    group->deleteCompoundPort(outside("c"));
    EXPECT_EQ(namesOf(first->outputs()), Names({"d", "a", "e"}));
    EXPECT_EQ(first->outputs()["e"], inside("e"));
    EXPECT_EQ(problemsOf(*graph.top), Names());
    group->removeNode("first");
    EXPECT_TRUE(owner->inputs().empty()) << "the ports go with the node that shows them";
    EXPECT_FALSE(group->testFlag(eDeletingIOPorts));
    group->createCompoundPort(eInput, "late", graph.type, PortProperties());
    EXPECT_EQ(namesOf(second->outputs()), Names({"late"}));
}

TEST_F(CompoundWithPorts, FillingIsLeftToTheRuntimeWhenItSaysSo)
{
    group->setFlag(eNoIOPortFill);
    AddRefWrapper<Node> const io = graph.addIONode(*group, eInputIO, "io");
    EXPECT_TRUE(io->outputs().empty());
    io->outputs().setParent(nullptr);
    for (AddRefWrapper<Port> const& port : group->innerInputs())
        io->outputs().add(port);
    io->outputs().setParent(io.get());
    EXPECT_EQ(group->getAssociatedIONode(inside("a")), io);
    EXPECT_EQ(inside("a")->getParent(), static_cast<PortNotification*>(group.get()));
}

TEST_F(CompoundWithPorts, LinkedPortTakesAfterTheInnerOne)
{
    AddRefWrapper<Node> const within = graph.addNode("within", {"in"}, {}, group.get());
    AddRefWrapper<Port> const in = within->inputs()[0u];
    in->setPortDefaultValues(StringArray("7"));
    in->setPortMetaDataValue("uiName", "In");
    AddRefWrapper<Port> const linked = group->createLinkedPort(in, "a");
    ASSERT_TRUE(linked);
    EXPECT_STREQ(linked->getName(), "a1");
    EXPECT_EQ(linked->getPortMetaDataValue("uiName"), "In");
    EXPECT_EQ(namesOf(in->connectedTo()), Names({"a1"}));
    StringArray values;
    EXPECT_TRUE(linked->getPortDefaultValues(values));
    EXPECT_EQ(textsOf(values), Names({"7"}));
    EXPECT_FALSE(group->createLinkedPort(outside("a")));
}

TEST_F(CompoundWithPorts, MakeConnectionNamesTheFirstPortThatIsMissing)
{
    AddRefWrapper<Node> const within = graph.addNode("within", {"in"}, {"out"}, group.get());
    auto const message = [&](AddRefWrapper<Node> const& from, char const* out, AddRefWrapper<Node> const& to,
                             char const* in) {
        return std::string(group->makeConnection(from, out, to, in).getErrorString());
    };
    EXPECT_EQ(message({}, "x", within, "in"), "Missing first node in makeConnection");
    EXPECT_EQ(message(within, "out", {}, "in"), "Missing second node in makeConnection");
    EXPECT_EQ(message(within, "x", within, "y"), "Can't find port x on within in makeConnection");
    EXPECT_EQ(message(owner, "a", within, "y"), "Can't find port y on within in makeConnection");
    EXPECT_EQ(message(owner, "a", within, "in"), "");
    EXPECT_EQ(message(within, "out", owner, "a"), "");
    EXPECT_TRUE(inside("a")->isConnected() && group->innerOutputs()["a"]->isConnected());
    within->inputs()[0u]->removeAllConnections();
    within->inputs()[0u]->setFlag(eUnconnectable);
    EXPECT_EQ(message(owner, "a", within, "in"), "") << "what addConnection answered does not matter";
    EXPECT_FALSE(inside("a")->isConnected());
}

TEST_F(CompoundWithPorts, SearchFindsEachConnectionOnce)
{
    AddRefWrapper<Node> const one = graph.addNode("one", {"in"}, {"out"}, group.get());
    AddRefWrapper<Node> const two = graph.addNode("two", {"in"}, {"out"}, group.get());
    group->makeConnection(owner, "a", one, "in");
    group->makeConnection(one, "out", two, "in");
    group->makeConnection(two, "out", owner, "a");
    group->makeConnection(owner, "b", owner, "a");
    StringArray both("one");
    both.add("two");
    both.add("absent");
    struct Case {
        CnxType type;
        StringArray names;
        unsigned count;
    };
    for (Case const& c : {Case{eAllCnx, both, 3},
                          {eInnerCnx, both, 1},
                          {eCrossingCnx, both, 2},
                          {eInputCnx, both, 2},
                          {eOutputCnx, both, 2},
                          {eThroughCnx, {}, 1},
                          {eInnerCnx, StringArray("one"), 0},
                          {eCrossingCnx, StringArray("one"), 2}})
        EXPECT_EQ(group->searchConnections(c.type, c.names).size(), c.count) << c.type;
    EXPECT_EQ(group->searchConnections(eThroughCnx, {})[0], CnxInfo(inside("b"), group->innerOutputs()["a"]));
}

TEST_F(CompoundWithPorts, StateFollowsFlagsOfAllLevels)
{
    AddRefWrapper<Compound> const nested = graph.addCompound("nested", group.get());
    NodeList selection;
    selection.add(nested->getAsNode());
    EXPECT_TRUE(nested->isEditable() && nested->isExplodable() && group->canCreateCompound(selection, {}));
    EXPECT_FALSE(graph.top->isExplodable());
    EXPECT_FALSE(group->canCreateCompound({}, {}));
    EXPECT_FALSE(graph.top->canCreateCompound(selection, {})) << "not its own node";
    group->setIsReferenced(true);
    EXPECT_FALSE(nested->isEditable() || nested->isExplodable() || group->canCreateCompound(selection, {}));
    group->setIsReferenced(false);
    selection.add(graph.addIONode(*group, eOutputIO, "io"));
    EXPECT_FALSE(group->canCreateCompound(selection, {}));
    EXPECT_STREQ(group->getSpecializedCompoundTypeName(), "Compound");
    EXPECT_FALSE(group->createIONode(eInputIO) || group->createNewCompound("x") || group->createNodeFromPreset("x"));
}

struct AnnotationInGraph : testing::Test {
    TestGraph graph;
    RecordingEditor editor;
    void SetUp() override { graph.container.getEditorNotifier().registerEditor(&editor); }
};

TEST_F(AnnotationInGraph, ChangesAreReportedOnceAndNamesStayUnique)
{
    AddRefWrapper<Annotation> const note = graph.top->createCompoundAnnotation(Annotation::eStickyNote, "n");
    AddRefWrapper<Annotation> const other = graph.top->createCompoundAnnotation(Annotation::eBackdrop, "n");
    EXPECT_STREQ(other->getName(), "n1");
    editor.take();
    for (int again = 0; again < 2; ++again) {
        other->setName("m");
        other->setMetadataValue("text", "hello");
    }
    EXPECT_TRUE(graph.top->removeAnnotation("m"));
    EXPECT_EQ(editor.take(),
              Calls({"annotation renamed top m", "annotation stateChanged top m", "annotation removed top m"}));
    EXPECT_EQ(other->getParentCompound(), nullptr);
    EXPECT_FALSE(graph.top->removeAnnotation("m"));
    EXPECT_TRUE(graph.top->annotations().insert(other, 9)) << "past the end appends";
    EXPECT_TRUE(graph.top->annotations().insert(Annotation::createNew(Annotation::eBackdrop, nullptr, "b"), 1));
    EXPECT_EQ(namesOf(graph.top->annotations()), Names({"n", "b", "m"}));
    EXPECT_FALSE(graph.top->annotations()[3u]);
}

TEST_F(AnnotationInGraph, StickyNoteFromBackdropTakesTextPlaceAndColour)
{
    AddRefWrapper<Annotation> const backdrop = graph.top->createCompoundAnnotation(Annotation::eBackdrop, "b1");
    backdrop->setMetadataValue("text", "hello");
    backdrop->addMetadata("coords", "1");
    backdrop->addMetadata("coords", "2");
    backdrop->setMetadataValue("title", "T");
    AddRefWrapper<Annotation> const note = graph.top->createStickyNoteFromBackdrop(backdrop);
    EXPECT_STREQ(note->getName(), "sticky_note_b1");
    EXPECT_EQ(note->getType(), Annotation::eStickyNote);
    StringArray coords;
    note->getMetadata("coords", coords);
    EXPECT_EQ(textsOf(coords), Names({"1", "2"}));
    EXPECT_EQ(note->getAnnotationMetaDataValue("format"), "txt");
    EXPECT_FALSE(note->hasMetadata("title") || note->hasMetadata("color"));
}

TEST(DebugDump, ListsPortsConnectionsAndNestedCompounds)
{
    TestGraph graph;
    AddRefWrapper<Node> const a = graph.addNode("a", {}, {"out"});
    AddRefWrapper<Compound> const group = graph.addCompound("g");
    group->createCompoundPort(eInput, "p", graph.type, PortProperties());
    group->getAsNode()->inputs()[0u]->addConnection(a->outputs()[0u], false);
    StringArray lines("kept");
    graph.top->debug(lines);
    EXPECT_EQ(textsOf(lines), Names({"kept",
                                     "TAV Compound \"top\"",
                                     "0 Internal Inputs:",
                                     "0 Internal Outputs:",
                                     "0 Inputs:",
                                     "0 Outputs:",
                                     "2 nodes",
                                     "====================================",
                                     "NODE #0 of compound \"top\"",
                                     "name: /a",
                                     "0 inputs:",
                                     "1 outputs:",
                                     "#0:  \"out\" of type \"float\"",
                                     "  connected to \"p\" of node \"g\"",
                                     "TAV Compound \"g\"",
                                     "1 Internal Inputs:",
                                     "#0:  \"p\" of type \"float\"",
                                     "0 Internal Outputs:",
                                     "1 Inputs:",
                                     "#0:  \"p\" of type \"float\"",
                                     "  connected to \"out\" of node \"a\"",
                                     "0 Outputs:",
                                     "0 nodes"}));
}

} // namespace
