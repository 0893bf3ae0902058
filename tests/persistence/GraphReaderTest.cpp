#include "TextData.h"
#include "support/RecordingEditor.h"
#include "support/TestGraph.h"

#include <gtest/gtest.h>

#include <functional>

namespace TAV_marlo_v1 {
namespace {

using tav_test::Calls;
using tav_test::dataText;
using tav_test::RecordingEditor;

std::string repeated(std::string const& text, unsigned times)
{
    std::string all;
    for (unsigned i = 0; i < times; ++i)
        all += text;
    return all;
}

std::string port(std::string const& name, bool isInput, std::string const& more = "")
{
    return "<port name='" + name + "' is_input='" + (isInput ? "yes" : "no") + "' " + more + "/>";
}

std::string node(std::string const& name, std::string const& ports, std::string const& attributes = "")
{
    return "<node><tavNode name='" + name + "' " + attributes + "><ports>" + ports + "</ports></tavNode></node>";
}

std::string subRoot(std::string const& nodes, std::string const& behind = "")
{
    return "<sub_root><nodes>" + nodes + "</nodes>" + behind + "</sub_root>";
}

std::string compound(std::string const& ports, std::string const& inside)
{
    return "<tavCompound name='c' type='box' flag='0'><ports>" + ports + "</ports><child_graph>" + inside
           + "</child_graph></tavCompound>";
}

std::vector<std::string> connectionsOf(AddRefWrapper<Port> const& port)
{
    std::vector<std::string> names;
    for (AddRefWrapper<Port> const& other : port->connectedTo())
        names.emplace_back(other->getParentNode()->getName() + std::string(".") + other->getName());
    return names;
}

using Names = std::vector<std::string>;

struct GraphReader : testing::Test {
    TestGraph graph;
    AddRefWrapper<Compound> const top = graph.top;

    std::string restore(std::string const& text)
    {
        StatusStr const status = top->restoreFromString(text.c_str());
        EXPECT_EQ(problemsOf(*top), Names());
        return status.getErrorString();
    }

    std::string saved() const { return top->saveToString(nullptr).toChar(); }

    /// Reads items into the top compound. @return the error
    std::string paste(std::string const& text)
    {
        String errors;
        bool const done = top->createItemsFromString(text.c_str(), createdNodes, createdAnnotations, &sources, &errors);
        EXPECT_EQ(done, errors.empty());
        EXPECT_EQ(problemsOf(*top), Names());
        return errors.toChar();
    }

    std::string warningsOf(AddRefWrapper<Node> const& node) const { return node->getMessagesByType(eWarning).toChar(); }

