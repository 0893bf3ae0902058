// What is still alive when a process ends: modules and the program's own static objects die in an order that
// each system chooses.
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

struct AtExit : testing::Test {
    QTemporaryDir folder;

    /// What was written down between load and end, a line each.
    QStringList run(QString const& way, QStringList const& modules)
    {
        QStringList arguments{way};
        for (QString const& module : modules)
            arguments.append(QString(TAV_PROBE_FOLDER "/%1" TAV_PROBE_SUFFIX).arg(module));
        qputenv("TAV_PROBE_LOG", folder.filePath("log").toUtf8());
        QProcess process;
        process.start(TAV_AT_EXIT, arguments);
        EXPECT_TRUE(process.waitForFinished(60000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
        QFile log(folder.filePath("log"));
        EXPECT_TRUE(log.open(QIODevice::ReadOnly));
        return QString::fromUtf8(log.readAll()).trimmed().split('\n');
    }
};

/// Lines with one of these ends, in order.
std::string only(QStringList const& ends, QStringList const& lines)
{
    QStringList kept;
    for (QString const& line : lines) {
        if (std::any_of(ends.begin(), ends.end(), [&](QString const& end) { return line.endsWith(end); }))
            kept.append(line);
    }
    return kept.join('\n').toStdString();
}

std::string sorted(QStringList lines)
{
    lines.sort();
    return lines.join('\n').toStdString();
}

} // namespace

TEST_F(AtExit, AStaticLoaderUnregistersInTheOrderOfRegistration)
{
    QStringList const lines = run("loader dies", {"probe_b", "probe_a"});
    EXPECT_EQ(only({"registers", "probe_a", "probe_b", "ends", "connections"}, lines),
              "probe_b registers\nprobe_a registers\n"
              "probe_b probe_b\nprobe_b ends\nprobe_a probe_a\nprobe_a ends\n"
              "last look at in, 0 connections");
    // The modules' own static objects go before or after the program's.
    EXPECT_EQ(sorted(lines.filter("leaves")), "probe_a leaves\nprobe_b leaves");
}

TEST_F(AtExit, ModulesThatNobodyUnloadsAreNotUnregistered)
{
    EXPECT_EQ(sorted(run("loader stays", {"probe_b", "probe_a"})),
              "last look at in, 0 connections\n"
              "probe_a arrives\nprobe_a leaves\nprobe_a registers\n"
              "probe_b arrives\nprobe_b leaves\nprobe_b registers");
}

TEST_F(AtExit, ModulesThatBringThemselvesAreUnregisteredWhenTheLastRuntimeHasEnded)
{
    QStringList const lines = run("for good", {"probe_itself_b", "probe_itself_a"});
    EXPECT_EQ(only({"registers", "_a", "_b", "ends"}, lines),
              "probe_itself_b registers\nprobe_itself_a registers\n"
              "probe_itself_a ends\nprobe_itself_b ends\n"
              "probe_itself_b probe_itself_b\nprobe_itself_a probe_itself_a");
    EXPECT_TRUE(lines.contains("last look at in, 0 connections"));
}
