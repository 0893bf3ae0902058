#pragma once

#include "foundation/ChunkedSequence.h"

#include <tav/AddRefWrapper.h>
#include <tav/Types.h>

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace TAV_marlo_v1::detail {

/// An ordered sequence of shared objects, holding one reference on each, with access by index and
/// removal by identity. An object may stand in it several times; the first place counts.
///
/// A graph has several lists for each node, nearly all of them with one entry or two: the only entry of a list stands
/// in the list itself, a few stand in an array, many in a ChunkedSequence. Every change either happens whole or, when
/// memory runs out, not at all.
template <class T>
class OrderedList {
public:
    OrderedList() noexcept = default;
    OrderedList(OrderedList const&) = delete;
    OrderedList& operator=(OrderedList const&) = delete;
    ~OrderedList() { clear(); }

    unsigned size() const noexcept { return m_size; }
    bool empty() const noexcept { return m_size == 0; }
    std::size_t heapBytes() const noexcept
    {
        if (isChunked())
            return sizeof *m_items.chunks + m_items.chunks->heapBytes();
        return m_form == kInPlace ? 0 : capacity() * sizeof(T*);
    }

    /// `index` must be below size().
    T* at(unsigned index) const noexcept { return isChunked() ? m_items.chunks->at(index) : array()[index]; }

    /// The first index of the object, or kNotFound.
    unsigned indexOf(T const* object) const noexcept
    {
        if (isChunked())
            return m_items.chunks->indexOf(object);
        T* const* const found = std::find(array(), array() + m_size, object);
        return found == array() + m_size ? kNotFound : static_cast<unsigned>(found - array());
    }

    bool contains(T const* object) const noexcept
    {
        return isChunked() ? m_items.chunks->contains(object) : indexOf(object) != kNotFound;
    }

    /// Inserts in front of `index`; past the end appends.
    void insert(unsigned index, T* object)
    {
        index = std::min(index, m_size);
        if (!isChunked() && m_size == capacity())
            grow();
        if (isChunked()) {
            m_items.chunks->insert(index, object);
        } else {
            T** const place = array() + index;
            std::move_backward(place, array() + m_size, array() + m_size + 1);
            *place = object;
        }
        ++m_size;
        object->addRef();
    }

    void append(T* object) { insert(size(), object); }

    /// Takes out the first place of the object and hands its reference over; empty when it is not there.
    AddRefWrapper<T> take(T const* object) noexcept
    {
        if (isChunked()) {
            if (!m_items.chunks->erase(object))
                return {};
        } else {
            T** const end = array() + m_size;
            T** const place = std::find(array(), end, object);
            if (place == end)
                return {};
            std::move(place + 1, end, place);
        }
        --m_size;
        return handOver(const_cast<T*>(object));
    }

    AddRefWrapper<T> takeLast() noexcept
    {
        if (empty())
            return {};
        T* const last = at(m_size - 1);
        if (isChunked())
            m_items.chunks->eraseAt(m_size - 1);
        --m_size;
        return handOver(last);
    }

    /// Moves one object; those between shift by one. Both indices must be below size().
    void move(unsigned from, unsigned to)
    {
        if (isChunked()) {
            m_items.chunks->move(from, to);
            return;
        }
        T** const first = array();
        if (from < to)
            std::rotate(first + from, first + from + 1, first + to + 1);
        else
            std::rotate(first + to, first + from, first + from + 1);
    }

    /// Puts the objects into another order. `order` holds exactly the objects of this list.
    void reorder(std::vector<T*> const& order)
    {
        assert(order.size() == size());
        if (!isChunked()) {
            std::copy(order.begin(), order.end(), array());
            return;
        }
        auto chunks = std::make_unique<ChunkedSequence<T>>();
        for (T* object : order)
            chunks->insert(chunks->size(), object);
        delete std::exchange(m_items.chunks, chunks.release());
    }

    /// Releases everything. The list is empty before the first object goes, whose death may look at it.
    void clear() noexcept
    {
        Items former = std::exchange(m_items, Items());
        unsigned const count = std::exchange(m_size, 0);
        std::uint8_t const form = std::exchange(m_form, kInPlace);
        if (form == kChunked) {
            former.chunks->forEach([](T& object) { object.release(); });
            delete former.chunks;
            return;
        }
        T** const objects = form == kInPlace ? &former.only : former.array;
        for (unsigned i = 0; i < count; ++i)
            objects[i]->release();
        if (form != kInPlace)
            delete[] objects;
    }

    void swap(OrderedList& other) noexcept
    {
        std::swap(m_items, other.m_items);
        std::swap(m_size, other.m_size);
        std::swap(m_form, other.m_form);
    }

    /// Calls `visit(T&)` for each object in order. The list must not change meanwhile.
    template <class Visit>
    void forEach(Visit&& visit) const
    {
        if (isChunked())
            return m_items.chunks->forEach(visit);
        for (T *const *place = array(), *const *end = place + m_size; place != end; ++place)
            visit(**place);
    }

private:
    union Items {
        T* only = nullptr;
        T** array;
        ChunkedSequence<T>* chunks;
    };
    // How the objects are kept: in place, in an array of 2^(form + 1) - 1 (with the allocator's head a power of
    // two), or in chunks.
    static constexpr std::uint8_t kInPlace = 0;
    static constexpr std::uint8_t kLargestArray = 5;
    static constexpr std::uint8_t kChunked = kLargestArray + 1;

    bool isChunked() const noexcept { return m_form == kChunked; }
    T** array() noexcept { return m_form == kInPlace ? &m_items.only : m_items.array; }
    T* const* array() const noexcept { return m_form == kInPlace ? &m_items.only : m_items.array; }
    static unsigned capacityOf(unsigned form) noexcept { return (2u << form) - 1; }
    unsigned capacity() const noexcept { return capacityOf(m_form); }

    void grow()
    {
        Items larger;
        if (m_form == kLargestArray) {
            auto chunks = std::make_unique<ChunkedSequence<T>>();
            forEach([&](T& object) { chunks->insert(chunks->size(), &object); });
            larger.chunks = chunks.release();
        } else {
            larger.array = new T*[capacityOf(m_form + 1u)];
            std::copy(array(), array() + m_size, larger.array);
        }
        if (m_form != kInPlace)
            delete[] m_items.array;
        m_items = larger;
        ++m_form;
    }

    static AddRefWrapper<T> handOver(T* object) noexcept
    {
        AddRefWrapper<T> taken(object);
        object->release();
        return taken;
    }

    Items m_items;
    unsigned m_size = 0;
    std::uint8_t m_form = kInPlace;
};

} // namespace TAV_marlo_v1::detail
