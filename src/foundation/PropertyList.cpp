#include <tav/PropertyList.h>

#include "foundation/PropertyListImpl.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace TAV_marlo_v1 {

namespace {

/// Two lists that a walk over whole trees takes at once. Walks keep such pairs on a stack of their
/// own, since lists may be nested deeper than the call stack reaches.
template <class First>
struct Both {
    First* first;
    PropertyList const* second;
};

template <class Sequence>
bool sameKeys(Sequence const& a, Sequence const& b) noexcept
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i].key != b[i].key)
            return false;
    }
    return true;
}

} // namespace

// ---- the tree of records

void PropertyList::Impl::destroy(Impl* impl) noexcept
{
    // Goes down into the last child list and up again without a stack: while a child's record is
    // worked on, the child's own pointer leads back to the record above.
    Impl* above = nullptr;
    while (impl) {
        if (impl->hasChildren()) {
            Children& children = *impl->children;
            PropertyList& last = *children.value(children.size() - 1);
            if (!last.m_impl) {
                children.pop_back();
                continue;
            }
            Impl* const child = std::exchange(last.m_impl, above);
            above = std::exchange(impl, child);
            continue;
        }
        delete impl;
        impl = above;
        if (impl) {
            PropertyList& emptied = *impl->children->value(impl->children->size() - 1);
            above = std::exchange(emptied.m_impl, nullptr);
        }
    }
}

PropertyList::PropertyList() = default;

PropertyList::PropertyList(char const* text, SerializeMode mode)
{
    unserialize(text, mode);
}

PropertyList::PropertyList(PropertyList const& other)
    : PropertyList() // so that the destructor clears up after a failure
{
    std::vector<Both<PropertyList>> open{{this, &other}};
    while (!open.empty()) {
        auto const [copy, original] = open.back();
        open.pop_back();
        if (original->empty())
            continue;
        Impl const& from = *original->m_impl;
        Impl& to = Impl::of(*copy);
        to.pairs.reserve(from.pairs.size());
        for (std::size_t i = 0; i < from.pairs.size(); ++i)
            to.pairs.append(from.pairs[i].key, from.pairs[i].value);
        if (!from.hasChildren())
            continue;
        Impl::Children& children = Impl::childrenOf(*copy);
        children.reserve(from.children->size());
        for (std::size_t i = 0; i < from.children->size(); ++i) {
            children.append((*from.children)[i].key, std::make_unique<PropertyList>());
            open.push_back({children.value(i).get(), (*from.children)[i].value.get()});
        }
    }
}

PropertyList::PropertyList(PropertyList&& other) noexcept
    : m_impl(std::exchange(other.m_impl, nullptr))
{
}

PropertyList::~PropertyList()
{
    Impl::destroy(m_impl);
}

PropertyList& PropertyList::operator=(PropertyList const& other)
{
    PropertyList(other).swap(*this); // `other` may be one of the child lists
    return *this;
}

PropertyList& PropertyList::operator=(PropertyList&& other) noexcept
{
    PropertyList(std::move(other)).swap(*this);
    return *this;
}

void PropertyList::swap(PropertyList& other) noexcept
{
    std::swap(m_impl, other.m_impl);
}

bool PropertyList::operator==(PropertyList const& other) const
{
    std::vector<Both<PropertyList const>> open{{this, &other}};
    while (!open.empty()) {
        auto const [a, b] = open.back();
        open.pop_back();
        if (a->getNumberOfPairs() != b->getNumberOfPairs() || a->getNumberOfChildLists() != b->getNumberOfChildLists())
            return false;
        if (a->empty())
            continue;
        Impl const& left = *a->m_impl;
        Impl const& right = *b->m_impl;
        if (!sameKeys(left.pairs, right.pairs))
            return false;
        for (std::size_t i = 0; i < left.pairs.size(); ++i) {
            if (left.pairs[i].value != right.pairs[i].value)
                return false;
        }
        if (!left.hasChildren())
            continue;
        if (!sameKeys(*left.children, *right.children))
            return false;
        for (std::size_t i = 0; i < left.children->size(); ++i)
            open.push_back({(*left.children)[i].value.get(), (*right.children)[i].value.get()});
    }
    return true;
}

void PropertyList::removeAll()
{
    Impl::destroy(std::exchange(m_impl, nullptr));
}

bool PropertyList::empty() const noexcept
{
    return getNumberOfPairs() == 0 && getNumberOfChildLists() == 0;
}

// ---- pairs

PropertyList::Pair::Pair(char const* key, StringArray const& values)
    : m_key(key)
    , m_values(values)
{
}

bool PropertyList::addStringPair(char const* key, char const* value)
{
    if (!key || !value)
        return false;
    Impl::Pairs& pairs = Impl::of(*this).pairs;
    std::size_t const index = pairs.find(key);
    if (index == Impl::Pairs::kNone)
        pairs.append(key, StringArray(value));
    else
        pairs.value(index).add(value);
    return true;
}

bool PropertyList::addStringPair(char const* key, StringArray const& values)
{
    if (!key)
        return false;
    Impl::Pairs& pairs = Impl::of(*this).pairs;
    std::size_t const index = pairs.find(key);
    if (index == Impl::Pairs::kNone)
        pairs.append(key, values);
    else
        pairs.value(index).add(values);
    return true;
}

bool PropertyList::setStringPairValue(char const* key, char const* value)
{
    std::size_t const index = key && value && m_impl ? m_impl->pairs.find(key) : Impl::Pairs::kNone;
    if (index == Impl::Pairs::kNone)
        return false;
    m_impl->pairs.value(index) = StringArray(value);
    return true;
}

