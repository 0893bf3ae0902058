#pragma once

#include "foundation/ProbingTable.h"

#include <tav/Types.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <memory>
#include <vector>

namespace TAV_marlo_v1::detail {

/// A long sequence of objects that it does not own, cut into chunks, so that taking one object out of a million
/// moves at most a chunk's worth of pointers: a table leads from the object to its chunk, and a binary indexed tree
/// over the chunk sizes from an index to its chunk and back, in logarithmic time.
/// Every change either happens whole or, when memory runs out, not at all.
template <class T>
class ChunkedSequence {
public:
    unsigned size() const noexcept { return m_size; }
    std::size_t heapBytes() const noexcept
    {
        return m_chunks.size() * sizeof(Chunk) + m_chunks.capacity() * sizeof m_chunks[0]
               + m_tree.capacity() * sizeof m_tree[0] + m_places.heapBytes();
    }

    T* at(unsigned index) const noexcept
    {
        seek(index);
        return m_chunks[m_cursorChunk]->items[index - m_cursorStart];
    }

    bool contains(T const* object) const noexcept { return firstChunkOf(object) != nullptr; }

    /// The first index of the object, or kNotFound.
    unsigned indexOf(T const* object) const noexcept
    {
        Chunk const* const chunk = firstChunkOf(object);
        return chunk ? startOf(*chunk) + chunk->placeOf(object) : kNotFound;
    }

    /// Inserts in front of `index`, which is at most size().
    void insert(unsigned index, T* object)
    {
        Chunk& chunk = chunkForInsert(index);
        unsigned const place = index == m_size ? chunk.count : index - startOf(chunk);
        enter(object, chunk); // the last step that can run out of memory
        chunk.insert(place, object);
        resize(chunk, 1);
    }

    /// Takes the first place of the object out. @return false when there is none
    bool erase(T const* object) noexcept
    {
        Chunk* const chunk = firstChunkOf(object);
        if (chunk)
            eraseFrom(*chunk, chunk->placeOf(object));
        return chunk != nullptr;
    }

    void eraseAt(unsigned index) noexcept
    {
        seek(index);
        eraseFrom(*m_chunks[m_cursorChunk], index - m_cursorStart);
    }

    /// Both indices must be below size(). The new place is made before the old one goes, so that running out of
    /// memory changes nothing.
    void move(unsigned from, unsigned to)
    {
        bool const hadRepeats = m_hasRepeats;
        insert(from < to ? to + 1 : to, at(from));
        eraseAt(from < to ? from : from + 1);
        m_hasRepeats = hadRepeats;
    }

    template <class Visit>
    void forEach(Visit&& visit) const
    {
        for (auto const& chunk : m_chunks) {
            for (unsigned place = 0; place < chunk->count; ++place)
                visit(*chunk->items[place]);
        }
    }

private:
    struct Chunk {
        static constexpr unsigned kLimit = 128;

        unsigned ordinal = 0;
        unsigned count = 0;
        std::array<T*, kLimit> items;

        bool isFull() const noexcept { return count == kLimit; }
        unsigned placeOf(T const* object) const noexcept
        {
            return static_cast<unsigned>(std::find(items.begin(), items.begin() + count, object) - items.begin());
        }
        bool holds(T const* object) const noexcept { return placeOf(object) < count; }
        void insert(unsigned place, T* object) noexcept
        {
            std::move_backward(items.begin() + place, items.begin() + count, items.begin() + count + 1);
            items[place] = object;
            ++count;
        }
        void erase(unsigned place) noexcept
        {
            std::move(items.begin() + place + 1, items.begin() + count, items.begin() + place);
            --count;
        }
    };

    struct Place {
        T* object = nullptr;
        Chunk* chunk = nullptr;
        bool isFree() const noexcept { return !object; }
        std::uint32_t hash() const noexcept { return AddressHash()(object); }
    };

    // ---- from an object to its chunk

    Chunk* firstChunkOf(T const* object) const noexcept
    {
        Chunk* first = nullptr;
        m_places.search(AddressHash()(object), [&](Place const& place) {
            if (place.object == object && (!first || place.chunk->ordinal < first->ordinal))
                first = place.chunk;
            return first && !m_hasRepeats;
        });
        return first;
    }

    /// An object that stands in a chunk several times has one entry for all of these, so that a list of one object a
    /// thousand times over does not make the table one long run.
    void enter(T* object, Chunk& chunk)
    {
        bool known = false;
        m_places.search(AddressHash()(object), [&](Place const& place) {
            m_hasRepeats = m_hasRepeats || place.object == object;
            return known = place.object == object && place.chunk == &chunk;
        });
        if (!known)
            m_places.insert({object, &chunk});
    }

    void leave(T const* object, Chunk const& chunk) noexcept
    {
        if (!m_hasRepeats || !chunk.holds(object))
            m_places.erase(AddressHash()(object),
                           [&](Place const& place) { return place.object == object && place.chunk == &chunk; });
    }

    void eraseFrom(Chunk& chunk, unsigned place) noexcept
    {
        T* const object = chunk.items[place];
        chunk.erase(place);
        leave(object, chunk);
        resize(chunk, ~0u); // which wraps to minus one
        if (chunk.count == 0)
            removeChunk(chunk.ordinal);
    }

