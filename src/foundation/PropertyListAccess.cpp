#include "foundation/PropertyListAccess.h"

#include "foundation/PropertyListImpl.h"

#include <utility>

namespace TAV_marlo_v1 {

unsigned PropertyListAccess::pairCount(PropertyList const& list) noexcept
{
    return list.getNumberOfPairs();
}

detail::SharedText const& PropertyListAccess::keyText(PropertyList const& list, unsigned index) noexcept
{
    return *list.m_impl->pairs[index].key;
}

StringArray const& PropertyListAccess::values(PropertyList const& list, unsigned index) noexcept
{
    return list.m_impl->pairs[index].value;
}

unsigned PropertyListAccess::childCount(PropertyList const& list) noexcept
{
    return list.getNumberOfChildLists();
}

detail::SharedText const& PropertyListAccess::childText(PropertyList const& list, unsigned index) noexcept
{
    return *(*list.m_impl->children)[index].key;
}

std::size_t PropertyListAccess::heapBytes(PropertyList const& list) noexcept
{
    if (!list.m_impl)
        return 0;
    PropertyList::Impl const& record = *list.m_impl;
    std::size_t const children = record.children ? sizeof *record.children + record.children->heapBytes() : 0;
    return sizeof record + record.pairs.heapBytes() + children;
}

PropertyList const& PropertyListAccess::child(PropertyList const& list, unsigned index) noexcept
{
    return *(*list.m_impl->children)[index].value;
}

StringArray const* PropertyListAccess::find(PropertyList const& list, char const* key) noexcept
{
    std::size_t const index = list.m_impl ? list.m_impl->pairs.find(key) : PropertyList::Impl::Pairs::kNone;
    return index == PropertyList::Impl::Pairs::kNone ? nullptr : &list.m_impl->pairs[index].value;
}

void PropertyListAccess::appendPair(PropertyList& list, detail::SharedTextRef key, StringArray values)
{
    PropertyList::Impl::of(list).pairs.append(std::move(key), std::move(values));
}

} // namespace TAV_marlo_v1
