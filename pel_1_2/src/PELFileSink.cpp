#include <pel_1_2/PELFileSink.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <ios>
#include <string_view>

namespace {

constexpr char kReplacement[] = "\xEF\xBF\xBD";

bool isBetween(unsigned char byte, unsigned char low, unsigned char high)
{
    return byte >= low && byte <= high;
}

/// The length of the well-formed UTF-8 sequence that the text begins with, 0 when it begins with none.
/// Overlong forms, surrogates and what lies beyond U+10FFFF are none.
std::size_t sequenceLength(std::string_view text)
{
    auto const at = [text](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : static_cast<unsigned char>(0);
    };
    unsigned char const lead = at(0);
    if (lead < 0x80)
        return 1;
    if (isBetween(lead, 0xC2, 0xDF))
        return isBetween(at(1), 0x80, 0xBF) ? 2 : 0;
    if (isBetween(lead, 0xE0, 0xEF)) {
        unsigned char const low = lead == 0xE0 ? 0xA0 : 0x80;
        unsigned char const high = lead == 0xED ? 0x9F : 0xBF;
        return isBetween(at(1), low, high) && isBetween(at(2), 0x80, 0xBF) ? 3 : 0;
    }
    if (isBetween(lead, 0xF0, 0xF4)) {
        unsigned char const low = lead == 0xF0 ? 0x90 : 0x80;
        unsigned char const high = lead == 0xF4 ? 0x8F : 0xBF;
        return isBetween(at(1), low, high) && isBetween(at(2), 0x80, 0xBF) && isBetween(at(3), 0x80, 0xBF) ? 4 : 0;
    }
    return 0;
}

void appendEscaped(std::string& out, unsigned char control)
{
    constexpr char kDigits[] = "0123456789abcdef";
    out += "\\u00";
    out += kDigits[control >> 4];
    out += kDigits[control & 0xF];
}

void appendString(std::string& out, std::string_view text)
{
    out += '"';
    while (!text.empty()) {
        std::size_t const length = sequenceLength(text);
        unsigned char const lead = static_cast<unsigned char>(text[0]);
        if (length == 0)
            out += kReplacement;
        else if (lead == '"' || lead == '\\')
            out.append(1, '\\').append(1, text[0]);
        else if (lead < 0x20 || lead == 0x7F)
            appendEscaped(out, lead);
        else
            out.append(text.substr(0, length));
        text.remove_prefix(length ? length : 1);
    }
    out += '"';
}

void appendMember(std::string& out, std::string_view name, std::string_view value)
{
    appendString(out, name);
    out += ':';
    appendString(out, value);
}

/// The path of a UTF-8 text on every platform, whatever the locale.
std::filesystem::path toPath(std::string const& utf8)
{
#if defined(__cpp_char8_t)
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
#else
    return std::filesystem::u8path(utf8);
#endif
}

} // namespace

PELFileSink::PELFileSink(char const* path)
    : m_path(path ? path : "")
{
}

PELFileSink::~PELFileSink() = default;

std::string PELFileSink::toJson(PELReport const& report)
{
    std::string line = "{";
    appendMember(line, "waypoint", report.waypoint);
    line += ',';
    appendMember(line, "time", report.time);
    line += ",\"attributes\":{";
    bool first = true;
    for (auto const& attribute : report.attributes) {
        if (!first)
            line += ',';
        first = false;
        appendMember(line, attribute.first, attribute.second);
    }
    line += "}}";
    return line;
}

void PELFileSink::write(PELReport const& report)
{
    if (m_path.empty())
        return;
    std::string const line = toJson(report) + '\n';
    std::ofstream file(toPath(m_path), std::ios::binary | std::ios::app);
    file.write(line.data(), static_cast<std::streamsize>(line.size()));
    file.close();
    m_good = m_good && file.good();
}
