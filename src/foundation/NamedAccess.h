#pragma once

#include "foundation/SharedText.h"

#include <tav/Namable.h>

namespace TAV_marlo_v1 {

/// The library's way to the name as it is kept: compared by pointer, hashed without being read.
class NamedAccess {
public:
    static detail::SharedText const& text(Namable const& named) noexcept { return *named.m_name; }

    /// Sets the name directly, without the virtual setName.
    static void setText(Namable& named, detail::SharedTextRef const& text) noexcept
    {
        detail::SharedText const* const old = named.m_name;
        text->addRef(); // first: it may be the old one
        named.m_name = text.get();
        old->release();
    }
};

} // namespace TAV_marlo_v1
