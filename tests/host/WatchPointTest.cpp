#include <tav/WatchPointTable.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using namespace TAV_marlo_v1;

namespace {

struct Recorded final : WatchPoint {
    std::vector<std::pair<std::string, std::vector<std::string>>> columns;

    bool getRecordedParameters(StringArray& names) const override
    {
        for (auto const& column : columns)
            names.add(column.first.c_str());
        return true;
    }
    bool getRecordedValues(char const* name, StringArray& values) const override
    {
        for (auto const& column : columns) {
            if (column.first != name)
                continue;
            for (std::string const& value : column.second)
                values.add(value.c_str());
            return true;
        }
        return false;
    }
};

struct Table : testing::Test {
    QList<QString> header{"old"};
    QList<QList<QList<QString>>> rows{{{"old"}}};
    Recorded* const recorded = new Recorded;
    AddRefWrapper<WatchPoint> const watchPoint{recorded};

    void read() { getWatchPointTableContent(watchPoint, header, rows); }
};

TEST_F(Table, HasOneColumnForEachParameterWhateverTheirLengths)
{
    recorded->columns = {{"a", {"1"}}, {"é", {}}, {"b", {"2", "3"}}};
    read();
    EXPECT_EQ(header, QList<QString>({"a", "é", "b"}));
    QList<QList<QList<QString>>> const expected{{{"1"}, {}, {"2"}}, {{}, {}, {"3"}}};
    EXPECT_EQ(rows, expected);
}

TEST_F(Table, SplitsAValueIntoItsSiblingElements)
{
    struct Row {
        char const* value;
        QList<QString> cell;
    };
    Row const table[] = {
        {"<x>1</x><y>2</y>", {"1", "2"}},
        {" <x>a<b>c</b>d</x> between <y/>", {"acd", ""}},
        {"plain &lt; text ", {"plain < text "}},
        {"", {""}},
        {"a < b", {"a < b"}},
        {"<x>1", {"<x>1"}},
        {"</dummy><dummy>", {"</dummy><dummy>"}},
        {"<x>&unknown;</x>", {"<x>&unknown;</x>"}},
        {"<x><![CDATA[<é>]]></x><!-- none -->", {"<é>"}},
    };
    std::vector<std::string> values;
    for (Row const& row : table)
        values.emplace_back(row.value);
    recorded->columns = {{"v", values}};
    read();
    ASSERT_EQ(rows.size(), static_cast<int>(std::size(table)));
    for (int i = 0; i < rows.size(); ++i)
        EXPECT_EQ(rows[i], QList<QList<QString>>{table[i].cell}) << table[i].value;
}

TEST_F(Table, IsEmptyWithoutAWatchPointOrARecord)
{
    getWatchPointTableContent(WatchPoint::createNew(), header, rows);
    EXPECT_TRUE(header.isEmpty() && rows.isEmpty());
    recorded->columns = {{"a", {"1"}}};
    read();
    getWatchPointTableContent({}, header, rows);
    EXPECT_TRUE(header.isEmpty() && rows.isEmpty());
}

TEST(BaseWatchPoint, RecordsNothing)
{
    AddRefWrapper<WatchPoint> const watchPoint = WatchPoint::createNew();
    watchPoint->enable(true);
    EXPECT_FALSE(watchPoint->enabled());
    StringArray texts("kept");
    String text("kept");
    EXPECT_FALSE(watchPoint->getAvailableParameters(texts) || watchPoint->getParameterAcceptableValues("p", texts)
                 || watchPoint->getRecordedParameters(texts) || watchPoint->getRecordedValues("p", texts));
    EXPECT_FALSE(watchPoint->getParameterDescription("p", text) || watchPoint->getParameterValue("p", text)
                 || watchPoint->getParameterValueDescription("p", "v", text)
                 || watchPoint->setParameterValue("p", "v"));
    EXPECT_EQ(texts, StringArray("kept"));
    EXPECT_EQ(text, "kept");
}

} // namespace
