#pragma once

#include <tav/Export.h>

namespace TAV_marlo_v1 {

/// Base of every shared object: a plain, unsynchronised 32-bit count that AddRefWrapper raises and
/// lowers. A new object has count 0 and is owned by whoever made it until it is put into a handle.
class TAV_API ReferenceCounted {
public:
    ReferenceCounted() noexcept = default;

    /// A copy takes over the count of its source along with everything else; so a live shared
    /// object is better not copied.
    ReferenceCounted(ReferenceCounted const&) noexcept = default;
    ReferenceCounted& operator=(ReferenceCounted const&) noexcept = default;

    void addRef() const noexcept { ++m_count; }

    /// Takes one off the count and deletes the object when that leaves 0. At count 0 the count wraps
    /// to its maximum and nothing is deleted.
    void release() const
    {
        if (--m_count == 0)
            const_cast<ReferenceCounted*>(this)->deleteThis();
    }

    unsigned refCount() const noexcept { return m_count; }

protected:
    /// Deletes the object; a derived class may give it back to an owner instead.
    virtual void deleteThis();
    virtual ~ReferenceCounted();

private:
    mutable unsigned m_count = 0;
};

} // namespace TAV_marlo_v1
