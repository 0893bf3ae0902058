#include <tav/StringArray.h>

#include "foundation/SmallBlocks.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <string_view>
#include <utility>

namespace TAV_marlo_v1 {

namespace {
using Word = std::uint32_t;

/// Where each text begins stands at the end of the block, the first one last, so that both the texts
/// and their starts can grow into the room between them.
constexpr std::size_t kSmallestRoom = 12; // a head and a short value make the allocator's smallest block
} // namespace

/// Head of the one block of an array: a million nodes hold several arrays each, most of one short text.
/// Behind it stand the NUL-terminated texts, free room, and the starts of the texts.
struct StringArray::Impl {
    Word count = 0;
    Word used = 0; // bytes of the texts
    Word room = 0; // bytes behind the head, a multiple of four

    char* texts() noexcept { return reinterpret_cast<char*>(this) + sizeof(Impl); }
    char const* texts() const noexcept { return reinterpret_cast<char const*>(this) + sizeof(Impl); }
    Word& start(Word index) noexcept { return reinterpret_cast<Word*>(texts() + room)[-1 - std::ptrdiff_t(index)]; }
    Word start(Word index) const noexcept { return const_cast<Impl*>(this)->start(index); }
    Word end(Word index) const noexcept { return index + 1 < count ? start(index + 1) : used; }
    std::string_view text(Word index) const noexcept
    {
        return {texts() + start(index), std::size_t(end(index) - start(index) - 1)};
    }
    std::size_t taken() const noexcept { return used + count * sizeof(Word); }

    static Impl* create(std::size_t room)
    {
        room = (std::max(room, kSmallestRoom) + sizeof(Word) - 1) / sizeof(Word) * sizeof(Word);
        if (room > std::numeric_limits<Word>::max())
            throw std::bad_alloc();
        return new (detail::takeBlock(sizeof(Impl) + room)) Impl{0, 0, static_cast<Word>(room)};
    }

    static void destroy(Impl* impl) noexcept
    {
        if (impl != ofNone())
            detail::giveBlock(impl, sizeof(Impl) + impl->room);
    }

    /// What an array that never held a text has instead of a block, and one that was moved from. It has no
    /// room, so whatever would write to it makes a block first.
    static Impl* ofNone() noexcept
    {
        static constinit Impl empty{};
        return &empty;
    }

    /// The block itself when `bytes` more fit, else a larger copy.
    Impl* withRoomFor(std::size_t bytes)
    {
        std::size_t const needed = taken() + bytes;
        if (needed <= room)
            return this;
        Impl* const larger = create(std::max(needed, 2 * std::size_t(room)));
        larger->put(*this, count, used);
        return larger;
    }

    void put(std::string_view text) noexcept
    {
        start(count++) = used;
        std::memmove(texts() + used, text.data(), text.size());
        used += static_cast<Word>(text.size());
        texts()[used++] = '\0';
    }

    /// Appends the first `otherCount` texts of `other`, `otherUsed` bytes; `other` may be this one.
    void put(Impl const& other, Word otherCount, Word otherUsed) noexcept
    {
        for (Word i = 0; i < otherCount; ++i)
            start(count + i) = used + other.start(i);
        std::memmove(texts() + used, other.texts(), otherUsed);
        count += otherCount;
        used += otherUsed;
    }

    void erase(Word index) noexcept
    {
        Word const from = end(index);
        Word const length = from - start(index);
        std::memmove(texts() + start(index), texts() + from, used - from);
        for (Word i = index + 1; i < count; ++i)
            start(i - 1) = start(i) - length;
        used -= length;
        --count;
    }

    /// The first text equal to `wanted`, or count.
    Word find(std::string_view wanted) const noexcept
    {
        Word index = 0;
        while (index < count && text(index) != wanted)
            ++index;
        return index;
    }
};

StringArray::StringArray()
    : m_impl(Impl::ofNone())
{
}

StringArray::StringArray(char const* text)
    : StringArray()
{
    if (text)
        add(text);
}

StringArray::StringArray(StringArray const& other)
    : StringArray()
{
    if (other.empty())
        return;
    m_impl = Impl::create(other.m_impl->taken());
    m_impl->put(*other.m_impl, other.m_impl->count, other.m_impl->used);
}

StringArray::StringArray(StringArray&& other) noexcept
    : m_impl(std::exchange(other.m_impl, Impl::ofNone()))
{
}

StringArray::~StringArray()
{
    Impl::destroy(m_impl);
}

StringArray& StringArray::operator=(StringArray const& other)
{
    return *this = StringArray(other);
}

StringArray& StringArray::operator=(StringArray&& other) noexcept
{
    StringArray taken(std::move(other)); // `other` may be this array
    std::swap(m_impl, taken.m_impl);
    return *this;
}

unsigned StringArray::size() const noexcept
{
    return m_impl->count;
}

bool StringArray::empty() const noexcept
{
    return m_impl->count == 0;
}

void StringArray::clear()
{
    if (empty())
        return;
    m_impl->count = 0;
    m_impl->used = 0;
}

char const* StringArray::operator[](unsigned index) const noexcept
{
    return m_impl->texts() + m_impl->start(index);
}

void StringArray::add(char const* text)
{
    if (!text)
        return;
    std::string_view const added(text);
    Impl* const block = m_impl->withRoomFor(added.size() + 1 + sizeof(Word));
    block->put(added); // before the old block goes: `text` may be part of it
    if (block != m_impl)
        Impl::destroy(std::exchange(m_impl, block));
}

void StringArray::add(String const& text)
{
    add(text.toChar());
}

void StringArray::add(StringArray const& other)
{
    Word const count = other.m_impl->count;
    Word const used = other.m_impl->used;
    Impl* const block = m_impl->withRoomFor(used + count * sizeof(Word));
    block->put(*other.m_impl, count, used);
    if (block != m_impl)
        Impl::destroy(std::exchange(m_impl, block));
}

bool StringArray::addUnique(char const* text)
{
    if (!text || m_impl->find(text) < m_impl->count)
        return false;
    add(text);
    return true;
}

bool StringArray::removeUnique(char const* text)
{
    Word const index = text ? m_impl->find(text) : m_impl->count;
    if (index == m_impl->count)
        return false;
    m_impl->erase(index);
    return true;
}

bool StringArray::contains(String const& text) const noexcept
{
    return m_impl->find(text.toChar()) < m_impl->count;
}

bool StringArray::operator==(StringArray const& other) const noexcept
{
    // No text holds a NUL, so the bytes of the texts also tell where each one ends.
    return m_impl->count == other.m_impl->count && m_impl->used == other.m_impl->used
           && std::memcmp(m_impl->texts(), other.m_impl->texts(), m_impl->used) == 0;
}

bool StringArray::operator!=(StringArray const& other) const noexcept
{
    return !(*this == other);
}

} // namespace TAV_marlo_v1
