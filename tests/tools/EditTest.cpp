#include "EditCompletion.h"
#include "EditSession.h"
#include "ToolRun.h"

#include <tav/AnnotationList.h>
#include <tav/NodeList.h>
#include <tav/PortList.h>
#include <tav/kit/StandardRuntime.h>

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

using namespace TAV_marlo_v1;

namespace {

/// Keeps what a session says.
class RecordingHost final : public tool::EditHost {
public:
    std::string printed, noted, saved;

    void print(std::string const& text) override { printed += text; }
    void note(std::string const& text) override { noted += text + '\n'; }
    void save(std::string const& path) override { saved += path + '\n'; }
};

/// A graph that is edited in memory.
struct Edited {
    kit::StandardRuntime runtime;
    kit::Document document{&runtime};
    RecordingHost host;
    tool::EditSession session{document, host};

    explicit Edited(QString const& file)
    {
        EXPECT_STREQ(runtime.addLibraryFile(exampleFile("library/arithmetic.library.xml").toUtf8()).getErrorString(),
                     "");
        EXPECT_STREQ(document.open(file.toUtf8()).getErrorString(), "");
    }

    std::string text() const { return document.getTopCompound()->saveToString(nullptr).toChar(); }

    /// Plays the lines up to the first that is wrong. @return what is wrong with it
    std::string play(std::string const& script)
    {
        for (std::size_t begin = 0; begin < script.size();) {
            std::size_t const end = std::min(script.find('\n', begin), script.size());
            std::string const line = script.substr(begin, end - begin);
            std::string const wrong = session.play(line);
            if (!wrong.empty())
                return wrong;
            expectConsistency(line);
            begin = end + 1;
        }
        return {};
    }

    std::string shown(std::string const& look)
    {
        host.printed.clear();
        EXPECT_EQ(play(look), "");
        return host.printed;
    }

    void expectConsistency(std::string const& moment) const
    {
        StringArray problems;
        EXPECT_TRUE(document.getTopCompound()->checkConsistency(problems))
            << moment << ": " << problems.serialize(eSerializePlain).toChar();
    }

    /// Takes all back, makes all again, and takes all back: the texts have to be those from before.
    void expectReversible(std::string const& start, std::string const& moment)
    {
        std::string const changed = text();
        for (int round = 0; round < 2; ++round) {
            EXPECT_TRUE(session.undoAll()) << moment;
            expectConsistency(moment);
            EXPECT_EQ(text(), start) << moment;
            EXPECT_TRUE(session.redoAll()) << moment;
            expectConsistency(moment);
            EXPECT_EQ(text(), changed) << moment;
        }
    }
};

QString graphFile(char const* name)
{
    return exampleFile("graphs") + '/' + name + ".xml";
}

} // namespace

// ---- lines

TEST(EditLine, IsCutIntoWords)
{
    struct Row {
        char const* line;
        tool::Words words;
    };
    Row const rows[] = {
        {"", {}},
        {" \t# set /a 1", {}},
        {"set /a.b 1\r", {"set", "/a.b", "1"}},
        {"a#b #c", {"a#b"}},
        {R"(note / "a b" "say \"x\" \\ y\nz" "" "#")", {"note", "/", "a b", "say \"x\" \\ y\nz", "", "#"}},
        {R"(a"b \c)", {"a\"b", "\\c"}},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(tool::wordsOf(row.line), row.words) << row.line;
        std::string again;
        for (std::string const& word : row.words)
            again += tool::quoted(word) + ' ';
        EXPECT_EQ(tool::wordsOf(again), row.words) << again;
    }
}

