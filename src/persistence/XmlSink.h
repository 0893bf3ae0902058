#pragma once

#include "foundation/TextBuffer.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace TAV_marlo_v1 {

/// Lays out XML as UTF-8 bytes in one buffer: the bytes of an auto-formatting QXmlStreamWriter, except
/// that no line break stands before the root and none at the end, that a carriage return in character
/// data becomes a character reference, that what XML can't carry (control characters, bytes that are
/// not UTF-8, U+FFFE, U+FFFF) becomes U+FFFD, and that empty text is no content: `<value/>`.
///
/// Names are written as they are; texts are escaped here. Attributes belong to the element started
/// last and come before its contents.
class XmlSink {
public:
    XmlSink() = default;
    XmlSink(XmlSink const&) = delete;
    XmlSink& operator=(XmlSink const&) = delete;

    void start(std::string_view name);
    void attribute(std::string_view name, std::string_view value);
    void attribute(std::string_view name, unsigned long value);
    /// An attribute in pieces: begin, any number of pieces, end. A character must not be cut in two.
    void beginAttribute(std::string_view name);
    void attributePiece(std::string_view piece) { appendEscaped<InAttribute>(piece); }
    void endAttribute() { appendRaw('"'); }
    void text(std::string_view characters);
    void end();

    // What only comes from embedded text and is written as it was read.
    void cdata(std::string_view characters);
    void comment(std::string_view characters);
    void processingInstruction(std::string_view target, std::string_view data);

    std::size_t depth() const noexcept { return m_open.size(); }
    /// What was written so far; lives until the next write.
    std::string_view bytes() const noexcept
    {
        return {m_buffer.data(), static_cast<std::size_t>(m_cursor - m_buffer.data())};
    }
    /// The bytes as a text of its own, uncopied; the end of the writing.
    String takeText() noexcept { return m_buffer.take(bytes().size()); }

private:
    enum Place { InText, InAttribute };

    /// An open element's name, found again in the bytes written for its start tag.
    struct Open {
        std::size_t nameOffset;
        std::size_t nameSize;
    };

    bool finishStartTag(bool hasContent);
    void beginLine();
    void breakLine(std::size_t level);
    void reserve(std::size_t more)
    {
        if (static_cast<std::size_t>(m_limit - m_cursor) < more)
            grow(more);
    }
    void grow(std::size_t more);
    void appendRaw(char c)
    {
        reserve(1);
        *m_cursor++ = c;
    }
    void appendRaw(std::string_view bytes);
    template <Place place>
    void appendEscaped(std::string_view bytes);

    TextBuffer m_buffer;
    char* m_cursor = nullptr;
    char* m_limit = nullptr;
    std::vector<Open> m_open;
    bool m_startTagOpen = false;    // the ">" of the last start tag is still to come
    bool m_justStarted = false;     // nothing but the start tag was written since
    bool m_wroteCharacters = false; // character data precedes: a line break would become content
};

} // namespace TAV_marlo_v1
