#include <tav/PropertyList.h>

#include "foundation/Texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace TAV_marlo_v1 {

namespace {

/// The whole list as text, to compare all of it at once.
std::string contents(PropertyList const& list)
{
    return list.serialize(eSerializePlain).toChar();
}

/// "a" three times and "b": the same key again comes about through setStringPairAt only.
PropertyList listWithRepeatedKeys()
{
    PropertyList list;
    for (char const* key : {"1", "2", "3", "b"})
        list.addStringPair(key, key);
    for (unsigned i = 0; i < 3; ++i)
        list.setStringPairAt(i, "a", std::to_string(i).c_str());
    return list;
}

struct PropertyListPairs : testing::Test {
    PropertyList list;
    void SetUp() override
    {
        list.addStringPair("k", "1");
        list.addStringPair("l", arrayOf({"x", "y"}));
    }
};

using PropertyListAt = PropertyListPairs;

struct PropertyListChildren : testing::Test {
    PropertyList list;
    void SetUp() override
    {
        list.addChildList("a").addStringPair("in", "1");
        list.addChildList("b");
        list.addChildList("a").addStringPair("in", "3");
    }
};

} // namespace

TEST_F(PropertyListPairs, AKnownKeyGetsTheNewValuesBehindItsOwn)
{
    EXPECT_TRUE(list.addStringPair("k", "2"));
    EXPECT_TRUE(list.addStringPair("k", arrayOf({"3", "4"})));
    EXPECT_TRUE(list.addStringPair("new", StringArray()));
    EXPECT_EQ(contents(list), "k={1,2,3,4};l={x,y};new={}");
}

TEST_F(PropertyListPairs, SettingReplacesTheValuesOfAKnownKeyOnly)
{
    EXPECT_FALSE(list.setStringPairValue("absent", "1"));
    EXPECT_FALSE(list.setStringPairValues("absent", StringArray()));
    EXPECT_TRUE(list.setStringPairValue("l", list.getStringPairValue("l")));
    EXPECT_TRUE(list.setStringPairValues("k", arrayOf({"2", "3"})));
    EXPECT_EQ(contents(list), "k={2,3};l={x}");
}

TEST_F(PropertyListPairs, LookingUpGivesTheFirstValueOrAppendsAll)
{
    list.addStringPair("none", StringArray());
    EXPECT_STREQ(list.getStringPairValue("l"), "x");
    EXPECT_EQ(list.getStringPairValue("absent"), nullptr);
    EXPECT_EQ(list.getStringPairValue("none"), nullptr);
    EXPECT_TRUE(list.hasStringPair("none"));
    EXPECT_FALSE(list.hasStringPair("L"));

    StringArray out("kept");
    EXPECT_TRUE(list.getStringPairValues("l", out));
    EXPECT_FALSE(list.getStringPairValues("absent", out));
    list.getStringPairNames(out);
    EXPECT_EQ(textsOf(out), Texts({"kept", "x", "y", "k", "l", "none"}));
}

TEST_F(PropertyListPairs, NullIsRefusedEverywhere)
{
    EXPECT_FALSE(list.addStringPair(nullptr, "1") || list.addStringPair("k", static_cast<char const*>(nullptr)));
    EXPECT_FALSE(list.setStringPairValue(nullptr, "1") || list.setStringPairValue("k", nullptr));
    EXPECT_FALSE(list.setStringPairAt(0, nullptr, "1")
                 || list.setStringPairAt(0, "k", static_cast<char const*>(nullptr)));
    EXPECT_FALSE(list.hasStringPair(nullptr) || list.removeStringPair(nullptr) || list.getStringPairValue(nullptr));
    EXPECT_EQ(contents(list), "k={1};l={x,y}");
}

TEST_F(PropertyListPairs, RemovingTakesTheFirstOfTheKey)
{
    PropertyList repeated = listWithRepeatedKeys();
    EXPECT_EQ(contents(repeated), "a={0};a={1};a={2};b={b}");
    EXPECT_TRUE(repeated.removeStringPair("a"));
    EXPECT_EQ(contents(repeated), "a={1};a={2};b={b}");
    EXPECT_FALSE(repeated.removeStringPair("c"));
    repeated.removeAll();
    EXPECT_TRUE(repeated.empty());
}

TEST_F(PropertyListAt, AnIndexPastTheEndChangesNothing)
{
    String key("key"), value("value");
    StringArray values("values");
    EXPECT_FALSE(list.getStringPairAt(2, key, value) || list.getStringPairAt(2, key, values));
    EXPECT_FALSE(list.setStringPairAt(2, "k", "v") || list.setStringPairAt(2, "k", values));
    EXPECT_TRUE(key == "key" && value == "value" && values == StringArray("values"));
    EXPECT_STREQ(list[2].key(), "");
    EXPECT_TRUE(list[2].values().empty());
    EXPECT_EQ(contents(list), "k={1};l={x,y}");
}

