#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Types.h>

#include <algorithm>
#include <bit>
#include <cassert>
#include <memory>
#include <unordered_map>
#include <vector>

namespace TAV_marlo_v1::detail {

/// An ordered sequence of shared objects, holding one reference on each, with access by index and
/// removal by identity. An object may stand in it several times; the first place counts.
///
/// A short list is a plain array. A long one is cut into chunks, so that taking one object out of a
/// million moves at most a chunk's worth of pointers: a table leads from the object to its chunk, and
/// a binary indexed tree over the chunk sizes from an index to its chunk and back, in logarithmic time.
/// Every change either happens whole or, when memory runs out, not at all.
template <class T>
class OrderedList {
public:
    OrderedList() = default;
    OrderedList(OrderedList const&) = delete;
    OrderedList& operator=(OrderedList const&) = delete;
    ~OrderedList() { clear(); }

    unsigned size() const noexcept { return m_big ? m_big->size : static_cast<unsigned>(m_flat.size()); }
    bool empty() const noexcept { return size() == 0; }

    /// `index` must be below size().
    T* at(unsigned index) const noexcept { return m_big ? m_big->at(index) : m_flat[index]; }

    /// The first index of the object, or kNotFound.
    unsigned indexOf(T const* object) const noexcept
    {
        if (m_big)
            return m_big->indexOf(object);
        auto const found = std::find(m_flat.begin(), m_flat.end(), object);
        return found == m_flat.end() ? kNotFound : static_cast<unsigned>(found - m_flat.begin());
    }

    bool contains(T const* object) const noexcept
    {
        return m_big ? m_big->chunkOf.find(const_cast<T*>(object)) != m_big->chunkOf.end()
                     : indexOf(object) != kNotFound;
    }

    /// Inserts in front of `index`; past the end appends.
    void insert(unsigned index, T* object)
    {
        if (!m_big && m_flat.size() >= kFlatLimit)
            makeBig();
        if (m_big)
            m_big->insert(std::min(index, m_big->size), object);
        else
            m_flat.insert(m_flat.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(index, m_flat.size())),
                          object);
        object->addRef();
    }

    void append(T* object) { insert(size(), object); }

    /// Takes out the first place of the object and hands its reference over; empty when it is not there.
    AddRefWrapper<T> take(T const* object) noexcept
    {
        bool found = false;
        if (m_big) {
            found = m_big->erase(const_cast<T*>(object));
        } else if (auto const place = std::find(m_flat.begin(), m_flat.end(), object); place != m_flat.end()) {
            m_flat.erase(place);
            found = true;
        }
        if (!found)
            return {};
        AddRefWrapper<T> taken(const_cast<T*>(object));
        object->release();
        return taken;
    }

    AddRefWrapper<T> takeLast() noexcept
    {
        if (empty())
            return {};
        AddRefWrapper<T> taken(at(size() - 1));
        if (m_big)
            m_big->eraseAt(m_big->size - 1);
        else
            m_flat.pop_back();
        taken->release();
        return taken;
    }

    /// Moves one object; those between shift by one. Both indices must be below size().
    void move(unsigned from, unsigned to)
    {
        T* const object = at(from);
        if (!m_big) {
            auto const first = m_flat.begin();
            if (from < to)
                std::rotate(first + from, first + from + 1, first + to + 1);
            else
                std::rotate(first + to, first + from, first + from + 1);
            return;
        }
        // The new place is made before the old one goes, so that running out of memory changes nothing.
        m_big->insert(from < to ? to + 1 : to, object);
        m_big->eraseAt(from < to ? from : from + 1);
    }

    /// Puts the objects into another order. `order` holds exactly the objects of this list.
    void reorder(std::vector<T*> const& order)
    {
        assert(order.size() == size());
        if (!m_big) {
            std::copy(order.begin(), order.end(), m_flat.begin());
            return;
        }
        auto big = std::make_unique<Big>();
        for (T* object : order)
            big->insert(big->size, object);
        m_big = std::move(big);
    }