TEST(EditLine, SaysWhatItExpected)
{
    Edited edited(graphFile("nesting"));
    std::string const before = edited.text();
    struct Row {
        std::string line;
        char const* error;
    };
    Row const rows[] = {
        {"set \"/a", "expected a closing quote, found the end of the line"},
        {"set \"/a\"b", "expected a blank behind the quotes, found \"b\""},
        {R"(set "\t" 1)", R"(expected \", \\ or \n behind the backslash in quotes)"},
        {"set \xff 1", "expected UTF-8 text, found other bytes"},
        {"set \x01 1", "expected text, found the character U+0001"},
        {"creat /", "there is no edit \"creat\"; did you mean \"create\"?"},
        {"frobnicate", "there is no edit \"frobnicate\"; \"help\" lists them all"},
        {"foo", "there is no edit \"foo\"; \"help\" lists them all"},
        {"port", R"(expected "create", "remove", "rename" or "move" behind "port", found the end of the line)"},
        {"port fly", R"(expected "create", "remove", "rename" or "move" behind "port", found "fly")"},
        {"connect /three.out", "expected INPORT, found the end of the line; connect OUTPORT INPORT [metadata]"},
        {"connect /three.out /total.b meta",
         "expected \"metadata\", found \"meta\"; connect OUTPORT INPORT [metadata]"},
        {"end now", "expected the end of the line, found \"now\"; end"},
        {"create / constant from", "expected NODE, found the end of the line; create PARENT PRESET [from NODE]"},
        {"io /scaled both", "expected \"input\" or \"output\", found \"both\"; io PARENT input|output"},
        {"create / nothing", "no library has a preset \"nothing\""},
        {"create /three constant", "\"/three\" is a node without a graph inside"},
        {"create / constant from four", "there is no \"four\" in \"/\""},
        {"remove three", "\"three\" leads to no node: a path begins with \"/\""},
        {"remove /four", "\"/four\" leads to no node"},
        {"remove /four/five", "\"/four/five\" leads to no node: there is no \"/four\""},
        {"remove /three.out", "\"/three.out\" is a port, expected a node"},
        {"remove /", "\"/\" is the whole graph, expected a node in it"},
        {"remove /three /three", "\"/three\" is named twice"},
        {"copy / three /three", "\"/three\" is named twice"},
        {"rename /three \"\"", "expected a name, found \"\""},
        {"connect /three.value /total.b", "\"/three.value\" is an input, expected an output"},
        {"connect /three.out /total.out", "\"/total.out\" is an output, expected an input"},
        {"connect /three /total.b", "\"/three\" is a node, expected one of its ports, as in \"/three.port\""},
        {"connect /three.out /scaled/product.a", "\"/three.out\" and \"/scaled/product.a\" are not in one graph"},
        {"disconnect /three.out /total.b", "\"/three.out\" and \"/total.b\" are not connected"},
        {"chain /three /three", "\"/three\" cannot be connected with \"/three\""},
        {"set /three.x 1", "\"/three.x\" leads to no port"},
        {"show /four", "\"/four\" leads to no node or port"},
        {"disconnect-all /four", "\"/four\" leads to no node or port"},
        {"metadata /four k v", "\"/four\" leads to no node, port or annotation"},
        {"reset /total.a", "\"/total.a\" has no values"},
        {"type /total.a number",
         "there is no data type \"number\"; there are bool, int, float, string, float2, float3, "
         "float4, color, any, interpolation, blend_mode"},
        {"flag /total.a shown on", "expected \"exposed\", \"fan-in\" or \"unconnectable\", found \"shown\"; flag PORT "
                                   "exposed|fan-in|unconnectable on|off"},
        {"metadata /total.a key one two", "an entry of a port has one value, found \"two\" too"},
        {"unset-metadata /total key", "\"/total\" has no entry \"key\""},
        {"port move /total.a second", "expected the number of a place, the first being 0, found \"second\""},
        {"port move /total.a 2", "expected a place below 2, found 2"},
        {"group / g three four", "there is no \"four\" in \"/\""},
        {"explode /three", "\"/three\" is a node without a graph inside"},
        {"annotation remove / x", "there is no annotation \"x\" in \"/\""},
        {"unwatch /total.a", "\"/total.a\" has no watch point"},
        {"undo", "expected at most 0, the number of edits to take back"},
        {"undo all", "expected a number of edits, found \"all\""},
        {"redo 2", "expected at most 0, the number of edits to make again"},
        {"end", "found \"end\" without \"begin\""},
        {"help frobnicate", "there is no edit \"frobnicate\"; \"help\" lists them all"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(edited.session.play(row.line), row.error) << row.line;
    EXPECT_EQ(edited.text(), before);
    EXPECT_EQ(edited.host.noted, "");
}

// ---- edits

struct EditRow {
    char const* graph;
    char const* script;
    char const* look;
    char const* expected;
};

/// How a row that fails is called.
void PrintTo(EditRow const& row, std::ostream* stream)
{
    *stream << row.graph << ": " << row.script;
}

struct Edits : testing::TestWithParam<EditRow> {};

TEST_P(Edits, DoWhatTheySayAndCanBeTakenBack)
{
    EditRow const& row = GetParam();
    Edited edited(graphFile(row.graph));
    std::string const start = edited.text();
    EXPECT_EQ(edited.play(row.script), "");
    EXPECT_EQ(edited.shown(row.look), row.expected);
    edited.expectReversible(start, row.script);
}

INSTANTIATE_TEST_SUITE_P(
    Tool, Edits,
    testing::Values(
        EditRow{"nesting", "create / arithmetic/basic/multiply from total\nset /multiply.b 2.5", "show /multiply",
                "/multiply multiply\n  metadata uiname Multiply\n  metadata doc \"a · b\"\n  input a float = 1 <- "
                "/total.out\n  input b float = 2.5\n  output out float\n"},
        EditRow{"nesting",
                "create /scaled constant\ndisconnect-all /scaled/product\nchain /scaled/constant /scaled/product "
                "/scaled/output",
                "show /scaled/product",
                "/scaled/product multiply\n  input a float <- /scaled/constant.out\n  input b float\n  output out "
                "float -> /scaled.result\n"},
        EditRow{"nesting", "io / output\nport create /output input whole float\nconnect /total.out /output.whole",
                "show /total",
                "/total add\n  input a float <- /scaled.result\n  input b float = 1\n  output out float -> .whole\n"},
        EditRow{"nesting", "remove /three /scaled/product", "show /scaled",
                "/scaled compound\n  input value float\n  input factor float exposed = 20\n  output result float -> "
                "/total.a\n"},
        EditRow{"nesting", "remove /scaled/input", "show /scaled",
                "/scaled compound\n  output result float -> /total.a\n"},
        EditRow{"nesting", "rename /three total\nrename /scaled \"s c\"", "list",
                "/total1  constant\n\"/s c\"   compound  (graph inside)\n/total   add\n"},
        EditRow{"nesting", "connect /three.out /total.a\ndisconnect /three.out /scaled.value", "show /three",
                "/three constant\n  input value float = 3\n  output out float -> /total.a\n"},
        EditRow{"nesting",
                "metadata /scaled/product.b UIWidget slider\nport create /scaled input extra color\nconnect "
                "/scaled.extra /scaled/product.b metadata",
                "show /scaled.extra", "input extra color\n  metadata UIWidget slider\n"},
        EditRow{"nesting", "connect /three.out /scaled.factor\ndisconnect-all /scaled", "show /scaled",
                "/scaled compound\n  input value float\n  input factor float exposed = 20\n  output result float\n"},
        EditRow{"nesting", "set /scaled.factor 21\nset /scaled/input.factor 11\nreset /scaled.factor",
                "show /scaled/input.factor", "output factor float exposed = 11 -> /scaled/product.b\n"},
        EditRow{"nesting",
                "type /scaled/output.result color\nflag /scaled.value exposed on\nflag /total.b unconnectable on",
                "show /scaled",
                "/scaled compound\n  input value float exposed <- /three.out\n  input factor float exposed = 20\n  "
                "output result color -> /total.a\n"},
        EditRow{"nesting",
                "port create /scaled output extra color\nport move /scaled.extra 0\nport rename /scaled.extra "
                "result\nport remove /scaled.value",
                "show /scaled/output",
                "/scaled/output io\n  input result1 color\n  input result float <- /scaled/product.out\n"},
        EditRow{"fan_in",
                "port create /all input values.fourth float\nport remove /all.values.first\nset /all.values.third 7",
                "show /all",
                "/all sum\n  input values float fan-in\n    input values.second float = 2\n    input values.third "
                "float = 7 <- /two.out\n    input values.fourth float\n  output out float\n"},
        EditRow{"fan_in", "flag /all.values fan-in off\ntype /all.values float3\nset /all.values {1,2,3}",
                "show /all.values", "input values float3 = {1,2,3}\n"},
        EditRow{"nesting",
                "metadata /total ui 1 \"2 3\"\nmetadata /total.a w slider\nmetadata /total.a x y\nunset-metadata "
                "/total.a x\nmetadata /scaled k v\nunset-metadata /scaled k",
                "show /total",
                "/total add\n  metadata ui 1 \"2 3\"\n  input a float <- /scaled.result\n  input b float = 1\n  output "
                "out float\n"},
        EditRow{"nesting", "group / inner three scaled", "show /inner",
                "/inner compound\n  output result float -> /total.a\n"},
        EditRow{"annotations", "group / inner /size\nexplode /inner", "list",
                "/count    constant\n/product  multiply\n/size     constant\nbackdrop inputs\nnote reminder\n"},
        EditRow{
            "nesting", "explode /scaled", "show /product",
            "/product multiply\n  input a float <- /three.out\n  input b float = 20\n  output out float -> /total.a\n"},
        EditRow{"nesting",
                "backdrop / back\nnote / hint \"a \\\"b\\\"\"\nannotation rename / hint back\nannotation remove / "
                "back\nmetadata /back1 color red",
                "list", "/three   constant\n/scaled  compound  (graph inside)\n/total   add\nnote back1\n"},
        EditRow{"nesting", "copy / three scaled\npaste /scaled\npaste /", "list /scaled/",
                "/scaled/input    io\n/scaled/output   io\n/scaled/product  multiply\n/scaled/three    "
                "constant\n/scaled/scaled   compound  (graph inside)\n"},
        EditRow{"nesting", "begin all\nremove /total\nset /three.value 4\nend\nundo\nredo", "show /three",
                "/three constant\n  input value float = 4\n  output out float -> /scaled.value\n"},
        EditRow{"nesting", "watch /total.a\nwatch /scaled/input.value\nunwatch /total.a", "show /scaled/input",
                "/scaled/input io\n  output value float -> /scaled/product.a watched\n"
                "  output factor float exposed = 10 -> /scaled/product.b\n"},
        EditRow{"watch_points", "disconnect /one.out /sum.a\nunwatch /sum.b", "show /sum",
                "/sum add\n  input a float\n  input b float <- /two.out\n  output out float\n"}));

TEST(EditStack, UndoesAndRedoesWholeEdits)
{
    Edited edited(graphFile("nesting"));
    std::string const start = edited.text();
    EXPECT_EQ(edited.play("set /three.value 4\nbegin \"two things\"\nset /three.value 5\nremove /total\nend\nundo"),
              "");
    EXPECT_EQ(edited.shown("show /three.value"), "input value float = 4\n");
    EXPECT_EQ(edited.session.play("undo 2"), "expected at most 1, the number of edits to take back");
    EXPECT_EQ(edited.session.play("begin x"), "");
    EXPECT_EQ(edited.session.play("undo"), "expected \"end\" first: a \"begin\" is open");
    EXPECT_EQ(edited.session.finish(), "expected \"end\" for each \"begin\", found the end of the script");
    EXPECT_EQ(edited.play("redo\nundo 2\nredo"), "");
    EXPECT_EQ(edited.host.noted, "taken back: two things\nmade again: two things\ntaken back: two things\n"
                                 "taken back: set /three.value 4\nmade again: set /three.value 4\n");
    EXPECT_TRUE(edited.session.undoAll());
    EXPECT_EQ(edited.text(), start);
}

TEST(EditStack, ARefusedEditChangesNothingAndIsNotKept)
{
    Edited edited(graphFile("nesting"));
    std::string const start = edited.text();
    for (char const* line : {"remove /scaled /scaled/product", "chain /total /three /total /three"}) {
        EXPECT_EQ(edited.session.play(line), "the graph does not allow it") << line;
        EXPECT_EQ(edited.text(), start) << line;
    }
    EXPECT_EQ(edited.session.play("undo"), "expected at most 0, the number of edits to take back");
}

TEST(EditStack, NamesThatAGraphGivesAreTold)
{
    Edited edited(graphFile("nesting"));
    EXPECT_EQ(edited.play("create / constant\ncreate / constant\nrename /constant three\nport rename /total.a b\n"
                          "save\nsave other.xml"),
              "");
    EXPECT_EQ(edited.host.noted, "made /constant\nmade /constant1\nrenamed to /three1\nrenamed to /total.b1\n");
    EXPECT_EQ(edited.host.saved, "\nother.xml\n");
}

// Whatever a graph holds, edits of all of its nodes can be taken back to the byte.
TEST(EditStack, SampleGraphsComeBackToTheByte)
{
    QDir const folder(qEnvironmentVariable("TAV_TEST_GRAPHS", exampleFile("graphs")));
    QStringList const files = folder.entryList({"*.xml"});
    ASSERT_FALSE(files.isEmpty());
    for (QString const& file : files) {
        if (file == "broken.xml" || file == "stdlib_ng.xml")
            continue;
        Edited edited(folder.filePath(file));
        std::string const start = edited.text();
        tool::Words names;
        for (AddRefWrapper<Node> const& node : edited.document.getTopCompound()->nodes())
            names.push_back(tool::quoted(std::string("/") + node->getName()));
        std::string all, script;
        for (std::string const& name : names) {
            all += ' ' + name;
            script += "metadata " + name + " edited yes\ndisconnect-all " + name + "\nrename " + name
                      + " renamed\n"
                        "port create /renamed input extra float\nundo 2\n";
        }
        script += "group / everything" + all
                  + "\ncopy / everything\npaste /\nexplode /everything\nundo\n"
                    "remove /everything\n";
        EXPECT_EQ(edited.play(script), "") << file.toStdString();
        edited.expectReversible(start, file.toStdString());
    }
}

// ---- completion

TEST(EditCompletion, KnowsWhatMayStandThere)
{
    Edited edited(graphFile("nesting"));
    EXPECT_EQ(edited.play("rename /three \"th ree\"\nnote / hint x"), "");
    struct Row {
        char const* line;
        std::size_t begin;
        tool::Words words;
    };
    Row const rows[] = {
        {"dis", 0, {"disconnect", "disconnect-all"}},
        {"port ", 5, {"create", "move", "remove", "rename"}},
        {"io /scaled in", 11, {"input"}},
        {"create / arithmetic/basic/m", 9, {"arithmetic/basic/multiply"}},
        {"type /total.a col", 14, {"color"}},
        {"remove ", 7, {"/"}},
        {"remove /", 7, {"\"/th ree\"", "/scaled", "/scaled/", "/total"}},
        {"rename /scaled/p", 7, {"/scaled/product"}},
        {"set \"/th ree.", 4, {"\"/th ree.out\"", "\"/th ree.value\""}},
        {"set /total.a", 4, {"/total.a"}},
        {"set /to", 4, {"/total."}},
        {"show /to", 5, {"/total"}},
        {"explode /", 8, {"/scaled", "/scaled/"}},
        {"copy / ", 7, {"\"th ree\"", "hint", "scaled", "total"}},
        {"group / g /s", 10, {"/scaled", "/scaled/"}},
        {"help port re", 10, {"remove", "rename"}},
        {"set /total.a 1 ", 15, {}},
        {"list # /", 8, {}},
        {"set \"\\x", 0, {}},
    };
    for (Row const& row : rows) {
        tool::Completions const found = tool::completionsOf(edited.document, row.line);
        EXPECT_EQ(found.begin, row.begin) << row.line;
        EXPECT_EQ(found.words, row.words) << row.line;
    }
    EXPECT_EQ(tool::completionsOf(edited.document, "port re").common(), "re");
    Edited fan(graphFile("fan_in"));
    EXPECT_EQ(tool::completionsOf(fan.document, "set /all.values.").words,
              (tool::Words{"/all.values.first", "/all.values.second", "/all.values.third"}));
    for (char const* line : {"group / g /sc", "set /to", "re"})
        EXPECT_FALSE(tool::completionsOf(edited.document, line).isWhole()) << line;
}

// ---- the tool

struct ToolEdit : testing::Test {
    QTemporaryDir folder;
    QByteArray const graph = readBytes(graphFile("nesting"));

    ToolRun edit(QByteArray const& script, QStringList const& options, char const* file = "graph.xml")
    {
        writeBytes(folder.filePath("graph.xml"), graph);
        writeBytes(folder.filePath("script"), script);
        return runTool(QStringList{"edit", file} + options, script, folder.path());
    }
    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files); }
};