TEST_F(PropertyListAt, ReadsAndReplacesWholePairs)
{
    String key, value("old");
    StringArray values("kept");
    EXPECT_TRUE(list.getStringPairAt(1, key, value));
    EXPECT_TRUE(key == "l" && value == "x");
    EXPECT_TRUE(list.getStringPairAt(1, key, values));
    EXPECT_EQ(textsOf(values), Texts({"kept", "x", "y"}));
    EXPECT_TRUE(list.setStringPairAt(0, "none", StringArray()));
    EXPECT_TRUE(list.getStringPairAt(0, key, value));
    EXPECT_TRUE(key == "none" && value == "");
    EXPECT_FALSE(list.hasStringPair("k"));

    Texts keys;
    for (PropertyList::Pair const& pair : list)
        keys.push_back(pair.key());
    EXPECT_EQ(keys, Texts({"none", "l"}));
}

TEST(PropertyListSorting, IsByBytesAndKeepsTheOrderOfEqualKeys)
{
    PropertyList list = listWithRepeatedKeys();
    list.setStringPairAt(1, "\xc3\xa4", "1");
    list.setStringPairAt(3, "B", "b");
    list.sortKeys();
    EXPECT_EQ(contents(list), "B={b};a={0};a={2};\xc3\xa4={1}");
}

TEST(PropertyListLarge, FindsTheFirstOfAKeyThroughEveryKindOfChange)
{
    PropertyList list;
    constexpr int kMany = 3000;
    auto const nameOf = [](int i) { return "key" + std::to_string(i); };
    for (int i = 0; i < kMany; ++i)
        list.addStringPair(nameOf(i).c_str(), std::to_string(i).c_str());
    EXPECT_STREQ(list.getStringPairValue("key2999"), "2999");
    // Two later pairs of a key that stands far in front, then the first ones go, one after the other.
    list.setStringPairAt(1000, "key5", "second");
    EXPECT_STREQ(list.getStringPairValue("key5"), "5");
    list.setStringPairAt(2000, "key5", "third");
    EXPECT_FALSE(list.hasStringPair("key1000"));
    for (char const* next : {"second", "third"}) {
        EXPECT_TRUE(list.removeStringPair("key5"));
        EXPECT_STREQ(list.getStringPairValue("key5"), next);
    }
    EXPECT_TRUE(list.removeStringPair("key5"));
    EXPECT_FALSE(list.hasStringPair("key5"));
    list.addStringPair("key5", "again");
    list.sortKeys();
    EXPECT_STREQ(list.getStringPairValue("key5"), "again");
    for (int i = 0; i < kMany; ++i) {
        bool const isThere = i != 1000 && i != 2000;
        EXPECT_EQ(list.hasStringPair(nameOf(i).c_str()), isThere);
        if (isThere && i != 5) {
            EXPECT_EQ(list.getStringPairValue(nameOf(i).c_str()), std::to_string(i));
        }
        EXPECT_EQ(list.removeStringPair(nameOf(i).c_str()), isThere);
    }
    EXPECT_TRUE(list.empty());
}

TEST(PropertyListLarge, IsWhatAPlainListWouldBeAfterAnySeriesOfChanges)
{
    PropertyList list;
    std::vector<std::pair<std::string, std::string>> plain;
    std::mt19937 random(7);
    auto const below = [&random](std::size_t end) { return static_cast<unsigned>(random() % end); };
    for (unsigned step = 0; step < 6000; ++step) {
        // It grows, shrinks to a few and grows again; a hundredth of the pairs gets the key of another one.
        bool const grows = step / 1500 % 2 == 0;
        std::string const value = std::to_string(step);
        unsigned const choice = below(100);
        if (plain.empty() || choice < (grows ? 70u : 20u)) {
            plain.emplace_back("key" + value, value);
            EXPECT_TRUE(list.addStringPair(plain.back().first.c_str(), value.c_str()));
        } else if (choice == 99) {
            std::string const& key = plain[below(plain.size())].first;
            unsigned const index = below(plain.size());
            EXPECT_TRUE(list.setStringPairAt(index, key.c_str(), value.c_str()));
            plain[index] = {std::string(key), value};
        } else {
            std::string const key = plain[below(plain.size())].first;
            auto const first =
                std::find_if(plain.begin(), plain.end(), [&key](auto const& pair) { return pair.first == key; });
            EXPECT_STREQ(list.getStringPairValue(key.c_str()), first->second.c_str());
            EXPECT_TRUE(list.removeStringPair(key.c_str()));
            plain.erase(first);
        }
        ASSERT_EQ(list.getNumberOfPairs(), plain.size());
        if (step % 100 != 0)
            continue;
        String key, text;
        for (unsigned i = 0; i < plain.size(); ++i) {
            ASSERT_TRUE(list.getStringPairAt(i, key, text));
            ASSERT_EQ(plain[i], std::make_pair(std::string(key.toChar()), std::string(text.toChar()))) << step;
        }
    }
}

