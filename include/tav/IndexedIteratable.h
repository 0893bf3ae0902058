#pragma once

namespace TAV_marlo_v1 {

/// A range for `for` loops over an owner that offers a count function and an element-at-index
/// function. It holds a plain pointer to the owner, which must outlive it; nothing is taken or given back,
/// so it may go from module to module.
template <class Owner, class Element, unsigned (Owner::*Count)() const, Element (Owner::*At)(unsigned) const>
class IndexedIteratable {
public:
    class Iterator {
    public:
        Iterator(Owner const& owner, unsigned index) noexcept
            : m_owner(&owner)
            , m_index(index)
        {
        }

        Element operator*() const { return (m_owner->*At)(m_index); }

        Iterator& operator++() noexcept
        {
            ++m_index;
            return *this;
        }

        friend bool operator==(Iterator const& a, Iterator const& b) noexcept { return a.m_index == b.m_index; }
        friend bool operator!=(Iterator const& a, Iterator const& b) noexcept { return a.m_index != b.m_index; }

    private:
        Owner const* m_owner;
        unsigned m_index;
    };

    explicit IndexedIteratable(Owner const& owner) noexcept
        : m_owner(&owner)
    {
    }

    unsigned size() const { return (m_owner->*Count)(); }
    Element operator[](unsigned index) const { return (m_owner->*At)(index); }
    Iterator begin() const { return Iterator(*m_owner, 0); }
    Iterator end() const { return Iterator(*m_owner, size()); }

private:
    Owner const* m_owner;
};

} // namespace TAV_marlo_v1
