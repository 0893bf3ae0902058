#include <tav/StringArray.h>

#include "foundation/Texts.h"

#include <gtest/gtest.h>

namespace TAV_marlo_v1 {

namespace {

/// Items that touch every mark, alone and side by side.
Texts const kHardItems = {"",    " ",      "a ",  "\ta",      "\n", "a b", "{",     "}",    "a}",
                          "},{", ",",      "a,b", "\"",       "\\", "a\\", "\"a\"", "<>",   ";",
                          "::",  "ends :", "a:",  "\x01\xff", "ä",  "[]",  "=",     "plain"};

/// The array that `text` gives, or {"refused"}; a refusal must leave the array alone.
Texts read(char const* text, UnserializeMode mode, SerializationTags const& tags = kDefaultSerializationTags)
{
    StringArray array("before");
    if (array.unserialize(text, mode, tags))
        return textsOf(array);
    EXPECT_EQ(textsOf(array), Texts({"before"}));
    return {"refused"};
}

} // namespace

TEST(StringArraySerialize, QuotesExactlyWhatNeedsIt)
{
    EXPECT_STREQ(StringArray().serialize(eSerializeLossless).toChar(), "{}");
    EXPECT_STREQ(arrayOf({"a", "b c"}).serialize(eSerializeLossless).toChar(), "{a,b c}");
    EXPECT_STREQ(arrayOf({"", " a", "b,c", "}", "\"", "\\"}).serialize(eSerializeLossless).toChar(),
                 R"({""," a","b,c","}","\"","\\"})");
    EXPECT_STREQ(arrayOf({"", " a", "b,c", "\""}).serialize(eSerializePlain).toChar(), R"({, a,b,c,"})");
}

TEST(StringArraySerialize, LosslessTextComesBackEqualWhateverTheTags)
{
    SerializationTags const manyTags[] = {kDefaultSerializationTags,
                                          {"", "", ";"},
                                          {"[", "]", ", "},
                                          {"<<", ">>", "::"},
                                          {"{", "}", ""},
                                          {"", "", ""},
                                          {"\"", "\"", "\""},
                                          {"(", ")", "\\"},
                                          {nullptr, nullptr, " "},
                                          {"}", "}", "}"}};
    for (SerializationTags const& tags : manyTags) {
        for (std::size_t from = 0; from <= kHardItems.size(); ++from) {
            for (std::size_t count = 0; count <= 3 && from + count <= kHardItems.size(); ++count) {
                StringArray const array(arrayOf(Texts(kHardItems.begin() + from, kHardItems.begin() + from + count)));
                String const text = array.serialize(eSerializeLossless, tags);
                EXPECT_EQ(read(text.toChar(), eUnserializeStrict, tags), textsOf(array)) << text.toChar();
                if (&tags == manyTags) {
                    EXPECT_EQ(read(text.toChar(), eUnserializeLenient), textsOf(array)) << text.toChar();
                }
            }
        }
    }
}

TEST(StringArrayUnserialize, StrictTakesOnlyWhatIsWritten)
{
    char const* const refused[] = {nullptr, "",          "{",      "}",       "{a",     "a}",    "{a}b",
                                   " {a}",  "{a} ",      "{ a}",   "{a,}",    "{,}",    "{a}}",  "{\"a\"}",
                                   "{\"a}", "{\"\\n\"}", "{\"a\\", "{\"\"b}", "{a\"b}", "{a,,b}"};
    for (char const* text : refused)
        EXPECT_EQ(read(text, eUnserializeStrict), Texts({"refused"})) << (text ? text : "null");
}

TEST(StringArrayUnserialize, LenientTakesWhatPeopleType)
{
    struct {
        char const* text;
        Texts items;
    } const cases[] = {
        {" { a , b c ,d } ", {"a", "b c", "d"}},
        {"{}", {}},
        {"{ \t}", {}},
        {"{a,,b}", {"a", "", "b"}},
        {"{,}", {"", ""}},
        {"{\" a\" , \"b\\\"\\\\\"}", {" a", "b\"\\"}},
        {"{5\" pipe}", {"5\" pipe"}},
        {"{\n  1,\n  2\n}", {"1", "2"}},
        {"", {"refused"}},
        {"a", {"refused"}},
        {"a,b", {"refused"}},
        {"{a", {"refused"}},
        {"{a} b", {"refused"}},
        {"{{1,0},{0,1}}", {"refused"}},
        {"{\"a\" b}", {"refused"}},
        {"{\"a}", {"refused"}},
        {nullptr, {"refused"}},
    };
    for (auto const& [text, items] : cases)
        EXPECT_EQ(read(text, eUnserializeLenient), items) << (text ? text : "null");
    EXPECT_EQ(read("{ \"a\" b}", eUnserializeLenient, {"{", "}", " "}), Texts({"a", "b"}));
    EXPECT_EQ(read("{ab", eUnserializeLenient, {"{", "}", ""}), Texts({"refused"}));
}

} // namespace TAV_marlo_v1
