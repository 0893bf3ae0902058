#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>

namespace TAV_marlo_v1::detail {

struct AddressHash {
    std::uint32_t operator()(void const* object) const noexcept
    {
        // Objects lie 16 bytes apart at least; the multiplication (2^64 over the golden ratio) spreads what is left.
        auto const address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(object));
        return static_cast<std::uint32_t>((address >> 4) * 0x9E3779B97F4A7C15u >> 32);
    }
};

/// A hash table in one array, with linear probing: an entry costs no block of its own, and a look-up in a large table
/// one cache miss. Entries are small values with `std::uint32_t hash() const`, which must need no look at other
/// memory, and `isFree() const`, true of Entry(). Entries may be equal.
template <class Entry>
class ProbingTable {
public:
    std::size_t size() const noexcept { return m_count; }
    std::size_t heapBytes() const noexcept { return places() * sizeof(Entry); }

    void reserve(std::size_t count)
    {
        std::size_t places = kFewestPlaces;
        while (isCrowded(count, places))
            places *= 2;
        if (places > this->places())
            rehash(std::make_unique<Entry[]>(places), places);
    }

    /// After this one insertion can't fail.
    void reserveOneMore()
    {
        if (!m_entries || isCrowded(m_count + 1, places()))
            reserve(m_count + 1); // twice the places, which are a power of two
    }

    void insert(Entry entry)
    {
        reserveOneMore();
        put(entry);
        ++m_count;
    }

    /// Calls `visit(Entry&)` for the entries of that hash, and for some of other hashes, until it answers true. The
    /// entry may be changed into one of the same hash.
    template <class Visit>
    void search(std::uint32_t hash, Visit&& visit) const
    {
        if (!m_entries)
            return;
        for (std::size_t place = hash & m_mask; !m_entries[place].isFree(); place = (place + 1) & m_mask) {
            if (visit(m_entries[place]))
                return;
        }
    }

    /// Takes the first entry of that hash out of which `matches(Entry const&)` is true. @return whether there was one
    template <class Matches>
    bool erase(std::uint32_t hash, Matches&& matches) noexcept
    {
        Entry* found = nullptr;
        search(hash, [&](Entry& entry) {
            found = matches(std::as_const(entry)) ? &entry : nullptr;
            return found != nullptr;
        });
        if (!found)
            return false;
        close(static_cast<std::size_t>(found - m_entries.get()));
        --m_count;
        return true;
    }

    /// Gives memory back when most of the table is free, if there is memory for a smaller one.
    void shrink() noexcept
    {
        if (places() <= kFewestPlaces || 8 * m_count > places())
            return;
        std::size_t const fewer = places() / 4;
        if (std::unique_ptr<Entry[]> entries{new (std::nothrow) Entry[fewer]()})
            rehash(std::move(entries), fewer);
    }

private:
    static constexpr std::size_t kFewestPlaces = 32;

    // Up to here finding out that something is absent looks at four entries on average, which is one line of memory;
    // beyond it the runs that are probed grow fast.
    static bool isCrowded(std::size_t count, std::size_t places) noexcept { return 8 * count > 5 * places; }

    std::size_t places() const noexcept { return m_entries ? m_mask + 1 : 0; }

    void put(Entry entry) noexcept
    {
        std::size_t place = entry.hash() & m_mask;
        while (!m_entries[place].isFree())
            place = (place + 1) & m_mask;
        m_entries[place] = entry;
    }

    void rehash(std::unique_ptr<Entry[]> entries, std::size_t count) noexcept
    {
        std::size_t const former = places();
        m_entries.swap(entries);
        m_mask = count - 1;
        for (std::size_t place = 0; place < former; ++place) {
            if (!entries[place].isFree())
                put(entries[place]);
        }
    }

    /// Frees the place and moves up what was pushed behind it, so that no probe ends too early.
    void close(std::size_t hole) noexcept
    {
        for (std::size_t place = (hole + 1) & m_mask; !m_entries[place].isFree(); place = (place + 1) & m_mask) {
            std::size_t const wanted = m_entries[place].hash() & m_mask;
            if (((place - wanted) & m_mask) < ((place - hole) & m_mask))
                continue; // it stands between its wanted place and here already
            m_entries[hole] = m_entries[place];
            hole = place;
        }
        m_entries[hole] = Entry();
    }

    std::unique_ptr<Entry[]> m_entries;
    std::size_t m_mask = 0; // number of places, a power of two, less one
    std::size_t m_count = 0;
};

} // namespace TAV_marlo_v1::detail
