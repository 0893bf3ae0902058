#include <tav/PropertyList.h>

#include "foundation/PropertyListAccess.h"
#include "foundation/TextQuoting.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The text form of a list:
//
//     list   = [ entry { ";" entry } ]
//     entry  = text "=" "{" [ text { "," text } ] "}"        a pair with its values
//            | text "[" list "]"                             a child list
//     text   = quoted | bare
//     quoted = '"' { any byte but '"' and '\', or '\"', or '\\' } '"'
//     bare   = one or more bytes, none of ; = { } [ ] , " \ among them, no blank at either end
//
// For example: min={0};items={a,"b;c"};ui[widget={slider};"nice name"={}]
//
// The pairs stand before the child lists. Plain text quotes nothing; reading plain text drops blanks
// around texts and marks, and is otherwise the same.

namespace TAV_marlo_v1 {

namespace {

constexpr std::string_view kMarks = ";={}[],\"\\";
constexpr std::size_t kDeepest = 64; // levels of child lists that are read

class Writer {
public:
    explicit Writer(SerializeMode mode)
        : m_plain(mode == eSerializePlain)
    {
    }

    /// Keeps the open lists on a stack of its own: lists may be nested deeper than calls can be.
    std::string write(PropertyList const& root)
    {
        std::vector<OpenList> open{{&root, 0}};
        writePairs(root);
        while (!open.empty()) {
            auto& [list, next] = open.back();
            if (next == PropertyListAccess::childCount(*list)) {
                open.pop_back();
                if (!open.empty())
                    m_out += ']';
                continue;
            }
            separate(next > 0 || PropertyListAccess::pairCount(*list) > 0);
            writeText(PropertyListAccess::childName(*list, next));
            m_out += '[';
            PropertyList const& child = PropertyListAccess::child(*list, next++);
            writePairs(child);
            open.push_back({&child, 0});
        }
        return std::move(m_out);
    }

private:
    struct OpenList {
        PropertyList const* list;
        unsigned nextChild;
    };

    void writePairs(PropertyList const& list)
    {
        for (unsigned i = 0; i < PropertyListAccess::pairCount(list); ++i) {
            separate(i > 0);
            writeText(PropertyListAccess::key(list, i));
            m_out += "={";
            StringArray const& values = PropertyListAccess::values(list, i);
            for (unsigned v = 0; v < values.size(); ++v) {
                if (v > 0)
                    m_out += ',';
                writeText(values[v]);
            }
            m_out += '}';
        }
    }

    void separate(bool behindAnother)
    {
        if (behindAnother)
            m_out += ';';
    }

    void writeText(std::string_view text)
    {
        bool const bare = !text.empty() && text.find_first_of(kMarks) == text.npos && !detail::isBlank(text.front())
                          && !detail::isBlank(text.back());
        if (m_plain || bare)
            m_out += text;
        else
            detail::appendQuoted(m_out, text);
    }

    bool m_plain;
    std::string m_out;
};

class Reader {
public:
    Reader(std::string_view text, SerializeMode mode)
        : m_text(text)
        , m_dropBlanks(mode == eSerializePlain)
    {
    }

    bool read(PropertyList& root)
    {
        std::vector<PropertyList*> open{&root};
        if (atEnd())
            return true;
        for (;;) {
            std::string key;
            if (!readText(key))
                return false;
            if (take('=')) {
                if (!readValues(key, *open.back()))
                    return false;
            } else if (take('[') && open.size() <= kDeepest) {
                open.push_back(&open.back()->addChildList(key.c_str()));
                if (!takeClosing(open))
                    continue; // its entries follow
            } else {
                return false;
            }
            while (takeClosing(open)) {
            }
            if (atEnd())
                return open.size() == 1;
            if (!take(';'))
                return false;
        }
    }

private:
    void skipBlanks()
    {
        while (m_dropBlanks && m_at < m_text.size() && detail::isBlank(m_text[m_at]))
            ++m_at;
    }

    bool atEnd()
    {
        skipBlanks();
        return m_at == m_text.size();
    }

    bool take(char mark)
    {
        if (atEnd() || m_text[m_at] != mark)
            return false;
        ++m_at;
        return true;
    }

    bool takeClosing(std::vector<PropertyList*>& open)
    {
        if (open.size() == 1 || !take(']'))
            return false;
        open.pop_back();
        return true;
    }

    bool readText(std::string& text)
    {
        if (atEnd())
            return false;
        if (m_text[m_at] == '"')
            return detail::readQuoted(m_text, m_at, text);
        std::size_t const end = std::min(m_text.find_first_of(kMarks, m_at), m_text.size());
        std::string_view bare = m_text.substr(m_at, end - m_at);
        while (m_dropBlanks && !bare.empty() && detail::isBlank(bare.back()))
            bare.remove_suffix(1);
        m_at = end;
        text = bare;
        return !bare.empty() && !detail::isBlank(bare.front()) && !detail::isBlank(bare.back());
    }

    bool readValues(std::string const& key, PropertyList& list)
    {
        StringArray values;
        if (!take('{'))
            return false;
        if (!take('}')) {
            std::string value;
            do {
                if (!readText(value))
                    return false;
                values.add(value.c_str());
            } while (take(','));
            if (!take('}'))
                return false;
        }
        PropertyListAccess::appendPair(list, std::string_view(key), std::move(values));
        return true;
    }

    std::string_view m_text;
    bool m_dropBlanks;
    std::size_t m_at = 0;
};

} // namespace

String PropertyList::serialize(SerializeMode mode) const
{
    std::string const text = Writer(mode).write(*this);
    return String(text.data(), text.size());
}

bool PropertyList::unserialize(char const* text, SerializeMode mode)
{
    PropertyList list;
    if (!text || !Reader(text, mode).read(list))
        return false;
    list.swap(*this);
    return true;
}

} // namespace TAV_marlo_v1
