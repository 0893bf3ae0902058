#include <tav/kit/StandardCompound.h>

#include <tav/NodeLibrary.h>
#include <tav/NodeList.h>
#include <tav/Port.h>
#include <tav/PortDataType.h>
#include <tav/PortList.h>
#include <tav/PortProperties.h>
#include <tav/kit/Document.h>
#include <tav/kit/StandardRuntime.h>

#include <gtest/gtest.h>

using namespace TAV_marlo_v1;

namespace {

struct StandardCompound : testing::Test {
    kit::StandardRuntime runtime;
    kit::Document document{&runtime};
    AddRefWrapper<Compound> graph = document.getTopCompound();

    void SetUp() override
    {
        std::string const path = std::string(TAV_EXAMPLES_DIR) + "/library/arithmetic.library.xml";
        StatusStr const status = runtime.addLibraryFile(path.c_str());
        ASSERT_STREQ(status.getErrorString(), "");
    }

    unsigned addPort(PortIOType ioType, char const* name)
    {
        return graph->createCompoundPort(ioType, name, runtime.getPortDataType("float"), PortProperties());
    }
};

bool isStandard(Compound const* compound)
{
    return dynamic_cast<kit::StandardCompound const*>(compound) != nullptr;
}

} // namespace

TEST_F(StandardCompound, ANodeFromAPresetIsACopyUnderTheNextFreeName)
{
    AddRefWrapper<Node> const first = graph->createNodeFromPreset("arithmetic/basic/add");
    AddRefWrapper<Node> const second = graph->createNodeFromPreset("add");
    ASSERT_TRUE(first && second);
    EXPECT_STREQ(first->getFullPathName().getName(), "/add");
    EXPECT_STREQ(second->getName(), "add1");
    EXPECT_STREQ(second->getNodeTypeName(), "add");
    EXPECT_EQ(second->inputs().size(), 2u);
    StringArray values;
    EXPECT_TRUE(second->inputs()["b"]->getPortDefaultValues(values));
    EXPECT_EQ(values, StringArray("0"));
    EXPECT_EQ(second->inputs()["b"]->getDataType(), runtime.getPortDataType("float"));
    EXPECT_FALSE(second->hasMessage(eAnyMessage));
}

TEST_F(StandardCompound, ACompoundPresetBringsItsGraphInACompoundOfTheSameKind)
{
    AddRefWrapper<Node> const blend = graph->createNodeFromPreset("arithmetic/interpolation/blend");
    ASSERT_TRUE(blend && blend->getAsCompound());
    EXPECT_TRUE(isStandard(blend->getAsCompound().get()));
    EXPECT_EQ(blend->getAsCompound()->nodes().size(), 2u);
    EXPECT_TRUE(document.findNodeFromPath("/blend/share"));
    StringArray problems;
    EXPECT_TRUE(graph->checkConsistency(problems)) << problems.serialize(eSerializePlain).toChar();
}

TEST_F(StandardCompound, ATypeIsKnownByTheNameOfADefinitionOrByWhatAPresetMakes)
{
    StatusStr const status = runtime.addLibraryFromText(
        "<tavCompound name=\"own\" type=\"library\" flag=\"0\"><metadatas/><ports/><child_graph><sub_root><nodes><node>"
        "<tavNode name=\"scale_by_10\" type=\"scale\" flag=\"0\"><metadatas/><ports/></tavNode></node></nodes>"
        "<connections/></sub_root></child_graph></tavCompound>",
        "own");
    ASSERT_STREQ(status.getErrorString(), "");
    AddRefWrapper<Node> const made = graph->createNodeFromPreset("own/scale_by_10");
    ASSERT_TRUE(made);
    EXPECT_STREQ(made->getNodeTypeName(), "scale");
    EXPECT_FALSE(made->hasMessage(eAnyMessage));
    for (char const* known : {"scale", "scale_by_10", "multiply"})
        EXPECT_TRUE(graph->createBareNode(known, eNoNodeFlags)) << known;
    EXPECT_FALSE(graph->createBareNode("divide", eNoNodeFlags));
}

TEST_F(StandardCompound, APathThatLeadsNowhereMakesNothing)
{
    for (char const* path : {"", "arithmetic/basic/divide", "basic/", "arithmetic"})
        EXPECT_FALSE(graph->createNodeFromPreset(path)) << path;
    EXPECT_FALSE(graph->createNodeFromPreset(nullptr));
    EXPECT_TRUE(graph->nodes().empty());
}

TEST_F(StandardCompound, ADefinitionWithoutTextGivesANodeWithoutPorts)
{
    runtime.getNodeLibrary()->addNode("bare", "Bare");
    AddRefWrapper<Node> const node = graph->createNodeFromPreset("bare");
    ASSERT_TRUE(node);
    EXPECT_STREQ(node->getNodeTypeName(), "bare");
    EXPECT_STREQ(node->getNodeTypeDisplayName(), "Bare");
    EXPECT_TRUE(node->inputs().empty() && node->outputs().empty());
}

TEST_F(StandardCompound, IONodesShowThePortsOfTheirKindOnceOnly)
{
    addPort(eInput, "in");
    addPort(eOutput, "out");
    AddRefWrapper<Node> const input = graph->createIONode(eInputIO);
    AddRefWrapper<Node> const output = graph->createIONode(eOutputIO);
    AddRefWrapper<Node> const second = graph->createIONode(eInputIO);
    ASSERT_TRUE(input && output && second);
    EXPECT_EQ(input->outputs()["in"], graph->innerInputs()["in"]);
    EXPECT_EQ(output->inputs()["out"], graph->innerOutputs()["out"]);
    EXPECT_TRUE(second->outputs().empty());
    EXPECT_STREQ(second->getName(), "input1");
    EXPECT_FALSE(graph->createIONode(eNoNodeFlags));
    EXPECT_FALSE(graph->createIONode(eAnyIO));
    EXPECT_EQ(graph->nodes().size(), 3u);
}

TEST_F(StandardCompound, CompoundsInsideAreOfTheSameKindMadeOrRead)
{
    AddRefWrapper<Compound> const made = graph->createNewCompound("group");
    ASSERT_TRUE(made);
    EXPECT_TRUE(isStandard(made.get()));
    EXPECT_STREQ(graph->createNewCompound("group")->getName(), "group1");
    EXPECT_STREQ(graph->createNewCompound(nullptr)->getName(), "compound");
    ASSERT_TRUE(made->createNewCompound("deep"));

    String const text = graph->saveToString(nullptr);
    StatusStr const status = document.openText(text.toChar(), text.size());
    ASSERT_STREQ(status.getErrorString(), "");
    AddRefWrapper<Node> const deep = document.findNodeFromPath("/group/deep");
    ASSERT_TRUE(deep);
    EXPECT_TRUE(isStandard(deep->getAsCompound().get()));
    EXPECT_STREQ(graph->saveToString(nullptr).toChar(), text.toChar());
}

TEST(StandardCompoundNames, ARefusedNameMakesNoCompound)
{
    class Choosy final : public kit::StandardRuntime {
    public:
        bool isLegalName(char const* name) const override { return *name != '.'; }
    };
    Choosy runtime;
    kit::Document document(&runtime);
    EXPECT_FALSE(document.getTopCompound()->createNewCompound(".hidden"));
    EXPECT_TRUE(document.getTopCompound()->nodes().empty());
    EXPECT_STREQ(document.getTopCompound()->createNewCompound("")->getName(), "compound");
}
