// The waypoints of a runtime, and the stand-in for the analytics library that they are reported to.

#include "CountingContainer.h"

#include <pel_1_2/PELFileSink.h>
#include <pel_1_2/PELLumConnection.h>
#include <pel_1_2/PELWaypoint.h>
#include <pel_1_2/PELWaypointAttributeHashString.h>
#include <pel_1_2/PELWaypointAttributeId.h>
#include <pel_1_2/PELWaypointAttributeNowId.h>
#include <pel_1_2/PELWaypointAttributeString.h>
#include <pel_1_2/PELWaypointAttributeTimer.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>

using namespace TAV_marlo_v1;

namespace {

struct RecordingSink final : PELSink {
    void write(PELReport const& report) override { reports.push_back(report); }
    std::vector<PELReport> reports;
};

struct ReportingRuntime final : TestRuntime {
    PELLumConnection* getLUMConnection() const override { return connection; }
    PELLumConnection* connection = nullptr;
};

using Attributes = std::vector<std::pair<std::string, std::string>>;

struct Waypoints : testing::Test {
    RecordingSink sink;
    PELLumConnection connection{sink};
    std::optional<ReportingRuntime> runtime{std::in_place};

    void SetUp() override { runtime->connection = &connection; }
};

TEST_F(Waypoints, BearTheAgreedNames)
{
    char const* const waypoints[] = {"TAV.EDITOR.CREATE", "TAV.EDITOR.DESTROY", "TAV.GRAPH.CREATION",
                                     "TAV.GRAPH.NODE.CREATION", "TAV.GRAPH.BROWSER"};
    for (unsigned i = 0; i < 5; ++i)
        EXPECT_STREQ(runtime->waypointName(static_cast<Instrumentable::Waypoints>(i)), waypoints[i]);
    EXPECT_EQ(runtime->waypointName(static_cast<Instrumentable::Waypoints>(5)), nullptr);

    struct {
        PELWaypointAttribute const& attribute;
        char const *waypoint, *name;
    } const attributes[] = {
        {runtime->editorCreateWaypoint_id(), "TAV.EDITOR.CREATE", "TAV.EDITOR.ID"},
        {runtime->editorDestroyWaypoint_id(), "TAV.EDITOR.DESTROY", "TAV.EDITOR.ID"},
        {runtime->editorDestroyWaypoint_duration(), "TAV.EDITOR.DESTROY", "TAV.EDITOR.USED_DURATION"},
        {runtime->graphCreateWaypoint_id(), "TAV.GRAPH.CREATION", "TAV.GRAPH.CREATION.ID"},
        {runtime->nodeCreateWaypoint_graphId(), "TAV.GRAPH.NODE.CREATION", "TAV.GRAPH.ID"},
        {runtime->nodeCreateWaypoint_type(), "TAV.GRAPH.NODE.CREATION", "TAV.GRAPH.NODE.CREATION.TYPE"},
        {runtime->nodeCreateWaypoint_method(), "TAV.GRAPH.NODE.CREATION", "TAV.GRAPH.NODE.CREATION.METHOD"},
        {runtime->contentBrowserWaypoint_template(), "TAV.GRAPH.BROWSER", "TAV.GRAPH.BROWSER.SELECTED_TEMPLATE"},
        {runtime->contentBrowserWaypoint_category(), "TAV.GRAPH.BROWSER", "TAV.GRAPH.BROWSER.CATEGORY"}};
    for (auto const& [attribute, waypoint, name] : attributes) {
        EXPECT_STREQ(attribute.getWaypoint().getName(), waypoint);
        EXPECT_STREQ(attribute.getName(), name);
    }
    EXPECT_EQ(&runtime->editorDestroyWaypoint_id(), &attributes[1].attribute);
    EXPECT_EQ(&runtime->editorDestroyWaypoint(), &attributes[1].attribute.getWaypoint());
}

TEST_F(Waypoints, RegisteringAContainerReportsTheGraphIfThereIsAConnection)
{
    CountingContainer container(&*runtime);
    CountingContainer const homeless;
    Container::registerWithUUID("homeless", const_cast<CountingContainer*>(&homeless));
    runtime->connection = nullptr;
    Container::registerWithUUID("silent", &container);
    EXPECT_TRUE(sink.reports.empty());
    runtime->connection = &connection;
    Container::registerWithUUID("first", &container);
    Container::registerWithUUID("second", &container);
    ASSERT_EQ(sink.reports.size(), 2u);
    EXPECT_EQ(sink.reports[0].waypoint, "TAV.GRAPH.CREATION");
    EXPECT_EQ(sink.reports[0].attributes, Attributes({{"TAV.GRAPH.CREATION.ID", "first"}}));
    EXPECT_EQ(sink.reports[1].attributes, Attributes({{"TAV.GRAPH.CREATION.ID", "second"}}));
}

TEST_F(Waypoints, TheEndOfAnEditorCanBeMatchedWithItsBeginning)
{
    runtime->editorCreateWaypoint_id();
    runtime->editorCreateWaypoint().reached();
    runtime->editorDestroyWaypoint_id().setId(runtime->editorCreateWaypoint_id().getId());
    runtime->editorDestroyWaypoint_duration();
    runtime->editorDestroyWaypoint().reached();
    runtime->editorCreateWaypoint().reached();
    ASSERT_EQ(sink.reports.size(), 3u);
    std::string const id = sink.reports[0].attributes.at(0).second;
    EXPECT_NE(id, sink.reports[2].attributes.at(0).second);
    ASSERT_EQ(sink.reports[1].attributes.size(), 2u);
    EXPECT_EQ(sink.reports[1].attributes[0].second, id);
    std::string const duration = sink.reports[1].attributes[1].second;
    EXPECT_EQ(duration.find_first_not_of("0123456789."), std::string::npos) << duration;
    EXPECT_EQ(sink.reports[0].time.size(), std::string("2024-05-31T12:00:00.000Z").size());
}

TEST_F(Waypoints, AHashedTextIsNotTold)
{
    runtime->nodeCreateWaypoint_type().setValue("a");
    runtime->nodeCreateWaypoint_method().setValue("menu");
    runtime->nodeCreateWaypoint_method().setValue("key");
    runtime->nodeCreateWaypoint().reached();
    EXPECT_EQ(sink.reports.at(0).attributes, Attributes({{"TAV.GRAPH.NODE.CREATION.TYPE", "af63dc4c8601ec8c"},
                                                         {"TAV.GRAPH.NODE.CREATION.METHOD", "key"}}));
    EXPECT_EQ(PELWaypointAttributeHashString::hash(nullptr), "cbf29ce484222325");
    EXPECT_EQ(PELWaypointAttributeHashString::hash("foobar"), "85944171f73967e8");
}

TEST(FileSink, AppendsALineOfJsonForEachReport)
{
    std::filesystem::path const path = std::filesystem::temp_directory_path() / u8"tav é 漢.jsonl";
    std::filesystem::remove(path);
    std::u8string const utf8 = path.u8string();
    PELReport const report{"w", "t", {{"a\"\\", "x\n\t\x01\xC3\xA9"}, {"bad", "\xC3|\xED\xA0\x80|\xF5"}}};
    for (int i = 0; i < 2; ++i) {
        PELFileSink sink(reinterpret_cast<char const*>(utf8.c_str()));
        sink.write(report);
        EXPECT_TRUE(sink.good());
    }
    std::string const line = "{\"waypoint\":\"w\",\"time\":\"t\",\"attributes\":{\"a\\\"\\\\\":\"x\\u000a\\u0009\\u0001"
                             "\xC3\xA9\",\"bad\":\"\xEF\xBF\xBD|\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD|\xEF\xBF\xBD\"}}";
    std::ifstream file(path, std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), line + "\n" + line + "\n");
    file.close();
    std::filesystem::remove(path);

    PELFileSink nowhere((std::string(reinterpret_cast<char const*>(utf8.c_str())) + "/no/such/folder").c_str());
    nowhere.write(report);
    EXPECT_FALSE(nowhere.good());
}

} // namespace
