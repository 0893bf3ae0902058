#pragma once

#include "foundation/KeyedSequence.h"
#include "foundation/SmallBlocks.h"

#include <tav/PropertyList.h>

#include <memory>

namespace TAV_marlo_v1 {

/// Most lists hold a pair or two and no child lists, so these take one pointer until there are some.
struct PropertyList::Impl : detail::InSmallBlock {
    using Pairs = detail::KeyedSequence<StringArray>;
    // A child list stays where it is while others come and go: addChildList hands it out.
    using Children = detail::KeyedSequence<std::unique_ptr<PropertyList>>;

    Pairs pairs;
    std::unique_ptr<Children> children;

    bool hasChildren() const noexcept { return children && !children->empty(); }

    /// The record of `list`, made when it has none.
    static Impl& of(PropertyList& list)
    {
        if (!list.m_impl)
            list.m_impl = new Impl;
        return *list.m_impl;
    }

    static Children& childrenOf(PropertyList& list)
    {
        Impl& impl = of(list);
        if (!impl.children)
            impl.children = std::make_unique<Children>();
        return *impl.children;
    }

    /// Deletes a record with all its child lists, however deep; null is ignored.
    static void destroy(Impl* impl) noexcept;
};

} // namespace TAV_marlo_v1
