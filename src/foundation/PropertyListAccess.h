#pragma once

#include "foundation/SharedText.h"

#include <tav/PropertyList.h>

#include <cstddef>
#include <string_view>

namespace TAV_marlo_v1 {

/// The library's way through a list without copying. References and views live until the list
/// changes; an index must be below the count.
class PropertyListAccess {
public:
    static unsigned pairCount(PropertyList const& list) noexcept;
    static std::string_view key(PropertyList const& list, unsigned index) noexcept
    {
        return keyText(list, index).view();
    }
    static detail::SharedText const& keyText(PropertyList const& list, unsigned index) noexcept;
    static StringArray const& values(PropertyList const& list, unsigned index) noexcept;

    static unsigned childCount(PropertyList const& list) noexcept;
    static detail::SharedText const& childText(PropertyList const& list, unsigned index) noexcept;
    static std::string_view childName(PropertyList const& list, unsigned index) noexcept
    {
        return childText(list, index).view();
    }
    static PropertyList const& child(PropertyList const& list, unsigned index) noexcept;

    /// The values of the first pair of that key, or null.
    static StringArray const* find(PropertyList const& list, char const* key) noexcept;

    /// What the list itself takes, without its values and what is in its child lists.
    static std::size_t heapBytes(PropertyList const& list) noexcept;

    /// Appends a pair as it is, whether its key is taken or not: for readers, which give back what
    /// was written.
    static void appendPair(PropertyList& list, detail::SharedTextRef key, StringArray values);
};

} // namespace TAV_marlo_v1
