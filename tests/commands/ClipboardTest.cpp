#include "support/EditableGraph.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>

using namespace tav_test;

namespace {

using Names = std::vector<std::string>;

struct Clipboard : testing::Test {
    EditableGraph graph;
    ~Clipboard() override { CopyPasteCommandBase::setUseLocalClipboard(false); }
};

TEST_F(Clipboard, WithoutAnApplicationTheLocalTextStandsIn)
{
    CopyPasteCommandBase::setClipboardData("one");
    EXPECT_STREQ(CopyPasteCommandBase::getClipboardData().toChar(), "one");
    EXPECT_FALSE(CopyPasteCommandBase::useLocalClipboard());
}

TEST_F(Clipboard, WithAnApplicationItIsTheSystems)
{
    int count = 1;
    char name[] = "test";
    char* arguments[] = {name, nullptr};
    QGuiApplication application(count, arguments);
    QClipboard& system = *QGuiApplication::clipboard();

    CopyPasteCommandBase::setUseLocalClipboard(true);
    system.setText("theirs");
    CopyPasteCommandBase::setClipboardData("local");
    EXPECT_EQ(system.text(), "theirs");
    EXPECT_STREQ(CopyPasteCommandBase::getClipboardData().toChar(), "local");

    CopyPasteCommandBase::setUseLocalClipboard(false);
    EXPECT_STREQ(CopyPasteCommandBase::getClipboardData().toChar(), "theirs");
    CopyPasteCommandBase::setClipboardData("shared \xc3\xa9");
    EXPECT_EQ(system.text(), QString::fromUtf8("shared \xc3\xa9"));
    system.setText("changed by others");
    EXPECT_STREQ(CopyPasteCommandBase::getClipboardData().toChar(), "changed by others");
    system.clear();
    EXPECT_STREQ(CopyPasteCommandBase::getClipboardData().toChar(), "local") << "it kept what it held before";

    CopyPasteCommandBase::setClipboardData("");
    EXPECT_STREQ(CopyPasteCommandBase::getClipboardData().toChar(), "local");

    // What is no UTF-8 the system gives back otherwise than it got it: the local text stands in until the next.
    CopyPasteCommandBase::setClipboardData("\xff kept");
    EXPECT_STREQ(CopyPasteCommandBase::getClipboardData().toChar(), "\xff kept");
    CopyPasteCommandBase::setClipboardData("shared again");
    system.setText("theirs again");
    EXPECT_STREQ(CopyPasteCommandBase::getClipboardData().toChar(), "theirs again");
}

TEST_F(Clipboard, CopyTakesOnlyWhatIsThere)
{
    CopyPasteCommandBase::setUseLocalClipboard(true);
    CopyCommand copy;
    EXPECT_FALSE(copy.addSourceNode("hub")) << "no compound";
    EXPECT_FALSE(copy.doit());
    EXPECT_TRUE(copy.setParentCompound(&graph.container, "/"));
    EXPECT_FALSE(copy.addSourceNode("nobody"));
    EXPECT_FALSE(copy.addSourceAnnotation("nobody"));
    EXPECT_TRUE(copy.addSourceNode("hub"));
    EXPECT_TRUE(copy.addSourceNode("sink"));
    EXPECT_TRUE(copy.addSourceAnnotation("note"));
    EXPECT_TRUE(copy.doit());
    StringArray nodes, notes;
    nodes.add("hub");
    nodes.add("sink");
    notes.add("note");
    EXPECT_STREQ(CopyPasteCommandBase::getClipboardData().toChar(),
                 graph.top->saveItemsToString(nodes, notes, eSaveInnerConnections).toChar());
}

TEST_F(Clipboard, PasteDuplicatesInputConnectionsOnlyWhenAsked)
{
    CopyPasteCommandBase::setUseLocalClipboard(true);
    for (bool const duplicates : {false, true}) {
        CopyCommand copy(graph.top);
        copy.addSourceNode("mix");
        copy.doit();
        std::string const before = graph.picture();
        PasteCommand paste(graph.top);
        paste.duplicateSourceInputConnections(duplicates);
        ASSERT_TRUE(paste.doit());
        EXPECT_EQ(graph.in("/mix1", 0)->isConnected(), duplicates);
        EXPECT_EQ((*graph.in("/mix1", 2)->children())[0u]->isConnected(), duplicates);
        CopyPasteCommandBase::setClipboardData("something else");
        EXPECT_TRUE(paste.undo());
        EXPECT_EQ(graph.picture(), before);
        EXPECT_TRUE(paste.redo()) << "it kept its text";
        EXPECT_TRUE(paste.undo());
    }
}

TEST_F(Clipboard, PasteRefusesWhatIsNoItemText)
{
    CopyPasteCommandBase::setUseLocalClipboard(true);
    std::string const before = graph.picture();
    PasteCommand paste(graph.top), nowhere;
    EXPECT_FALSE(nowhere.doit());
    for (char const* const text : {"", "no graph", "<sub_root><nodes>"}) {
        CopyPasteCommandBase::setClipboardData(text);
        EXPECT_FALSE(paste.doit()) << text;
        EXPECT_FALSE(paste.redo()) << "the text is forgotten";
    }
    CopyPasteCommandBase::setClipboardData("<sub_root><nodes/></sub_root>");
    EXPECT_TRUE(paste.doit()) << "nothing is an item text too";
    EXPECT_TRUE(paste.undo());
    EXPECT_EQ(graph.picture(), before);
}

} // namespace
