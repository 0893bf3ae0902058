#include <tav/StatusStr.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace TAV_marlo_v1 {

static_assert(sizeof(StatusStr) == sizeof(void*));

TEST(StatusStr, OnlyTheEmptyTextIsSuccess)
{
    EXPECT_FALSE(!StatusStr());
    EXPECT_FALSE(!StatusStr(""));
    EXPECT_FALSE(!StatusStr(static_cast<char const*>(nullptr)));
    EXPECT_TRUE(!StatusStr(" "));
}

TEST(StatusStr, FormatsTwoTexts)
{
    StatusStr const status("Can't find port %s on %s in makeConnection", "in", "node");
    EXPECT_TRUE(!status);
    EXPECT_STREQ(status.getErrorString(), "Can't find port in on node in makeConnection");
}

TEST(StatusStr, ANullFormatIsSuccessAndANullArgumentLeavesItUnformatted)
{
    EXPECT_FALSE(!StatusStr(nullptr, "a", "b"));
    EXPECT_FALSE(!StatusStr(nullptr, nullptr, nullptr));
    EXPECT_STREQ(StatusStr("no %s here, %d", nullptr, "b").getErrorString(), "no %s here, %d");
    EXPECT_STREQ(StatusStr("%s and %s", "a", nullptr).getErrorString(), "a and ");
}

TEST(StatusStr, CutsTheFormattedMessageButNoOther)
{
    std::string const longText(2000, 'x');
    EXPECT_EQ(StatusStr("%s%s", longText.c_str(), "").getErrorString(), longText.substr(0, 1023));
    EXPECT_EQ(StatusStr(longText.c_str(), nullptr, nullptr).getErrorString(), longText);
    EXPECT_EQ(StatusStr(longText.c_str()).getErrorString(), longText);
}

TEST(StatusStr, CopiesMovesAndClears)
{
    StatusStr status("bad luck");
    StatusStr copy(status);
    status.setErrorString(status.getErrorString() + 4);
    EXPECT_STREQ(status.getErrorString(), "luck");
    EXPECT_STREQ(copy.getErrorString(), "bad luck");

    StatusStr const taken(std::move(copy));
    EXPECT_TRUE(!taken);
    EXPECT_FALSE(!copy);
    copy.clearError();
    copy = taken;
    EXPECT_STREQ(copy.getErrorString(), "bad luck");
    copy.clearError();
    EXPECT_FALSE(!copy);
    EXPECT_STREQ(copy.getErrorString(), "");
}

} // namespace TAV_marlo_v1