    StringArray createdNodes, createdAnnotations, sources;
};

TEST_F(GraphReader, WhatTheWriterWritesComesBackToTheByte)
{
    for (char const* const file : {"compound.xml", "everything.xml"}) {
        std::string const text = dataText(file);
        ASSERT_EQ(restore(text), "") << file;
        EXPECT_EQ(saved(), text);
        // As an item of another graph as well.
        String errors;
        ASSERT_TRUE(top->createNewCompoundFromString(text.c_str(), errors)) << errors.toChar();
        EXPECT_STREQ(top->nodes()[top->nodes().size() - 1]->getAsCompound()->saveToString(nullptr).toChar(),
                     text.c_str());
    }
}

TEST_F(GraphReader, OrderOfAttributesCommentsAndUnknownPartsMeanNothing)
{
    ASSERT_EQ(restore("<!-- c --><?pi?><tavCompound flag='0' new='1' type='box' xmlns:x='u' x:name='no' name='c'>"
                      "<x:ports/><child_graph>\n<later><nodes/></later><sub_root><nodes><compound><new/><tavCompound "
                      "name='i'/></compound><!-- n --><node><tavNode name='n'/></node></nodes></sub_root>"
                      "</child_graph>text</tavCompound><!-- end -->"),
              "");
    EXPECT_EQ(namesOf(top->nodes()), (Names{"i", "n"}));
    EXPECT_TRUE(top->nodes()[0u]->isCompound());
    EXPECT_STREQ(graph.topNode->getName(), "c");
}

/// The text with a comment behind each of its tags in turn, which the quick way of reading does not take.
std::vector<std::string> withACommentAnywhere(std::string const& text)
{
    std::vector<std::string> texts;
    for (std::size_t at = text.find('>'); at != std::string::npos; at = text.find('>', at + 1))
        texts.push_back(text.substr(0, at + 1) + "<!-- c -->" + text.substr(at + 1));
    return texts;
}

TEST_F(GraphReader, WhereverATextTurnsOutToNeedTheParserItIsReadFromItsBeginning)
{
    std::string const text = dataText("everything.xml");
    for (std::string const& commented : withACommentAnywhere(text)) {
        ASSERT_EQ(restore(commented), "") << commented;
        ASSERT_EQ(saved(), text) << commented;
    }

    AddRefWrapper<Node> const node = graph.addNode("n", {"from", "to"}, {});
    AddRefWrapper<Port> const from = node->inputs()[0u];
    AddRefWrapper<Port> const to = node->inputs()[1];
    from->setFlag(eFanIn);
    from->createChildrenList()->addPort("member", graph.type, eNoPortFlags);
    from->setPortDefaultValues(StringArray("1"));
    from->setPortMetaDataValue("key", "value");
    for (std::string const& commented : withACommentAnywhere(from->saveToString(nullptr).toChar())) {
        ASSERT_STREQ(to->restoreFromString(commented.c_str()).getErrorString(), "") << commented;
        ASSERT_EQ(to->children()->size(), 1u) << commented;
        ASSERT_EQ(to->getPortMetaDataValue("key"), "value") << commented;
    }

    node->addMetadata("a", "1");
    node->addMetadata("a", "2");
    PropertyList nested;
    nested.addStringPair("b", "3");
    node->setChildList("list", nested);
    PropertyList const store = node->getPropertyList();
    for (std::string const& commented : withACommentAnywhere(node->saveMetadatasToXML().toChar())) {
        ASSERT_STREQ(node->createMetadatasFromXML(commented.c_str()).getErrorString(), "") << commented;
        ASSERT_TRUE(node->getPropertyList() == store) << commented;
    }
}

TEST_F(GraphReader, NodesAndAnnotationsGetFreeNamesAndTheListsSayWhich)
{
    graph.addNode("a", {}, {});
    top->createCompoundAnnotation(Annotation::eBackdrop, "b");
    createdNodes.add("kept");
    std::string const text = subRoot(node("a", port("x", true)) + node("n", port("y", false)),
                                     "<backdrops><tavBackdrop name='b'/></backdrops><sticky_notes><tavStickyNote "
                                     "name='s'/></sticky_notes><connections><connection output_port='n.y' "
                                     "input_port='a.x'/></connections>");
    ASSERT_EQ(paste(text), "");
    EXPECT_EQ(textsOf(createdNodes), (Names{"kept", "a1", "n"}));
    EXPECT_EQ(textsOf(sources), (Names{"a", "n"}));
    EXPECT_EQ(textsOf(createdAnnotations), (Names{"b1", "s"}));
    EXPECT_EQ(top->annotations()[2u]->getType(), Annotation::eStickyNote);
    EXPECT_EQ(connectionsOf(top->nodes()["n"]->outputs()[0u]), Names{"a1.x"});
}

TEST_F(GraphReader, SingleNode)
{
    graph.addNode("n", {}, {});
    String errors;
    AddRefWrapper<Node> const made = top->createNodeFromString("<tavNode name='n' type='t' flag='32'/>", errors);
    ASSERT_TRUE(made) << errors.toChar();
    EXPECT_STREQ(made->getName(), "n1");
    EXPECT_EQ(made->getFlags(), static_cast<NodeFlags>(32));
    EXPECT_EQ(made->getContainer(), &graph.container);
}

// ---- errors

TEST_F(GraphReader, ErrorsSayWhereWhatAndWhatInstead)
{
    struct {
        std::string text;
        char const* error;
    } const cases[] = {
        {"", "line 1, column 1: found the end of the text, expected an element or an end tag"},
        {"\n <node/>", "line 2, column 2: found element \"node\", expected element \"sub_root\""},
        {"<tavNode name='n'/>", "line 1, column 1: found element \"tavNode\", expected element \"sub_root\""},
        {"<sub_root>", "line 1, column 11: found the end of the text, expected an element or an end tag"},
        {"<sub_root><nodes>\n<node></node></nodes></sub_root>",
         "line 2, column 7: found an empty element \"node\", expected element \"tavNode\" in it"},
        {"<sub_root><nodes><compound><tavNode name='n'/></compound></nodes></sub_root>",
         "line 1, column 47: found an empty element \"compound\", expected element \"tavCompound\" in it"},
        {"<sub_root><nodes><node><tavNode/></node></nodes></sub_root>",
         "line 1, column 24: found \"tavNode\" without attribute \"name\", expected a name"},
        {"<sub_root><nodes><node><tavNode name='n' flag='-1'/></node></nodes></sub_root>",
         "line 1, column 24: found \"-1\" in attribute \"flag\", expected an unsigned number of 32 bits"},
        {"<sub_root><nodes><node><tavNode name='n' flag='4294967296'/></node></nodes></sub_root>",
         "line 1, column 24: found \"4294967296\" in attribute \"flag\", expected an unsigned number of 32 bits"},
        {subRoot(node("n", "<port name='p'/>")),
         "line 1, column 50: found \"port\" without attribute \"is_input\", expected \"yes\" or \"no\""},
        {subRoot(node("n", "<port is_input='no'/>")),
         "line 1, column 50: found \"port\" without attribute \"name\", expected a name"},
        {subRoot(node("n", port("p", true, "is_fan_in='maybe'"))),
         "line 1, column 50: found \"maybe\" in attribute \"is_fan_in\", expected \"yes\" or \"no\""},
        {subRoot(node("n", port("p", true, "options='{'"))),
         "line 1, column 50: found \"{\" in attribute \"options\", expected a serialized property list"},
        {subRoot("", "<backdrops>\xC3\xA4<tavBackdrop/></backdrops>"),
         "line 1, column 38: found \"tavBackdrop\" without attribute \"name\", expected a name"},
        {subRoot("", "<connections><connection input_port='a.b'/></connections>"),
         "line 1, column 39: found a \"connection\" with 1 ends, expected two ends"},
        {subRoot("", "<connections><connection input_port='a.b' output_port='a.b' watchpoint='no'/></connections>"),
         "line 1, column 39: found \"no\" in attribute \"watchpoint\", expected \"yes\" or \"disabled\""},
        {"<!DOCTYPE x><sub_root/>", "line 1, column 1: found a document type declaration, expected an element"},
    };
    graph.addNode("before", {"x"}, {});
    std::string const before = saved();
    RecordingEditor editor;
    graph.container.getEditorNotifier().registerEditor(&editor);
    for (auto const& [text, error] : cases)
        EXPECT_EQ(paste(text), error) << text;
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(editor.take(), Calls());
    EXPECT_TRUE(createdNodes.empty() && createdAnnotations.empty() && sources.empty());
}

TEST_F(GraphReader, NullAndWrongRootChangeNothingAnywhere)
{
    std::string const before = saved();
    String errors;
    EXPECT_EQ(paste(""), "line 1, column 1: found the end of the text, expected an element or an end tag");
    EXPECT_FALSE(top->createItemsFromString(nullptr, createdNodes, createdAnnotations));
    EXPECT_FALSE(top->createNodeFromString(nullptr, errors));
    EXPECT_STREQ(errors.toChar(), "line 1, column 1: found no text, expected element \"tavNode\"");
    EXPECT_FALSE(top->createNewCompoundFromString("<tavNode name='n'/>", errors));
    EXPECT_STREQ(errors.toChar(), "line 1, column 1: found element \"tavNode\", expected element \"tavCompound\"");
    EXPECT_EQ(restore("<tavCompound name='c'><ports><port name='p' is_input='?'/></ports></tavCompound>"),
              "line 1, column 30: found \"?\" in attribute \"is_input\", expected \"yes\" or \"no\"");
    EXPECT_EQ(saved(), before);
}

TEST_F(GraphReader, DepthIsReadUpToItsLimit)
{
    auto const nested = [](std::string const& open, std::string const& core, std::string const& close, unsigned depth) {
        return repeated(open, depth) + core + repeated(close, depth);
    };
    struct {
        unsigned limit;
        std::function<std::string(unsigned)> text;
        char const* found;
    } const cases[] = {
        {512,
         [&](unsigned depth) {
             return nested("<tavCompound name='c'><child_graph><sub_root><nodes><compound>", "<tavCompound name='c'/>",
                           "</compound></nodes></sub_root></child_graph></tavCompound>", depth - 1);
         },
         "compounds nested too deep, expected at most 512 levels"},
        {64,
         [&](unsigned depth) {
             return compound(nested("<port name='p' is_input='yes'><ports>", "<port name='p' is_input='yes'/>",
                                    "</ports></port>", depth),
                             "");
         },
         "child ports nested too deep, expected at most 64 levels"},
        {64,
         [&](unsigned depth) {
             return "<tavCompound name='c'>"
                    + nested("<metadatas><propertylists><propertylist name='l'>", "<metadatas/>",
                             "</propertylist></propertylists></metadatas>", depth)
                    + "</tavCompound>";
         },
         "property lists nested too deep, expected at most 64 levels"},
    };
    for (auto const& [limit, text, found] : cases) {
        ASSERT_EQ(restore(text(limit)), "") << found;
        std::string const before = saved();
        std::string const error = restore(text(limit + 1));
        EXPECT_NE(error.find(found), std::string::npos) << error;
        EXPECT_EQ(saved(), before);
    }
}

// ---- types

TEST_F(GraphReader, UnknownTypesAreKeptWithAWarning)
{
    std::string text = dataText("everything.xml");
    std::size_t const fanAt = text.find("name=\"fan\" type=\"");
    ASSERT_NE(fanAt, std::string::npos);
    text.insert(fanAt + 17, "gone");
    ASSERT_EQ(restore(text), "");
    EXPECT_EQ(saved(), text);
    AddRefWrapper<Node> const fan = top->nodes()["fan"];
    EXPECT_TRUE(fan->hasMessage(eWarning));
    EXPECT_EQ(top->getNumberOfNodesWithMessage(eWarning), 1u);
    AddRefWrapper<PortDataType> const type = fan->inputs()[0u]->children()->operator[](0u)->getDataType();
    EXPECT_STREQ(type->getName(), "float3");
    EXPECT_FALSE(graph.runtime.getPortDataType("float3")) << "an unknown type is not registered";
    EXPECT_EQ(fan->inputs()[0u]->getDataType(), graph.type);

    ASSERT_EQ(paste(subRoot(node("m", port("x", true, "type='float3'")))), "");
    EXPECT_EQ(top->nodes()["m"]->inputs()[0u]->getDataType(), type) << "one object for each name";
    EXPECT_EQ(warningsOf(fan), " - fan: The type \"gone\" is not known here; the node is kept as it was saved.");
}

TEST_F(GraphReader, ValuesAreSplitAsTheTypeWantsIt)
{
    graph.runtime.createPortDataType("one", "")->setKind(eStringKind);
    graph.runtime.createPortDataType("list", "")->setKind(eListKind);
    struct {
        char const* type;
        char const* text;
        Names values;
    } const cases[] = {{"one", "a;b", {"a;b"}},        {"one", "", {""}},           {"list", "", {}},
                       {"list", ";a;;b;", {"a", "b"}}, {"none", "a;b", {"a", "b"}}, {"none", "", {""}}};
    for (auto const& [type, text, values] : cases) {
        ASSERT_EQ(paste(subRoot(
                      node("n", port("x", true, "type='" + std::string(type) + "' default_values='" + text + "'")))),
                  "");
        StringArray read;
        EXPECT_TRUE(top->nodes()[top->nodes().size() - 1]->inputs()[0u]->getPortDefaultValues(read));
        EXPECT_EQ(textsOf(read), values) << type << " " << text;
    }
}

// ---- connections

TEST_F(GraphReader, NamesWithDotsLeadToTheRightPort)
{
    std::string const child = "<port name='p' is_input='yes'><ports><port name='q.r'/></ports></port>";
    ASSERT_EQ(paste(subRoot(node("a", port("b.c", true) + child) + node("a.b", port("c", true) + port("p.q.r", true))
                                + node("o", port("x", false)),
                            "<connections>"
                            "<connection output_port='o.x' input_port='a.b.c'/>"
                            "<connection output_port='o.x' input_port='a.p.q.r'/>"
                            "<connection output_port='o.x' input_port='a.b.p.q.r'/></connections>")),
              "");
    EXPECT_EQ(connectionsOf(top->nodes()["o"]->outputs()[0u]), (Names{"a.b.c", "a.q.r", "a.b.p.q.r"}));
}

TEST_F(GraphReader, PathThatFitsTwoPortsMeansTheNodeThatComesFirst)
{
    for (bool const shortFirst : {true, false}) {
        std::string const a = node("a", port("b.c", true)), ab = node("a.b", port("c", true));
        std::string const link = "<connections><connection output_port='o.x' input_port='a.b.c'/></connections>";
        ASSERT_EQ(restore(compound("", subRoot((shortFirst ? a + ab : ab + a) + node("o", port("x", false)), link))),
                  "");
        EXPECT_TRUE(top->nodes()[0u]->inputs()[0u]->isConnected());
        EXPECT_FALSE(top->nodes()[1u]->inputs()[0u]->isConnected());
    }
}

TEST_F(GraphReader, MissingEndIsLeftOutWithAWarningAtTheOther)
{
    ASSERT_EQ(paste(subRoot(node("n", port("x", true) + port("u", true, "flag='32'") + port("o", false)),
                            "<connections><connection output_port='gone.o' input_port='n.x'/>"
                            "<connection output_port='gone.o' input_port='gone.x'/>"
                            "<connection output_port='n.o' input_port='n.u'/>"
                            "<connection inner_input_port='none' input_port='n.x'/></connections>")),
              "");
    std::string const warnings = warningsOf(top->nodes()["n"]);
    EXPECT_NE(warnings.find("\"n.x\" is left out: there is no \"gone.o\""), std::string::npos) << warnings;
    EXPECT_NE(warnings.find("\"n.u\" takes no connections"), std::string::npos);
    EXPECT_NE(warnings.find("\"none\" is left out"), std::string::npos);
    EXPECT_FALSE(top->nodes()["n"]->inputs()[0u]->isConnected());
    EXPECT_EQ(warningsOf(graph.topNode), "");

    top->createCompoundPort(eInput, "here", graph.type, {});
    ASSERT_EQ(
        paste(subRoot("", "<connections><connection inner_input_port='here' input_port='gone.x'/></connections>")), "");
    EXPECT_NE(warningsOf(graph.topNode).find("\"here\" is left out"), std::string::npos);
}

TEST_F(GraphReader, EveryConnectionListComesBackInItsOrder)
{
    // Three nodes and two ports on each side of the compound, linked in an order that is nobody's own.
    for (char const* const name : {"i0", "i1"})
        top->createCompoundPort(eInput, name, graph.type, {});
    for (char const* const name : {"o0", "o1"})
        top->createCompoundPort(eOutput, name, graph.type, {});
    std::vector<AddRefWrapper<Node>> nodes;
    for (char const* const name : {"a", "b", "c"})
        nodes.push_back(graph.addNode(name, {"x"}, {"y"}));
    auto const in = [&](unsigned i) { return top->innerInputs()[i]; };
    auto const out = [&](unsigned i) { return top->innerOutputs()[i]; };
    for (unsigned i : {2u, 0u, 1u, 2u}) { // the last link of c and o0 stands twice
        out(0)->addConnection(nodes[i]->outputs()[0u], false);
        nodes[i]->outputs()[0u]->addConnection(out(1), false);
    }
    in(1)->addConnection(out(0), false);
    in(0)->addConnection(out(0), false);
    in(1)->addConnection(out(1), false);
    in(1)->addConnection(nodes[0]->inputs()[0u], false);
    nodes[2]->outputs()[0u]->addConnection(nodes[0]->inputs()[0u], false);
    in(0)->addConnection(nodes[0]->inputs()[0u], false);
    std::string const text = saved();

    ASSERT_EQ(restore(text), "");
    EXPECT_EQ(saved(), text);
    // The order of the two attributes says nothing.
    std::string turned = text;
    std::size_t at = 0;
    while ((at = turned.find("<connection ", at)) != std::string::npos) {
        std::size_t const begin = at + 12, end = turned.find("/>", begin), middle = turned.find("\" ", begin) + 1;
        turned.replace(begin, end - begin,
                       turned.substr(middle + 1, end - middle - 1) + " " + turned.substr(begin, middle - begin));
        at = end;
    }
    ASSERT_NE(turned, text);
    ASSERT_EQ(restore(turned), "");
    EXPECT_EQ(saved(), text);
}

TEST_F(GraphReader, ConnectionsWithTheCompoundsOwnPortsAreMadeWhenPasted)
{
    top->createCompoundPort(eInput, "i", graph.type, {});
    top->createCompoundPort(eOutput, "o", graph.type, {});
    AddRefWrapper<Node> const source = graph.addNode("s", {"x", "z"}, {"y"});
    AddRefWrapper<Port> const y = source->outputs()[0u], x = source->inputs()[0u];
    y->addConnection(source->inputs()["z"], false);
    y->addConnection(top->innerOutputs()[0u], false);
    top->innerInputs()[0u]->addConnection(x, false);
    StringArray const names("s");
    String const text = top->saveItemsToString(names, {}, eSaveAllConnections);

    RecordingEditor editor;
    graph.topNode->registerEditor(&editor);
    ASSERT_EQ(paste(text.toChar()), "");
    EXPECT_EQ(connectionsOf(top->innerInputs()[0u]), (Names{"s.x", "s1.x"}));
    EXPECT_EQ(connectionsOf(top->innerOutputs()[0u]), (Names{"s.y", "s1.y"}));
    EXPECT_EQ(connectionsOf(top->nodes()["s1"]->outputs()[0u]), (Names{"s1.z", "top.o"}));
    EXPECT_EQ(editor.take(),
              (Calls{"node added top s1", "compoundConnection added i x", "compoundConnection added o y"}));
}

TEST_F(GraphReader, WatchPointsComeBackEnabledOrNot)
{
    std::string const text =
        subRoot(node("n", port("x", true) + port("y", true) + port("o", false)),
                "<connections><connection output_port='n.o' input_port='n.x' watchpoint='yes'/>"
                "<connection watchpoint='disabled' output_port='n.o' input_port='n.y'/></connections>");
    ASSERT_EQ(paste(text), "");
    PortList const& inputs = top->nodes()["n"]->inputs();
    ASSERT_TRUE(inputs[0u]->getWatchPoint() && inputs[1u]->getWatchPoint());
    EXPECT_TRUE(inputs[0u]->getWatchPoint()->enabled());
    EXPECT_FALSE(inputs[1u]->getWatchPoint()->enabled());
}

// ---- IO nodes

TEST_F(GraphReader, IONodesShowTheCompoundsPortsAndGiveTheirFlags)
{
    std::string const io = node("in", port("p", false, "flag='32'"), "flag='8'") + node("in2", "", "flag='8'")
                           + node("out", port("q", true) + port("own", false), "flag='16'");
    ASSERT_EQ(restore(compound(port("p", true) + port("q", false), subRoot(io))), "");
    EXPECT_EQ(top->nodes()["in"]->outputs()[0u], top->innerInputs()[0u]);
    EXPECT_EQ(top->nodes()["out"]->inputs()[0u], top->innerOutputs()[0u]);
    EXPECT_EQ(namesOf(top->nodes()["out"]->outputs()), Names{"own"});
    EXPECT_EQ(top->innerInputs()[0u]->getFlags(), eUnconnectable);
    EXPECT_EQ(graph.topNode->inputs()[0u]->getFlags(), eNoPortFlags);
    EXPECT_TRUE(top->nodes()["in2"]->outputs().empty());
    std::string const text = saved();
    ASSERT_EQ(restore(text), "");
    EXPECT_EQ(saved(), text);
}

TEST_F(GraphReader, ExposureIsTheOutsidesWhateverTheIONodeSays)
{
    std::string const io = node("in", port("p", false, "flag='4'") + port("q", false, "flag='0'"), "flag='8'");
    ASSERT_EQ(restore(compound(port("p", true, "flag='0'") + port("q", true, "flag='4'"), subRoot(io))), "");
    EXPECT_EQ(top->innerInputs()[0u]->getFlags(), eNoPortFlags);
    EXPECT_EQ(top->innerInputs()[1u]->getFlags(), eExposed);
}

TEST_F(GraphReader, PastedIONodeBringsThePortsThatTheCompoundLacks)
{
    top->createCompoundPort(eInput, "there", graph.type, {});
    top->innerInputs()[0u]->setPortDefaultValues(StringArray("mine"));
    std::string const text = subRoot(
        node("in",
             port("there", false, "default_internal_values='other'")
                 + port("new", false, "type='float' flag='4' default_internal_values='1' default_external_values='2'"),
             "type='io' flag='8'")
            + node("n", port("x", true)),
        "<connections><connection inner_input_port='new' input_port='n.x'/></connections>");
    ASSERT_EQ(paste(text), "");
    EXPECT_EQ(namesOf(top->innerInputs()), (Names{"there", "new"}));
    EXPECT_EQ(namesOf(graph.topNode->inputs()), (Names{"there", "new"}));
    EXPECT_EQ(namesOf(top->nodes()["in"]->outputs()), (Names{"there", "new"}));
    EXPECT_EQ(connectionsOf(top->innerInputs()[1u]), Names{"n.x"});
    auto const valuesOf = [](AddRefWrapper<Port> const& port) {
        StringArray values;
        port->getPortDefaultValues(values);
        return textsOf(values);
    };
    EXPECT_EQ(valuesOf(top->innerInputs()[0u]), Names{"mine"});
    EXPECT_EQ(valuesOf(top->innerInputs()[1u]), Names{"1"});
    EXPECT_EQ(valuesOf(graph.topNode->inputs()[1u]), Names{"2"});
    EXPECT_EQ(graph.topNode->inputs()[1u]->getFlags(), eExposed);

    ASSERT_EQ(paste(text), "");
    EXPECT_TRUE(top->nodes()["in1"]->outputs().empty()) << "a second one shows none";
    EXPECT_EQ(top->innerInputs().size(), 2u);
}

// ---- refusals, notification

/// Refuses nodes and annotations of one name, and makes nodes of a class that keeps values itself.
class ChoosyCompound final : public Compound {
public:
    class KeepingNode final : public Node {
    public:
        explicit KeepingNode(Container* container)
            : Node(container)
        {
        }
        bool onPortSetDefaultValues(AddRefWrapper<Port> const&, StringArray const& values) override
        {
            m_values = values;
            return true;
        }
        bool onPortGetDefaultValues(AddRefWrapper<Port> const&, StringArray& values) const override
        {
            values.add(m_values);
            return true;
        }

