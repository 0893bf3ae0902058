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

std::string_view PropertyListAccess::childName(PropertyList const& list, unsigned index) noexcept
{
    return (*list.m_impl->children)[index].key.view();
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
