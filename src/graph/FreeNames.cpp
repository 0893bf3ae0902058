#include "graph/FreeNames.h"

#include <charconv>
#include <iterator>
#include <optional>
#include <utility>

namespace TAV_marlo_v1::detail {

namespace {

constexpr std::uint32_t kLargestNumber = 2147483648u; // one more than the largest number that can be counted up from

struct NumberedName {
    std::string_view stem;
    std::string_view digits;
};

NumberedName splitDigits(std::string_view name)
{
    std::size_t stem = name.size();
    while (stem > 0 && name[stem - 1] >= '0' && name[stem - 1] <= '9')
        --stem;
    return {name.substr(0, stem), name.substr(stem)};
}

/// The value of the digits, empty when it is larger than any number a name can be given.
std::optional<std::uint32_t> valueOf(std::string_view digits)
{
    std::uint32_t value = 0;
    auto const [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || value > kLargestNumber)
        return std::nullopt;
    return value;
}

/// The number of a name in the form in which counting up writes it.
std::optional<std::uint32_t> canonicalNumber(NumberedName const& name)
{
    if (name.digits.empty() || (name.digits.size() > 1 && name.digits.front() == '0'))
        return std::nullopt;
    return valueOf(name.digits);
}

} // namespace

void FreeNames::add(std::string_view name)
{
    NumberedName const split = splitDigits(name);
    std::optional<std::uint32_t> const number = canonicalNumber(split);
    if (!number)
        return;
    auto stem = m_stems.find(split.stem);
    if (stem == m_stems.end())
        stem = m_stems.try_emplace(std::string(split.stem)).first;
    Runs& runs = stem->second;
    auto const next = runs.upper_bound(*number);
    if (next != runs.begin()) {
        auto const previous = std::prev(next);
        if (previous->second >= *number)
            return;
        if (previous->second + 1 == *number) {
            previous->second = *number;
            if (next != runs.end() && next->first == *number + 1) {
                previous->second = next->second;
                runs.erase(next);
            }
            return;
        }
    }
    if (next != runs.end() && next->first == *number + 1) {
        auto node = runs.extract(next);
        node.key() = *number;
        runs.insert(std::move(node));
        return;
    }
    runs.emplace(*number, *number);
}

void FreeNames::remove(std::string_view name)
{
    NumberedName const split = splitDigits(name);
    std::optional<std::uint32_t> const number = canonicalNumber(split);
    if (!number)
        return;
    auto const stem = m_stems.find(split.stem);
    if (stem == m_stems.end())
        return;
    Runs& runs = stem->second;
    auto run = runs.upper_bound(*number);
    if (run == runs.begin() || (--run)->second < *number)
        return;
    std::uint32_t const last = run->second;
    if (run->first == *number && last > *number) {
        auto node = runs.extract(run);
        node.key() = *number + 1;
        runs.insert(std::move(node));
    } else if (run->first == *number) {
        runs.erase(run);
    } else {
        run->second = *number - 1;
        if (last > *number)
            runs.emplace(*number + 1, last);
    }
    if (runs.empty())
        m_stems.erase(stem);
}

std::string FreeNames::following(std::string_view name) const
{
    NumberedName const split = splitDigits(name);
    std::uint32_t number = 1;
    if (!split.digits.empty()) {
        std::optional<std::uint32_t> const own = valueOf(split.digits);
        if (!own || *own == kLargestNumber)
            return std::string(name) + "_1";
        number = *own + 1;
    }
    if (auto const stem = m_stems.find(split.stem); stem != m_stems.end()) {
        auto run = stem->second.upper_bound(number);
        if (run != stem->second.begin() && (--run)->second >= number)
            number = run->second == kLargestNumber ? kLargestNumber : run->second + 1;
    }
    return std::string(split.stem) + std::to_string(number);
}

} // namespace TAV_marlo_v1::detail
