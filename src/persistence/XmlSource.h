#pragma once

#include <cstddef>
#include <exception>
#include <string>
#include <string_view>

namespace TAV_marlo_v1 {

/// A place in a text: both count from 1, the column in characters.
struct TextPosition {
    std::size_t line;
    std::size_t column;
};

/// The attributes of one start tag in the order of the text; lives as long as the call it is given to.
class ElementAttributes {
public:
    struct Entry {
        std::string_view name;
        std::string_view value;
    };

    /// Steps through (name, value) pairs that a null closes.
    class Iterator {
    public:
        explicit Iterator(char const* const* at) noexcept
            : m_at(at)
        {
        }
        Entry operator*() const { return {m_at[0], m_at[1]}; }
        Iterator& operator++() noexcept
        {
            m_at += 2;
            return *this;
        }
        bool operator!=(std::nullptr_t) const noexcept { return *m_at != nullptr; }

    private:
        char const* const* m_at;
    };

    explicit ElementAttributes(char const* const* pairs) noexcept
        : m_pairs(pairs)
    {
    }
    Iterator begin() const noexcept { return Iterator(m_pairs); }
    std::nullptr_t end() const noexcept { return nullptr; }

private:
    char const* const* m_pairs;
};

/// Gets the elements of a text one by one. Names of elements and attributes that are in an XML name
/// space hold a form feed, so that they equal no name of the vocabulary.
class ElementHandler {
public:
    virtual void startElement(std::string_view name, ElementAttributes const& attributes) = 0;
    /// A part of the character data of the open element, if XmlSource::wantText was called for it.
    virtual void characters(std::string_view part) = 0;
    virtual void endElement() = 0;

protected:
    ~ElementHandler() = default;
};

/// Reads XML 1.0 in UTF-8, with or without byte-order mark, and hands each element to a handler.
/// Comments and processing instructions are ignored; a document type declaration and any other
/// encoding are refused. Depth costs memory, no stack.
class XmlSource {
public:
    explicit XmlSource(ElementHandler& handler) noexcept
        : m_handler(handler)
    {
    }
    XmlSource(XmlSource const&) = delete;
    XmlSource& operator=(XmlSource const&) = delete;

    /// Reads the whole text. What the handler throws goes through.
    /// @return whether the text was read to its end; error() tells otherwise
    bool parse(std::string_view text);
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
    void readAll();

    ElementHandler& m_handler;
    std::string_view m_text;
    std::string m_error;
    std::exception_ptr m_thrown;
    void* m_parser = nullptr; // the parser below, while parse() runs
    bool m_stopped = false;
};

/// The place of a byte of a UTF-8 text. Lines end with "\n", "\r" or "\r\n"; a byte-order mark has no column.
TextPosition positionInText(std::string_view text, std::size_t offset) noexcept;

} // namespace TAV_marlo_v1
