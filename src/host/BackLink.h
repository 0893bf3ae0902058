#pragma once

#include <utility>

namespace TAV_marlo_v1::detail {

/// The way back to an owner that may die first: held by the owner and by all who ask for it.
template <class Owner>
struct BackLink {
    explicit BackLink(Owner& object) noexcept
        : owner(&object)
    {
    }

    void addRef() noexcept { ++references; }
    void release() noexcept
    {
        if (--references == 0)
            delete this;
    }
    /// Called by the owner, who gives up its reference and is not found any more.
    void cut() noexcept
    {
        owner = nullptr;
        release();
    }

    Owner* owner; // null once it died
    unsigned references = 1;
};

/// Holds one reference of a link, or none.
template <class Owner>
class BackLinkRef {
public:
    BackLinkRef() noexcept = default;
    explicit BackLinkRef(BackLink<Owner>* link) noexcept
        : m_link(link)
    {
        if (m_link)
            m_link->addRef();
    }
    BackLinkRef(BackLinkRef const& other) noexcept
        : BackLinkRef(other.m_link)
    {
    }
    BackLinkRef(BackLinkRef&& other) noexcept
        : m_link(std::exchange(other.m_link, nullptr))
    {
    }
    BackLinkRef& operator=(BackLinkRef other) noexcept
    {
        std::swap(m_link, other.m_link);
        return *this;
    }
    ~BackLinkRef()
    {
        if (m_link)
            m_link->release();
    }

    /// Null without owner, and once it died.
    Owner* get() const noexcept { return m_link ? m_link->owner : nullptr; }

private:
    BackLink<Owner>* m_link = nullptr;
};

} // namespace TAV_marlo_v1::detail
