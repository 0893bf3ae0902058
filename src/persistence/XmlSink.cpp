#include "persistence/XmlSink.h"

#include "persistence/XmlCharacters.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

namespace TAV_marlo_v1 {

namespace {

using detail::ByteClass;

constexpr std::size_t kIndent = 4;
constexpr std::size_t kFirstCapacity = 1024;
constexpr std::string_view kReplacement = "\xEF\xBF\xBD"; // U+FFFD

std::string_view markupReference(char c) noexcept
{
    switch (c) {
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '&':
        return "&amp;";
    default:
        return "&quot;";
    }
}

std::string_view whiteSpaceReference(char c) noexcept
{
    switch (c) {
    case '\t':
        return "&#9;";
    case '\n':
        return "&#10;";
    default:
        return "&#13;";
    }
}

} // namespace

void XmlSink::start(std::string_view name)
{
    beginLine();
    reserve(name.size() + 1);
    *m_cursor++ = '<';
    m_open.push_back({static_cast<std::size_t>(m_cursor - m_buffer.data()), name.size()});
    appendRaw(name);
    m_startTagOpen = m_justStarted = true;
}

void XmlSink::beginAttribute(std::string_view name)
{
    reserve(name.size() + 3);
    *m_cursor++ = ' ';
    std::memcpy(m_cursor, name.data(), name.size());
    m_cursor += name.size();
    *m_cursor++ = '=';
    *m_cursor++ = '"';
}

void XmlSink::attribute(std::string_view name, std::string_view value)
{
    beginAttribute(name);
    appendEscaped<InAttribute>(value);
    appendRaw('"');
}

void XmlSink::attribute(std::string_view name, unsigned long value)
{
    beginAttribute(name);
    constexpr std::size_t room = 3 * sizeof value;
    reserve(room + 1);
    m_cursor = std::to_chars(m_cursor, m_cursor + room, value).ptr;
    *m_cursor++ = '"';
}

void XmlSink::text(std::string_view characters)
{
    if (characters.empty())
        return;
    finishStartTag(/*hasContent=*/true);
    appendEscaped<InText>(characters);
}

void XmlSink::end()
{
    if (m_open.empty())
        return;
    Open const open = m_open.back();
    if (m_startTagOpen) {
        appendRaw("/>");
        m_startTagOpen = false;
    } else {
        if (!finishStartTag(/*hasContent=*/false) && !m_justStarted)
            breakLine(m_open.size() - 1);
        reserve(open.nameSize + 3); // first, as the name is read from the buffer itself
        *m_cursor++ = '<';
        *m_cursor++ = '/';
        std::memcpy(m_cursor, m_buffer.data() + open.nameOffset, open.nameSize);
        m_cursor += open.nameSize;
        *m_cursor++ = '>';
    }
    m_open.pop_back();
    m_justStarted = false;
}

void XmlSink::cdata(std::string_view characters)
{
    constexpr std::string_view close = "]]>";
    finishStartTag(/*hasContent=*/true);
    appendRaw("<![CDATA[");
    for (std::size_t at = characters.find(close); at != characters.npos; at = characters.find(close)) {
        appendRaw(characters.substr(0, at));
        appendRaw("]]]]><![CDATA[>"); // the end mark, cut in two sections
        characters.remove_prefix(at + close.size());
    }
    appendRaw(characters);
    appendRaw(close);
}

void XmlSink::comment(std::string_view characters)
{
    beginLine();
    m_justStarted = false;
    appendRaw("<!--");
    appendRaw(characters);
    appendRaw("-->");
}

void XmlSink::processingInstruction(std::string_view target, std::string_view data)
{
    beginLine();
    m_justStarted = false;
    appendRaw("<?");
    appendRaw(target);
    if (!data.empty()) {
        appendRaw(' ');
        appendRaw(data);
    }
    appendRaw("?>");
}

/// Writes the ">" that is still to come and notes whether character data follows.
/// @return whether character data stands right in front
bool XmlSink::finishStartTag(bool hasContent)
{
    bool const hadCharacters = m_wroteCharacters;
    m_wroteCharacters = hasContent;
    if (m_startTagOpen) {
        appendRaw('>');
        m_startTagOpen = false;
    }
    return hadCharacters;
}

/// Begins a line of its own within the open element, unless that would add to its character data.
void XmlSink::beginLine()
{
    if (!finishStartTag(/*hasContent=*/false) && !m_open.empty())
        breakLine(m_open.size());
}

void XmlSink::breakLine(std::size_t level)
{
    std::size_t const blanks = level * kIndent;
    reserve(blanks + 1);
    *m_cursor++ = '\n';
    std::memset(m_cursor, ' ', blanks);
    m_cursor += blanks;
}

void XmlSink::grow(std::size_t more)
{
    std::size_t const used = bytes().size();
    std::size_t const capacity = static_cast<std::size_t>(m_limit - m_buffer.data());
    m_buffer.reserve(std::max({kFirstCapacity, capacity + capacity / 2, used + more}));
    m_cursor = m_buffer.data() + used;
    m_limit = m_buffer.data() + m_buffer.capacity();
}

void XmlSink::appendRaw(std::string_view bytes)
{
    reserve(bytes.size());
    std::copy(bytes.begin(), bytes.end(), m_cursor);
    m_cursor += bytes.size();
}

template <XmlSink::Place place>
void XmlSink::appendEscaped(std::string_view bytes)
{
    char const* at = bytes.data();
    char const* const end = at + bytes.size();
    while (at != end) {
        char const* run = at;
        while (run != end && detail::classOf(*run) == ByteClass::Plain)
            ++run;
        appendRaw({at, static_cast<std::size_t>(run - at)});
        if (run == end)
            return;
        at = run;
        switch (detail::classOf(*at)) {
        case ByteClass::Markup:
            appendRaw(markupReference(*at++));
            break;
        case ByteClass::WhiteSpace:
            if (place == InAttribute || *at == '\r')
                appendRaw(whiteSpaceReference(*at++));
            else
                appendRaw(*at++);
            break;
        case ByteClass::Forbidden:
            appendRaw(kReplacement);
            ++at;
            break;
        default:
            if (std::size_t const length = detail::characterLength(at, end);
                length == 0 || (length == 3 && detail::isNonCharacter(at)))
            {
                appendRaw(kReplacement);
                at += std::max<std::size_t>(length, 1);
            } else {
                appendRaw({at, length});
                at += length;
            }
        }
    }
}

template void XmlSink::appendEscaped<XmlSink::InText>(std::string_view);
template void XmlSink::appendEscaped<XmlSink::InAttribute>(std::string_view);

} // namespace TAV_marlo_v1
