#include "ToolRun.h"

#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

TEST(ToolUsage, EveryCommandHelpsWithExamples)
{
    for (char const* command : {"info", "check", "format", "dump", "draw", "library"}) {
        ToolRun const run = runTool({command, "--help"});
        EXPECT_EQ(run.exitCode, 0) << command;
        EXPECT_TRUE(run.out.contains(QByteArray("Examples:\n  tav ") + command)) << run.out.constData();
    }
    EXPECT_EQ(runTool({"--help"}).exitCode, 0);
}

TEST(ToolUsage, MisuseIsToldApartFromWrongInput)
{
    QString const graph = exampleFile("graphs/fan_in.xml");
    QList<QStringList> const misuses = {{},
                                        {"explain", graph},
                                        {"info"},
                                        {"check", "--fast", graph},
                                        {"draw", graph, "--depth", "-1"},
                                        {"draw", graph, "-o", "picture.bmp"},
                                        {"format", "-", "--in-place"},
                                        {"format", graph, "--in-place", "-o", "other.xml"}};
    for (QStringList const& arguments : misuses) {
        ToolRun const run = runTool(arguments);
        EXPECT_EQ(run.exitCode, 2) << arguments.join(' ').toStdString();
        EXPECT_FALSE(run.err.isEmpty()) << arguments.join(' ').toStdString();
    }
    for (QStringList const& arguments : QList<QStringList>{{"info", "missing.xml"},
                                                           {"format", "missing.xml"},
                                                           {"dump", graph, "/nowhere"},
                                                           {"dump", graph, "/one"},
                                                           {"draw", graph, "/nowhere"},
                                                           {"library", graph},
                                                           {"check", graph, "--library", "missing.xml"}})
        EXPECT_EQ(runTool(arguments).exitCode, 1) << arguments.join(' ').toStdString();
}

TEST(ToolUsage, WordsOfAnyScriptComeAndGoAsTheyAre)
{
    QString const missing = "größe 数 узел 😀 \"q\" %PATH%.xml";
    ToolRun const run = runTool({"info", missing});
    EXPECT_TRUE(run.errors().starts_with(missing.toStdString() + ": error: cannot be read: ")) << run.errors();
    EXPECT_TRUE(runTool({"info", exampleFile("graphs/fan_in.xml"), missing}).err.contains(missing.toUtf8()));
}

// ---- format

struct ToolFormat : testing::Test {
    QTemporaryDir folder;
    QByteArray const good = readBytes(exampleFile("graphs/annotations.xml"));
};

TEST_F(ToolFormat, WhatTheWriterWroteComesBackToTheByte)
{
    QStringList files{exampleFile("library/arithmetic.library.xml")};
    for (QString const& name : QDir(exampleFile("graphs")).entryList({"*.xml"})) {
        if (name != "broken.xml")
            files << exampleFile("graphs") + '/' + name;
    }
    EXPECT_EQ(files.size(), 7);
    for (QString const& file : files) {
        ToolRun const run = runTool({"format", file});
        EXPECT_EQ(run.exitCode, 0) << run.err.constData();
        EXPECT_EQ(run.out.toStdString(), readBytes(file).toStdString()) << file.toStdString();
    }
}

TEST_F(ToolFormat, AnyLayoutGivesTheSameText)
{
    QByteArray const untidy =
        "<?xml version=\"1.0\"?>\r\n<!-- by hand -->\r\n"
        + QByteArray(good).replace("            <", "\t<").replace(" flag=\"0\"", "\r\n flag='0'");
    ASSERT_NE(untidy, good);
    EXPECT_EQ(runTool({"format", "-"}, untidy).out, good);

    QString const file = folder.filePath("größe 数 😀.xml");
    writeBytes(file, untidy);
    EXPECT_EQ(runTool({"format", file, "-o", folder.filePath("other.xml")}).exitCode, 0);
    EXPECT_EQ(readBytes(folder.filePath("other.xml")), good);
    EXPECT_EQ(readBytes(file), untidy);
    EXPECT_EQ(runTool({"format", "--in-place", file}).out, "");
    EXPECT_EQ(readBytes(file), good);
}

