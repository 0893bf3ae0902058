#pragma once

#include "foundation/Gaps.h"
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
/// get slower, and what is erased leaves a gap, so that those behind it stay where they are; the gaps are
/// closed once they are half of it. The index is a mere aid: where there is no memory for it, the
/// records are scanned, and closed up at once.
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

    std::size_t size() const noexcept { return slotCount() - (m_index ? m_index->gaps.count() : 0); }
    bool empty() const noexcept { return m_records.empty(); }
    Record const& operator[](std::size_t index) const noexcept { return at(slotOf(index)); }
    V& value(std::size_t index) noexcept { return at(slotOf(index)).value; }

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
        return own * sizeof(Record) + (m_index ? m_index->heapBytes() : 0);
    }

    void reserve(std::size_t count) { m_records.reserve(static_cast<qsizetype>(count)); }

    void append(SharedTextRef key, V value)
    {
        m_records.push_back({std::move(key), std::move(value)});
        if (m_index)
            tryToIndexLast();
    }

    void replace(std::size_t index, SharedTextRef key, V value) noexcept
    {
        if (at(slotOf(index)).key != key)
            dropIndex();
        Record& record = at(slotOf(index));
        record.key.swap(key);
        record.value = std::move(value);
    }

    void erase(std::size_t index) noexcept
    {
        if (m_index)
            eraseIndexed(slotOf(index));
        else
            eraseSlot(index);
    }

    void pop_back() noexcept { erase(size() - 1); }

    /// `reorder(records)` puts the records into another order.
    template <class Reorder>
    void reorder(Reorder reorder)
    {
        dropIndex();
        reorder(m_records);
    }

private:
    struct Index {
        std::unordered_map<SharedText const*, std::size_t> firsts; // the first of each key
        Gaps gaps;

        std::size_t heapBytes() const noexcept
        {
            // Of each entry the pair, the link to the next one, and its bucket.
            return firsts.size() * (sizeof(std::pair<SharedText const* const, std::size_t>) + 16) + gaps.heapBytes();
        }
    };
    static constexpr std::size_t kFewEnoughToScan = 16;

    std::size_t find(SharedText const* key) const noexcept
    {
        if (slotCount() > kFewEnoughToScan && !m_index)
            tryToIndexAll();
        if (m_index) {
            auto const found = m_index->firsts.find(key);
            return found != m_index->firsts.end() ? m_index->gaps.placeOf(found->second) : kNone;
        }
        return scan(key, 0);
    }

    std::size_t scan(SharedText const* key, std::size_t from) const noexcept
    {
        for (std::size_t slot = from; slot < slotCount(); ++slot) {
            if (at(slot).key.get() == key && !(m_index && m_index->gaps.isGap(slot)))
                return slot;
        }
        return kNone;
    }

    std::size_t slotCount() const noexcept { return static_cast<std::size_t>(m_records.size()); }
    Record& at(std::size_t slot) noexcept { return m_records[static_cast<qsizetype>(slot)]; }
    Record const& at(std::size_t slot) const noexcept { return m_records[static_cast<qsizetype>(slot)]; }
    std::size_t slotOf(std::size_t index) const noexcept { return m_index ? m_index->gaps.slotOf(index) : index; }

    void tryToIndexAll() const noexcept
    {
        try {
            m_index = std::make_unique<Index>();
            m_index->firsts.reserve(2 * slotCount());
            for (std::size_t i = 0; i < slotCount(); ++i)
                m_index->firsts.try_emplace(at(i).key.get(), i); // keeps the first of equal keys
        } catch (std::bad_alloc const&) {
            m_index.reset();
        }
    }

    void tryToIndexLast() noexcept
    {
        if (!m_index->gaps.tryToGrow()) {
            dropIndexKnowing(slotCount() - 1);
            return;
        }
        try {
            m_index->firsts.try_emplace(m_records.back().key.get(), slotCount() - 1);
        } catch (std::bad_alloc const&) {
            dropIndex();
        }
    }

    void dropIndex() noexcept { dropIndexKnowing(slotCount()); }

    /// Closes the gaps first. @param known the number of slots that the index knows of
    void dropIndexKnowing(std::size_t known) noexcept
    {
        if (!m_index)
            return;
        if (m_index->gaps.count() > 0)
            closeGaps(known, [](std::size_t, std::size_t) {});
        m_index.reset();
    }

    void eraseIndexed(std::size_t slot) noexcept
    {
        Gaps& gaps = m_index->gaps;
        unindex(slot);
        if (slot + 1 == slotCount()) {
            do {
                gaps.shrink();
                m_records.pop_back();
            } while (!m_records.empty() && gaps.isGap(slotCount() - 1));
        } else if (gaps.tryToAdd(slot, slotCount())) {
            at(slot) = Record();
            if (2 * gaps.count() > slotCount()) {
                closeGaps(slotCount(), [this](std::size_t from, std::size_t to) {
                    std::size_t& first = m_index->firsts.find(at(from).key.get())->second;
                    first = first == from ? to : first;
                });
            }
        } else { // only the first gap needs memory, so there is none to close
            m_index.reset();
            eraseSlot(slot);
        }
    }

    void eraseSlot(std::size_t slot) noexcept { m_records.erase(m_records.begin() + static_cast<qsizetype>(slot)); }

    /// `onMove(from, to)` is called for each record before it moves.
    template <class OnMove>
    void closeGaps(std::size_t known, OnMove onMove) noexcept
    {
        std::size_t to = 0;
        for (std::size_t from = 0; from < slotCount(); ++from) {
            if (from < known && m_index->gaps.isGap(from))
                continue;
            onMove(from, to);
            if (from != to)
                at(to) = std::move(at(from));
            ++to;
        }
        m_records.erase(m_records.begin() + static_cast<qsizetype>(to), m_records.end());
        m_index->gaps.clear();
    }

    /// Takes a record that is about to go out of the index.
    void unindex(std::size_t slot) noexcept
    {
        auto& firsts = m_index->firsts;
        bool const isRepeated = firsts.size() < size();
        auto const entry = firsts.find(at(slot).key.get());
        if (entry->second != slot)
            return;
        std::size_t const next = isRepeated ? scan(entry->first, slot + 1) : kNone;
        if (next == kNone)
            firsts.erase(entry);
        else
            entry->second = next;
    }

    QVarLengthArray<Record, 1> m_records;
    mutable std::unique_ptr<Index> m_index;
};

} // namespace TAV_marlo_v1::detail
