#include <tav/OptionalStringArray.h>
#include <tav/StringArray.h>

#include "foundation/Texts.h"

#include <gtest/gtest.h>

#include <utility>

namespace TAV_marlo_v1 {

static_assert(sizeof(StringArray) == sizeof(void*));

TEST(StringArrayAdding, KeepsOrderAndDuplicatesAndIgnoresNull)
{
    StringArray array("first");
    array.add("b");
    array.add(String("b"));
    array.add(static_cast<char const*>(nullptr));
    array.add("");
    EXPECT_EQ(textsOf(array), Texts({"first", "b", "b", ""}));
    EXPECT_TRUE(StringArray(static_cast<char const*>(nullptr)).empty());
    EXPECT_EQ(StringArray("").size(), 1u);
}

TEST(StringArrayAdding, ManyTextsOfAnyLengthStayWhole)
{
    StringArray array;
    Texts expected;
    for (std::size_t i = 0; i < 2000; ++i) {
        expected.emplace_back(i % 37, static_cast<char>('a' + i % 26));
        array.add(expected.back().c_str());
    }
    EXPECT_EQ(textsOf(array), expected);
}

TEST(StringArrayAdding, TakesItselfAndItsOwnTexts)
{
    StringArray array(arrayOf({"long enough for a block of its own", "x"}));
    Texts expected = textsOf(array);
    for (int i = 0; i < 6; ++i) { // with and without room left
        array.add(array);
        Texts const once = expected;
        expected.insert(expected.end(), once.begin(), once.end());
        array.add(array[0]);
        expected.push_back(expected[0]);
    }
    EXPECT_EQ(textsOf(array), expected);
}

TEST(StringArrayUnique, AddsOnceAndRemovesTheFirst)
{
    StringArray array;
    EXPECT_TRUE(array.addUnique("a"));
    EXPECT_FALSE(array.addUnique("a"));
    EXPECT_FALSE(array.addUnique(nullptr));
    EXPECT_EQ(textsOf(array), Texts({"a"}));

    array = arrayOf({"a", "", "bb", "a", "c"});
    EXPECT_FALSE(array.removeUnique("b"));
    EXPECT_FALSE(array.removeUnique(nullptr));
    EXPECT_TRUE(array.removeUnique("a"));
    EXPECT_EQ(textsOf(array), Texts({"", "bb", "a", "c"}));
    EXPECT_TRUE(array.removeUnique(""));
    EXPECT_TRUE(array.removeUnique(array[2]));
    EXPECT_EQ(textsOf(array), Texts({"bb", "a"}));
    EXPECT_TRUE(array.addUnique("c"));
    EXPECT_TRUE(array.contains("c"));
    EXPECT_FALSE(array.contains("b"));
}

TEST(StringArrayEquality, LooksAtBordersBetweenTexts)
{
    Texts const different[] = {{}, {""}, {"", ""}, {"ab"}, {"a", "b"}, {"b", "a"}, {"a", "b", ""}, {"", "ab"}};
    for (Texts const& a : different) {
        for (Texts const& b : different)
            EXPECT_EQ(arrayOf(a) == arrayOf(b), &a == &b);
    }
    StringArray grown(arrayOf({"a", "gone"}));
    grown.removeUnique("gone");
    EXPECT_EQ(grown, StringArray("a"));
}

TEST(StringArrayMoving, AMovedFromArrayIsEmptyAndUsableAgain)
{
    StringArray source(arrayOf({"a", "b"}));
    StringArray const taken(std::move(source));
    EXPECT_EQ(textsOf(taken), Texts({"a", "b"}));
    EXPECT_EQ(source, StringArray());
    EXPECT_EQ(StringArray(source).size(), 0u);
    source.clear();
    source.add(taken);
    StringArray& alias = source;
    source = std::move(alias);
    source = alias;
    EXPECT_EQ(source, taken);
    source.clear();
    EXPECT_TRUE(source.empty());
    EXPECT_EQ(taken.size(), 2u);
}

TEST(OptionalStringArray, IsEqualOnlyWhenBothAreSetOrNot)
{
    StringArray const values(arrayOf({"a", "b"}));
    OptionalStringArray const unset;
    OptionalStringArray emptied(values);
    emptied.setValues(StringArray());
    EXPECT_FALSE(unset.isValid());
    EXPECT_TRUE(emptied.isValid());
    EXPECT_NE(unset, emptied);
    EXPECT_EQ(OptionalStringArray(values), OptionalStringArray(StringArray(values)));
    EXPECT_NE(OptionalStringArray(values), emptied);
    EXPECT_EQ(OptionalStringArray(values).getValues(), values);
}

} // namespace TAV_marlo_v1
