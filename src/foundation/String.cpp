#include <tav/String.h>

#include "foundation/TextBuffer.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

namespace TAV_marlo_v1 {

/// Head of the one block of a text; the bytes and the closing NUL follow it.
struct String::Impl {
    unsigned long long size = 0;
    unsigned long long capacity : 63 = 0;    // bytes that fit before the closing NUL
    unsigned long long isFromBuffer : 1 = 0; // the block is one of TextBuffer, from std::realloc

    char* chars() noexcept { return reinterpret_cast<char*>(this) + sizeof(Impl); }

    static Impl* create(char const* text, unsigned long long size, unsigned long long capacity)
    {
        void* const block = ::operator new(static_cast<std::size_t>(sizeof(Impl) + capacity + 1));
        Impl* const impl = new (block) Impl{0, capacity, 0};
        impl->put(text, size);
        return impl;
    }

    static void destroy(Impl* impl) noexcept
    {
        if (impl == ofNone())
            return;
        if (impl->isFromBuffer)
            std::free(impl);
        else
            ::operator delete(static_cast<void*>(impl));
    }

    /// What an empty text has instead of a block of its own. It has no room, so whatever would write to it
    /// makes a block first.
    static Impl* ofNone() noexcept
    {
        struct EmptyBlock {
            Impl head;
            char terminator = '\0';
        };
        static_assert(offsetof(EmptyBlock, terminator) == sizeof(Impl)); // where chars() looks
        static constinit EmptyBlock empty;
        return &empty.head;
    }

    /// Appends what is known to fit; `text` may be part of this text.
    void put(char const* text, unsigned long long added) noexcept
    {
        if (added == 0 && capacity == 0)
            return finish();
        std::memmove(chars() + size, text, static_cast<std::size_t>(added));
        size += added;
        finish();
    }

private:
    void finish() noexcept { chars()[size] = '\0'; }
};

namespace {
unsigned long long lengthOf(char const* text) noexcept
{
    return text ? std::strlen(text) : 0;
}
} // namespace

String::String()
    : m_impl(Impl::ofNone())
{
}

String::String(char const* text)
    : String(text ? text : "", lengthOf(text))
{
}

String::String(char const* text, unsigned long long size)
    : m_impl(text && size > 0 ? Impl::create(text, size, size) : Impl::ofNone())
{
}

String::String(String const& other)
    : String(other.m_impl->chars(), other.m_impl->size)
{
}

String::String(String&& other) noexcept
    : m_impl(std::exchange(other.m_impl, Impl::ofNone()))
{
}

String::~String()
{
    Impl::destroy(m_impl);
}

String& String::operator=(String const& other)
{
    return *this = String(other);
}

String& String::operator=(String&& other) noexcept
{
    String taken(std::move(other)); // `other` may be this text
    std::swap(m_impl, taken.m_impl);
    return *this;
}

String& String::operator=(char const* text)
{
    return *this = String(text); // `text` may be part of this text
}

char const* String::toChar() const noexcept
{
    return m_impl->chars();
}

unsigned long long String::size() const noexcept
{
    return m_impl->size;
}

bool String::empty() const noexcept
{
    return m_impl->size == 0;
}

String& String::append(char const* text)
{
    unsigned long long const added = lengthOf(text);
    if (added == 0)
        return *this;
    unsigned long long const needed = m_impl->size + added;
    if (needed <= m_impl->capacity) {
        m_impl->put(text, added);
        return *this;
    }
    // Twice the room, so that building a text piece by piece copies each byte a few times only.
    Impl* const larger =
        Impl::create(m_impl->chars(), m_impl->size, std::max<unsigned long long>(needed, 2 * m_impl->capacity));
    larger->put(text, added); // before the old block goes: `text` may be part of it
    Impl::destroy(std::exchange(m_impl, larger));
    return *this;
}

String& String::append(String const& text)
{
    return append(text.toChar());
}

bool String::operator==(String const& other) const noexcept
{
    return size() == other.size() && std::memcmp(toChar(), other.toChar(), static_cast<std::size_t>(size())) == 0;
}

bool String::operator==(char const* text) const noexcept
{
    return std::strcmp(toChar(), text ? text : "") == 0;
}

bool String::operator!=(String const& other) const noexcept
{
    return !(*this == other);
}

bool String::operator!=(char const* text) const noexcept
{
    return !(*this == text);
}

bool String::operator<(String const& other) const noexcept
{
    // memcmp compares bytes as unsigned, as the order of names wants it.
    auto const shorter = static_cast<std::size_t>(std::min(size(), other.size()));
    int const order = std::memcmp(toChar(), other.toChar(), shorter);
    return order != 0 ? order < 0 : size() < other.size();
}

// ---- TextBuffer

TextBuffer::~TextBuffer()
{
    std::free(m_block);
}

char* TextBuffer::data() const noexcept
{
    return m_block ? m_block->chars() : nullptr;
}

std::size_t TextBuffer::capacity() const noexcept
{
    return m_block ? static_cast<std::size_t>(m_block->capacity) : 0;
}

void TextBuffer::reserve(std::size_t capacity)
{
    void* const block = std::realloc(m_block, sizeof(String::Impl) + capacity + 1);
    if (!block)
        throw std::bad_alloc();
    m_block = static_cast<String::Impl*>(block);
    *m_block = {0, capacity, 1};
}

String TextBuffer::take(std::size_t size) noexcept
{
    String text;
    if (size == 0)
        return text;
    if (void* const fitting = std::realloc(m_block, sizeof(String::Impl) + size + 1))
        m_block = static_cast<String::Impl*>(fitting);
    *m_block = {size, size, 1};
    m_block->chars()[size] = '\0';
    text.m_impl = std::exchange(m_block, nullptr);
    return text;
}

} // namespace TAV_marlo_v1
