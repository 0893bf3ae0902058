#include <tav/UniqueNames.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace TAV_marlo_v1 {

TEST(IncrementNameDigits, CountsUp)
{
    struct {
        char const *name, *pattern;
        unsigned start;
        char const* result;
    } const cases[] = {
        {"node", "_#", 1, "node_1"},
        {"node_1", "_#", 1, "node_2"},
        {"node7", nullptr, 1, "node8"},
        {"node09", nullptr, 1, "node10"},
        {"node007", nullptr, 1, "node8"},
        {"node007", "_###", 1, "node008"},
        {"node00", nullptr, 1, "node1"},
        {"", "x#", 5, "x5"},
        {"123", nullptr, 1, "124"},
        {"node", "_#a", 7, "node_07"},
        {"node", "_##", 123, "node_123"},
        {"node9", "_##", 1, "node10"},
        {"node", "plain", 2, "nodeplain2"},
        {"node", "", 2, "node2"},
        {"node", "#", 0, "node0"},
        {"1a", "#", 1, "1a1"},
        {"a1b02", "-###", 9, "a1b003"},
        {"node", nullptr, 4294967295u, "node4294967295"},
        {"x2147483647", nullptr, 1, "x2147483648"},
        {"x00000000000000000007", nullptr, 1, "x8"},
        {nullptr, nullptr, 3, "3"},
    };
    for (auto const& [name, pattern, start, result] : cases)
        EXPECT_STREQ(incrementNameDigits(name, pattern, start).toChar(), result);
}

TEST(IncrementNameDigits, RefusesNumbersAboveTheLargest)
{
    for (char const* name : {"x2147483648", "x99999999999", "99999999999999999999999999"}) {
        try {
            incrementNameDigits(name, nullptr, 1);
            ADD_FAILURE() << name;
        } catch (std::out_of_range const& refusal) {
            EXPECT_STREQ(refusal.what(), "stoi argument out of range");
        }
    }
}

} // namespace TAV_marlo_v1
