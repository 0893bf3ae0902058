#include <tav/kit/Document.h>

#include <tav/AnnotationList.h>
#include <tav/HostEditor.h>
#include <tav/NodeList.h>
#include <tav/Port.h>
#include <tav/PortList.h>
#include <tav/PortProperties.h>
#include <tav/kit/StandardCompound.h>
#include <tav/kit/StandardRuntime.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>

#if defined(__unix__)
#    include <csignal>
#    include <sys/resource.h>
#    include <sys/stat.h>
#endif

using namespace TAV_marlo_v1;

namespace {

QByteArray contentsOf(QString const& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

struct DocumentBase : testing::Test {
    kit::StandardRuntime runtime;
    kit::Document document{&runtime};
    QTemporaryDir folder;
    std::string const example = std::string(TAV_EXAMPLES_DIR) + "/graphs/annotations.xml";

    Compound& graph() { return *document.getTopCompound(); }
    std::string text() { return graph().saveToString(nullptr).toChar(); }
    std::string pathOf(char const* name) { return folder.filePath(QString::fromUtf8(name)).toStdString(); }
    std::string write(char const* name, QByteArray const& bytes)
    {
        QFile file(folder.filePath(QString::fromUtf8(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return pathOf(name);
    }
    void openExample()
    {
        StatusStr const status = document.open(example.c_str());
        ASSERT_STREQ(status.getErrorString(), "");
    }
};

} // namespace

// ---- opening

struct DocumentOpen : DocumentBase {};

TEST_F(DocumentOpen, ReplacesTheGraphInsideTheSameCompound)
{
    Compound const* const before = document.getTopCompound().get();
    openExample();
    EXPECT_EQ(document.getTopCompound().get(), before);
    EXPECT_EQ(text(), contentsOf(QString::fromStdString(example)).toStdString());
    EXPECT_STREQ(document.getFilePath(), example.c_str());
    EXPECT_STREQ(document.getName(), "annotations.xml");
    EXPECT_FALSE(document.hasUnsavedChanges());
    EXPECT_TRUE(document.findNodeFromPath("/product"));
}

TEST_F(DocumentOpen, WhatCannotBeReadChangesNothingAndNamesTheFile)
{
    openExample();
    graph().nodes()[0u]->setName("mine");
    std::string const before = text();
    QByteArray const good = contentsOf(QString::fromStdString(example));

    struct Row {
        char const* file;
        QByteArray bytes;
        char const* message;
    };
    Row const rows[] = {
        {"empty.xml", "", ": line 1, column "},
        {"cut.xml", good.left(good.size() / 2), ": line "},
        {"mark.xml", QByteArray("\xff\xfe<\0a\0", 6), ": line 1, column 1: not UTF-8 text"},
        {"zero.xml", QByteArray(good).replace(100, 1, QByteArray(1, '\0')), ": line 1, column 1: not UTF-8 text"},
        {"latin.xml",
         QByteArray(good).replace("second", "s\xe9"
                                            "cond"),
         ": line "},
        {"root.xml", "<other/>", ": line 1, column "},
    };
    for (Row const& row : rows) {
        std::string const path = write(row.file, row.bytes);
        StatusStr const status = document.open(path.c_str());
        EXPECT_EQ(std::string(status.getErrorString()).rfind(path + row.message, 0), 0u) << status.getErrorString();
    }
    std::string const missing = pathOf("missing.xml");
    std::string const directory = folder.path().toStdString();
    for (std::string const& path : {missing, directory}) {
        StatusStr const status = document.open(path.c_str());
        EXPECT_EQ(std::string(status.getErrorString()).rfind(path + ": cannot be read", 0), 0u)
            << status.getErrorString();
    }
    EXPECT_EQ(text(), before);
    EXPECT_STREQ(document.getFilePath(), example.c_str());
    EXPECT_TRUE(document.hasUnsavedChanges());
}

TEST_F(DocumentOpen, LineEndsOfAnotherSystemMakeNoDifference)
{
    openExample();
    std::string const expected = text();
    QByteArray const crlf = contentsOf(QString::fromStdString(example)).replace("\n", "\r\n");
    StatusStr const status = document.open(write("crlf.xml", crlf).c_str());
    ASSERT_STREQ(status.getErrorString(), "");
    EXPECT_EQ(text(), expected);
}

TEST_F(DocumentOpen, ItsOwnPathTakesBackWhatWasChanged)
{
    openExample();
    std::string const before = text();
    graph().nodes()[0u]->setName("changed");
    StatusStr const status = document.open(document.getFilePath());
    EXPECT_STREQ(status.getErrorString(), "");
    EXPECT_EQ(text(), before);
    EXPECT_STREQ(document.getFilePath(), example.c_str());
}

TEST_F(DocumentOpen, TextHasNoFileAndItsErrorsNameTheGivenSource)
{
    openExample();
    QByteArray const bytes = contentsOf(QString::fromStdString(example));
    StatusStr status = document.openText(bytes.constData(), static_cast<unsigned long long>(bytes.size()));
    EXPECT_STREQ(status.getErrorString(), "");
    EXPECT_STREQ(document.getFilePath(), "");
    EXPECT_STREQ(document.getName(), "annotations");
    status = document.openText("<a", 2, "the pipe");
    EXPECT_EQ(std::string(status.getErrorString()).rfind("the pipe: line 1, column ", 0), 0u);
}

TEST_F(DocumentOpen, ANewDocumentIsEmptyWithoutFileAndUnchanged)
{
    openExample();
    document.newDocument("sketch");
    EXPECT_TRUE(graph().nodes().empty());
    EXPECT_TRUE(graph().annotations().empty());
    EXPECT_STREQ(document.getFilePath(), "");
    EXPECT_STREQ(document.getName(), "sketch");
    EXPECT_FALSE(document.hasUnsavedChanges());
}

// ---- saving

struct DocumentSave : DocumentBase {
    void SetUp() override { openExample(); }
};

TEST_F(DocumentSave, WritesTheTextToTheByteUnderAnyName)
{
    std::string const path = pathOf("größe 数.xml");
    StatusStr status = document.saveAs(path.c_str());
    ASSERT_STREQ(status.getErrorString(), "");
    EXPECT_EQ(contentsOf(QString::fromStdString(path)).toStdString(), text());
    EXPECT_STREQ(document.getName(), "größe 数.xml");

    graph().nodes()[0u]->setName("renamed");
    status = document.save();
    ASSERT_STREQ(status.getErrorString(), "");
    EXPECT_EQ(contentsOf(QString::fromStdString(path)).toStdString(), text());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1) << "something was left beside the file";
}

TEST_F(DocumentSave, AFailureLeavesPathAndUnsavedStateAlone)
{
    graph().nodes()[0u]->setName("renamed");
    std::vector<std::string> targets{folder.path().toStdString(), pathOf("no/such/folder.xml")};
#if defined(__unix__)
    // Nothing may take the place of a pipe or device.
    targets.push_back(pathOf("pipe"));
    ASSERT_EQ(mkfifo(targets.back().c_str(), 0600), 0);
#endif
    for (std::string const& path : targets) {
        StatusStr const status = document.saveAs(path.c_str());
        EXPECT_EQ(std::string(status.getErrorString()).rfind(path + ": cannot be written: ", 0), 0u)
            << status.getErrorString();
        EXPECT_TRUE(document.hasUnsavedChanges());
        EXPECT_STREQ(document.getFilePath(), example.c_str());
    }
    EXPECT_TRUE(QDir(folder.path()).entryList(QDir::Files).isEmpty()) << "something was left behind";
}

#if defined(__unix__)
TEST_F(DocumentSave, AFullDiskLeavesTheOldFile)
{
    std::string const path = write("graph.xml", "the old file");
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    auto const handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit const small{100, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    StatusStr const status = document.saveAs(path.c_str());
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(std::string(status.getErrorString()).rfind(path + ": cannot be written: ", 0), 0u)
        << status.getErrorString();
    EXPECT_EQ(contentsOf(QString::fromStdString(path)), "the old file");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1) << "something was left beside the file";
}
#endif

TEST_F(DocumentSave, WithoutFileItIsRefused)
{
    document.newDocument("sketch");
    StatusStr const status = document.save();
    EXPECT_STREQ(status.getErrorString(), "sketch: the document has no file yet");
}

// ---- unsaved changes

struct DocumentUnsaved : DocumentBase {
    void SetUp() override { openExample(); }
};

TEST_F(DocumentUnsaved, EveryChangeThatIsSavedCountsUntilItIsSaved)
{
    struct Row {
        char const* what;
        std::function<void(Compound&)> change;
    };
    Row const rows[] = {
        {"a renamed node", [](Compound& g) { g.nodes()[0u]->setName("renamed"); }},
        {"a value", [](Compound& g) { g.nodes()[0u]->inputs()[0u]->setPortDefaultValues(StringArray("7")); }},
        {"a connection cut", [](Compound& g) { g.nodes()[2u]->inputs()[0u]->removeAllConnections(); }},
        {"metadata of a node", [](Compound& g) { g.nodes()[0u]->setMetadataValue("uiPosition", "1"); }},
        {"metadata of the graph", [](Compound& g) { g.setMetadataValue("author", "me"); }},
        {"a compound port",
         [](Compound& g) { g.createCompoundPort(eInput, "in", AddRefWrapper<PortDataType>(), PortProperties()); }},
        {"an annotation", [](Compound& g) { g.annotations()[0u]->setMetadataValue("text", "other"); }},
        {"a nested compound", [](Compound& g) { g.createNewCompound("inner"); }},
        {"a change inside it", [](Compound& g) { g.nodes()["inner"]->getAsCompound()->createIONode(eInputIO); }},
        {"its flag", [](Compound& g) { g.nodes()["inner"]->getAsCompound()->setIsReferenced(true); }},
        {"the type of a node", [](Compound& g) { g.nodes()[0u]->setNodeTypeName("other"); }},
        {"a removed node", [](Compound& g) { g.removeNode("inner"); }},
        {"the graph's name", [](Compound& g) { g.setName("other"); }},
    };
    std::string const path = pathOf("saved.xml");
    for (Row const& row : rows) {
        StatusStr const status = document.saveAs(path.c_str());
        ASSERT_STREQ(status.getErrorString(), "");
        EXPECT_FALSE(document.hasUnsavedChanges()) << "before " << row.what;
        row.change(graph());
        EXPECT_TRUE(document.hasUnsavedChanges()) << row.what;
    }
}

TEST_F(DocumentUnsaved, StatesAndMessagesAreNotSavedAndDoNotCount)
{
    AddRefWrapper<Node> const node = graph().nodes()[0u];
    node->stateFlags().set(eCollapsedState, true);
    node->addMessage("size", "looks large", eWarning);
    EXPECT_FALSE(document.hasUnsavedChanges());
}

TEST_F(DocumentUnsaved, AnEndedDocumentIsNoLongerWithItsRuntime)
{
    unsigned const before = runtime.getNumberOfContainers();
    {
        kit::Document const other(&runtime);
        EXPECT_EQ(runtime.getNumberOfContainers(), before + 1);
    }
    EXPECT_EQ(runtime.getNumberOfContainers(), before);
}