    // ---- chunks

    Chunk& chunkForInsert(unsigned index)
    {
        if (index == m_size) { // appending leaves full chunks behind
            if (m_chunks.empty() || m_chunks.back()->isFull())
                appendChunk();
            return *m_chunks.back();
        }
        seek(index);
        Chunk& chunk = *m_chunks[m_cursorChunk];
        if (!chunk.isFull())
            return chunk;
        if (index == m_cursorStart && m_cursorChunk > 0 && !m_chunks[m_cursorChunk - 1]->isFull())
            return *m_chunks[m_cursorChunk - 1]; // what was taken out at its end comes back there
        split(chunk);
        return index - startOf(chunk) <= chunk.count ? chunk : *m_chunks[chunk.ordinal + 1];
    }

    void appendChunk()
    {
        makeRoomForChunk();
        m_chunks.push_back(std::make_unique<Chunk>());
        auto const position = static_cast<unsigned>(m_chunks.size());
        m_chunks.back()->ordinal = position - 1;
        // What the tree keeps at a position: the sum over as many chunks before it as its lowest bit says.
        unsigned sum = 0;
        for (unsigned step = 1; step < (position & (0u - position)); step *= 2)
            sum += m_tree[position - step];
        m_tree.push_back(sum);
    }

    void split(Chunk& full)
    {
        makeRoomForChunk();
        auto added = std::make_unique<Chunk>();
        Chunk& next = *added;
        constexpr unsigned kHalf = Chunk::kLimit / 2;
        m_places.reserve(m_places.size() + kHalf); // the last step that can run out of memory
        m_chunks.insert(m_chunks.begin() + full.ordinal + 1, std::move(added));
        m_tree.push_back(0);
        for (unsigned place = kHalf; place < Chunk::kLimit; ++place)
            next.insert(place - kHalf, full.items[place]);
        full.count = kHalf;
        for (unsigned place = 0; place < kHalf; ++place) {
            leave(next.items[place], full);
            enter(next.items[place], next);
        }
        renumber();
    }

    void makeRoomForChunk()
    {
        if (m_chunks.size() == m_chunks.capacity())
            m_chunks.reserve(2 * m_chunks.size() + 4);
        m_tree.reserve(m_chunks.capacity() + 1);
        if (m_tree.empty())
            m_tree.push_back(0); // positions count from 1
    }

    void removeChunk(unsigned ordinal) noexcept
    {
        m_chunks.erase(m_chunks.begin() + ordinal);
        m_tree.pop_back();
        if (ordinal < m_chunks.size())
            renumber();
    }

    // ---- from an index to its chunk

    void renumber() noexcept
    {
        std::fill(m_tree.begin(), m_tree.end(), 0u);
        for (unsigned i = 0; i < m_chunks.size(); ++i) {
            m_chunks[i]->ordinal = i;
            m_tree[i + 1] += m_chunks[i]->count;
            unsigned const parent = (i + 1) + ((i + 1) & (0u - (i + 1)));
            if (parent < m_tree.size())
                m_tree[parent] += m_tree[i + 1];
        }
        resetCursor();
    }

    void resetCursor() const noexcept
    {
        m_cursorChunk = 0;
        m_cursorStart = 0;
    }

    /// Notes that the chunk holds so many more.
    void resize(Chunk const& chunk, unsigned delta) noexcept
    {
        for (unsigned i = chunk.ordinal + 1; i < m_tree.size(); i += i & (0u - i))
            m_tree[i] += delta;
        m_size += delta;
        resetCursor();
    }

    unsigned startOf(Chunk const& chunk) const noexcept
    {
        unsigned start = 0;
        for (unsigned i = chunk.ordinal; i > 0; i -= i & (0u - i))
            start += m_tree[i];
        return start;
    }

    /// Moves the cursor to the chunk that holds `index`.
    void seek(unsigned index) const noexcept
    {
        unsigned const count = m_chunks[m_cursorChunk]->count;
        if (index >= m_cursorStart && index - m_cursorStart < count)
            return;
        if (index == m_cursorStart + count && m_cursorChunk + 1 < m_chunks.size()) {
            m_cursorStart += count;
            ++m_cursorChunk;
            return;
        }
        unsigned position = 0;
        unsigned start = 0;
        for (unsigned step = std::bit_floor(static_cast<unsigned>(m_chunks.size())); step > 0; step /= 2) {
            if (position + step < m_tree.size() && start + m_tree[position + step] <= index) {
                position += step;
                start += m_tree[position];
            }
        }
        m_cursorChunk = position;
        m_cursorStart = start;
    }

    std::vector<std::unique_ptr<Chunk>> m_chunks;
    std::vector<unsigned> m_tree; // binary indexed tree over the chunk sizes, 1-based
    ProbingTable<Place> m_places;
    unsigned m_size = 0;
    bool m_hasRepeats = false; // an object stood in it more than once at some time
    // Where the last look-up by index ended, so that walking by index needs no search.
    mutable unsigned m_cursorChunk = 0;
    mutable unsigned m_cursorStart = 0;
};

} // namespace TAV_marlo_v1::detail
