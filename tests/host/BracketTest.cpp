// Brackets on clients: when a batch ends, and who may die before whom.

#include <tav/ChangeBracket.h>
#include <tav/ChangeBracketClient.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

using namespace TAV_marlo_v1;

namespace {

using Log = std::vector<std::string>;

struct LoggingClient final : ChangeBracketClient {
    LoggingClient(Log& log, char const* name)
        : m_log(&log)
        , m_name(name)
    {
    }
    std::function<void()> reaction;

private:
    void executeChange() override
    {
        m_log->push_back(m_name);
        if (auto const react = reaction)
            react();
    }
    Log* m_log;
    std::string m_name;
};

struct Bracket : testing::Test {
    Log log;
    std::unique_ptr<LoggingClient> client = std::make_unique<LoggingClient>(log, "client");
    std::unique_ptr<LoggingClient> other = std::make_unique<LoggingClient>(log, "other");
};

TEST_F(Bracket, OnlyTheOutermostOneEndsTheBatch)
{
    client->beginChange();
    {
        ChangeBracket const inner(client.get());
        EXPECT_TRUE(client->activeChangeBracket());
    }
    EXPECT_TRUE(log.empty());
    client->endChange();
    EXPECT_FALSE(client->activeChangeBracket());
    EXPECT_EQ(log, Log({"client"}));
}

TEST_F(Bracket, AnEndWithoutABeginningLeavesTheClientOpenForGood)
{
    client->endChange();
    EXPECT_TRUE(client->activeChangeBracket());
    EXPECT_TRUE(log.empty());
}

TEST_F(Bracket, WhatWasAppendedEndsAfterwardsLastFirst)
{
    LoggingClient third(log, "third");
    {
        ChangeBracket bracket(client.get());
        bracket.append(ChangeBracket(other.get()));
        bracket.append(ChangeBracket(&third));
        bracket.append(ChangeBracket(nullptr));
        EXPECT_TRUE(other->activeChangeBracket());
    }
    EXPECT_EQ(log, Log({"client", "third", "other"}));
}

TEST_F(Bracket, AppendingToAnEmptyOneAndToItselfLosesNothing)
{
    {
        ChangeBracket moved(client.get());
        ChangeBracket bracket(std::move(moved));
        moved.append(std::move(bracket)); // takes it all back
        moved.append(std::move(moved));
        EXPECT_TRUE(client->activeChangeBracket());
        ChangeBracket holder(nullptr);
        holder.append(std::move(moved));
        EXPECT_TRUE(log.empty());
    }
    EXPECT_EQ(log, Log({"client"}));
}

TEST_F(Bracket, MayOutliveItsClient)
{
    ChangeBracket bracket(client.get());
    bracket.append(ChangeBracket(other.get()));
    client.reset();
    EXPECT_TRUE(log.empty());
    {
        ChangeBracket const end(std::move(bracket));
    }
    EXPECT_EQ(log, Log({"other"}));
}

TEST_F(Bracket, TheClientMayDieWhenItsBatchEnds)
{
    client->reaction = [this] { client.reset(); };
    {
        ChangeBracket const bracket(client.get());
    }
    EXPECT_EQ(log, Log({"client"}));
}

TEST_F(Bracket, APushedOneStaysOpenUntilItIsPopped)
{
    EXPECT_FALSE(client->popChangeBracket());
    client->pushChangeBracket(ChangeBracket(client.get()));
    client->pushChangeBracket(ChangeBracket(other.get()));
    EXPECT_TRUE(client->popChangeBracket());
    EXPECT_EQ(log, Log({"other"}));
    client->reaction = [this] { EXPECT_FALSE(client->popChangeBracket()); };
    EXPECT_TRUE(client->popChangeBracket());
    EXPECT_EQ(log, Log({"other", "client"}));
    EXPECT_FALSE(client->popChangeBracket());
}

TEST_F(Bracket, AClientThatDiesEndsWhatItHadPushedOnOthers)
{
    client->pushChangeBracket(ChangeBracket(client.get()));
    client->pushChangeBracket(ChangeBracket(other.get()));
    client.reset();
    EXPECT_EQ(log, Log({"other"}));
}

TEST_F(Bracket, ACopyOfAClientIsNotBracketed)
{
    ChangeBracket const bracket(client.get());
    ChangeBracketClient const copy(*client);
    EXPECT_FALSE(copy.activeChangeBracket());
}

} // namespace
