#include "TextData.h"
#include "support/TestGraph.h"

#include <tav/PortFilterCallback.h>

#include <gtest/gtest.h>

namespace TAV_marlo_v1 {
namespace {

using tav_test::expectedText;

class EnabledWatchPoint final : public WatchPoint {
public:
    bool enabled() const override { return true; }
};

StringArray arrayOf(std::initializer_list<char const*> texts)
{
    StringArray array;
    for (char const* const text : texts)
        array.add(text);
    return array;
}

struct GraphWriter : testing::Test {
    TestGraph graph;
    AddRefWrapper<PortDataType> const float3 = graph.runtime.createPortDataType("float3", "0;0;0");

    AddRefWrapper<Node> addMix(char const* name, Compound& parent)
    {
        AddRefWrapper<Node> const node = Node::createNew(&graph.container, name);
        node->setNodeTypeName("mix");
        PortProperties const zero({}, {}, OptionalStringArray(arrayOf({"0", "0", "0"})));
        node->createNodePort(eInput, "a", float3, zero);
        node->createNodePort(eOutput, "out", float3, {});
        parent.nodes().add(node);
        return node;
    }

    std::string items(std::initializer_list<char const*> nodes, std::initializer_list<char const*> annotations,
                      ESaveMode mode) const
    {
        return graph.top->saveItemsToString(arrayOf(nodes), arrayOf(annotations), mode).toChar();
    }

    /// The lines of a text's "connection" elements, from the first attribute on.
    static std::vector<std::string> connectionsIn(std::string const& text)
    {
        std::vector<std::string> found;
        std::string const mark = "<connection ";
        for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + 1)) {
            std::size_t const begin = at + mark.size();
            found.push_back(text.substr(begin, text.find("/>", begin) - begin));
        }
        return found;
    }
};

TEST_F(GraphWriter, CompoundWithPortNodeBackdropAndWatchedConnection)
{
    AddRefWrapper<Compound> const shader = graph.addCompound("shader1");
    shader->getAsNode()->setNodeTypeName("compound");
    shader->addMetadata("uiPosition", "120");
    shader->addMetadata("uiPosition", "80");
    shader->createCompoundPort(eInput, "color", float3, {});
    AddRefWrapper<Port> const inside = shader->innerInputs()[0u];
    inside->setPortDefaultValues(arrayOf({"1", "0.5", "0.25"}));
    inside->setPortMetaDataValue("uiOrder", "1");
    AddRefWrapper<Port> const input = addMix("mix1", *shader)->inputs()[0u];
    inside->addConnection(input, false);
    input->setWatchPoint(AddRefWrapper<WatchPoint>(new EnabledWatchPoint));
    shader->createCompoundAnnotation(Annotation::eBackdrop, "backdrop1");

    std::string const text = shader->saveToString(nullptr).toChar();
    EXPECT_EQ(text, expectedText("compound.xml", text));
}

TEST_F(GraphWriter, EverythingAPortAndItsOwnersCanHold)
{
    AddRefWrapper<Compound> const box = graph.addCompound("<box> \"1\" & \xC3\xA4\xF0\x9F\x98\x80");
    box->setFlag(eReferenced);
    box->getAsNode()->addMetadata("node key", " blanks \t\r\n and <markup> ");
    PropertyList child;
    child.addStringPair("k", "v");
    child.addChildList("deeper").addStringPair("k2", "");
    box->setChildList("list", child);
    PropertyList options;
    options.addStringPair("min", "0;1");
    box->createCompoundPort(eOutput, "both", graph.type, PortProperties(eExposed, options, {}));
    box->getAsNode()->outputs()[0u]->setPortDefaultValues(arrayOf({"outside"}));
    box->innerOutputs()[0u]->setPortDefaultValues(StringArray());

    AddRefWrapper<Node> const node = graph.addNode("fan", {"in"}, {}, box.get());
    AddRefWrapper<Port> const fanIn = node->inputs()[0u];
    fanIn->setFlag(eFanIn);
    fanIn->setPortDefaultValues(arrayOf({"a;b"}));
    AddRefWrapper<Port> const member = fanIn->children()->addPort("m.1", float3, eNoPortFlags);
    member->setPortDefaultValues(arrayOf({"a", "b"}));
    node->createNodePort(eOutput, "empty fan", nullptr, PortProperties(eFanIn, {}, {}));
    for (auto const& [type, name] :
         {std::pair(Annotation::eStickyNote, "note"), std::pair(Annotation::eBackdrop, "drop")})
        box->createCompoundAnnotation(type, name)->addMetadata("text", name);
    box->innerOutputs()[0u]->addConnection(member, false);

    std::string const text = box->saveToString(nullptr).toChar();
    EXPECT_EQ(text, expectedText("everything.xml", text));
}

