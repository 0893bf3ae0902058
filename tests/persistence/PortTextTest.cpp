#include "support/RecordingEditor.h"
#include "support/TestGraph.h"

#include <tav/QtText.h>

#include <gtest/gtest.h>

namespace TAV_marlo_v1 {
namespace {

using Names = std::vector<std::string>;
using tav_test::Calls;
using tav_test::RecordingEditor;

AddRefWrapper<PortDataType> typeOfKind(std::uint32_t kind)
{
    AddRefWrapper<PortDataType> const type = PortDataType::createNew("t", "");
    type->setKind(static_cast<PortDataTypeKind>(kind));
    return type;
}

TEST(PortValueText, UnserializingFollowsTheKind)
{
    struct {
        char const* text;
        int kind; // negative: no type
        Names split;
        Names typed;
    } const cases[] = {
        {"a;b", eFloatKind, {"a;b"}, {"a;b"}},
        {"", eFloatKind, {""}, {""}},
        {"{a,b}", eStringKind, {"{a,b}"}, {"{a,b}"}},
        {"a;;b", eUnknownKind, {"a", "b"}, {"a;;b"}},
        {"", -1, {""}, {""}},
        {"{a, b}", -1, {"{a, b}"}, {"a", "b"}},
        {"{a", -1, {"{a"}, {"{a"}},
        {"", eListKind, {}, {}},
        {"", eFloatKind | 0x100, {}, {}},
        {";a;", eListKind, {"a"}, {";a;"}},
        {"{}", eListKind, {"{}"}, {}},
    };
    for (auto const& [text, kind, split, typed] : cases) {
        AddRefWrapper<PortDataType> const type =
            kind < 0 ? AddRefWrapper<PortDataType>() : typeOfKind(static_cast<std::uint32_t>(kind));
        EXPECT_EQ(textsOf(unserializeFromQString(toQString(text), QStringLiteral(";"), type)), split) << text;
        StringArray values("old");
        EXPECT_TRUE(Port::unserializePortValuesString(text, values, type));
        EXPECT_EQ(textsOf(values), typed) << text;
    }
    StringArray kept("old");
    EXPECT_FALSE(Port::unserializePortValuesString(nullptr, kept, {}));
    EXPECT_EQ(textsOf(kept), Names{"old"});
}

TEST(PortValueText, SerializingJoinsWithoutEscaping)
{
    StringArray values("a");
    values.add("b;c");
    EXPECT_EQ(serializeToQString(values, QStringLiteral(";")), QStringLiteral("a;b;c"));
    EXPECT_EQ(serializeToQString({}, QStringLiteral(";")), QString());
    EXPECT_EQ(toQStringList(values), QStringList({QStringLiteral("a"), QStringLiteral("b;c")}));
}

TEST(QtText, Conversions)
{
    EXPECT_TRUE(toQString(static_cast<char const*>(nullptr)).isEmpty());
    EXPECT_EQ(toQString("\xC3\xA4\xFF").toStdU16String(), u"\u00E4\uFFFD");
    EXPECT_EQ(toQString(String("\xF0\x9F\x98\x80")).toStdU16String(), u"\U0001F600");
    EXPECT_EQ(doubleToQString(0.1, 6), QStringLiteral("0.1"));
    EXPECT_EQ(doubleToQString(1234567.0, 3), QStringLiteral("1.23e+06"));
}

struct PortRestore : testing::Test {
    TestGraph graph;
    AddRefWrapper<Node> const node = graph.addNode("n", {"in"}, {});
    AddRefWrapper<Port> const port = node->inputs()[0u];
    RecordingEditor editor;