TEST_F(ToolFormat, WhatWouldLoseSomethingIsNotWritten)
{
    QByteArray const broken = readBytes(exampleFile("graphs/broken.xml"));
    QString const file = folder.filePath("graph.xml");
    for (QByteArray const& text : {broken, good.left(good.size() - 20)}) {
        writeBytes(file, text);
        ToolRun const run = runTool({"format", "--in-place", file});
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_TRUE(run.err.contains(": error: ")) << run.err.constData();
        EXPECT_EQ(readBytes(file), text);
        EXPECT_EQ(runTool({"format", file}).out, "");
    }
}

// ---- info, dump, library

TEST(ToolInfo, CountsEachThingOnce)
{
    ToolRun const run =
        runTool({"info", "--json", exampleFile("graphs/nesting.xml"), exampleFile("graphs/annotations.xml"),
                 "--library", exampleFile("library/arithmetic.library.xml")});
    ASSERT_EQ(run.exitCode, 0) << run.err.constData();
    QJsonArray const files = QJsonDocument::fromJson(run.out).array();
    ASSERT_EQ(files.size(), 2);
    QJsonObject nesting = files[0].toObject();
    EXPECT_EQ(nesting.take("file").toString(), exampleFile("graphs/nesting.xml"));
    QJsonObject const expected{{"name", "nesting"},
                               {"type", "compound"},
                               {"nodes", 3},
                               {"compounds", 1},
                               {"io_nodes", 2},
                               {"depth", 1},
                               {"inputs", 7},
                               {"outputs", 4},
                               {"connections", 5},
                               {"backdrops", 0},
                               {"sticky_notes", 0},
                               {"types", QJsonObject{{"add", 1}, {"compound", 1}, {"constant", 1}, {"multiply", 1}}},
                               {"unknown_types", QJsonArray{}},
                               {"errors", 0},
                               {"warnings", 0}};
    EXPECT_EQ(nesting, expected) << run.out.constData();
    EXPECT_EQ(files[1].toObject()["backdrops"].toInt(), 1);
    EXPECT_EQ(files[1].toObject()["sticky_notes"].toInt(), 1);
}

TEST(ToolInfo, MemoryIsThatOfEachThingOnceAndGrowsWithIt)
{
    auto const memoryOf = [](QByteArray const& text) {
        ToolRun const run = runTool({"info", "--json", "--memory", "-"}, text);
        EXPECT_EQ(run.exitCode, 0) << run.err.constData();
        return QJsonDocument::fromJson(run.out).array()[0].toObject()["memory"].toObject();
    };
    QByteArray const text = readBytes(exampleFile("graphs/nesting.xml"));
    QJsonObject const memory = memoryOf(text);
    auto const countOf = [&memory](char const* kind) { return memory[kind].toObject()["count"].toInt(); };
    EXPECT_EQ(countOf("nodes"), 7); // the top and the inner compound, two IO nodes, three others
    EXPECT_EQ(countOf("compounds"), 2);
    EXPECT_EQ(countOf("connections"), 5);
    qint64 sum = 0;
    for (QString const& kind : memory.keys())
        sum += memory[kind].toObject()["bytes"].toInt();
    EXPECT_EQ(memory["bytes"].toInt(), sum);

    QByteArray longer = text;
    qsizetype const changed = text.count(" default_values=\"");
    longer.replace(" default_values=\"", " default_values=\"" + QByteArray(1000, '7'));
    QJsonObject const grown = memoryOf(longer);
    EXPECT_EQ(grown["values"].toObject()["bytes"].toInt(),
              memory["values"].toObject()["bytes"].toInt() + 1000 * changed);
    EXPECT_EQ(grown["bytes"].toInt(), memory["bytes"].toInt() + 1000 * changed);
    EXPECT_TRUE(runTool({"info", "--memory", "-"}, text).out.contains("connections            5"));
}

TEST(ToolInfo, AsTextAndWithoutLibraryNoTypeIsUnknown)
{
    ToolRun const run = runTool({"info", "-"}, readBytes(exampleFile("graphs/broken.xml")));
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.out.startsWith("<stdin>\n  graph         broken (compound)\n  nodes         5\n"))
        << run.out.constData();
    EXPECT_TRUE(run.out.contains("\n  errors        3\n  warnings      1\n")) << run.out.constData();
    EXPECT_FALSE(run.out.contains("unknown types"));
}

