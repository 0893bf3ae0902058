#pragma once

#include <string>
#include <string_view>

/// The quoted form of a text inside a serialised array or property list: double quotes around it,
/// `\"` and `\\` inside, nothing else escaped.
namespace TAV_marlo_v1::detail {

/// The blanks that a person may put around texts; independent of the locale.
constexpr bool isBlank(char c) noexcept
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

inline void appendQuoted(std::string& out, std::string_view text)
{
    out += '"';
    for (char const c : text) {
        if (c == '"' || c == '\\')
            out += '\\';
        out += c;
    }
    out += '"';
}

/// Reads a quoted text that begins at `position` into `out` and moves `position` behind it.
/// @return false when its end is missing or an escape is none of the two
inline bool readQuoted(std::string_view source, std::size_t& position, std::string& out)
{
    out.clear();
    for (std::size_t at = position + 1; at < source.size(); ++at) {
        if (source[at] == '"') {
            position = at + 1;
            return true;
        }
        if (source[at] == '\\' && (++at == source.size() || (source[at] != '"' && source[at] != '\\')))
            return false;
        out += source[at];
    }
    return false;
}

} // namespace TAV_marlo_v1::detail
