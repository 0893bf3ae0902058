#pragma once

#include "foundation/SharedText.h"

#include <QtCore/QVarLengthArray>

#include <cstddef>
#include <memory>
#include <new>
#include <unordered_map>
#include <utility>

namespace TAV_marlo_v1::detail {

/// An ordered sequence of (key, value) records with a look-up of the first record of a key. Keys are
/// compared as objects; past a handful of records a hash index is kept, so that a look-up does not
/// get slower. The index is a mere aid: where there is no memory for it, the records are scanned.
/// V must be movable without failure.
template <class V>
class KeyedSequence {
public:
    struct Record {
        SharedTextRef key;
        V value;
    };
    static constexpr std::size_t kNone = ~std::size_t(0);

    KeyedSequence() = default;
    KeyedSequence(KeyedSequence const&) = delete;
    KeyedSequence& operator=(KeyedSequence const&) = delete;

    std::size_t size() const noexcept { return static_cast<std::size_t>(m_records.size()); }
    bool empty() const noexcept { return m_records.empty(); }
    Record const& operator[](std::size_t index) const noexcept { return m_records[place(index)]; }
    V& value(std::size_t index) noexcept { return m_records[place(index)].value; }

    /// The first record of that key, or kNone.
    std::size_t find(char const* key) const noexcept
    {
        if (m_records.empty())
            return kNone;
        SharedText const* const text = SharedText::find(key);
        return text ? find(text) : kNone;
    }

    std::size_t heapBytes() const noexcept
    {
        std::size_t const own = m_records.capacity() > 1 ? static_cast<std::size_t>(m_records.capacity()) : 0;
        // An entry of the index: the pair, the link to the next one, and its bucket.
        std::size_t const indexed = m_index ? m_index->size() * (sizeof(typename Index::value_type) + 16) : 0;
        return own * sizeof(Record) + indexed;
    }

    void reserve(std::size_t count) { m_records.reserve(place(count)); }

    void append(SharedTextRef key, V value)
    {
        m_records.push_back({std::move(key), std::move(value)});
        if (m_index)
            tryToIndex(size() - 1);
    }

    void replace(std::size_t index, SharedTextRef key, V value) noexcept
    {
        Record& record = m_records[place(index)];
        if (record.key != key)
            m_index.reset();
        record.key.swap(key);
        record.value = std::move(value);
    }

    void erase(std::size_t index) noexcept
    {
        if (m_index)
            unindex(index);
        m_records.erase(m_records.begin() + place(index));
    }

    void pop_back() noexcept { erase(size() - 1); }

    /// `reorder(records)` puts the records into another order.
    template <class Reorder>
    void reorder(Reorder reorder)
    {
        m_index.reset();
        reorder(m_records);
    }

private:
    using Index = std::unordered_map<SharedText const*, std::size_t>;
    static constexpr std::size_t kFewEnoughToScan = 16;

    static qsizetype place(std::size_t index) noexcept { return static_cast<qsizetype>(index); }

    std::size_t find(SharedText const* key) const noexcept
    {
        if (size() > kFewEnoughToScan && !m_index)
            tryToIndexAll();
        if (m_index) {
            auto const found = m_index->find(key);
            return found != m_index->end() ? found->second : kNone;
        }
        return scan(key, 0);
    }

    std::size_t scan(SharedText const* key, std::size_t from) const noexcept
    {
        for (std::size_t i = from; i < size(); ++i) {
            if ((*this)[i].key.get() == key)
                return i;
        }
        return kNone;
    }

    void tryToIndexAll() const noexcept
    {
        try {
            m_index = std::make_unique<Index>();
            m_index->reserve(2 * size());
            for (std::size_t i = 0; i < size(); ++i)
                m_index->try_emplace((*this)[i].key.get(), i); // keeps the first of equal keys
        } catch (std::bad_alloc const&) {
            m_index.reset();
        }
    }

    void tryToIndex(std::size_t last) noexcept
    {
        try {
            m_index->try_emplace((*this)[last].key.get(), last);
        } catch (std::bad_alloc const&) {
            m_index.reset();
        }
    }

    /// Prepares the index for the removal of a record.
    void unindex(std::size_t removed) noexcept
    {
        auto const entry = m_index->find((*this)[removed].key.get());
        if (entry->second == removed) {
            std::size_t const next = scan(entry->first, removed + 1);
            if (next == kNone)
                m_index->erase(entry);
            else
                entry->second = next;
        }
        if (removed + 1 == size())
            return;
        for (auto& [key, index] : *m_index)
            index -= index > removed ? 1 : 0;
    }

    QVarLengthArray<Record, 1> m_records; // most sequences hold one record, which needs no block of its own
    mutable std::unique_ptr<Index> m_index;
};

} // namespace TAV_marlo_v1::detail