    void SetUp() override { node->registerEditor(&editor); }
};

TEST_F(PortRestore, TakesEverythingButNameTypeAndDirection)
{
    port->setFlag(eFanIn);
    AddRefWrapper<Port> const stays = port->children()->addPort("stays", graph.type, eNoPortFlags);
    port->children()->addPort("goes", graph.type, eNoPortFlags);
    port->setPortMetaDataValue("old", "1");
    AddRefWrapper<Port> const source = graph.addNode("s", {}, {"y"})->outputs()[0u];
    source->addConnection(stays, false);
    char const* const text = "<port name='other' type='x' flag='6' is_input='no' is_fan_in='yes' options='k={v}' "
                             "default_values='a;b'><metadatas><metadata name='new' value=''/></metadatas><ports>"
                             "<port name='comes'/><port name='stays' default_values='1'/></ports></port>";
    ASSERT_STREQ(port->restoreFromString(text).getErrorString(), "");
    EXPECT_STREQ(port->saveToString(nullptr).toChar(),
                 "<port name=\"in\" type=\"float\" flag=\"6\" is_input=\"yes\" is_fan_in=\"yes\" options=\"k={v}\" "
                 "default_values=\"a;b\">\n    <metadatas>\n        <metadata name=\"new\" value=\"\"/>\n    "
                 "</metadatas>\n    <ports>\n        <port name=\"comes\" type=\"\" flag=\"0\" is_input=\"yes\"/>\n"
                 "        <port name=\"stays\" type=\"float\" flag=\"0\" is_input=\"yes\" default_values=\"1\"/>\n"
                 "    </ports>\n    <members>\n        <member name=\"comes\"/>\n"
                 "        <member name=\"stays\" default_values=\"1\"/>\n    </members>\n</port>");
    EXPECT_TRUE(stays->isConnected());
    EXPECT_EQ(problemsOf(*graph.top), Names());
}

TEST_F(PortRestore, OwnTextChangesAndTellsNothing)
{
    port->setPortDefaultValues(StringArray("1"));
    port->setPortMetaDataValue("k", "v");
    editor.take();
    ASSERT_STREQ(port->restoreFromString(port->saveToString(nullptr).toChar()).getErrorString(), "");
    EXPECT_EQ(editor.take(), Calls());
    ASSERT_STREQ(port->restoreFromString("<port name='in'/>").getErrorString(), "");
    EXPECT_EQ(editor.take(), (Calls{"nodePort valuesReset in", "nodePort metadataChanged in"}));
}

TEST_F(PortRestore, BothSidesOfACompoundPortGetTheirValues)
{
    AddRefWrapper<Compound> const box = graph.addCompound("box");
    box->createCompoundPort(eOutput, "o", graph.type, {});
    AddRefWrapper<Port> const outside = box->getAsNode()->outputs()[0u], inside = box->innerOutputs()[0u];
    char const* const text = "<port name='o' default_internal_values='in' default_external_values='out'/>";
    for (AddRefWrapper<Port> const& side : {outside, inside}) {
        outside->resetPortDefaultValues();
        inside->resetPortDefaultValues();
        ASSERT_STREQ(side->restoreFromString(text).getErrorString(), "");
        StringArray values;
        inside->getPortDefaultValues(values);
        outside->getPortDefaultValues(values);
        EXPECT_EQ(textsOf(values), (Names{"in", "out"}));
    }
}

TEST_F(PortRestore, TextThatCannotBeUsedChangesNothing)
{
    String const before = port->saveToString(nullptr);
    for (char const* const text : {"", "<node/>", "<port name='p' flag='x'/>", "<port name='p' flag='4' options='{'/>"})
        EXPECT_STRNE(port->restoreFromString(text).getErrorString(), "") << text;
    EXPECT_STREQ(port->restoreFromString(nullptr).getErrorString(),
                 "line 1, column 1: found no text, expected element \"port\"");
    EXPECT_EQ(port->saveToString(nullptr), before);
    EXPECT_EQ(editor.take(), Calls());
}

/// Says no to one of the questions about its ports.
class RefusingNode final : public Node {
public:
    explicit RefusingNode(Container* container)
        : Node(container)
    {
    }
    mutable unsigned yesBeforeNo = ~0u;

