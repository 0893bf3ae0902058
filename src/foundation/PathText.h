#pragma once

#include <string>
#include <string_view>

namespace TAV_marlo_v1::detail {

/// Extends a path by a name behind `separator`, which takes the place of one "/" or "." at the end; an
/// empty path gets no separator.
inline void appendToPath(std::string& path, char separator, std::string_view name)
{
    if (!path.empty()) {
        if (path.back() == '/' || path.back() == '.')
            path.pop_back();
        path.push_back(separator);
    }
    path.append(name);
}

} // namespace TAV_marlo_v1::detail
