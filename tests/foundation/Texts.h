#pragma once

#include <tav/StringArray.h>

#include <string>
#include <vector>

/// Arrays of the library and of the standard library into one another, so that a test compares and
/// prints whole arrays.
namespace TAV_marlo_v1 {

using Texts = std::vector<std::string>;

inline StringArray arrayOf(Texts const& texts)
{
    StringArray array;
    for (std::string const& text : texts)
        array.add(text.c_str());
    return array;
}

inline Texts textsOf(StringArray const& array)
{
    return Texts(array.begin(), array.end());
}

} // namespace TAV_marlo_v1