TEST_F(PropertyListChildren, AreFoundByNameFirstAndInOrder)
{
    EXPECT_EQ(list.getNumberOfChildLists(), 3u);
    EXPECT_STREQ(list.getChildList("a")->getStringPairValue("in"), "1");
    EXPECT_EQ(list.getChildList("c"), nullptr);
    EXPECT_EQ(list.getChildList(nullptr), nullptr);
    EXPECT_FALSE(list.empty());

    String name("kept");
    PropertyList const* child = &list;
    EXPECT_FALSE(list.getChildListAt(3, name, child));
    EXPECT_TRUE(name == "kept" && child == &list);
    EXPECT_TRUE(list.getChildListAt(1, name, child));
    EXPECT_TRUE(name == "b" && child == list.getChildList("b"));

    Texts names;
    for (auto const& entry : list.childLists())
        names.push_back(entry.name + contents(*entry.list));
    EXPECT_EQ(names, Texts({"ain={1}", "b", "ain={3}"}));
    EXPECT_EQ(list.childLists()[3].list, nullptr);
}

TEST_F(PropertyListChildren, SettingReplacesTheFirstOrAddsOne)
{
    PropertyList* const first = list.getChildList("a");
    EXPECT_TRUE(list.setChildList("a", *list.getChildList("b")));
    EXPECT_TRUE(list.setChildList("c", list));
    EXPECT_FALSE(list.setChildList(nullptr, list));
    EXPECT_EQ(contents(list), "a[];b[];a[in={3}];c[a[];b[];a[in={3}]]");
    EXPECT_EQ(list.getChildList("a"), first);
    EXPECT_TRUE(list.removeChildList("a"));
    EXPECT_FALSE(list.removeChildList("x"));
    EXPECT_EQ(contents(list), "b[];a[in={3}];c[a[];b[];a[in={3}]]");
}

TEST_F(PropertyListChildren, AReferenceStaysGoodWhileOthersAreAdded)
{
    PropertyList& kept = list.addChildList(nullptr);
    for (int i = 0; i < 100; ++i)
        list.addChildList("more");
    EXPECT_TRUE(list.removeChildList("a"));
    kept.addStringPair("k", "v");
    EXPECT_EQ(list.getChildList(""), &kept);
    EXPECT_EQ(contents(*list.getChildList("")), "k={v}");
}

TEST_F(PropertyListChildren, AListCanBeReplacedByItsOwnPart)
{
    list.getChildList("a")->addChildList("deep").addStringPair("k", "v");
    PropertyList moved(list);
    list = *list.getChildList("a");
    EXPECT_EQ(contents(list), "in={1};deep[k={v}]");
    moved = std::move(*moved.getChildList("a"));
    EXPECT_EQ(moved, list);
}

TEST(PropertyListValue, EqualityLooksAtOrderKeysValuesAndChildren)
{
    char const* const different[] = {"",           "a={}",       "a={1}",  "a={1,2}",    "b={1}",
                                     "a={1};b={}", "b={};a={1}", "a[]",    "a[a={1}]",   "b[a={1}]",
                                     "a[];b[]",    "b[];a[]",    "a[b[]]", "a[b[c={}]]", "a={};a[]"};
    for (char const* a : different) {
        for (char const* b : different)
            EXPECT_EQ(PropertyList(a, eSerializeLossless) == PropertyList(b, eSerializeLossless), a == b)
                << a << " " << b;
    }
    PropertyList emptied("a={1};b[]", eSerializeLossless);
    emptied.removeStringPair("a");
    emptied.removeChildList("b");
    EXPECT_EQ(emptied, PropertyList());
    EXPECT_EQ(PropertyList(emptied), emptied);
}

TEST(PropertyListValue, CopiesAreDeepAndMovesLeaveAUsableList)
{
    PropertyList source("a={1};c[d={2}]", eSerializeLossless);
    PropertyList const copy(source);
    source.getChildList("c")->addStringPair("d", "3");
    EXPECT_EQ(contents(copy), "a={1};c[d={2}]");
    PropertyList const taken(std::move(source));
    EXPECT_EQ(contents(taken), "a={1};c[d={2,3}]");
    EXPECT_TRUE(source.empty());
    source.addStringPair("new", "1");
    PropertyList& alias = source;
    source = alias;
    source = std::move(alias);
    EXPECT_EQ(contents(source), "new={1}");
}

TEST(PropertyListDepth, AMillionLevelsAreCopiedComparedWrittenAndDestroyed)
{
    constexpr int kDeep = 1000000;
    PropertyList list;
    PropertyList* level = &list;
    for (int i = 0; i < kDeep; ++i) {
        if (i % 1000 == 0)
            level->addChildList("side").addStringPair("k", "v"); // a way down is not always the last child
        level = &level->addChildList("d");
        if (i % 1500 == 0)
            level->addStringPair("k", "v");
    }
    PropertyList copy(list);
    EXPECT_EQ(copy, list);
    EXPECT_EQ(copy.serialize(eSerializeLossless), list.serialize(eSerializeLossless));
    level->addStringPair("k", "v");
    EXPECT_NE(copy, list);
    copy.removeAll();
    EXPECT_TRUE(copy.empty());
}

} // namespace TAV_marlo_v1
