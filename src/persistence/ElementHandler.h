#pragma once

#include <cstddef>
#include <string_view>

namespace TAV_marlo_v1 {

/// The attributes of one start tag in the order of the text; lives as long as the call it is given to.
class ElementAttributes {
public:
    struct Entry {
        std::string_view name;
        std::string_view value; // closed by a NUL
    };

    ElementAttributes(Entry const* entries, std::size_t count) noexcept
        : m_begin(entries)
        , m_end(entries + count)
    {
    }
    Entry const* begin() const noexcept { return m_begin; }
    Entry const* end() const noexcept { return m_end; }

private:
    Entry const* m_begin;
    Entry const* m_end;
};

/// Gets the elements of a text one by one. Names of elements and attributes that are in an XML name
/// space hold a form feed, so that they equal no name of the vocabulary.
class ElementHandler {
public:
    virtual void startElement(std::string_view name, ElementAttributes const& attributes) = 0;
    /// A part of the character data of the open element, if the source's wantText was called for it.
    virtual void characters(std::string_view part) = 0;
    virtual void endElement() = 0;
    /// What was handed over so far is void: the text is read from its beginning again.
    virtual void startOver() = 0;

protected:
    ~ElementHandler() = default;
};

} // namespace TAV_marlo_v1
