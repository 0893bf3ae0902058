// Graphs that people drew, from a folder that the environment names: each comes back to the byte.

#include <tav/Compound.h>
#include <tav/Node.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace TAV_marlo_v1 {
namespace {

std::string contentsOf(std::filesystem::path const& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Opens the text as a document is opened, checks the graph, and saves it.
void expectRoundTrip(std::string const& text, std::string const& title)
{
    AddRefWrapper<Node> const top = Node::createNew(nullptr, "top");
    AddRefWrapper<Compound> const graph = Compound::createNew(top, nullptr);
    StatusStr status = graph->restoreFromString(text.c_str());
    ASSERT_FALSE(!status) << title << ": " << status.getErrorString();
    StringArray problems;
    EXPECT_TRUE(graph->checkConsistency(problems)) << title << ": " << problems[0];
    std::string const saved = graph->saveToString(nullptr).toChar();
    auto const difference = std::mismatch(saved.begin(), saved.end(), text.begin(), text.end());
    EXPECT_TRUE(saved == text) << title << " differs at byte " << difference.first - saved.begin() << ": "
                               << std::string(difference.first, saved.end()).substr(0, 120);
}

TEST(SampleGraphs, ComeBackToTheByte)
{
    char const* const folder = std::getenv("TAV_TEST_GRAPHS");
    if (!folder)
        GTEST_SKIP() << "TAV_TEST_GRAPHS names no folder";
    std::vector<std::filesystem::path> files;
    for (auto const& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".xml")
            files.push_back(entry.path());
    }
    ASSERT_FALSE(files.empty());
    for (auto const& file : files)
        expectRoundTrip(contentsOf(file), file.filename().string());
}

TEST(SampleGraphs, LibraryFileComesBackToTheByte)
{
    char const* const file = std::getenv("TAV_TEST_LIBRARY");
    if (!file)
        GTEST_SKIP() << "TAV_TEST_LIBRARY names no file";
    expectRoundTrip(contentsOf(file), file);
}

} // namespace
} // namespace TAV_marlo_v1
