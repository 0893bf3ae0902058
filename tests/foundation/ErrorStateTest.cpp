#include <tav/ErrorState.h>

#include "foundation/Texts.h"

#include <gtest/gtest.h>

#include <sstream>

namespace TAV_marlo_v1 {

namespace {

struct ErrorStateTest : testing::Test {
    AddRefWrapper<ErrorState> state = ErrorState::createNew();

    Texts messages(MessageType type) const
    {
        StringArray out("kept");
        state->getMessages(type, out);
        return textsOf(out);
    }
    Texts lines() const
    {
        Texts all;
        std::istringstream text(state->getMessagesAsString(eAnyMessage).toChar());
        for (std::string line; std::getline(text, line);)
            all.push_back(line);
        return all;
    }
};

} // namespace

TEST_F(ErrorStateTest, QueriesMatchOneKindOrAll)
{
    state->addMessage("port", "odd", eWarning);
    state->addMessage("node", "broken", eError);
    state->addMessage(nullptr, nullptr, eWarning);
    state->addMessage("any", "kind", eAnyMessage);

    EXPECT_FALSE(state->hasMessage(eInfo));
    EXPECT_TRUE(state->hasMessage(eWarning));
    EXPECT_TRUE(state->hasMessage(eAnyMessage));
    EXPECT_EQ(state->getMessageCount(eWarning), 2u);
    EXPECT_EQ(state->getMessageCount(eAnyMessage), 4u);
    EXPECT_EQ(messages(eWarning), Texts({"kept", "port", "odd", "", ""}));
    EXPECT_EQ(messages(eAnyMessage), Texts({"kept", "port", "odd", "node", "broken", "", "", "any", "kind"}));
}

TEST_F(ErrorStateTest, ClearingRemovesTheKindAndKeepsTheOrderOfTheRestAndEveryCopy)
{
    for (auto const& [subject, type] : {std::pair("a", eInfo), {"b", eError}, {"c", eInfo}, {"d", eError}})
        state->addMessage(subject, "", type);
    EXPECT_FALSE(state->clearMessages(eWarning));
    EXPECT_EQ(state->getMessageCount(eAnyMessage), 4u);
    EXPECT_TRUE(state->clearMessages(eInfo));
    EXPECT_EQ(messages(eAnyMessage), Texts({"kept", "b", "", "d", ""}));
    AddRefWrapper<ErrorState> const other = ErrorState::createNew();
    *other = *state;
    EXPECT_TRUE(state->clearMessages(eAnyMessage));
    EXPECT_FALSE(state->clearMessages(eAnyMessage) || state->hasMessage(eAnyMessage));
    EXPECT_STREQ(state->getMessagesAsString(eAnyMessage).toChar(), "");
    EXPECT_TRUE(other->hasMessage(eError));
}

TEST_F(ErrorStateTest, TextHasOneLineForEachShortMessage)
{
    state->addMessage("port", "  is \t odd ", eWarning);
    state->addMessage("", "", eInfo);
    EXPECT_STREQ(state->getMessagesAsString(eAnyMessage).toChar(), " - port: is odd\n - :");
    EXPECT_STREQ(state->getMessagesAsString(eInfo).toChar(), " - :");
}

TEST_F(ErrorStateTest, TextWrapsBetweenWordsAtAHundred)
{
    std::string text;
    for (int i = 0; i < 30; ++i)
        text += "word ";
    state->addMessage("s", text.c_str(), eInfo);
    // " - s: " takes 6, so 18 words of 5 leave 4 behind: the last word may end at 100 exactly.
    Texts const wrapped = lines();
    ASSERT_EQ(wrapped.size(), 2u);
    EXPECT_EQ(wrapped[0].size(), 100u);
    EXPECT_EQ(wrapped[1].substr(0, 7), "   word");
    EXPECT_EQ(wrapped[1].back(), 'd');
}

TEST_F(ErrorStateTest, TextLeavesAnOverlongWordWholeOnItsOwnLine)
{
    std::string const endless(150, 'x');
    state->addMessage("s", ("a " + endless + " b").c_str(), eInfo);
    EXPECT_EQ(lines(), Texts({" - s: a", "   " + endless, "   b"}));
}

} // namespace TAV_marlo_v1
