#pragma once

#include "persistence/ElementHandler.h"

#include <cstddef>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

namespace TAV_marlo_v1 {

class PlainXmlReader;

/// A place in a text: both count from 1, the column in characters.
struct TextPosition {
    std::size_t line;
    std::size_t column;
};

/// Reads XML 1.0 in UTF-8, with or without byte-order mark, and hands each element to a handler.
/// Comments and processing instructions are ignored; a document type declaration and any other
/// encoding are refused. Depth costs memory, no stack.
///
/// A maintained parser decides what is well-formed and words the errors. A text that keeps to the plain
/// part of XML in which graph text is written need not be put to it and is read directly; where it turns out
/// not to be plain, the handler starts over and the parser reads it.
class XmlSource {
public:
    /// Which of the two reads: for tests, which compare them.
    enum Road { eShortest, eParser };

    explicit XmlSource(ElementHandler& handler) noexcept
        : m_handler(handler)
    {
    }
    XmlSource(XmlSource const&) = delete;
    XmlSource& operator=(XmlSource const&) = delete;

    /// Reads the whole text. What the handler throws goes through.
    /// @return whether the text was read to its end; error() tells otherwise
    bool parse(std::string_view text, Road road = eShortest);
    /// "line L, column C: found X, expected Y"; empty after success.
    std::string const& error() const noexcept { return m_error; }

    // For the handler, while it is called.

    /// Whether character data is handed over from now on; at first it is not.
    void wantText(bool wanted);
    /// Stops reading with an error at the place of the present call. The first error counts.
    void fail(std::string_view found, std::string_view expected);
    bool failed() const noexcept { return m_stopped; }

private:
    struct Callbacks;

    void failAt(std::size_t offset, std::string_view found, std::string_view expected);
    void stop() noexcept;
    bool readPlain();
    void readWithParser();
    void readAll();
    std::size_t currentOffset() const noexcept;

    ElementHandler& m_handler;
    std::string_view m_text;
    std::string m_error;
    std::exception_ptr m_thrown;
    // What reads, while parse() runs.
    PlainXmlReader* m_plain = nullptr;
    void* m_parser = nullptr;
    std::vector<ElementAttributes::Entry> m_attributes; // of the parser's element
    bool m_stopped = false;
};

/// The place of a byte of a UTF-8 text. Lines end with "\n", "\r" or "\r\n"; a byte-order mark has no column.
TextPosition positionInText(std::string_view text, std::size_t offset) noexcept;

} // namespace TAV_marlo_v1
