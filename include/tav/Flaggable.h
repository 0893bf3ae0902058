#pragma once

#include <cstdint>

namespace TAV_marlo_v1 {

/// A word of flags of the 32-bit enumeration E. Each module may have these operations of its own: they know
/// nothing but the word, and an object deletes itself by the code of the module that made it.
template <class E>
class Flaggable {
public:
    Flaggable() noexcept = default;
    Flaggable(E flags) noexcept
        : m_flags(flags)
    {
    }
    Flaggable(Flaggable const&) noexcept = default;
    Flaggable(Flaggable&&) noexcept = default;
    Flaggable& operator=(Flaggable const&) noexcept = default;
    Flaggable& operator=(Flaggable&&) noexcept = default;

    virtual ~Flaggable() = default;
    virtual E getFlags() const { return m_flags; }
    virtual void setFlag(E flag) { m_flags = static_cast<E>(word(m_flags) | word(flag)); }
    virtual void clearFlag(E flag) { m_flags = static_cast<E>(word(m_flags) & ~word(flag)); }
    virtual bool anySet() const { return word(m_flags) != 0; }
    /// True when any bit of `flag` is set, not only when all are.
    virtual bool testFlag(E flag) const { return (word(m_flags) & word(flag)) != 0; }

private:
    static constexpr std::uint32_t word(E flags) noexcept { return static_cast<std::uint32_t>(flags); }

    E m_flags = static_cast<E>(0);
};

} // namespace TAV_marlo_v1
