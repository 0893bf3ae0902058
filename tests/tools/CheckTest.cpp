#include "ToolRun.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct Check : testing::Test {
    QTemporaryDir folder;

    ToolRun check(QByteArray const& text, QStringList const& options = {}, int seconds = 60)
    {
        writeBytes(folder.filePath("graph.xml"), text);
        return runTool(QStringList{"check", "graph.xml"} + options, {}, folder.path(), seconds);
    }
};

QByteArray nested(int levels)
{
    QByteArray const open = "<tavCompound name=\"c\" type=\"t\" flag=\"0\"><metadatas/><ports/><child_graph><sub_root>"
                            "<nodes><compound>";
    QByteArray text;
    text.reserve(levels * open.size());
    for (int i = 0; i < levels; ++i)
        text += open;
    return text;
}

QByteArray graphWith(QByteArray const& nodes, QByteArray const& connections = "<connections/>")
{
    return "<tavCompound name=\"g\" type=\"compound\" flag=\"0\">\n<metadatas/>\n<ports/>\n<child_graph><sub_root>\n"
           "<nodes>"
           + nodes + "</nodes>\n" + connections + "</sub_root></child_graph></tavCompound>";
}

} // namespace

TEST_F(Check, AGoodGraphSaysNothing)
{
    for (char const* name : {"nesting", "fan_in", "property_lists", "annotations", "watch_points"}) {
        ToolRun const run = runTool({"check", exampleFile((QByteArray("graphs/") + name + ".xml").constData()),
                                     "--library", exampleFile("library/arithmetic.library.xml")});
        EXPECT_EQ(run.exitCode, 0) << name;
        EXPECT_EQ(run.err, "") << name;
        EXPECT_EQ(run.out, "") << name;
    }
}

