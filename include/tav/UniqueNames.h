#pragma once

#include <tav/String.h>

namespace TAV_marlo_v1 {

/// A new name from `name` by counting up.
///
/// A name that ends in digits gets that number plus one (leading zeros dropped); any other name
/// gets the pattern's text before its first "#" and then `start`. From "#" on, the pattern's length
/// is the least width of the number, filled with zeros on the left; without "#", or with a null
/// pattern, there is no width. "node", "_#", 1: "node_1"; "node007", "_###", 1: "node008".
/// @throws std::out_of_range "stoi argument out of range" for a number above 2147483647
TAV_API String incrementNameDigits(char const* name, char const* pattern, unsigned start);

} // namespace TAV_marlo_v1
