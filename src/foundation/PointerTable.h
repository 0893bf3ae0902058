#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace TAV_marlo_v1::detail {

struct AddressHash {
    std::size_t operator()(void const* object) const noexcept
    {
        // Objects lie 16 bytes apart at least; the multiplication (2^64 over the golden ratio) spreads what is left.
        auto const mixed =
            (static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(object)) >> 4) * 0x9E3779B97F4A7C15u;
        return static_cast<std::size_t>(mixed >> 20);
    }
};

/// A hash table from objects to objects in one array, with linear probing: an entry costs no block of its own, and
/// a look-up in a large table one cache miss. A key may have several values. None of the objects is owned.
template <class Key, class Value, class Hash = AddressHash>
class PointerTable {
public:
    std::size_t size() const noexcept { return m_count; }

    void reserve(std::size_t count)
    {
        std::size_t places = kFewestPlaces;
        while (isCrowded(count, places))
            places *= 2;
        if (!m_entries || places > m_mask + 1)
            rehash(places);
    }

    void insert(Key const* key, Value* value)
    {
        if (!m_entries || isCrowded(m_count + 1, m_mask + 1))
            rehash(m_entries ? 2 * (m_mask + 1) : kFewestPlaces);
        put({key, value});
        ++m_count;
    }

    /// Calls `visit(Key const*, Value*&)` for the entries that a key of that hash may have, among them ones of
    /// other keys, until it answers true.
    template <class Visit>
    void search(std::size_t hash, Visit&& visit) const
    {
        if (!m_entries)
            return;
        for (std::size_t place = hash & m_mask; m_entries[place].key; place = (place + 1) & m_mask) {
            if (visit(m_entries[place].key, m_entries[place].value))
                return;
        }
    }

    bool contains(Key const* key) const noexcept
    {
        bool found = false;
        search(Hash()(key), [&](Key const* other, Value*) { return found = other == key; });
        return found;
    }

    /// Takes one entry of that key and value out; nothing when there is none.
    void erase(Key const* key, Value const* value) noexcept
    {
        if (!m_entries)
            return;
        std::size_t place = Hash()(key) & m_mask;
        while (m_entries[place].key && !(m_entries[place].key == key && m_entries[place].value == value))
            place = (place + 1) & m_mask;
        if (!m_entries[place].key)
            return;
        close(place);
        --m_count;
    }

private:
    struct Entry {
        Key const* key = nullptr; // null: a free place
        Value* value = nullptr;
    };
    static constexpr std::size_t kFewestPlaces = 32;

    // Beyond three quarters the runs that are probed grow fast.
    static bool isCrowded(std::size_t count, std::size_t places) noexcept { return 4 * count > 3 * places; }

    void put(Entry entry) noexcept
    {
        std::size_t place = Hash()(entry.key) & m_mask;
        while (m_entries[place].key)
            place = (place + 1) & m_mask;
        m_entries[place] = entry;
    }

    void rehash(std::size_t places)
    {
        std::unique_ptr<Entry[]> const former = std::exchange(m_entries, std::make_unique<Entry[]>(places));
        std::size_t const formerPlaces = former ? m_mask + 1 : 0;
        m_mask = places - 1;
        for (std::size_t place = 0; place < formerPlaces; ++place) {
            if (former[place].key)
                put(former[place]);
        }
    }

    /// Frees the place and moves up what was pushed behind it, so that no probe ends too early.
    void close(std::size_t hole) noexcept
    {
        for (std::size_t place = (hole + 1) & m_mask; m_entries[place].key; place = (place + 1) & m_mask) {
            std::size_t const wanted = Hash()(m_entries[place].key) & m_mask;
            if (((place - wanted) & m_mask) < ((place - hole) & m_mask))
                continue; // it stands between its wanted place and here already
            m_entries[hole] = m_entries[place];
            hole = place;
        }
        m_entries[hole] = {};
    }

    std::unique_ptr<Entry[]> m_entries;
    std::size_t m_mask = 0; // number of places, a power of two, less one
    std::size_t m_count = 0;
};

} // namespace TAV_marlo_v1::detail
