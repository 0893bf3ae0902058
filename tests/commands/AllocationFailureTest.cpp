#include "commands/EditCases.h"
#include "support/FailingAllocations.h"

#include <gtest/gtest.h>

using namespace tav_test;

namespace {

/// Memory ends at each point of each command in turn; undo then takes back what was done until there.
struct CommandWithoutMemory : testing::TestWithParam<EditCase> {};

TEST_P(CommandWithoutMemory, CanBeUndone)
{
    EditableGraph graph;
    Edit const edit = GetParam().record(graph);
    std::string const before = graph.picture();
    long const failures =
        tav_test::failEachAllocation([&] { edit.doit(); },
                                     [&] {
                                         ASSERT_EQ(problemsOf(*graph.top), std::vector<std::string>());
                                         edit.undo();
                                         ASSERT_EQ(graph.picture(), before);
                                         ASSERT_EQ(problemsOf(*graph.top), std::vector<std::string>());
                                     });
    EXPECT_GT(failures, 0);
    EXPECT_TRUE(edit.undo());
    EXPECT_EQ(graph.picture(), before);
}

INSTANTIATE_TEST_SUITE_P(EachCommand, CommandWithoutMemory, testing::ValuesIn(editCases()),
                         [](auto const& editCase) { return testNameOf(editCase); });

} // namespace
