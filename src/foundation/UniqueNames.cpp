#include <tav/UniqueNames.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

namespace TAV_marlo_v1 {

namespace {

constexpr std::string_view kDigits = "0123456789";

struct Pattern {
    explicit Pattern(std::string_view text)
        : suffix(text.substr(0, text.find('#')))
        , width(text.size() - suffix.size())
    {
    }
    std::string_view suffix;
    std::size_t width; // 0: the number is as long as it is
};

/// The value of a run of digits; none is 0. The messages of the exceptions are those of std::stoi on
/// common platforms, but its own words differ from one standard library to another.
std::uint32_t numberOf(std::string_view digits)
{
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    if (digits.empty())
        return 0;
    std::int32_t number = 0;
    auto const [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error == std::errc::result_out_of_range)
        throw std::out_of_range("stoi argument out of range");
    if (error != std::errc() || end != digits.data() + digits.size())
        throw std::invalid_argument("invalid stoi argument");
    return static_cast<std::uint32_t>(number);
}

} // namespace

String incrementNameDigits(char const* name, char const* pattern, unsigned start)
{
    std::string_view const whole(name ? name : "");
    Pattern const parts(pattern ? pattern : "");

    std::size_t const digitsFrom = whole.find_last_not_of(kDigits) + 1; // npos + 1 is 0: all are digits
    std::string result(whole.substr(0, digitsFrom));
    std::uint32_t number = start;
    if (digitsFrom < whole.size())
        number = numberOf(whole.substr(digitsFrom)) + 1;
    else
        result += parts.suffix;

    std::string const digits = std::to_string(number);
    if (digits.size() < parts.width)
        result.append(parts.width - digits.size(), '0');
    result += digits;
    return String(result.data(), result.size());
}

} // namespace TAV_marlo_v1