TEST_F(Check, EveryProblemOfAReadableGraphIsToldWithItsPlace)
{
    ToolRun const run = check(readBytes(exampleFile("graphs/broken.xml")),
                              {"--library", exampleFile("library/arithmetic.library.xml")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors(),
              "graph.xml:27:21: error: there is a node \"sum\" in this graph already\n"
              "graph.xml:37:21: error: the library knows no node type \"text_label\"\n"
              "graph.xml:57:17: error: the connection leads to \"sum.c\", but the node \"sum\" has no such input\n"
              "graph.xml:58:17: error: the connection leads to \"missing.out\", but there is no such node\n"
              "graph.xml:59:17: warning: the connection \"label.out\" to \"sum.b\" joins the types string and float\n"
              "graph.xml:60:17: note: here begins a cycle of the nodes ring\n");
}

TEST_F(Check, TypesAreJudgedWithALibraryOnlyAndWarningsAreNoErrors)
{
    QByteArray const text =
        graphWith("<node><tavNode name=\"a\" type=\"nobody_knows\" flag=\"0\"><metadatas/><ports>"
                  "<port name=\"o\" type=\"int\" flag=\"0\" is_input=\"no\"/></ports></tavNode></node>"
                  "<node><tavNode name=\"b\" type=\"add\" flag=\"0\"><metadatas/><ports>"
                  "<port name=\"i\" type=\"bool\" flag=\"0\" is_input=\"yes\"/></ports></tavNode></node>",
                  "<connections><connection output_port=\"a.o\" input_port=\"b.i\"/></connections>");
    ToolRun run = check(text);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors(),
              "graph.xml:6:14: warning: the connection \"a.o\" to \"b.i\" joins the types int and bool\n");
    run = check(text, {"--library", exampleFile("library/arithmetic.library.xml")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.firstError(), "graph.xml:5:14: error: the library knows no node type \"nobody_knows\"");
}

TEST_F(Check, NamesThatHoldDotsAreFound)
{
    QByteArray const text =
        graphWith("<node><tavNode name=\"a.b\" type=\"t\" flag=\"0\"><metadatas/><ports>"
                  "<port name=\"o.x\" type=\"int\" flag=\"0\" is_input=\"no\"/></ports></tavNode></node>"
                  "<node><tavNode name=\"a\" type=\"t\" flag=\"0\"><metadatas/><ports>"
                  "<port name=\"i\" type=\"int\" flag=\"0\" is_input=\"yes\"><ports>"
                  "<port name=\"r\" type=\"int\" flag=\"0\" is_input=\"yes\"/></ports></port></ports></tavNode></node>",
                  "<connections><connection output_port=\"a.b.o.x\" input_port=\"a.i.r\"/></connections>");
    EXPECT_EQ(check(text).err, "");
}

TEST_F(Check, WhatTheReaderSkipsIsNotJudged)
{
    QByteArray const stray = "<other><connection output_port=\"a.b\" input_port=\"c.d\"/><port/></other>"
                             "<connection output_port=\"a.b\" input_port=\"c.d\"/>";
    QByteArray text = graphWith("<other><tavNode name=\"a\"/></other>" + stray);
    text.replace("<metadatas/>", "<!-- x --><metadatas/>" + stray);
    ToolRun const run = check(text);
    EXPECT_EQ(run.errors(), "");
    EXPECT_EQ(run.exitCode, 0);
}

// Whatever somebody feeds it, it ends soon, with the one exit code and a line that an editor can jump to.
TEST_F(Check, HostileTextEndsWithAnErrorAndAPlace)
{
    QByteArray const good = readBytes(exampleFile("graphs/nesting.xml"));
    QByteArray noise(100000, 'x');
    for (qsizetype i = 0; i < noise.size(); ++i)
        noise[i] = static_cast<char>((i * 7919 + i / 13) % 255 + 1);
    QByteArray bomb = "<!DOCTYPE tavCompound [<!ENTITY a0 \"ha\">";
    for (int i = 1; i < 40; ++i)
        bomb += QString("<!ENTITY a%1 \"&a%2;&a%2;\">").arg(i).arg(i - 1).toUtf8();
    bomb += "]>" + QByteArray(good).replace("name=\"nesting\"", "name=\"&a39;\"");
    QByteArray utf16("\xff\xfe", 2);
    for (char const c : good)
        utf16.append(c).append('\0');

    struct Row {
        char const* what;
        QByteArray text;
    };
    Row const rows[] = {
        {"an empty file", ""},
        {"white space only", " \n\n"},
        {"a cut file", good.left(good.size() / 2)},
        {"a file cut in a tag", good.left(good.indexOf("type=") + 3)},
        {"noise", noise},
        {"100,000 levels", nested(100000)},
        {"an entity bomb", bomb},
        {"UTF-16", utf16},
        {"another root", "<svg xmlns=\"http://www.w3.org/2000/svg\"/>"},
        {"text behind the root", good + "<more/>"},
        {"a node without name", QByteArray(good).replace("tavNode name=\"three\" ", "tavNode ")},
        {"a port without direction", QByteArray(good).replace(" is_input=\"yes\"", "")},
        {"a flag that is no number", QByteArray(good).replace("flag=\"0\"", "flag=\"yes\"")},
        {"a flag beyond 32 bits", QByteArray(good).replace("flag=\"4\"", "flag=\"4294967296\"")},
        {"bytes that are not UTF-8", QByteArray(good).replace("three", "thr\xff")},
    };
    for (Row const& row : rows) {
        ToolRun const run = check(row.text, {}, /*seconds=*/20);
        EXPECT_EQ(run.exitCode, 1) << row.what;
        static QRegularExpression const form("^graph\\.xml:[1-9]\\d*:[1-9]\\d*: error: .+");
        EXPECT_TRUE(form.match(run.firstError()).hasMatch()) << row.what << ": " << run.err.constData();
    }
}

TEST_F(Check, OneBadFileDoesNotHideTheOthers)
{
    writeBytes(folder.filePath("bad.xml"), "<a>");
    writeBytes(folder.filePath("worse.xml"), "<b>");
    ToolRun const run =
        runTool({"check", "bad.xml", exampleFile("graphs/fan_in.xml"), "missing.xml", "worse.xml"}, {}, folder.path());
    EXPECT_EQ(run.exitCode, 1);
    QStringList const lines = QString::fromUtf8(run.err).split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 3) << run.err.constData();
    EXPECT_TRUE(lines[0].startsWith("bad.xml:1:"));
    EXPECT_TRUE(lines[1].startsWith("missing.xml: error: cannot be read: "));
    EXPECT_TRUE(lines[2].startsWith("worse.xml:1:"));
}