    /// Releases everything. The list is empty before the first object goes, whose death may look at it.
    void clear() noexcept
    {
        std::vector<T*> const flat = std::move(m_flat);
        std::unique_ptr<Big> const big = std::move(m_big);
        m_flat.clear();
        for (T* object : flat)
            object->release();
        if (big) {
            for (auto const& chunk : big->chunks)
                for (T* object : chunk->items)
                    object->release();
        }
    }

    void swap(OrderedList& other) noexcept
    {
        m_flat.swap(other.m_flat);
        m_big.swap(other.m_big);
    }

    /// Calls `visit(T&)` for each object in order. The list must not change meanwhile.
    template <class Visit>
    void forEach(Visit&& visit) const
    {
        for (T* object : m_flat)
            visit(*object);
        if (m_big) {
            for (auto const& chunk : m_big->chunks)
                for (T* object : chunk->items)
                    visit(*object);
        }
    }

private:
    static constexpr std::size_t kFlatLimit = 64;
    static constexpr std::size_t kChunkLimit = 256;

    struct Chunk {
        unsigned ordinal = 0;
        std::vector<T*> items;
    };

    struct Big {
        std::vector<std::unique_ptr<Chunk>> chunks;
        std::vector<unsigned> tree; // binary indexed tree over the chunk sizes, 1-based
        std::unordered_multimap<T*, Chunk*> chunkOf;
        unsigned size = 0;
        // Where the last look-up by index ended, so that walking by index needs no search.
        mutable unsigned cursorChunk = 0;
        mutable unsigned cursorStart = 0;

        void renumber() noexcept
        {
            std::fill(tree.begin(), tree.end(), 0u);
            for (unsigned i = 0; i < chunks.size(); ++i) {
                chunks[i]->ordinal = i;
                tree[i + 1] += static_cast<unsigned>(chunks[i]->items.size());
                unsigned const parent = (i + 1) + ((i + 1) & (0u - (i + 1)));
                if (parent < tree.size())
                    tree[parent] += tree[i + 1];
            }
            resetCursor();
        }

        void resetCursor() const noexcept
        {
            cursorChunk = 0;
            cursorStart = 0;
        }

        void addToTree(unsigned ordinal, unsigned delta) noexcept
        {
            for (unsigned i = ordinal + 1; i < tree.size(); i += i & (0u - i))
                tree[i] += delta; // a removal adds ~0u, which wraps to minus one
            resetCursor();
        }

        unsigned startOf(Chunk const& chunk) const noexcept
        {
            unsigned start = 0;
            for (unsigned i = chunk.ordinal; i > 0; i -= i & (0u - i))
                start += tree[i];
            return start;
        }

        /// Moves the cursor to the chunk that holds `index`.
        void seek(unsigned index) const noexcept
        {
            std::size_t const count = chunks.empty() ? 0 : chunks[cursorChunk]->items.size();
            if (index >= cursorStart && index - cursorStart < count)
                return;
            if (index == cursorStart + count && cursorChunk + 1 < chunks.size()) {
                cursorStart += static_cast<unsigned>(count);
                ++cursorChunk;
                return;
            }
            unsigned position = 0;
            unsigned start = 0;
            for (unsigned step = std::bit_floor(static_cast<unsigned>(chunks.size())); step > 0; step /= 2) {
                if (position + step < tree.size() && start + tree[position + step] <= index) {
                    position += step;
                    start += tree[position];
                }
            }
            cursorChunk = position;
            cursorStart = start;
        }

        T* at(unsigned index) const noexcept
        {
            seek(index);
            return chunks[cursorChunk]->items[index - cursorStart];
        }

        Chunk* firstChunkOf(T const* object) const noexcept
        {
            Chunk* first = nullptr;
            auto const range = chunkOf.equal_range(const_cast<T*>(object));
            for (auto it = range.first; it != range.second; ++it) {
                if (!first || it->second->ordinal < first->ordinal)
                    first = it->second;
            }
            return first;
        }

