#include <tav/kit/Files.h>

#include <tav/kit/Document.h>
#include <tav/kit/StandardRuntime.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#if defined(_WIN32)
#    include <windows.h>
#endif

using namespace TAV_marlo_v1;

namespace {

struct Files : testing::Test {
    QTemporaryDir folder;
    kit::StandardRuntime runtime;
    kit::Document document{&runtime};

    std::string pathOf(char const* name) { return folder.filePath(QString::fromUtf8(name)).toStdString(); }
    QByteArray contentsOf(std::string const& path)
    {
        QFile file(QString::fromStdString(path));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
    std::string save(std::string const& path)
    {
        StatusStr const status = document.saveAs(path.c_str());
        return status.getErrorString();
    }
    std::string open(std::string const& path)
    {
        StatusStr const status = document.open(path.c_str());
        return status.getErrorString();
    }
};

} // namespace

TEST_F(Files, NamesOfAnyScriptComeBackAsTheyWere)
{
    for (char const* name : {"größe.xml", "узел.xml", "数 図.xml", "شبكة.xml", "😀.xml", "e\u0301.xml", "%41 & 'a'.xml"})
    {
        std::string const path = pathOf(name);
        document.newDocument(name);
        EXPECT_EQ(save(path), "");
        EXPECT_TRUE(QDir(folder.path()).entryList(QDir::Files).contains(QString::fromUtf8(name))) << name;
        document.newDocument();
        EXPECT_EQ(open(path), "");
        EXPECT_STREQ(document.getName(), name);
        EXPECT_EQ(document.getFilePath(), path);
        EXPECT_STREQ(document.getTopCompound()->getName(), name);
    }
}

TEST_F(Files, APathMayHaveTheSystemsOwnSeparators)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir("sub"));
    std::string const path = pathOf("sub/scene.xml");
    std::string const native = QDir::toNativeSeparators(QString::fromStdString(path)).toStdString();
    EXPECT_EQ(save(native), "");
    EXPECT_STREQ(document.getName(), "scene.xml");
    EXPECT_EQ(document.getFilePath(), native);
    EXPECT_EQ(open(path), "");
    EXPECT_STREQ(document.getName(), "scene.xml");
}

TEST_F(Files, TextEndsItsLinesAlikeOnEverySystem)
{
    document.getTopCompound()->setMetadataValue("note", "one\ntwo\r\nthree");
    EXPECT_EQ(save(pathOf("lines.xml")), "");
    QByteArray const bytes = contentsOf(pathOf("lines.xml"));
    EXPECT_GT(bytes.count('\n'), 3);
    EXPECT_EQ(bytes.count('\r'), 0);
    EXPECT_EQ(open(pathOf("lines.xml")), "");
    EXPECT_EQ(document.getTopCompound()->saveToString(nullptr), String(bytes.constData()));
}

TEST_F(Files, WindowsKeepsNoFileOfSomeNames)
{
    struct Row {
        char const* path;
        char const* fault;
    };
    Row const rows[] = {
        {"", ""},
        {"scene.xml", ""},
        {"C:\\graphs\\scene.xml", ""},
        {"C:scene.xml", ""},
        {"//server/share/../a.b/.hidden", ""},
        {"\\\\?\\C:\\a.xml", ""},
        {"console.xml", ""},
        {"com10.xml", ""},
        {"nul.d/scene.xml", ""},
        {"数.xml", ""},
        {"nul", "\"nul\" is the name of a device on Windows, not of a file"},
        {"C:/graphs/Aux.tar.xml", "\"Aux.tar.xml\" is the name of a device on Windows, not of a file"},
        {"com1 .xml", "\"com1 .xml\" is the name of a device on Windows, not of a file"},
        {"LPT\u00b2", "\"LPT\u00b2\" is the name of a device on Windows, not of a file"},
        {"conin$", "\"conin$\" is the name of a device on Windows, not of a file"},
        {"\\\\.\\pipe\\x", "it is the path of a device, not of a file"},
        {"scene.xml:hidden", "Windows has no such file names: \"scene.xml:hidden\" has \":\" in it"},
        {"C:/a/C:/b", "Windows has no such file names: \"C:\" has \":\" in it"},
        {"what?/scene.xml", "Windows has no such file names: \"what?\" has \"?\" in it"},
        {"a\tb", "Windows has no such file names: a control character is in it"},
        {"scene.", "Windows has no such file names: \"scene.\" ends with a dot"},
        {"folder /scene.xml", "Windows has no such file names: \"folder \" ends with a blank"},
    };
    for (Row const& row : rows)
        EXPECT_STREQ(kit::windowsPathFault(row.path).toChar(), row.fault) << row.path;
    for (Row const& row : rows) {
#if defined(_WIN32)
        EXPECT_STREQ(kit::pathFault(row.path).toChar(), row.fault) << row.path;
#else
        EXPECT_STREQ(kit::pathFault(row.path).toChar(), "") << row.path;
#endif
    }
}

#if defined(_WIN32)

TEST_F(Files, AReservedNameIsNeitherWrittenNorRead)
{
    document.getTopCompound()->createNewCompound("inside");
    for (char const* name : {"nul.xml", "con", "a.xml:b"}) {
        std::string const path = pathOf(name);
        std::string const fault = kit::pathFault(path.c_str()).toChar();
        EXPECT_EQ(save(path), path + ": cannot be written: " + fault);
        EXPECT_EQ(open(path), path + ": cannot be read: " + fault);
    }
    EXPECT_TRUE(document.hasUnsavedChanges());
    EXPECT_TRUE(document.findNodeFromPath("/inside"));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList());
}

TEST_F(Files, WhatAnotherProgramHoldsOpenIsLeftAloneAndNothingIsLost)
{
    std::string const path = pathOf("held.xml");
    ASSERT_EQ(save(path), "");
    QByteArray const before = contentsOf(path);
    document.getTopCompound()->createNewCompound("inside");

    std::wstring const name = QString::fromStdString(path).toStdWString();
    for (DWORD const share : {DWORD(0), DWORD(FILE_SHARE_READ)}) {
        HANDLE const held = CreateFileW(name.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr);
        ASSERT_NE(held, INVALID_HANDLE_VALUE);
        EXPECT_EQ(save(path).rfind(path + ": cannot be written: ", 0), 0u) << save(path);
        if (share == 0) {
            kit::Document other(&runtime);
            StatusStr const status = other.open(path.c_str());
            EXPECT_EQ(std::string(status.getErrorString()).rfind(path + ": cannot be read: ", 0), 0u)
                << status.getErrorString();
        }
        CloseHandle(held);
        EXPECT_EQ(contentsOf(path), before);
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList("held.xml")) << "nothing lies beside it";
        EXPECT_TRUE(document.hasUnsavedChanges());
        EXPECT_TRUE(document.findNodeFromPath("/inside"));
    }
    EXPECT_EQ(save(path), "") << "once it is free";
    EXPECT_FALSE(document.hasUnsavedChanges());
    EXPECT_NE(contentsOf(path), before);
}

#endif
