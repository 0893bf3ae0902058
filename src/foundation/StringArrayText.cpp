#include <tav/StringArray.h>

#include "foundation/TextQuoting.h"

#include <string>
#include <string_view>
#include <utility>

// The text form of an array:
//
//     array  = open [ item { separator item } ] close
//     item   = quoted | bare
//     quoted = '"' { any byte but '"' and '\', or '\"', or '\\' } '"'
//     bare   = one or more bytes, up to the next separator or the close tag at the end of the text
//
// Lossless text quotes exactly the items that would not come back otherwise; plain text quotes none.
// Strict reading takes exactly what lossless writing gives. Lenient reading also takes blanks around
// the brackets and the items, quotes that were not needed, and bare items that are empty.

namespace TAV_marlo_v1 {

SerializationTags const kDefaultSerializationTags = {"{", "}", ","};

namespace {

using detail::isBlank;

/// The tags as views; a null tag is an empty one.
struct Tags {
    explicit Tags(SerializationTags const& tags)
        : open(tags.open ? tags.open : "")
        , close(tags.close ? tags.close : "")
        , separator(tags.separator ? tags.separator : "")
    {
    }
    std::string_view open;
    std::string_view close;
    std::string_view separator;
};

bool holds(std::string_view text, std::string_view tag)
{
    return !tag.empty() && text.find(tag) != text.npos;
}

/// Whether a bare `item` would be read as something else. Without a separator nothing but quotes
/// keeps items apart. An item that ends like the beginning of a tag could complete that tag early.
bool needsQuotes(std::string_view item, Tags const& tags)
{
    if (item.empty() || tags.separator.empty() || isBlank(item.front()) || isBlank(item.back()))
        return true;
    for (std::string_view const tag : {tags.open, tags.close, tags.separator}) {
        if (holds(item, tag) || tag.find(item.back()) != tag.npos)
            return true;
    }
    return item.find_first_of("\"\\") != item.npos;
}

std::string_view withoutBlanks(std::string_view text)
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

class Reader {
public:
    Reader(std::string_view text, Tags const& tags, bool dropBlanks)
        : m_text(dropBlanks ? withoutBlanks(text) : text)
        , m_tags(tags)
        , m_dropBlanks(dropBlanks)
    {
    }

    bool read(StringArray& items)
    {
        if (!take(m_tags.open))
            return false;
        skipBlanks();
        if (atClose())
            return true;
        do {
            skipBlanks();
            if (!readItem())
                return false;
            items.add(m_item.c_str());
            if (atClose())
                return true;
        } while (m_at < m_text.size() && take(m_tags.separator));
        return false;
    }

private:
    bool starts(std::string_view tag) const { return m_text.substr(m_at, tag.size()) == tag; }

    bool take(std::string_view tag)
    {
        if (!starts(tag))
            return false;
        m_at += tag.size();
        return true;
    }

    bool atClose() const { return m_text.substr(m_at) == m_tags.close; }

    void skipBlanks()
    {
        while (m_dropBlanks && m_at < m_text.size() && isBlank(m_text[m_at]))
            ++m_at;
    }

    bool readItem()
    {
        if (m_at < m_text.size() && m_text[m_at] == '"') {
            if (!detail::readQuoted(m_text, m_at, m_item))
                return false;
            if (m_tags.separator.empty() || !starts(m_tags.separator)) // which may begin with a blank
                skipBlanks();
            return true;
        }
        std::size_t const from = m_at;
        while (m_at < m_text.size() && !atClose() && (m_tags.separator.empty() || !starts(m_tags.separator))) {
            if (!m_tags.close.empty() && starts(m_tags.close))
                return false; // the close tag stands at the end only
            ++m_at;
        }
        std::string_view const bare = m_text.substr(from, m_at - from);
        m_item = m_dropBlanks ? withoutBlanks(bare) : bare;
        return true;
    }

    std::string_view m_text;
    Tags const& m_tags;
    bool m_dropBlanks;
    std::size_t m_at = 0;
    std::string m_item;
};

} // namespace

String StringArray::serialize(SerializeMode mode, SerializationTags const& givenTags) const
{
    Tags const tags(givenTags);
    std::string text(tags.open);
    for (unsigned i = 0; i < size(); ++i) {
        std::string_view const item((*this)[i]);
        if (i > 0)
            text += tags.separator;
        if (mode != eSerializePlain && needsQuotes(item, tags))
            detail::appendQuoted(text, item);
        else
            text += item;
    }
    text += tags.close;
    return String(text.data(), text.size());
}

bool StringArray::unserialize(char const* text, UnserializeMode mode, SerializationTags const& givenTags)
{
    if (!text)
        return false;
    bool const strict = mode != eUnserializeLenient;
    Tags const tags(givenTags);
    StringArray items;
    if (!Reader(text, tags, !strict).read(items))
        return false;
    if (strict && items.serialize(eSerializeLossless, givenTags) != text)
        return false;
    *this = std::move(items);
    return true;
}

} // namespace TAV_marlo_v1
