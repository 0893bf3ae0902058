#pragma once

#include <cstddef>
#include <utility>

namespace TAV_marlo_v1 {

/// The handle of the interface: keeps one reference on an object derived from ReferenceCounted, or
/// is empty, which means "none" or "not found". T may be incomplete where the handle is only named.
/// Handles cross the borders of modules: the count lies in the object, and the last handle, whosever it
/// is, lets the object delete itself by the code of the module that made it.
template <class T>
class AddRefWrapper {
public:
    AddRefWrapper() noexcept = default;
    AddRefWrapper(std::nullptr_t) noexcept {}

    AddRefWrapper(T* object) noexcept
        : m_object(object)
    {
        if (m_object)
            m_object->addRef();
    }

    AddRefWrapper(AddRefWrapper const& other) noexcept
        : AddRefWrapper(other.m_object)
    {
    }

    AddRefWrapper(AddRefWrapper&& other) noexcept
        : m_object(std::exchange(other.m_object, nullptr))
    {
    }

    /// From a handle to a derived class.
    template <class U, class = decltype(static_cast<T*>(static_cast<U*>(nullptr)))>
    AddRefWrapper(AddRefWrapper<U> const& other) noexcept
        : AddRefWrapper(static_cast<T*>(other.get()))
    {
    }

    ~AddRefWrapper()
    {
        if (m_object)
            m_object->release();
    }

    /// The new object is referenced before the old one is released.
    AddRefWrapper& operator=(AddRefWrapper const& other)
    {
        AddRefWrapper(other).swap(*this);
        return *this;
    }

    AddRefWrapper& operator=(AddRefWrapper&& other)
    {
        AddRefWrapper(std::move(other)).swap(*this);
        return *this;
    }

    AddRefWrapper& operator=(T* object)
    {
        AddRefWrapper(object).swap(*this);
        return *this;
    }

    void reset() { AddRefWrapper().swap(*this); }
    void swap(AddRefWrapper& other) noexcept { std::swap(m_object, other.m_object); }

    T* get() const noexcept { return m_object; }
    T* operator->() const noexcept { return m_object; }
    T& operator*() const noexcept { return *m_object; }
    explicit operator bool() const noexcept { return m_object != nullptr; }

    friend bool operator==(AddRefWrapper const& a, AddRefWrapper const& b) noexcept { return a.m_object == b.m_object; }
    friend bool operator!=(AddRefWrapper const& a, AddRefWrapper const& b) noexcept { return a.m_object != b.m_object; }
    friend bool operator<(AddRefWrapper const& a, AddRefWrapper const& b) noexcept { return a.m_object < b.m_object; }

private:
    T* m_object = nullptr;
};

} // namespace TAV_marlo_v1