TEST(ToolDump, ListsTheCompoundAtAPath)
{
    ToolRun const run = runTool({"dump", exampleFile("graphs/nesting.xml"), "/scaled"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.out.startsWith("TAV Compound \"scaled\"\n2 Internal Inputs:\n#0:  \"value\" of type \"float\"\n"
                                   "  connected to \"a\" of node \"product\"\n"))
        << run.out.constData();
}

TEST(ToolLibrary, ShowsDefinitionsWithPortsAndDefaultsAsATree)
{
    QString const file = exampleFile("library/arithmetic.library.xml");
    QByteArray const text = runTool({"library", file}).out;
    EXPECT_TRUE(text.contains("arithmetic \"Arithmetic\"/\n    constant\n        in  value : float = 1\n"
                              "        out out : float\n"))
        << text.constData();
    EXPECT_TRUE(text.contains("\n    interpolation/\n        blend \"Blend\"\n            in  first : float = 0\n"))
        << text.constData();
    QJsonObject const json = QJsonDocument::fromJson(runTool({"library", "--json", file}).out).object();
    QJsonObject const basic = json["libraries"][0].toObject();
    EXPECT_EQ(basic["nice_name"].toString(), "Basic operations");
    EXPECT_EQ(basic["definitions"][1]["inputs"][0], (QJsonObject{{"name", "a"}, {"type", "float"}, {"default", "1"}}));
}

// ---- draw

struct ToolDraw : testing::Test {
    QTemporaryDir folder;

    QByteArray draw(char const* graph, QStringList const& options, char const* target = "picture.dot")
    {
        ToolRun const run = runTool(QStringList{"draw", exampleFile(graph), "-o", target} + options, {}, folder.path());
        EXPECT_EQ(run.exitCode, 0) << run.err.constData();
        return readBytes(folder.filePath(target));
    }
};

TEST_F(ToolDraw, OpensCompoundsDownToTheGivenDepth)
{
    QByteArray const open = draw("graphs/nesting.xml", {});
    EXPECT_TRUE(open.contains("subgraph cluster_"));
    EXPECT_EQ(open.count(" -> "), 5);
    QByteArray const closed = draw("graphs/nesting.xml", {"--depth", "0"});
    EXPECT_FALSE(closed.contains("subgraph cluster_"));
    EXPECT_EQ(closed.count(" -> "), 2);
}

TEST_F(ToolDraw, TextOfAnyKindIsShownAsItIs)
{
    QByteArray text = readBytes(exampleFile("graphs/annotations.xml"));
    text.replace("name=\"size\"", "name=\"&lt;b&gt; &amp;amp; &quot;数&quot;\"").replace("size.out", "x.out");
    text.replace("<connection output_port=\"x.out\" input_port=\"product.a\"/>", "");
    ToolRun const run = runTool({"draw", "-", "-o", folder.filePath("picture.dot")}, text);
    EXPECT_EQ(run.exitCode, 0) << run.err.constData();
    QByteArray const dot = readBytes(folder.filePath("picture.dot"));
    EXPECT_TRUE(dot.contains("<B>&lt;b&gt; &amp;amp; &quot;数&quot;</B>")) << dot.constData();
}

TEST_F(ToolDraw, PicturesComeFromGraphviz)
{
    if (QStandardPaths::findExecutable("dot").isEmpty())
        GTEST_SKIP() << "Graphviz is not installed";
    QByteArray const svg = draw("graphs/annotations.xml", {}, "picture.svg");
    EXPECT_TRUE(svg.contains("Größe × Anzahl — 数量")) << svg.left(2000).constData();
    QByteArray const placed = draw("graphs/annotations.xml", {"--positions"}, "placed.svg");
    EXPECT_TRUE(placed.contains("<svg") && placed != svg);
    EXPECT_TRUE(draw("graphs/fan_in.xml", {}, "picture.png").startsWith("\x89PNG"));
}