TEST_F(ToolEdit, WritesWhatTheScriptMakes)
{
    QByteArray const expected = QByteArray(graph).replace("default_values=\"3\"", "default_values=\"4\"");
    QByteArray const script = "\xef\xbb\xbf# one edit\r\nset /three.value 4\r\n";
    EXPECT_EQ(edit(script, {"-s", "script", "-o", "-"}).out, expected);
    EXPECT_EQ(edit(script, {"-s", "-", "-o", "-"}).out, expected);
    EXPECT_EQ(edit(script, {"-o", "-"}).out, expected);
    EXPECT_EQ(edit(script, {"-s", "script", "-o", "graph.xml"}).out, "");
    EXPECT_EQ(readBytes(folder.filePath("graph.xml")), expected);
    EXPECT_EQ(edit(script + "save\nset /three.value 5\nsave other.xml", {}).errors(), "");
    EXPECT_EQ(readBytes(folder.filePath("graph.xml")), expected);
    EXPECT_EQ(readBytes(folder.filePath("other.xml")),
              QByteArray(graph).replace("default_values=\"3\"", "default_values=\"5\""));

    ToolRun const run = edit("list\nshow /three.value", {"-o", "-", "--undo-all"});
    EXPECT_EQ(run.out, graph);
    EXPECT_EQ(run.errors(), "/three   constant\n/scaled  compound  (graph inside)\n/total   add\n"
                            "input value float = 3\n");
}

