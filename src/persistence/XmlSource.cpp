#include "persistence/XmlSource.h"

#include "persistence/PlainXml.h"

#include <expat.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>
#include <new>

namespace TAV_marlo_v1 {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr XML_Char kNameSpaceSeparator = '\f';          // no XML text can hold one
constexpr std::size_t kMaxChunk = std::size_t(1) << 30; // what one call of the parser takes

struct ParserCloser {
    void operator()(XML_Parser parser) const noexcept { XML_ParserFree(parser); }
};
using ParserHandle = std::unique_ptr<XML_ParserStruct, ParserCloser>;

XML_Parser parserOf(void* parser) noexcept
{
    return static_cast<XML_Parser>(parser);
}

bool equalIgnoringCase(std::string_view a, std::string_view lower) noexcept
{
    return std::equal(a.begin(), a.end(), lower.begin(), lower.end(),
                      [](char c, char l) { return (c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c) == l; });
}

/// A byte-order mark of UTF-16 or UTF-32. The text ends at its first NUL, so UTF-32 shows as UTF-16.
bool beginsWithForeignMark(std::string_view text) noexcept
{
    return text.substr(0, 2) == "\xFF\xFE" || text.substr(0, 2) == "\xFE\xFF";
}

} // namespace

/// What the parser calls. It is not written in C++: exceptions are kept until it has returned.
struct XmlSource::Callbacks {
    template <class Call>
    static void guarded(void* data, Call const& call) noexcept
    {
        XmlSource& source = *static_cast<XmlSource*>(data);
        if (source.m_stopped)
            return;
        try {
            call(source);
        } catch (...) {
            source.m_thrown = std::current_exception();
            source.stop();
        }
    }

    static void XMLCALL start(void* data, XML_Char const* name, XML_Char const** attributes)
    {
        guarded(data, [=](XmlSource& source) {
            std::vector<ElementAttributes::Entry>& entries = source.m_attributes;
            entries.clear();
            for (XML_Char const** pair = attributes; *pair; pair += 2)
                entries.push_back({pair[0], pair[1]});
            source.m_handler.startElement(name, ElementAttributes(entries.data(), entries.size()));
        });
    }

    static void XMLCALL end(void* data, XML_Char const*)
    {
        guarded(data, [](XmlSource& source) { source.m_handler.endElement(); });
    }

    static void XMLCALL characters(void* data, XML_Char const* part, int size)
    {
        guarded(data, [=](XmlSource& source) { source.m_handler.characters({part, static_cast<std::size_t>(size)}); });
    }

    static void XMLCALL declaration(void* data, XML_Char const* version, XML_Char const* encoding, int)
    {
        guarded(data, [=](XmlSource& source) {
            if (version && std::strcmp(version, "1.0") != 0)
                source.fail("XML version " + std::string(version), "version 1.0");
            else if (encoding && !equalIgnoringCase(encoding, "utf-8"))
                source.fail("encoding \"" + std::string(encoding) + "\"", "UTF-8");
        });
    }

    static void XMLCALL documentType(void* data, XML_Char const*, XML_Char const*, XML_Char const*, int)
    {
        guarded(data, [](XmlSource& source) {
            // the parser tells only at the name behind the "<!DOCTYPE"
            auto const offset = static_cast<std::size_t>(XML_GetCurrentByteIndex(parserOf(source.m_parser)));
            source.failAt(source.m_text.rfind('<', offset), "a document type declaration", "an element");
        });
    }
};

bool XmlSource::parse(std::string_view text, Road road)
{
    m_text = text;
    m_error.clear();
    m_thrown = nullptr;
    m_stopped = false;
    m_plain = nullptr; // what read an earlier text is gone
    m_parser = nullptr;
    if (beginsWithForeignMark(text))
        failAt(0, "a byte-order mark of UTF-16 or UTF-32", "UTF-8");
    else if (road == eParser || !readPlain())
        readWithParser();
    return !m_stopped;
}

/// @return false when the text is not plain, with the handler as it was before
bool XmlSource::readPlain()
{
    PlainXmlReader reader(m_text, m_handler);
    m_plain = &reader;
    if (reader.read())
        return true;
    m_plain = nullptr;
    m_handler.startOver();
    return false;
}

void XmlSource::readWithParser()
{
    ParserHandle const parser(XML_ParserCreateNS("UTF-8", kNameSpaceSeparator));
    if (!parser)
        throw std::bad_alloc();
    m_parser = parser.get();
    XML_SetUserData(parser.get(), this);
    XML_SetElementHandler(parser.get(), Callbacks::start, Callbacks::end);
    XML_SetXmlDeclHandler(parser.get(), Callbacks::declaration);
    XML_SetStartDoctypeDeclHandler(parser.get(), Callbacks::documentType);
    readAll();
    if (m_thrown)
        std::rethrow_exception(m_thrown);
}

void XmlSource::readAll()
{
    XML_Parser const parser = parserOf(m_parser);
    std::string_view rest = m_text;
    do {
        std::size_t const size = std::min(rest.size(), kMaxChunk);
        bool const isLast = size == rest.size();
        XML_Status const status = XML_Parse(parser, rest.data(), static_cast<int>(size), isLast);
        rest.remove_prefix(size);
        if (status == XML_STATUS_OK)
            continue;
        if (m_stopped)
            return;
        XML_Error const error = XML_GetErrorCode(parser);
        if (error == XML_ERROR_NO_MEMORY)
            throw std::bad_alloc();
        if (error == XML_ERROR_NO_ELEMENTS)
            fail("the end of the text", "an element or an end tag");
        else
            fail(XML_ErrorString(error), "well-formed XML");
        return;
    } while (!rest.empty());
}

void XmlSource::wantText(bool wanted)
{
    if (m_plain)
        m_plain->wantText(wanted);
    else
        XML_SetCharacterDataHandler(parserOf(m_parser), wanted ? Callbacks::characters : nullptr);
}

void XmlSource::fail(std::string_view found, std::string_view expected)
{
    if (!m_stopped)
        failAt(currentOffset(), found, expected);
}

std::size_t XmlSource::currentOffset() const noexcept
{
    if (m_plain)
        return m_plain->offset();
    auto const offset = XML_GetCurrentByteIndex(parserOf(m_parser));
    return offset < 0 ? 0 : static_cast<std::size_t>(offset);
}

void XmlSource::failAt(std::size_t offset, std::string_view found, std::string_view expected)
{
    TextPosition const position = positionInText(m_text, offset);
    m_error.append("line ").append(std::to_string(position.line));
    m_error.append(", column ").append(std::to_string(position.column));
    m_error.append(": found ").append(found).append(", expected ").append(expected);
    stop();
}

void XmlSource::stop() noexcept
{
    m_stopped = true;
    if (m_plain)
        m_plain->stop();
    else if (m_parser)
        XML_StopParser(parserOf(m_parser), XML_FALSE);
}

TextPosition positionInText(std::string_view text, std::size_t offset) noexcept
{
    TextPosition position{1, 1};
    std::size_t const end = std::min(offset, text.size());
    for (std::size_t at = text.substr(0, kUtf8Mark.size()) == kUtf8Mark ? kUtf8Mark.size() : 0; at < end; ++at) {
        char const c = text[at];
        if (c == '\n' || (c == '\r' && (at + 1 == text.size() || text[at + 1] != '\n'))) {
            ++position.line;
            position.column = 1;
        } else if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) { // not a character's second byte
            ++position.column;
        }
    }
    return position;
}

} // namespace TAV_marlo_v1
