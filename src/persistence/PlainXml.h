#pragma once

#include "persistence/ElementHandler.h"

#include <string>
#include <string_view>
#include <vector>

namespace TAV_marlo_v1 {

/// Whether a text keeps to the plain part of XML that graph text is written in: elements, attributes in
/// double quotes, character data, the references that a writer makes, UTF-8. Names are ASCII and have no
/// colon; no comment, processing instruction, declaration or CDATA section, no carriage return, and no
/// white space in attribute values but blanks. Every plain text is well-formed XML; of any other this
/// says nothing.
bool isPlainXml(std::string_view text);

/// Goes through a plain text three times as fast as a parser that has to be ready for everything.
class PlainXmlReader {
public:
    PlainXmlReader(std::string_view text, ElementHandler& handler) noexcept
        : m_text(text)
        , m_handler(handler)
    {
    }

    void read();
    /// No further element is handed over.
    void stop() noexcept { m_stopped = true; }
    void wantText(bool wanted) noexcept { m_wantsText = wanted; }
    /// Where the element begins or ends that is being handed over.
    std::size_t offset() const noexcept { return m_offset; }

private:
    char const* readStartTag(char const* at);
    char const* readEndTag(char const* at);
    void readText(char const* begin, char const* end);
    void hand(std::string_view name);

    std::string_view m_text;
    ElementHandler& m_handler;
    std::size_t m_offset = 0;
    unsigned m_depth = 0;
    bool m_stopped = false;
    bool m_wantsText = false;
    std::string m_scratch; // the texts of one start tag, each closed by a NUL
    std::vector<ElementAttributes::Entry> m_attributes;
    std::vector<std::size_t> m_starts; // of the values, in the scratch
};

} // namespace TAV_marlo_v1