TEST_F(ToolEdit, AWrongLineIsToldAndNothingIsWritten)
{
    QByteArray const script = "set /three.value 4\nsave other.xml\nremove /four\nset /three.value 5\nbegin x\n";
    ToolRun run = edit(script, {"-s", "script", "-o", "out.xml"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors(), "script:3: error: \"/four\" leads to no node\n");
    EXPECT_EQ(files(), (QStringList{"graph.xml", "script"}));

    run = edit(script, {"-o", "out.xml", "--keep-going"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors(), "<stdin>:3: error: \"/four\" leads to no node\n"
                            "<stdin>:6: error: expected \"end\" for each \"begin\", found the end of the script\n");
    EXPECT_EQ(readBytes(folder.filePath("out.xml")),
              QByteArray(graph).replace("default_values=\"3\"", "default_values=\"5\""));
    EXPECT_EQ(readBytes(folder.filePath("other.xml")),
              QByteArray(graph).replace("default_values=\"3\"", "default_values=\"4\""));
    EXPECT_EQ(readBytes(folder.filePath("graph.xml")), graph);
}

TEST_F(ToolEdit, WhatCannotBeReadOrWrittenIsTold)
{
    EXPECT_EQ(edit("", {}, "-").exitCode, 2);
    EXPECT_TRUE(edit("", {"-s", "missing"}).errors().starts_with("missing: error: cannot be read: "));
    EXPECT_EQ(edit("", {"--library", "missing"}).exitCode, 1);
    EXPECT_EQ(edit("save", {"-s", "script"}, "missing.xml").exitCode, 1);
    EXPECT_EQ(edit("save no/where.xml\nquit\nnonsense", {"-s", "script"}).exitCode, 1);
    EXPECT_EQ(edit("", {"-o", "."}).exitCode, 1);
    ToolRun const run = runTool({"edit", "-", "-s", "script"}, graph, folder.path());
    EXPECT_EQ(run.errors(), "");
    EXPECT_EQ(runTool({"edit", exampleFile("graphs/broken.xml"), "-o", "-"}).out, "");
}

#if defined(TAV_EXAMPLE_PLUGIN)
TEST_F(ToolEdit, APluginBringsItsPresetsAndItsRules)
{
    QByteArray const script = "create / arithmetic/mix\nset /mix.share 0.25\nconnect /mix.out /mix.a\n";
    ToolRun const run = edit(script, {"--plugin", TAV_EXAMPLE_PLUGIN});
    EXPECT_EQ(run.errors(), "<stdin>:3: error: the graph does not allow it\n");
    EXPECT_EQ(edit("", {"--plugin", "graph.xml"}).exitCode, 1);
}
#endif