        unsigned indexOf(T const* object) const noexcept
        {
            Chunk const* const chunk = firstChunkOf(object);
            if (!chunk)
                return kNotFound;
            auto const place = std::find(chunk->items.begin(), chunk->items.end(), object);
            return startOf(*chunk) + static_cast<unsigned>(place - chunk->items.begin());
        }

        /// A new chunk behind the one at `ordinal`, or the very first one.
        void addChunk(std::size_t position)
        {
            auto chunk = std::make_unique<Chunk>();
            chunk->items.reserve(kChunkLimit);
            chunks.reserve(chunks.size() + 1 > chunks.capacity() ? 2 * chunks.size() + 4 : chunks.size());
            tree.reserve(chunks.capacity() + 1);
            chunks.insert(chunks.begin() + static_cast<std::ptrdiff_t>(position), std::move(chunk));
            tree.resize(chunks.size() + 1);
            renumber();
        }

        void split(Chunk& full)
        {
            addChunk(full.ordinal + 1);
            Chunk& next = *chunks[full.ordinal + 1];
            auto const half = full.items.begin() + kChunkLimit / 2;
            next.items.assign(half, full.items.end());
            full.items.erase(half, full.items.end());
            for (T* object : next.items)
                relink(object, full, next);
            renumber();
        }

        void relink(T* object, Chunk& from, Chunk& to) noexcept
        {
            auto const range = chunkOf.equal_range(object);
            for (auto it = range.first; it != range.second; ++it) {
                if (it->second == &from) {
                    it->second = &to;
                    return;
                }
            }
        }

        void insert(unsigned index, T* object)
        {
            Chunk& chunk = chunkForInsert(index);
            unsigned const start = startOf(chunk);
            chunkOf.emplace(object, &chunk); // the last step that can run out of memory
            chunk.items.insert(chunk.items.begin() + (index - start), object);
            addToTree(chunk.ordinal, 1);
            ++size;
        }

        Chunk& chunkForInsert(unsigned index)
        {
            if (chunks.empty())
                addChunk(0);
            Chunk* chunk = chunks.back().get();
            if (index < size) {
                seek(index);
                chunk = chunks[cursorChunk].get();
            }
            if (chunk->items.size() < kChunkLimit)
                return *chunk;
            if (index == size) { // appending leaves full chunks behind
                addChunk(chunks.size());
                return *chunks.back();
            }
            split(*chunk);
            return index - startOf(*chunk) <= chunk->items.size() ? *chunk : *chunks[chunk->ordinal + 1];
        }

        bool erase(T* object) noexcept
        {
            Chunk* const chunk = firstChunkOf(object);
            if (!chunk)
                return false;
            eraseFrom(*chunk, std::find(chunk->items.begin(), chunk->items.end(), object));
            return true;
        }

        void eraseAt(unsigned index) noexcept
        {
            seek(index);
            Chunk& chunk = *chunks[cursorChunk];
            eraseFrom(chunk, chunk.items.begin() + (index - cursorStart));
        }

        void eraseFrom(Chunk& chunk, typename std::vector<T*>::iterator place) noexcept
        {
            auto const range = chunkOf.equal_range(*place);
            for (auto it = range.first; it != range.second; ++it) {
                if (it->second == &chunk) {
                    chunkOf.erase(it);
                    break;
                }
            }
            chunk.items.erase(place);
            --size;
            addToTree(chunk.ordinal, ~0u);
            if (chunk.items.empty()) {
                chunks.erase(chunks.begin() + chunk.ordinal);
                tree.resize(chunks.size() + 1);
                renumber();
            }
        }
    };

    void makeBig()
    {
        auto big = std::make_unique<Big>();
        for (T* object : m_flat)
            big->insert(big->size, object);
        m_big = std::move(big);
        m_flat.clear();
    }

    std::vector<T*> m_flat;
    std::unique_ptr<Big> m_big;
};

} // namespace TAV_marlo_v1::detail
