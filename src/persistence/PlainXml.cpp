#include "persistence/PlainXml.h"

#include "persistence/XmlCharacters.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace TAV_marlo_v1 {

namespace {

using detail::ByteClass;

enum NameClass : std::uint8_t { NoName, NameStart, NameGoesOn };

constexpr std::array<NameClass, 256> makeNameClasses()
{
    std::array<NameClass, 256> classes{};
    for (unsigned c = 0; c < 256; ++c) {
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_')
            classes[c] = NameStart;
        else if ((c >= '0' && c <= '9') || c == '-' || c == '.')
            classes[c] = NameGoesOn;
    }
    return classes;
}

constexpr std::array<NameClass, 256> kNameClasses = makeNameClasses();

NameClass nameClassOf(char c) noexcept
{
    return kNameClasses[static_cast<unsigned char>(c)];
}

bool isBlank(char c) noexcept
{
    return c == ' ' || c == '\n' || c == '\t';
}

char const* skipBlanks(char const* at, char const* end) noexcept
{
    while (at != end && isBlank(*at))
        ++at;
    return at;
}

/// How many of the next eight bytes, up to the first that is not, are ASCII that stands for itself. Eight at once are
/// what makes going through a text fast: most of it is indentation and short values.
unsigned plainBytes(char const* at) noexcept
{
    constexpr std::uint64_t ones = 0x0101010101010101u;
    constexpr std::uint64_t highs = 0x80 * ones;
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, at, sizeof bytes);
    auto const zeros = [](std::uint64_t word) { return (word - ones) & ~word & highs; };
    std::uint64_t const controls = (bytes - 0x20 * ones) & ~bytes;
    std::uint64_t const angles = zeros((bytes | 0x02 * ones) ^ '>' * ones); // "<" and ">" differ in that bit
    std::uint64_t const others = zeros((bytes | 0x04 * ones) ^ '&' * ones); // so do "&" and the quote
    // Of the marks only the first one counts: the subtractions may set others above it.
    std::uint64_t const marks = (bytes | controls | angles | others) & highs;
    if constexpr (std::endian::native == std::endian::little)
        return static_cast<unsigned>(std::countr_zero(marks)) / 8;
    else
        return marks == 0 ? 8 : 0;
}

/// Behind the plain bytes that begin there.
char const* skipPlain(char const* at, char const* end) noexcept
{
    while (end - at >= 8) {
        unsigned const plain = plainBytes(at);
        at += plain;
        if (plain < 8)
            break;
    }
    while (at != end && detail::classOf(*at) == ByteClass::Plain)
        ++at;
    return at;
}

struct Reference {
    std::string_view text;
    char character;
};

/// Those a writer makes, and the apostrophe.
constexpr Reference kReferences[] = {{"&lt;", '<'},    {"&gt;", '>'},  {"&amp;", '&'},  {"&quot;", '"'},
                                     {"&apos;", '\''}, {"&#9;", '\t'}, {"&#10;", '\n'}, {"&#13;", '\r'}};

Reference const* referenceAt(char const* at, char const* end) noexcept
{
    std::string_view const rest(at, static_cast<std::size_t>(end - at));
    for (Reference const& reference : kReferences) {
        if (rest.substr(0, reference.text.size()) == reference.text)
            return &reference;
    }
    return nullptr;
}

/// Looks whether a text is plain, once through. Each step returns the place behind what it took, or null.
class PlainXmlCheck {
public:
    explicit PlainXmlCheck(std::string_view text) noexcept
        : m_at(text.data())
        , m_end(text.data() + text.size())
    {
    }

    bool run()
    {
        if (!takeStartTag())
            return false;
        while (!m_open.empty()) {
            if (!takeText() || m_at == m_end) // on success at a "<"
                return false;
            bool const isEndTag = m_end - m_at > 1 && m_at[1] == '/';
            if (!(isEndTag ? takeEndTag() : takeStartTag()))
                return false;
        }
        return skipBlanks(m_at, m_end) == m_end;
    }

private:
    /// @return empty when there is no plain name
    std::string_view takeName() noexcept
    {
        char const* const begin = m_at;
        if (m_at == m_end || nameClassOf(*m_at) != NameStart)
            return {};
        while (m_at != m_end && nameClassOf(*m_at) != NoName)
            ++m_at;
        return {begin, static_cast<std::size_t>(m_at - begin)};
    }

    bool take(char c) noexcept
    {
        if (m_at == m_end || *m_at != c)
            return false;
        ++m_at;
        return true;
    }

    bool takeStartTag()
    {
        if (!take('<'))
            return false;
        std::string_view const name = takeName();
        if (name.empty())
            return false;
        m_attributes.clear();
        while (true) {
            char const* const behind = m_at;
            m_at = skipBlanks(m_at, m_end);
            if (take('>')) {
                m_open.push_back(name);
                return true;
            }
            if (take('/'))
                return take('>');
            if (m_at == behind || !takeAttribute())
                return false;
        }
    }

    bool takeAttribute()
    {
        std::string_view const name = takeName();
        if (name.empty() || name == "xmlns" || m_attributes.size() == kMaxAttributes)
            return false;
        for (std::string_view const other : m_attributes) {
            if (other.size() == name.size() && other.front() == name.front() && other == name)
                return false;
        }
        m_attributes.push_back(name);
        return take('=') && take('"') && takeCharacters<'"'>() && take('"');
    }

    bool takeText() noexcept { return takeCharacters<'<'>(); }