TEST_F(GraphWriter, EmptySelectionHoldsOnlyNodes)
{
    EXPECT_EQ(items({"nobody"}, {}, eSaveNoConnections), "<sub_root>\n    <nodes/>\n</sub_root>");
}

TEST_F(GraphWriter, StickyNotesFollowEmptyBackdrops)
{
    graph.top->createCompoundAnnotation(Annotation::eStickyNote, "note");
    EXPECT_EQ(items({}, {"note"}, eSaveNoConnections),
              "<sub_root>\n    <nodes/>\n    <backdrops/>\n    <sticky_notes>\n        <tavStickyNote name=\"note\">\n"
              "            <metadatas/>\n        </tavStickyNote>\n    </sticky_notes>\n</sub_root>");
}

TEST_F(GraphWriter, FilterActsOnTheFirstLevelOfChildren)
{
    struct RejectA final : PortFilterCallback {
        bool accept(AddRefWrapper<Port> const& port) override { return port->getName() != std::string("a"); }
    } filter;
    AddRefWrapper<Port> const port = graph.addNode("n", {"in"}, {})->inputs()[0u];
    port->setFlag(eFanIn);
    for (char const* const name : {"a", "b"}) {
        AddRefWrapper<Port> const child = port->children()->addPort(name, graph.type, eNoPortFlags);
        child->createChildrenList()->addPort("a", graph.type, eNoPortFlags);
    }
    EXPECT_STREQ(port->saveToString(&filter).toChar(),
                 "<port name=\"in\" type=\"float\" flag=\"2\" is_input=\"yes\" is_fan_in=\"yes\">\n    <ports>\n"
                 "        <port name=\"b\" type=\"float\" flag=\"0\" is_input=\"yes\">\n            <ports>\n"
                 "                <port name=\"a\" type=\"float\" flag=\"0\" is_input=\"yes\"/>\n            </ports>\n"
                 "        </port>\n    </ports>\n    <members>\n        <member name=\"a\"/>\n"
                 "        <member name=\"b\"/>\n    </members>\n</port>");
}

TEST_F(GraphWriter, ModeSelectsTheConnections)
{
    AddRefWrapper<Compound> const top = graph.top;
    top->createCompoundPort(eInput, "i", graph.type, {});
    top->createCompoundPort(eOutput, "o", graph.type, {});
    auto const make = [&](char const* name) { return graph.addNode(name, {"x"}, {"y"}); };
    AddRefWrapper<Node> const a = make("a"), b = make("b"), c = make("c");
    top->innerInputs()[0u]->addConnection(a->inputs()[0u], false);
    a->outputs()[0u]->addConnection(b->inputs()[0u], false);
    b->outputs()[0u]->addConnection(c->inputs()[0u], false);
    b->outputs()[0u]->addConnection(top->innerOutputs()[0u], false);
    top->innerInputs()[0u]->addConnection(top->innerOutputs()[0u], false);

    using Lines = std::vector<std::string>;
    Lines const nodes = {R"(output_port="b.y" input_port="c.x")", R"(output_port="b.y" inner_output_port="o")",
                         R"(input_port="b.x" output_port="a.y")", R"(inner_input_port="i" input_port="a.x")"};
    Lines all = nodes, allButThrough = nodes;
    all.insert(all.end(),
               {R"(inner_input_port="i" inner_output_port="o")", R"(inner_output_port="o" output_port="b.y")",
                R"(inner_output_port="o" inner_input_port="i")"});
    allButThrough.push_back(R"(inner_output_port="o" output_port="b.y")");
    EXPECT_EQ(connectionsIn(items({"b"}, {}, eSaveAllConnections)), all);
    EXPECT_EQ(connectionsIn(items({"b"}, {}, eSaveAllButThroughConnections)), allButThrough);
    EXPECT_EQ(connectionsIn(items({"b", "a"}, {}, eSaveInnerConnections)),
              Lines{R"(output_port="a.y" input_port="b.x")"});
    EXPECT_EQ(connectionsIn(items({"a", "b"}, {}, eSaveAllConnections)).front(),
              R"(output_port="a.y" input_port="b.x")");
}

