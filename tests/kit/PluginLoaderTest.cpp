#include <tav/kit/PluginLoader.h>

#include <tav/Host.h>
#include <tav/Runtime.h>
#include <tav/kit/Document.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

using namespace TAV_marlo_v1;

namespace {

struct PluginLoader : testing::Test {
    QTemporaryDir folder;
    std::unique_ptr<kit::PluginLoader> loader = std::make_unique<kit::PluginLoader>("test");

    void SetUp() override { qputenv("TAV_PROBE_LOG", folder.filePath("log").toUtf8()); }
    void TearDown() override
    {
        loader.reset();
        EXPECT_EQ(Host::getNumberOfRuntimes(), 0u);
    }

    static std::string probe(char const* name) { return std::string(TAV_PROBE_FOLDER) + "/" + name + TAV_PROBE_SUFFIX; }
    std::string pathOf(char const* name) { return folder.filePath(QString(name) + TAV_PROBE_SUFFIX).toStdString(); }
    std::string load(std::string const& path)
    {
        StatusStr const status = loader->load(path.c_str());
        return status.getErrorString();
    }
    std::string unload() const
    {
        StatusStr const status = loader->unloadAll();
        return status.getErrorString();
    }
    /// What the modules wrote since the last call.
    QStringList taken() const
    {
        QFile log(folder.filePath("log"));
        QStringList const lines =
            log.open(QIODevice::ReadOnly) ? QString::fromUtf8(log.readAll().trimmed()).split('\n') : QStringList();
        log.remove();
        return lines;
    }
};

} // namespace

TEST_F(PluginLoader, ModulesRegisterInOrderAndLeaveOnlyWhenAllAreUnregistered)
{
    EXPECT_EQ(load(probe("probe_b")), "");
    EXPECT_EQ(load(probe("probe_a")), "");
    EXPECT_STREQ(Host::getRuntimeAt(0)->getName(), "probe_a");
    EXPECT_EQ(loader->getNumberOfModules(), 2u);
    EXPECT_EQ(taken(), QStringList({"probe_b arrives", "probe_b registers", "probe_a arrives", "probe_a registers"}));
    EXPECT_EQ(unload(), "");
    EXPECT_EQ(taken(), QStringList({"probe_b probe_b", "probe_b ends", "probe_a probe_a", "probe_a ends",
                                    "probe_a leaves", "probe_b leaves"}));
    EXPECT_EQ(Host::getRuntimeByName("probe_a"), nullptr);

    EXPECT_EQ(load(probe("probe_a")), "") << "again, after the end";
    EXPECT_TRUE(Host::getRuntimeByName("probe_a"));
}

TEST_F(PluginLoader, AModuleIsLoadedOnceWhateverPathLeadsToIt)
{
    std::string const detour = probe("../modules/probe_a");
    kit::PluginLoader other("other");
    EXPECT_EQ(load(probe("probe_a")), "");
    EXPECT_EQ(load(detour), "");
    EXPECT_EQ(load(QDir::toNativeSeparators(QString::fromStdString(detour)).toStdString()), "");
#if defined(_WIN32)
    EXPECT_EQ(load(QString::fromStdString(detour).toUpper().toStdString()), "");
#endif
    StatusStr const status = other.load(detour.c_str());
    EXPECT_STREQ(status.getErrorString(), "");
    EXPECT_EQ(taken(), QStringList({"probe_a arrives", "probe_a registers"}));
    EXPECT_EQ(loader->getNumberOfModules(), 1u);
    EXPECT_EQ(other.getNumberOfModules(), 0u);
}

