#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

namespace TAV_marlo_v1::detail {

/// Knows which numbered names are taken, so that the next free one is found without trying them all.
///
/// A name such as "mix12" is kept as the number 12 under the stem "mix"; the numbers of a stem are
/// kept as runs without gaps. Only numbers as counting up writes them (no leading zeros, at most
/// 2147483648) can collide with a new name; all others are left out.
class FreeNames {
public:
    void add(std::string_view name);
    void remove(std::string_view name);

    /// The first free name counting up from `name`, which is taken. `isTaken(std::string_view)` tells
    /// about names that have no number or one beyond what counting up can write.
    template <class IsTaken>
    std::string next(std::string_view name, IsTaken&& isTaken) const
    {
        std::string candidate(name);
        do
            candidate = following(candidate);
        while (isTaken(std::string_view(candidate)));
        return candidate;
    }

private:
    using Runs = std::map<std::uint32_t, std::uint32_t>; // first -> last number of a run

    std::string following(std::string_view name) const;

    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const noexcept { return std::hash<std::string_view>()(text); }
    };
    std::unordered_map<std::string, Runs, Hash, std::equal_to<>> m_stems;
};

} // namespace TAV_marlo_v1::detail