TEST_F(GraphWriter, ConnectionThatTheTextCannotNameIsLeftOut)
{
    AddRefWrapper<Port> const a = graph.addNode("a", {"x"}, {})->inputs()[0u];
    AddRefWrapper<Port> const b = graph.addNode("b", {"x"}, {})->inputs()[0u];
    ASSERT_TRUE(a->addConnection(b, false)); // two inputs: one attribute would have to stand twice
    EXPECT_TRUE(connectionsIn(graph.top->saveToString(nullptr).toChar()).empty());
}

// ---- classes with a text of their own

class WritingNode final : public Node {
public:
    WritingNode(Container* container, char const* text)
        : Node(container)
        , m_text(text)
    {
    }

protected:
    bool onSaveToString(PortFilterCallback* filter, String& text) const override
    {
        text = m_text.empty() ? saveWithoutHook(filter) : m_text;
        return true;
    }

private:
    String m_text;
};

class WritingAnnotation final : public Annotation {
public:
    explicit WritingAnnotation(char const* text)
        : Annotation(eBackdrop, nullptr, "b")
        , m_text(text)
    {
    }
    String saveMetadatasToXML() const override { return m_text.empty() ? Metadata::saveMetadatasToXML() : m_text; }

private:
    String m_text;
};

std::string indented(std::string text, unsigned blanks)
{
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 1))
        text.insert(at + 1, blanks, ' ');
    return text;
}

TEST_F(GraphWriter, TextOfAHookIsLaidOutAnewWithinAnyOther)
{
    struct {
        char const* text;
        char const* copied;
    } const cases[] = {
        {"<tavNode name='x'>\n\n<metadatas>  </metadatas><value>  </value></tavNode>",
         "<tavNode name=\"x\">\n    <metadatas/>\n    <value>  </value>\n</tavNode>"},
        {"<?xml version='1.0'?><!-- c --><tavNode><?pi d?><value> a&lt; <![CDATA[<]]></value></tavNode>",
         "<!-- c -->\n<tavNode>\n    <?pi d?>\n    <value> a&lt; <![CDATA[<]]></value>\n</tavNode>"},
        {"<tavNode><p:q xmlns:p='u' p:r='1'/><ports><port name='a'></wrong>",
         "<tavNode>\n    <p:q xmlns:p=\"u\" p:r=\"1\"/>\n    <ports>\n        <port name=\"a\"/>\n    "
         "</ports>\n</tavNode>"},
        {"no markup", ""},
    };
    for (auto const& [text, copied] : cases) {
        AddRefWrapper<Node> const node(new WritingNode(nullptr, text));
        node->setName("w");
        ASSERT_TRUE(graph.top->nodes().add(node));
        std::string const item =
            *copied ? "<node>\n            " + indented(copied, 12) + "\n        </node>" : "<node/>";
        EXPECT_EQ(items({"w"}, {}, eSaveNoConnections),
                  "<sub_root>\n    <nodes>\n        " + item + "\n    </nodes>\n</sub_root>");
        graph.top->nodes().remove(node);
    }
}

TEST_F(GraphWriter, HookMayBuildOnTheLibrarysText)
{
    AddRefWrapper<Node> const node(new WritingNode(nullptr, ""));
    AddRefWrapper<Node> const plain = Node::createNew(nullptr, nullptr);
    for (AddRefWrapper<Node> const& each : {node, plain}) {
        each->addMetadata("key", " \n ");
        each->createNodePort(eInput, "in", graph.type, {});
    }
    EXPECT_STREQ(node->saveToString(nullptr).toChar(), plain->saveToString(nullptr).toChar());
}

TEST_F(GraphWriter, MetadataOfADerivedClass)
{
    AddRefWrapper<Annotation> const own(new WritingAnnotation("<metadatas extra='1'></metadatas>"));
    EXPECT_STREQ(own->saveToString().toChar(),
                 "<tavBackdrop name=\"b\">\n    <metadatas extra=\"1\"/>\n</tavBackdrop>");
    AddRefWrapper<Annotation> const like(new WritingAnnotation(""));
    like->addMetadata("k", " ");
    EXPECT_STREQ(like->saveToString().toChar(),
                 "<tavBackdrop name=\"b\">\n    <metadatas>\n        <metadata name=\"k\">\n"
                 "            <value> </value>\n        </metadata>\n"
                 "    </metadatas>\n</tavBackdrop>");
}

} // namespace
} // namespace TAV_marlo_v1
