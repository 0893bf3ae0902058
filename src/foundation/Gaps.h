#pragma once

#include <bit>
#include <cassert>
#include <cstddef>
#include <new>
#include <vector>

namespace TAV_marlo_v1::detail {

/// Which slots of a sequence are gaps. It leads from a slot to its place, which is counted without the
/// gaps, and back, in logarithmic time: by a binary indexed tree of the numbers of gaps. As long as
/// there is no gap it takes no memory, and slot and place are the same.
class Gaps {
public:
    std::size_t count() const noexcept { return m_count; }

    bool isGap(std::size_t slot) const noexcept { return m_count > 0 && before(slot + 1) > before(slot); }

    std::size_t placeOf(std::size_t slot) const noexcept { return slot - (m_count > 0 ? before(slot) : 0); }

    std::size_t slotOf(std::size_t place) const noexcept
    {
        if (m_count == 0)
            return place;
        std::size_t slot = 0;
        for (std::size_t step = std::bit_floor(slotCount()); step > 0; step /= 2) {
            if (slot + step > slotCount())
                continue;
            std::size_t const filled = step - m_tree[slot + step];
            if (filled <= place) {
                slot += step;
                place -= filled;
            }
        }
        return slot;
    }

    /// Makes a slot a gap. @param ofSlots how many the sequence has
    /// @return false, with nothing changed, where there is no memory
    bool tryToAdd(std::size_t slot, std::size_t ofSlots) noexcept
    {
        if (m_count == 0 && !tryToStart(ofSlots))
            return false;
        assert(m_tree.size() == ofSlots + 1 && !isGap(slot));
        for (std::size_t node = slot + 1; node < m_tree.size(); node += lowest(node))
            ++m_tree[node];
        ++m_count;
        return true;
    }

    /// There is a slot more, which is none. @return false, with nothing changed, where there is no memory
    bool tryToGrow() noexcept
    {
        if (m_count == 0)
            return true;
        std::size_t const node = m_tree.size();
        try {
            m_tree.push_back(before(node - 1) - before(node - lowest(node)));
        } catch (std::bad_alloc const&) {
            return false;
        }
        return true;
    }

    /// The last slot is gone.
    void shrink() noexcept
    {
        if (m_count == 0)
            return;
        m_count -= isGap(slotCount() - 1) ? 1 : 0;
        m_tree.pop_back();
    }

    void clear() noexcept { m_count = 0; }

    std::size_t heapBytes() const noexcept { return m_tree.capacity() * sizeof(std::size_t); }

private:
    static std::size_t lowest(std::size_t node) noexcept { return node & (~node + 1); }

    std::size_t slotCount() const noexcept { return m_tree.size() - 1; }

    /// The number of gaps among the first slots.
    std::size_t before(std::size_t slot) const noexcept
    {
        std::size_t sum = 0;
        for (; slot > 0; slot -= lowest(slot))
            sum += m_tree[slot];
        return sum;
    }

    bool tryToStart(std::size_t ofSlots) noexcept
    {
        try {
            m_tree.assign(ofSlots + 1, 0);
        } catch (std::bad_alloc const&) {
            return false;
        }
        return true;
    }

    std::vector<std::size_t> m_tree; // node n counts the lowest(n) slots that end with slot n - 1
    std::size_t m_count = 0;
};

} // namespace TAV_marlo_v1::detail
