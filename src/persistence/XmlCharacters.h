#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace TAV_marlo_v1::detail {

/// What a writer has to do with a byte of UTF-8.
enum class ByteClass : std::uint8_t {
    Plain,      ///< ASCII that stands for itself everywhere
    Markup,     ///< < > & "
    WhiteSpace, ///< tab, line feed, carriage return
    Forbidden,  ///< a control character or a byte that never begins a character
    Lead2,
    Lead3,
    Lead4
};

constexpr std::array<ByteClass, 256> makeByteClasses()
{
    std::array<ByteClass, 256> classes{};
    for (unsigned i = 0; i < 256; ++i) {
        if (i == '\t' || i == '\n' || i == '\r')
            classes[i] = ByteClass::WhiteSpace;
        else if (i < 0x20)
            classes[i] = ByteClass::Forbidden;
        else if (i == '<' || i == '>' || i == '&' || i == '"')
            classes[i] = ByteClass::Markup;
        else if (i < 0x80)
            classes[i] = ByteClass::Plain;
        else if (i >= 0xC2 && i < 0xE0)
            classes[i] = ByteClass::Lead2;
        else if (i >= 0xE0 && i < 0xF0)
            classes[i] = ByteClass::Lead3;
        else if (i >= 0xF0 && i < 0xF5)
            classes[i] = ByteClass::Lead4;
        else
            classes[i] = ByteClass::Forbidden;
    }
    return classes;
}

inline constexpr std::array<ByteClass, 256> kByteClasses = makeByteClasses();

inline ByteClass classOf(char c) noexcept
{
    return kByteClasses[static_cast<unsigned char>(c)];
}

/// The length of the valid UTF-8 character that begins with a lead byte at `at`, 0 when the bytes are
/// no such character: cut off, overlong, a surrogate or beyond U+10FFFF.
inline std::size_t characterLength(char const* at, char const* end) noexcept
{
    auto const byte = [at](std::size_t i) { return static_cast<unsigned char>(at[i]); };
    auto const continues = [&byte](std::size_t i) { return (byte(i) & 0xC0) == 0x80; };
    std::size_t const left = static_cast<std::size_t>(end - at);
    switch (classOf(*at)) {
    case ByteClass::Lead2:
        return left >= 2 && continues(1) ? 2 : 0;
    case ByteClass::Lead3:
        if (left < 3 || !continues(1) || !continues(2))
            return 0;
        if ((byte(0) == 0xE0 && byte(1) < 0xA0) || (byte(0) == 0xED && byte(1) >= 0xA0))
            return 0;
        return 3;
    case ByteClass::Lead4:
        if (left < 4 || !continues(1) || !continues(2) || !continues(3))
            return 0;
        if ((byte(0) == 0xF0 && byte(1) < 0x90) || (byte(0) == 0xF4 && byte(1) >= 0x90))
            return 0;
        return 4;
    default:
        return 0;
    }
}

/// U+FFFE and U+FFFF, which are valid UTF-8 but no XML characters; `at` has three bytes.
inline bool isNonCharacter(char const* at) noexcept
{
    return static_cast<unsigned char>(at[0]) == 0xEF && static_cast<unsigned char>(at[1]) == 0xBF
           && static_cast<unsigned char>(at[2]) >= 0xBE;
}

} // namespace TAV_marlo_v1::detail
