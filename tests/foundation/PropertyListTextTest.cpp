#include <tav/PropertyList.h>

#include "foundation/Texts.h"

#include <gtest/gtest.h>

#include <string>

namespace TAV_marlo_v1 {

namespace {

Texts const kHardTexts = {
    "",    " ",     " a",  "a ",    "\n",  "a b",          "{", "}",  "[",    "]",  ";", "=", ",", "\"", "\\",
    "a\\", "\"a\"", "a;b", "a={1}", "x[]", "\x01\xff\xc3", "ä", "ok", "\\\"", "};["};

std::string nested(int levels)
{
    std::string text;
    for (int i = 0; i < levels; ++i)
        text += "c[";
    return text + std::string(static_cast<std::size_t>(levels), ']');
}

} // namespace

TEST(PropertyListSerialize, WritesPairsThenChildListsWithSemicolonsBetween)
{
    PropertyList list;
    EXPECT_STREQ(list.serialize(eSerializeLossless).toChar(), "");
    list.addChildList("ui").addStringPair("nice name", StringArray());
    list.getChildList("ui")->addChildList("");
    list.addStringPair("min", "0");
    list.addStringPair("items", arrayOf({"a", "b;c", "", " d\"\\"}));
    EXPECT_STREQ(list.serialize(eSerializeLossless).toChar(),
                 R"(min={0};items={a,"b;c",""," d\"\\"};ui[nice name={};""[]])");
    EXPECT_STREQ(list.serialize(eSerializePlain).toChar(), R"(min={0};items={a,b;c,, d"\};ui[nice name={};[]])");
}

TEST(PropertyListSerialize, AnyBytesComeBackEqual)
{
    PropertyList whole;
    for (std::string const& key : kHardTexts) {
        PropertyList& child = whole.addChildList(key.c_str());
        for (std::string const& value : kHardTexts) {
            child.addStringPair(value.c_str(), key.c_str());
            child.addStringPair(value.c_str(), value.c_str());
            whole.addStringPair(key.c_str(), value.c_str());
        }
    }
    String const text = whole.serialize(eSerializeLossless);
    PropertyList back("gone={1};gone[]", eSerializeLossless);
    EXPECT_TRUE(back.unserialize(text.toChar(), eSerializeLossless));
    EXPECT_EQ(back, whole);
    EXPECT_EQ(back.serialize(eSerializeLossless), text);
}

TEST(PropertyListUnserialize, KeepsRepeatedKeysApart)
{
    PropertyList list("a={1};a={2};c[];a={3};c[a={4};a={5}]", eSerializeLossless);
    EXPECT_EQ(list.getNumberOfPairs(), 3u);
    EXPECT_STREQ(list.serialize(eSerializeLossless).toChar(), "a={1};a={2};a={3};c[];c[a={4};a={5}]");
}

TEST(PropertyListUnserialize, DamagedTextLeavesTheListAlone)
{
    std::string const good = R"(a={1,"2"};c[d={};e[]])";
    Texts damaged = {
        "a",        "a=",        "a={",        "a={}}",    "a={};",    ";a={}", "a={};;b={}", "={}",
        "a={1 2",   "a={,}",     "a={1,}",     "a={ 1}",   "a ={}",    " a={}", "a={} ",      "[]",
        "a[",       "a[]]",      "a[;]",       "a[b={};]", "a[b]",     "a=1",   "\"a={}",     "\"a\\n\"={}",
        "a={\"1\\", "\"a\"b={}", "a={\"1\"2}", "a[]b[]",   "a={}b={}", "]",     ";"};
    for (std::size_t length = 1; length < good.size(); ++length) {
        if (length != good.find(';')) // cut there, it is whole
            damaged.push_back(good.substr(0, length));
    }
    PropertyList const before("k={v};c[]", eSerializeLossless);
    PropertyList list(before);
    for (std::string const& text : damaged) {
        EXPECT_FALSE(list.unserialize(text.c_str(), eSerializeLossless)) << text;
        EXPECT_EQ(list, before) << text;
    }
    EXPECT_FALSE(list.unserialize(nullptr, eSerializeLossless));
    EXPECT_EQ(list, before);
    EXPECT_TRUE(list.unserialize("", eSerializeLossless));
    EXPECT_TRUE(list.empty());
}

TEST(PropertyListUnserialize, ReadsSixtyFourLevels)
{
    PropertyList list;
    EXPECT_TRUE(list.unserialize(nested(64).c_str(), eSerializeLossless));
    EXPECT_EQ(list.serialize(eSerializeLossless).toChar(), nested(64));
    EXPECT_FALSE(list.unserialize(nested(65).c_str(), eSerializeLossless));
    EXPECT_FALSE(list.unserialize(nested(100000).c_str(), eSerializeLossless));
    EXPECT_TRUE(list.unserialize("c[];c[];c[c[]]", eSerializeLossless));
}

TEST(PropertyListUnserialize, PlainTextMayBeSpacedOut)
{
    PropertyList const list("\n a b = { 1 , \" 2\" } ;\n c [ d = { } ; e [ ] ]\n", eSerializePlain);
    EXPECT_STREQ(list.serialize(eSerializeLossless).toChar(), "a b={1,\" 2\"};c[d={};e[]]");
    EXPECT_TRUE(PropertyList("a={1", eSerializePlain).empty());
}

} // namespace TAV_marlo_v1
