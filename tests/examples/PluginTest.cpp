// The plug-in of examples/plugin, through what any host sees of it.
#include <tav/Host.h>
#include <tav/NodeList.h>
#include <tav/PortDataType.h>
#include <tav/PortList.h>
#include <tav/PortProperties.h>
#include <tav/PropertyList.h>
#include <tav/Runtime.h>
#include <tav/kit/Document.h>
#include <tav/kit/PluginLoader.h>

#include <gtest/gtest.h>

using namespace TAV_marlo_v1;

namespace {

struct ExamplePlugin : testing::Test {
    kit::PluginLoader loader{"test"};
    std::unique_ptr<kit::Document> document;

    void SetUp() override
    {
        StatusStr const status = loader.load(TAV_EXAMPLE_PLUGIN);
        ASSERT_STREQ(status.getErrorString(), "");
        document = std::make_unique<kit::Document>(Host::getRuntimeByName("arithmetic"));
    }
    void TearDown() override
    {
        document.reset();
        StatusStr const status = loader.unloadAll();
        EXPECT_STREQ(status.getErrorString(), "");
    }

    Compound& graph() { return *document->getTopCompound(); }
    AddRefWrapper<Node> make(std::string const& type, char const* name)
    {
        AddRefWrapper<Node> const node = graph().createNodeFromPreset(("arithmetic/" + type).c_str());
        node->setName(name);
        return node;
    }
    AddRefWrapper<Port> port(char const* path) const
    {
        return document->findPortFromPath(path, Container::eSearchAnyIO, Container::eSearchAllPorts);
    }
    bool connect(char const* from, char const* to) const { return port(from)->addConnection(port(to), false); }
    /// "path=value" for each end of the graph.
    std::string results()
    {
        PropertyList list;
        graph().publishGraph(&list);
        std::string text;
        String path;
        String value;
        for (unsigned i = 0; list.getStringPairAt(i, path, value); ++i)
            text += (text.empty() ? "" : " ") + std::string(path.toChar()) + "=" + value.toChar();
        return text;
    }
};

} // namespace

TEST_F(ExamplePlugin, EachTypeComputesWhatItSays)
{
    struct Row {
        char const* type;
        std::vector<char const*> values;
        char const* result;
    };
    Row const rows[] = {
        {"constant", {"2.5"}, "2.5"},
        {"add", {"2", "3"}, "5"},
        {"subtract", {"2", "3"}, "-1"},
        {"multiply", {"2", "3"}, "6"},
        {"divide", {"3", "2"}, "1.5"},
        {"power", {"2", "10"}, "1024"},
        {"minimum", {"2", "3"}, "2"},
        {"maximum", {"2", "3"}, "3"},
        {"negate", {"2"}, "-2"},
        {"root", {"9"}, "3"},
        {"mix", {"10", "20", "0.25"}, "12.5"},
        {"greater", {"3", "2"}, "true"},
        {"choose", {"false", "1", "2"}, "2"},
    };
    for (Row const& row : rows) {
        AddRefWrapper<Node> const node = make(row.type, "node");
        ASSERT_EQ(node->inputs().size(), row.values.size()) << row.type;
        for (unsigned i = 0; i < row.values.size(); ++i)
            EXPECT_TRUE(node->inputs()[i]->setPortDefaultValues(StringArray(row.values[i])));
        EXPECT_EQ(results(), std::string("/node.out=") + row.result) << row.type;
        graph().removeNode("node");
    }
}

TEST_F(ExamplePlugin, ConnectionsKeepTheRulesInsideAndOutsideOfCompounds)
{
    for (char const* name : {"a", "b", "c"})
        make("add", name);
    make("choose", "choose");
    make("greater", "greater");
    AddRefWrapper<Compound> const group = graph().createNewCompound("group");
    AddRefWrapper<PortDataType> const truth = document->getRuntime()->getPortDataType("bool");
    AddRefWrapper<PortDataType> const number = document->getRuntime()->getPortDataType("float");
    group->createCompoundPort(eInput, "x", number, PortProperties());
    group->createCompoundPort(eOutput, "y", number, PortProperties());
    group->createCompoundPort(eInput, "t", truth, PortProperties());
    group->createNodeFromPreset("arithmetic/negate");

    EXPECT_TRUE(connect("/a.out", "/b.a") && connect("/b.out", "/group.x") && connect("/group.y", "/c.a"));
    EXPECT_TRUE(connect("/greater.out", "/choose.condition"));
    EXPECT_FALSE(connect("/c.out", "/b.a")) << "taken";
    EXPECT_FALSE(connect("/c.out", "/c.b")) << "itself";
    EXPECT_FALSE(connect("/c.out", "/a.a")) << "a circle through a compound";
    EXPECT_FALSE(connect("/group.y", "/a.a")) << "a circle that a compound closes";
    EXPECT_FALSE(connect("/a.out", "/choose.condition")) << "types";
    AddRefWrapper<Port> const negated = port("/group/negate.a");
    EXPECT_FALSE(group->innerInputs()["t"]->addConnection(negated, false)) << "types inside";
    EXPECT_TRUE(group->innerInputs()["x"]->addConnection(negated, false));
    EXPECT_FALSE(negated->addConnection(group->innerInputs()["x"], false)) << "taken inside";
    EXPECT_TRUE(group->innerOutputs()["y"]->addConnection(port("/group/negate.out"), false));

    port("/a.b")->setPortDefaultValues(StringArray("2"));
    port("/b.b")->setPortDefaultValues(StringArray("3"));
    EXPECT_EQ(results(), "/c.out=-5 /choose.out=0");
}

TEST_F(ExamplePlugin, ALongChainIsEvaluatedAndACircleFromTextIsAnError)
{
    AddRefWrapper<Node> last = make("constant", "first");
    last->inputs()[0u]->setPortDefaultValues(StringArray("1"));
    for (int i = 0; i < 20000; ++i) {
        AddRefWrapper<Node> const next = graph().createNodeFromPreset("arithmetic/negate");
        ASSERT_TRUE(last->outputs()[0u]->addConnection(next->inputs()[0u], false));
        last = next;
    }
    EXPECT_EQ(results(), last->outputs()[0u]->getFullPathName().getName() + std::string("=1"));

    // Text is taken as it is: nobody is asked.
    document->newDocument();
    make("add", "a");
    make("negate", "b");
    make("negate", "end");
    connect("/a.out", "/b.a");
    connect("/b.out", "/end.a");
    std::string text = graph().saveToString(nullptr).toChar();
    std::string const last_connection = "</connections>";
    text.insert(text.rfind(last_connection), "<connection output_port=\"b.out\" input_port=\"a.a\"/>");
    StatusStr const status = document->openText(text.c_str(), text.size());
    ASSERT_STREQ(status.getErrorString(), "");
    EXPECT_EQ(results(), "/end.out=error: it depends on itself at /b.out");
}

TEST_F(ExamplePlugin, GraphsMadeOrReadAreOfThePluginsClasses)
{
    graph().createNewCompound("group")->createNewCompound("deep");
    String const text = graph().saveToString(nullptr);
    StatusStr const status = document->openText(text.toChar(), text.size());
    ASSERT_STREQ(status.getErrorString(), "");
    for (char const* path : {"/", "/group", "/group/deep"})
        EXPECT_STREQ(document->findNodeFromPath(path)->getAsCompound()->getSpecializedCompoundTypeName(), "Arithmetic");
    AddRefWrapper<Node> const node = make("add", "node");
    for (char const* name : {"a/b", "a.b", ""})
        node->setName(name);
    EXPECT_STREQ(node->getName(), "node");
}