    /// Everything up to `closing`. Line feeds and tabs are for character data only: in an attribute
    /// value they stand for blanks.
    template <char closing>
    bool takeCharacters() noexcept
    {
        char const* const begin = m_at;
        while (true) {
            m_at = skipPlain(m_at, m_end);
            if (m_at == m_end)
                return false;
            switch (detail::classOf(*m_at)) {
            case ByteClass::WhiteSpace:
                if (*m_at == '\r' || closing == '"')
                    return false;
                ++m_at;
                break;
            case ByteClass::Markup:
                if (*m_at == closing)
                    return true;
                if (*m_at == '>' && closing == '<' && m_at - begin >= 2 && m_at[-1] == ']' && m_at[-2] == ']')
                    return false; // the end of a CDATA section must not stand alone
                if (!takeMarkup())
                    return false;
                break;
            case ByteClass::Forbidden:
                return false;
            default:
                std::size_t const length = detail::characterLength(m_at, m_end);
                if (length == 0 || (length == 3 && detail::isNonCharacter(m_at)))
                    return false;
                m_at += length;
            }
        }
    }

    bool takeMarkup() noexcept
    {
        if (*m_at == '<')
            return false;
        if (*m_at != '&') {
            ++m_at;
            return true;
        }
        Reference const* const reference = referenceAt(m_at, m_end);
        if (!reference)
            return false;
        m_at += reference->text.size();
        return true;
    }

    bool takeEndTag() noexcept
    {
        m_at += 2;
        if (takeName() != m_open.back())
            return false;
        m_open.pop_back();
        m_at = skipBlanks(m_at, m_end);
        return take('>');
    }

    // More are unusual, and comparing each with each is only cheap for a few.
    static constexpr std::size_t kMaxAttributes = 16;

    char const* m_at;
    char const* m_end;
    std::vector<std::string_view> m_open;
    std::vector<std::string_view> m_attributes;
};

char const* find(char const* at, char wanted, char const* end) noexcept
{
    return static_cast<char const*>(std::memchr(at, wanted, static_cast<std::size_t>(end - at)));
}

/// Appends a text of which the references have been checked.
void appendResolved(std::string& scratch, char const* at, char const* end)
{
    while (char const* const mark = find(at, '&', end)) {
        scratch.append(at, mark);
        Reference const* const reference = referenceAt(mark, end);
        scratch += reference->character;
        at = mark + reference->text.size();
    }
    scratch.append(at, end);
}

} // namespace

bool isPlainXml(std::string_view text)
{
    return PlainXmlCheck(text).run();
}

// What follows relies on that answer: nothing is looked for that must be there.

void PlainXmlReader::read()
{
    char const* const end = m_text.data() + m_text.size();
    char const* at = readStartTag(m_text.data());
    while (m_depth > 0 && !m_stopped) {
        char const* const tag = find(at, '<', end);
        if (m_wantsText && tag != at)
            readText(at, tag);
        at = tag[1] == '/' ? readEndTag(tag) : readStartTag(tag);
    }
}

char const* PlainXmlReader::readStartTag(char const* at)
{
    char const* const end = m_text.data() + m_text.size();
    auto const takeName = [&at] {
        char const* const begin = at;
        while (nameClassOf(*at) != NoName)
            ++at;
        return std::string_view(begin, static_cast<std::size_t>(at - begin));
    };

    m_offset = static_cast<std::size_t>(at - m_text.data());
    ++at;
    std::string_view const name = takeName();
    m_scratch.clear();
    m_attributes.clear();
    m_starts.clear();
    for (at = skipBlanks(at, end); *at != '>' && *at != '/'; at = skipBlanks(at, end)) {
        std::string_view const key = takeName();
        at += 2;                                  // ="
        char const* closing = skipPlain(at, end); // to the quote, most often
        bool const standsAsItIs = *closing == '"';
        if (!standsAsItIs)
            closing = find(closing, '"', end);
        m_starts.push_back(m_scratch.size());
        m_attributes.push_back({key, {}});
        if (standsAsItIs)
            m_scratch.append(at, closing);
        else
            appendResolved(m_scratch, at, closing);
        m_scratch += '\0';
        at = closing + 1;
    }
    bool const isEmpty = *at == '/';
    at += isEmpty ? 2 : 1;

    hand(name);
    if (isEmpty && !m_stopped) {
        m_offset = static_cast<std::size_t>(at - m_text.data());
        m_handler.endElement();
    } else {
        ++m_depth;
    }
    return at;
}

/// Hands an element over whose values stand in the scratch.
void PlainXmlReader::hand(std::string_view name)
{
    for (std::size_t i = 0; i < m_attributes.size(); ++i) {
        std::size_t const next = i + 1 < m_starts.size() ? m_starts[i + 1] : m_scratch.size();
        m_attributes[i].value = {m_scratch.data() + m_starts[i], next - m_starts[i] - 1};
    }
    m_handler.startElement(name, ElementAttributes(m_attributes.data(), m_attributes.size()));
}

char const* PlainXmlReader::readEndTag(char const* at)
{
    m_offset = static_cast<std::size_t>(at - m_text.data());
    at = find(at, '>', m_text.data() + m_text.size()) + 1;
    --m_depth;
    m_handler.endElement();
    return at;
}

void PlainXmlReader::readText(char const* begin, char const* end)
{
    m_offset = static_cast<std::size_t>(begin - m_text.data());
    m_scratch.clear();
    appendResolved(m_scratch, begin, end);
    m_handler.characters(m_scratch);
}

} // namespace TAV_marlo_v1
