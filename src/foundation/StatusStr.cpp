#include <tav/StatusStr.h>

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <new>
#include <utility>

namespace TAV_marlo_v1 {

/// The block of a message is the NUL-terminated message itself.
struct StatusStr::Impl {
    char first;

    char const* text() const noexcept { return &first; }

    /// A null `text` is the empty one.
    static Impl* create(char const* text)
    {
        if (!text)
            text = "";
        std::size_t const bytes = std::strlen(text) + 1;
        void* const block = ::operator new(bytes);
        std::memcpy(block, text, bytes);
        return static_cast<Impl*>(block);
    }

    static void destroy(Impl* impl) noexcept
    {
        if (impl != ofMovedFrom())
            ::operator delete(static_cast<void*>(impl));
    }

    /// What a moved-from status is left with, so that moving can't fail.
    static Impl* ofMovedFrom() noexcept
    {
        static constinit Impl empty{'\0'};
        return &empty;
    }
};

StatusStr::StatusStr()
    : StatusStr("")
{
}

StatusStr::StatusStr(char const* text)
    : m_impl(Impl::create(text))
{
}

StatusStr::StatusStr(char const* format, char const* first, char const* second)
{
    char message[1024];
    if (format && first) {
        std::snprintf(message, sizeof message, format, first, second ? second : "");
        format = message;
    }
    m_impl = Impl::create(format);
}

StatusStr::StatusStr(StatusStr const& other)
    : StatusStr(other.m_impl->text())
{
}

StatusStr::StatusStr(StatusStr&& other) noexcept
    : m_impl(std::exchange(other.m_impl, Impl::ofMovedFrom()))
{
}

StatusStr::~StatusStr()
{
    Impl::destroy(m_impl);
}

StatusStr& StatusStr::operator=(StatusStr const& other)
{
    return *this = StatusStr(other);
}

StatusStr& StatusStr::operator=(StatusStr&& other) noexcept
{
    StatusStr taken(std::move(other)); // `other` may be this status
    std::swap(m_impl, taken.m_impl);
    return *this;
}

bool StatusStr::operator!() const noexcept
{
    return m_impl->first != '\0';
}

char const* StatusStr::getErrorString() const noexcept
{
    return m_impl->text();
}

void StatusStr::setErrorString(char const* text)
{
    *this = StatusStr(text); // `text` may be part of this message
}

void StatusStr::clearError()
{
    m_impl->first = '\0';
}

} // namespace TAV_marlo_v1
