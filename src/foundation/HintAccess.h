#pragma once

#include <optional>

namespace TAV_marlo_v1::detail {

/// Points `value` at the hint if it is set and leaves it alone otherwise. @return whether it is set
template <class T>
bool readHint(std::optional<T> const& hint, T const*& value) noexcept
{
    if (!hint)
        return false;
    value = &*hint;
    return true;
}

} // namespace TAV_marlo_v1::detail
