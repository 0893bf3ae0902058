#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>

namespace TAV_marlo_v1::detail {

/// An immutable, NUL-terminated text that is stored once however many hold it: names, type names and
/// metadata keys recur by the thousand. Two texts are equal exactly when they are the same object.
/// Header and bytes share one allocation. The count is not synchronised.
class SharedText {
public:
    SharedText(SharedText const&) = delete;
    SharedText& operator=(SharedText const&) = delete;

    /// The one object of that text, with one reference added for the caller.
    static SharedText const& intern(std::string_view text);

    /// The object of that text if anybody holds it, else null; adds no reference. What has no object
    /// is nobody's name, so a look-up by name can stop right there.
    static SharedText const* find(std::string_view text) noexcept;

    /// The empty text; permanent, so its count need not be kept, but may be.
    static SharedText const& empty() noexcept;

    void addRef() const noexcept { ++m_references; }
    void release() const noexcept
    {
        if (--m_references == 0)
            discard();
    }

    /// How many hold this text; of no use for the empty text.
    std::uint32_t references() const noexcept { return m_references; }

    std::size_t heapBytes() const noexcept { return m_size == 0 ? 0 : sizeof(SharedText) + m_size + 1; }

    char const* chars() const noexcept { return reinterpret_cast<char const*>(this) + sizeof(SharedText); }
    std::size_t size() const noexcept { return m_size; }
    std::string_view view() const noexcept { return {chars(), m_size}; }

    static std::uint32_t hashOf(std::string_view text) noexcept
    {
        return text.empty() ? 0 : static_cast<std::uint32_t>(std::hash<std::string_view>()(text));
    }
    /// As hashOf the text, without reading it.
    std::uint32_t hash() const noexcept { return m_hash; }

private:
    friend class SharedTextPool;
    friend struct EmptyText;

    constexpr SharedText(std::uint32_t hash, std::uint32_t size) noexcept
        : m_hash(hash)
        , m_size(size)
    {
    }

    void discard() const noexcept;

    std::uint32_t m_hash;
    std::uint32_t m_size;
    mutable std::uint32_t m_references = 1;
};

/// Holds one reference of a SharedText; never null.
class SharedTextRef {
public:
    /// The empty text.
    SharedTextRef() noexcept
        : m_text(&SharedText::empty())
    {
        m_text->addRef();
    }
    SharedTextRef(std::string_view text)
        : m_text(&SharedText::intern(text))
    {
    }
    /// A null `text` is the empty text.
    SharedTextRef(char const* text)
        : SharedTextRef(text ? std::string_view(text) : std::string_view())
    {
    }
    explicit SharedTextRef(SharedText const& text) noexcept
        : m_text(&text)
    {
        m_text->addRef();
    }
    SharedTextRef(SharedTextRef const& other) noexcept
        : SharedTextRef(*other.m_text)
    {
    }
    /// Leaves `other` empty.
    SharedTextRef(SharedTextRef&& other) noexcept
        : SharedTextRef()
    {
        swap(other);
    }
    ~SharedTextRef() { m_text->release(); }

    SharedTextRef& operator=(SharedTextRef const& other) noexcept
    {
        SharedTextRef(other).swap(*this);
        return *this;
    }
    /// Leaves `other` what this held.
    SharedTextRef& operator=(SharedTextRef&& other) noexcept
    {
        swap(other);
        return *this;
    }

    void swap(SharedTextRef& other) noexcept { std::swap(m_text, other.m_text); }

    SharedText const& operator*() const noexcept { return *m_text; }
    SharedText const* operator->() const noexcept { return m_text; }
    SharedText const* get() const noexcept { return m_text; }
    char const* chars() const noexcept { return m_text->chars(); }
    std::string_view view() const noexcept { return m_text->view(); }
    std::size_t size() const noexcept { return m_text->size(); }
    bool empty() const noexcept { return m_text->size() == 0; }

    friend bool operator==(SharedTextRef const& a, SharedTextRef const& b) noexcept { return a.m_text == b.m_text; }
    friend bool operator!=(SharedTextRef const& a, SharedTextRef const& b) noexcept { return a.m_text != b.m_text; }

private:
    SharedText const* m_text;
};

} // namespace TAV_marlo_v1::detail
