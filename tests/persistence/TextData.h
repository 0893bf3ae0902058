#pragma once

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace tav_test {

/// A file of tests/data, byte for byte.
inline std::string dataText(std::string const& name)
{
    std::ifstream file(std::string(TAV_TEST_DATA_DIR) + "/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The text that a file of tests/data holds. With TAV_REWRITE_TEST_DATA set the file gets `actual`
/// instead, so that a wanted change shows as a difference to read.
inline std::string expectedText(std::string const& name, std::string const& actual)
{
    if (std::getenv("TAV_REWRITE_TEST_DATA"))
        std::ofstream(std::string(TAV_TEST_DATA_DIR) + "/" + name, std::ios::binary) << actual;
    return dataText(name);
}

} // namespace tav_test