    bool onPortSetDefaultValues(AddRefWrapper<Port> const& port, StringArray const& values) override
    {
        return ask() && Node::onPortSetDefaultValues(port, values);
    }
    bool onPortResetDefaultValues(AddRefWrapper<Port> const& port, StringArray& values) override
    {
        return ask() && Node::onPortResetDefaultValues(port, values);
    }
    bool onPortSetMetaDataValue(AddRefWrapper<Port> const& port, char const* key, char const* value) override
    {
        return ask() && Node::onPortSetMetaDataValue(port, key, value);
    }
    bool onPortCanSetFlag(AddRefWrapper<Port> const&, PortFlags) const override { return ask(); }
    bool onPortCanClearFlag(AddRefWrapper<Port> const&, PortFlags) const override { return ask(); }
    bool onPortListPortAdd(PortList const&, AddRefWrapper<Port> const&) override { return ask(); }
    bool onPortListPortRemove(PortList const&, AddRefWrapper<Port> const&) override { return ask(); }
    bool onPortListPortMove(PortList const&, unsigned, unsigned) override { return ask(); }

private:
    bool ask() const { return yesBeforeNo-- != 0; }
};

TEST_F(PortRestore, WhicheverQuestionIsRefusedTheGraphStaysAsItWas)
{
    AddRefWrapper<RefusingNode> const owner(new RefusingNode(&graph.container));
    graph.top->nodes().add(AddRefWrapper<Node>(owner.get()));
    owner->createNodePort(eInput, "p", graph.type, PortProperties());
    AddRefWrapper<Port> const in = owner->inputs()[0u];
    char const* const fanIn = "<port name='p' flag='6' options='k={v}' default_values='1'><metadatas>"
                              "<metadata name='a' value='1'/><metadata name='b' value='2'/></metadatas><ports>"
                              "<port name='x' flag='2'><ports><port name='deep'/></ports></port>"
                              "<port name='y' default_values='1'/><port name='z'/></ports></port>";
    char const* const shuffled = "<port name='p' flag='6' options='k={w}' default_values='2'><metadatas>"
                                 "<metadata name='b' value='2'/><metadata name='c' value=''/></metadatas><ports>"
                                 "<port name='z' flag='4'/><port name='new' default_values='3'/>"
                                 "<port name='x'/></ports></port>";
    char const* const plain = "<port name='p' flag='32'><ports><port name='y'/></ports></port>";
    for (auto const& [from, to] : {std::pair{fanIn, shuffled}, {shuffled, fanIn}, {fanIn, plain}, {plain, fanIn}}) {
        ASSERT_STREQ(in->restoreFromString(from).getErrorString(), "");
        AddRefWrapper<Port> const child = (*in->children())[in->children()->size() - 1];
        ASSERT_TRUE(child->addConnection(graph.addNode("s", {}, {"out"})->outputs()[0u], false));
        String const before = graph.top->saveToString(nullptr);
        unsigned refused = 0;
        for (; refused < 100; ++refused) {
            owner->yesBeforeNo = refused;
            StatusStr const status = in->restoreFromString(to);
            owner->yesBeforeNo = ~0u;
            if (!*status.getErrorString())
                break;
            EXPECT_STREQ(graph.top->saveToString(nullptr).toChar(), before.toChar()) << to << refused;
            EXPECT_EQ(problemsOf(*graph.top), Names());
        }
        EXPECT_GT(refused, 5u);
        EXPECT_LT(refused, 100u);
        EXPECT_EQ(problemsOf(*graph.top), Names());
    }
}

TEST(MetadataText, StoreComesBackAndDamagedTextIsRefused)
{
    AddRefWrapper<Node> const node = Node::createNew(nullptr, "n");
    char const* const text = "<metadatas>\n    <metadata name=\"a\">\n        <value> \t&#13;\n&lt; </value>\n"
                             "        <value/>\n    </metadata>\n    <metadata name=\"a\"/>\n</metadatas>";
    ASSERT_STREQ(node->createMetadatasFromXML(text).getErrorString(), "");
    EXPECT_STREQ(node->saveMetadatasToXML().toChar(), text);
    for (char const* const bad : {"", "<metadata/>", "<metadatas><metadata/></metadatas>", "<metadatas>"})
        EXPECT_STRNE(node->createMetadatasFromXML(bad).getErrorString(), "") << bad;
    EXPECT_STREQ(node->saveMetadatasToXML().toChar(), text);
}

} // namespace
} // namespace TAV_marlo_v1