    private:
        StringArray m_values;
    };

    ChoosyCompound(AddRefWrapper<Node> const& owner)
        : Compound(owner, nullptr)
    {
    }
    bool onNodeAdd(AddRefWrapper<Node> const& node) override { return node->getName() != refused; }
    bool onAnnotationAdd(AddRefWrapper<Annotation> const& note) override { return note->getName() != refused; }
    AddRefWrapper<Node> createBareNode(char const* type, NodeFlags flags) override
    {
        return type == std::string("keeping") ? AddRefWrapper<Node>(new KeepingNode(getAsNode()->getContainer()))
                                              : Compound::createBareNode(type, flags);
    }

    std::string refused = "bad";
};

struct ChoosyGraph : GraphReader {
    AddRefWrapper<Node> const owner = Node::createNew(&graph.container, "choosy");
    AddRefWrapper<ChoosyCompound> const choosy{new ChoosyCompound(owner)};

    void SetUp() override
    {
        owner->setOwnedCompound(choosy);
        top->nodes().add(owner);
        choosy->createCompoundPort(eOutput, "o", graph.type, {});
    }
};

TEST_F(ChoosyGraph, RefusedItemTakesBackTheWholeReading)
{
    std::string const io = node("in", port("new", false), "flag='8'");
    std::string const link = "<connections><connection inner_output_port='o' output_port='n.y'/></connections>";
    std::string const before = saved();
    RecordingEditor atOwner, atContainer;
    owner->registerEditor(&atOwner);
    graph.container.getEditorNotifier().registerEditor(&atContainer);
    for (std::string const& text :
         {subRoot(io + node("n", port("y", false)) + node("bad", ""), link),
          subRoot(io + node("n", port("y", false)),
                  "<backdrops><tavBackdrop name='b'/><tavBackdrop name='bad'/></backdrops>" + link)})
    {
        String errors;
        EXPECT_FALSE(choosy->createItemsFromString(text.c_str(), createdNodes, createdAnnotations, &sources, &errors));
        EXPECT_NE(std::string(errors.toChar()).find("The compound \"choosy\" refuses the "), std::string::npos);
        EXPECT_EQ(saved(), before);
        EXPECT_EQ(problemsOf(*top), Names());
        StatusStr status = choosy->restoreFromString(compound("", text).c_str());
        EXPECT_TRUE(!status);
        EXPECT_EQ(saved(), before);
    }
    EXPECT_EQ(atOwner.take(), Calls());
    EXPECT_EQ(atContainer.take(), Calls());
    EXPECT_TRUE(createdNodes.empty() && createdAnnotations.empty() && sources.empty());
}

TEST_F(ChoosyGraph, ClassThatKeepsValuesItselfIsGivenThem)
{
    String errors;
    std::string const text =
        "<tavNode name='k' type='keeping'><ports>" + port("x", true, "default_values='a;b'") + "</ports></tavNode>";
    AddRefWrapper<Node> const made = choosy->createNodeFromString(text.c_str(), errors);
    ASSERT_TRUE(made) << errors.toChar();
    EXPECT_NE(std::string(made->saveToString(nullptr).toChar()).find("default_values=\"a;b\""), std::string::npos);
    EXPECT_FALSE(made->hasMessage(eWarning));
}

TEST_F(GraphReader, ReplacingTellsWhatGoesAndThenWhatComes)
{
    AddRefWrapper<Compound> const inner = graph.addCompound("c");
    inner->createCompoundPort(eInput, "old", graph.type, {});
    graph.addNode("n", {}, {}, inner.get());
    inner->createCompoundAnnotation(Annotation::eBackdrop, "a");
    AddRefWrapper<Port> const outside = inner->getAsNode()->inputs()[0u];
    AddRefWrapper<Port> const source = graph.addNode("s", {}, {"y"})->outputs()[0u];
    source->addConnection(outside, false);
    RecordingEditor editor;
    graph.container.getEditorNotifier().registerEditor(&editor);
    StatusStr status = inner->restoreFromString(compound(port("new", false), subRoot(node("n", ""))).c_str());
    ASSERT_FALSE(!status) << status.getErrorString();
    EXPECT_EQ(editor.take(),
              (Calls{"annotation removed c a", "node deleted c n", "node removed c n", "compoundPort removed old",
                     "connection removed y old", "nodePort disconnected y", "nodePort disconnected old",
                     "nodePort removed old", "nodePort added new", "compoundPort added new", "node added c n"}));
    EXPECT_FALSE(source->isConnected() || outside->isConnected());
    EXPECT_STREQ(inner->getAsNode()->getNodeTypeName(), "box");
    EXPECT_EQ(problemsOf(*top), Names());
}

TEST_F(GraphReader, ReadingTellsOneBatchOfAddedItems)
{
    RecordingEditor editor;
    graph.container.getEditorNotifier().registerEditor(&editor);
    ASSERT_EQ(paste(subRoot(node("n", port("x", true)) + node("m", port("y", false)),
                            "<sticky_notes><tavStickyNote name='s'/></sticky_notes>"
                            "<connections><connection output_port='m.y' input_port='n.x'/></connections>")),
              "");
    EXPECT_EQ(editor.take(), (Calls{"node added top n", "node added top m", "annotation added top s"}));
}

} // namespace
} // namespace TAV_marlo_v1
