#pragma once

#include <cstddef>
#include <iterator>
#include <utility>

namespace TAV_marlo_v1 {

/// Forward iterator over a list C that offers `size()` and `operator[](unsigned)`: it holds the
/// list and an index, so it stays usable (if not on the same element) when the list changes. Nothing is
/// taken or given back, so it may go from module to module.
template <class C>
class ListIterator {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = decltype(std::declval<C const&>()[0u]);
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = value_type;

    ListIterator(C const& list, unsigned index) noexcept
        : m_list(&list)
        , m_index(index)
    {
    }

    reference operator*() const { return (*m_list)[m_index]; }

    ListIterator& operator++() noexcept
    {
        ++m_index;
        return *this;
    }

    ListIterator operator++(int) noexcept
    {
        ListIterator const before(*this);
        ++m_index;
        return before;
    }

    /// Two iterators past the end of a list that shrank while it was walked are equal.
    friend bool operator==(ListIterator const& a, ListIterator const& b)
    {
        return a.m_index == b.m_index || (a.isPastEnd() && b.isPastEnd());
    }
    friend bool operator!=(ListIterator const& a, ListIterator const& b) { return !(a == b); }

private:
    bool isPastEnd() const { return m_index >= m_list->size(); }

    C const* m_list;
    unsigned m_index;
};

} // namespace TAV_marlo_v1