bool PropertyList::setStringPairValues(char const* key, StringArray const& values)
{
    std::size_t const index = key && m_impl ? m_impl->pairs.find(key) : Impl::Pairs::kNone;
    if (index == Impl::Pairs::kNone)
        return false;
    m_impl->pairs.value(index) = values;
    return true;
}

char const* PropertyList::getStringPairValue(char const* key) const
{
    std::size_t const index = key && m_impl ? m_impl->pairs.find(key) : Impl::Pairs::kNone;
    if (index == Impl::Pairs::kNone || m_impl->pairs[index].value.empty())
        return nullptr;
    return m_impl->pairs[index].value[0];
}

bool PropertyList::getStringPairValues(char const* key, StringArray& values) const
{
    std::size_t const index = key && m_impl ? m_impl->pairs.find(key) : Impl::Pairs::kNone;
    if (index == Impl::Pairs::kNone)
        return false;
    values.add(m_impl->pairs[index].value);
    return true;
}

bool PropertyList::hasStringPair(char const* key) const
{
    return key && m_impl && m_impl->pairs.find(key) != Impl::Pairs::kNone;
}

bool PropertyList::removeStringPair(char const* key)
{
    std::size_t const index = key && m_impl ? m_impl->pairs.find(key) : Impl::Pairs::kNone;
    if (index == Impl::Pairs::kNone)
        return false;
    m_impl->pairs.erase(index);
    return true;
}

bool PropertyList::getStringPairAt(unsigned index, String& key, String& value) const
{
    if (index >= getNumberOfPairs())
        return false;
    Impl::Pairs::Record const& pair = m_impl->pairs[index];
    String newKey(pair.key.chars());
    value = pair.value.empty() ? "" : pair.value[0];
    key = std::move(newKey);
    return true;
}

bool PropertyList::getStringPairAt(unsigned index, String& key, StringArray& values) const
{
    if (index >= getNumberOfPairs())
        return false;
    Impl::Pairs::Record const& pair = m_impl->pairs[index];
    String newKey(pair.key.chars());
    values.add(pair.value);
    key = std::move(newKey);
    return true;
}

bool PropertyList::setStringPairAt(unsigned index, char const* key, char const* value)
{
    return value && setStringPairAt(index, key, StringArray(value));
}

bool PropertyList::setStringPairAt(unsigned index, char const* key, StringArray const& values)
{
    if (!key || index >= getNumberOfPairs())
        return false;
    m_impl->pairs.replace(index, key, values);
    return true;
}

void PropertyList::getStringPairNames(StringArray& keys) const
{
    StringArray all(keys);
    for (unsigned i = 0; i < getNumberOfPairs(); ++i)
        all.add(m_impl->pairs[i].key.chars());
    keys = std::move(all);
}

unsigned PropertyList::getNumberOfPairs() const noexcept
{
    return m_impl ? static_cast<unsigned>(m_impl->pairs.size()) : 0;
}

PropertyList::Pair PropertyList::operator[](unsigned index) const
{
    if (index >= getNumberOfPairs())
        return Pair("", StringArray());
    return Pair(m_impl->pairs[index].key.chars(), m_impl->pairs[index].value);
}

void PropertyList::sortKeys()
{
    if (!m_impl)
        return;
    m_impl->pairs.reorder([](auto& records) {
        // Views compare bytes as unsigned.
        std::stable_sort(records.begin(), records.end(),
                         [](auto const& a, auto const& b) { return a.key.view() < b.key.view(); });
    });
}

// ---- child lists

unsigned PropertyList::ChildLists::size() const noexcept
{
    return m_owner->getNumberOfChildLists();
}

PropertyList::ChildLists::Child PropertyList::ChildLists::operator[](unsigned index) const
{
    if (index >= size())
        return {"", nullptr};
    Impl::Children::Record const& child = (*m_owner->m_impl->children)[index];
    return {child.key.chars(), child.value.get()};
}

PropertyList& PropertyList::addChildList(char const* name)
{
    auto list = std::make_unique<PropertyList>();
    PropertyList& added = *list;
    Impl::childrenOf(*this).append(name, std::move(list));
    return added;
}

bool PropertyList::setChildList(char const* name, PropertyList const& list)
{
    if (!name)
        return false;
    PropertyList copy(list); // `list` may be this one or part of it
    PropertyList* const present = getChildList(name);
    (present ? *present : addChildList(name)).swap(copy);
    return true;
}

PropertyList* PropertyList::getChildList(char const* name)
{
    return const_cast<PropertyList*>(std::as_const(*this).getChildList(name));
}

PropertyList const* PropertyList::getChildList(char const* name) const
{
    if (!name || !m_impl || !m_impl->hasChildren())
        return nullptr;
    std::size_t const index = m_impl->children->find(name);
    return index == Impl::Children::kNone ? nullptr : (*m_impl->children)[index].value.get();
}

bool PropertyList::getChildListAt(unsigned index, String& name, PropertyList const*& list) const
{
    if (index >= getNumberOfChildLists())
        return false;
    Impl::Children::Record const& child = (*m_impl->children)[index];
    name = child.key.chars();
    list = child.value.get();
    return true;
}

bool PropertyList::removeChildList(char const* name)
{
    std::size_t const index = name && m_impl && m_impl->children ? m_impl->children->find(name) : Impl::Children::kNone;
    if (index == Impl::Children::kNone)
        return false;
    m_impl->children->erase(index);
    return true;
}

unsigned PropertyList::getNumberOfChildLists() const noexcept
{
    return m_impl && m_impl->children ? static_cast<unsigned>(m_impl->children->size()) : 0;
}

} // namespace TAV_marlo_v1
