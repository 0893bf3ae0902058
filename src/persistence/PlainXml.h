#pragma once

#include "persistence/ElementHandler.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace TAV_marlo_v1 {

/// Reads the plain part of XML that graph text is written in, several times as fast as a parser that has to be ready
/// for everything: elements, attributes in double quotes, character data, the references that a writer makes, UTF-8.
/// Names are ASCII and have no colon; no comment, processing instruction, declaration or CDATA section, no carriage
/// return, and no white space in attribute values but blanks.
class PlainXmlReader {
public:
    PlainXmlReader(std::string_view text, ElementHandler& handler) noexcept
        : m_begin(text.data())
        , m_end(text.data() + text.size())
        , m_at(text.data())
        , m_handler(handler)
    {
    }

    /// Goes through the text once, looking and handing over at the same time. Every plain text is well-formed XML.
    /// @return false for a text that is not plain, be it XML or not: what was handed over until then is void
    bool read();
    /// No further element is handed over, and the rest of the text is not looked at.
    void stop() noexcept { m_stopped = true; }
    void wantText(bool wanted) noexcept { m_wantsText = wanted; }
    /// Where the element begins or ends that is being handed over.
    std::size_t offset() const noexcept { return m_offset; }

private:
    std::string_view takeName() noexcept;
    bool take(char c) noexcept;
    bool takeStartTag();
    bool takeAttribute();
    bool takeEndTag();
    bool takeText();
    template <char closing, bool keep>
    bool takeCharacters();
    bool takeReference(bool keep);
    void hand(std::string_view name);
    void noteOffset(char const* at) noexcept { m_offset = static_cast<std::size_t>(at - m_begin); }

    char const* m_begin;
    char const* m_end;
    char const* m_at;
    ElementHandler& m_handler;
    std::size_t m_offset = 0;
    bool m_stopped = false;
    bool m_wantsText = false;
    std::vector<std::string_view> m_open;
    std::string m_scratch; // the texts of one start tag, each closed by a NUL
    std::vector<ElementAttributes::Entry> m_attributes;
    std::vector<std::size_t> m_starts; // of the values, in the scratch
};

} // namespace TAV_marlo_v1