TEST_F(PluginLoader, WhatIsNoFitModuleIsRefusedBeforeItsCodeRuns)
{
    QFile good(QString::fromStdString(probe("probe_a")));
    ASSERT_TRUE(good.open(QIODevice::ReadOnly));
    QByteArray bytes = good.readAll();
    auto const write = [this](char const* name, QByteArray const& contents) {
        QFile file(QString::fromStdString(pathOf(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size());
        return pathOf(name);
    };
    struct Row {
        std::string path;
        char const* message;
    };
    Row const rows[] = {
        {pathOf("missing"), ": cannot be loaded: there is no such file"},
        {folder.path().toStdString(), ": cannot be loaded: it is no file"},
        {write("text", "no module at all"), ": is no plug-in: it states no plug-in interface"},
        {write("empty", ""), ": is no plug-in: it states no plug-in interface"},
        {write("named", QByteArray("tav plug-in interface 1\0", 24)), ": cannot be loaded: "},
        {write("cut", bytes.mid(64)), ": cannot be loaded: "},
        {probe("probe_other"), ": is a plug-in for interface 99, expected 1"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(load(row.path).rfind(row.path + row.message, 0), 0u) << load(row.path);
    EXPECT_EQ(load("").rfind(": cannot be loaded", 0), 0u);
    EXPECT_EQ(taken(), QStringList());
    EXPECT_EQ(loader->getNumberOfModules(), 0u);

    std::string const marked = probe("probe_marked");
    EXPECT_EQ(load(marked), marked + ": cannot be loaded: it does not export the plug-in interface");
}

TEST_F(PluginLoader, AFolderIsLoadedInTheOrderOfNamesPastWhatIsBroken)
{
    QDir const modules(folder.filePath("модули 数"));
    ASSERT_TRUE(modules.mkpath("."));
    ASSERT_TRUE(QFile::copy(QString::fromStdString(probe("probe_a")), modules.filePath("3" TAV_PROBE_SUFFIX)));
    ASSERT_TRUE(QFile::copy(QString::fromStdString(probe("probe_b")), modules.filePath("1" TAV_PROBE_SUFFIX)));
    for (char const* name : {"2" TAV_PROBE_SUFFIX, "notes.txt"}) {
        QFile file(modules.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    StringArray errors;
    EXPECT_EQ(loader->loadFolder(modules.path().toUtf8().constData(), errors), 2u);
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_EQ(std::string(errors[0]).rfind(modules.filePath("2" TAV_PROBE_SUFFIX).toStdString() + ": is no plug-in", 0),
              0u)
        << errors[0];
    EXPECT_EQ(taken().filter("registers"), QStringList({"probe_b registers", "probe_a registers"}));
    EXPECT_EQ(loader->loadFolder("no/such/folder", errors), 0u);
    EXPECT_STREQ(errors[1], "no/such/folder: cannot be read: there is no such folder");
    EXPECT_EQ(unload(), "");
}

TEST_F(PluginLoader, AnOpenGraphKeepsItsRuntimeAndModule)
{
    EXPECT_EQ(load(probe("probe_a")), "");
    auto document = std::make_unique<kit::Document>(Host::getRuntimeByName("probe_a"));
    std::string const message = unload();
    EXPECT_NE(message.find(": a graph of its runtime \"probe_a\" is still open"), std::string::npos) << message;
    EXPECT_FALSE(taken().contains("probe_a ends"));
    document.reset();
    EXPECT_EQ(unload(), "");
}

TEST_F(PluginLoader, ModulesStayWhileTheHostHasOtherUsers)
{
    EXPECT_EQ(load(probe("probe_a")), "");
    (void)Host::initialize("another");
    taken();
    std::string const message = unload();
    EXPECT_NE(message.find(": stays loaded: the host has other users still"), std::string::npos) << message;
    EXPECT_EQ(taken(), QStringList());
    Host::terminate();
    EXPECT_EQ(taken(), QStringList({"probe_a probe_a", "probe_a ends"}));
    EXPECT_EQ(unload(), "");
    EXPECT_EQ(taken(), QStringList({"probe_a leaves"}));
}

TEST_F(PluginLoader, AModuleThatLeavesItsRuntimeBehindIsNotUnloadedUnderIt)
{
    EXPECT_EQ(load(probe("probe_keeps")), "");
    EXPECT_EQ(load(probe("probe_a")), "");
    Runtime* const left = Host::getRuntimeByName("probe_keeps");
    std::string const message = unload();
    EXPECT_NE(message.find("probe_keeps" TAV_PROBE_SUFFIX ": stays loaded: it has not deleted its runtime"),
              std::string::npos)
        << message;
    EXPECT_EQ(loader->getNumberOfModules(), 1u);
    EXPECT_TRUE(taken().contains("probe_a leaves"));
    delete left;
    EXPECT_EQ(unload(), "");
    EXPECT_EQ(taken(), QStringList({"probe_keeps ends", "probe_keeps leaves"}));
}
