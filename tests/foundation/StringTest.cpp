#include <tav/String.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace TAV_marlo_v1 {

static_assert(sizeof(String) == sizeof(void*));

TEST(StringMaking, NullIsTheEmptyTextWhereverItIsGiven)
{
    String text(nullptr);
    EXPECT_STREQ(text.toChar(), "");
    EXPECT_TRUE(text.empty());
    text = "abc";
    text.append(static_cast<char const*>(nullptr));
    EXPECT_TRUE(text == "abc");
    text = static_cast<char const*>(nullptr);
    EXPECT_TRUE(text == "");
    EXPECT_TRUE(text == static_cast<char const*>(nullptr));
}

TEST(StringMoving, LeavesAnEmptyUsableTextUnlessOntoItselfAndEveryCopyAlone)
{
    String source("one two", 3);
    EXPECT_EQ(source.size(), 3u);
    String const copy(source);
    String const taken(std::move(source.append("!")));
    EXPECT_STREQ(copy.toChar(), "one");
    EXPECT_STREQ(taken.toChar(), "one!");
    EXPECT_TRUE(source.empty());
    EXPECT_TRUE(String(source) == "");
    source.append("").append("new");
    EXPECT_STREQ(source.toChar(), "new");

    String other("old");
    other = std::move(source);
    EXPECT_STREQ(other.toChar(), "new");
    EXPECT_TRUE(source.empty());
    source = other;
    String& alias = source;
    source = std::move(alias);
    source = alias;
    EXPECT_STREQ(source.toChar(), "new");
}

TEST(StringAppending, TakesPartsOfTheTextItself)
{
    String text("ab");
    std::string expected("ab");
    for (int i = 0; i < 8; ++i) { // with and without room left
        text.append(text).append(text.toChar() + 1);
        expected += expected;
        expected += expected.substr(1);
    }
    EXPECT_EQ(text.toChar(), expected);
    text = text.toChar() + expected.size() - 2;
    EXPECT_EQ(text.toChar(), expected.substr(expected.size() - 2));
}

TEST(StringOrder, ComparesBytesAsUnsignedAndThenLengths)
{
    char const* const ascending[] = {"", "A", "AB", "a", "a\x01", "ab", "\x7f", "\x80", "\xff"};
    for (char const* a : ascending) {
        for (char const* b : ascending) {
            EXPECT_EQ(String(a) < String(b), std::string(a) < std::string(b)) << a << " and " << b;
            EXPECT_EQ(String(a) == String(b), a == b);
            EXPECT_EQ(String(a) != b, a != b);
        }
    }
}

} // namespace TAV_marlo_v1
