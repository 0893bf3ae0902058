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

/// Behind the blanks that begin there, eight by eight: half of a text is indentation.
char const* skipIndentation(char const* at, char const* end) noexcept
{
    constexpr char kBlanks[] = "        ";
    while (end - at >= 8 && std::memcmp(at, kBlanks, 8) == 0)
        at += 8;
    return at;
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

// More are unusual, and comparing each with each is only cheap for a few.
constexpr std::size_t kMaxAttributes = 16;

} // namespace

bool PlainXmlReader::read()
{
    if (!takeStartTag())
        return false;
    while (!m_open.empty() && !m_stopped) {
        if (!takeText() || m_at == m_end) // on success at a "<"
            return false;
        if (m_stopped)
            break;
        bool const isEndTag = m_end - m_at > 1 && m_at[1] == '/';
        if (!(isEndTag ? takeEndTag() : takeStartTag()))
            return false;
    }
    return m_stopped || skipBlanks(m_at, m_end) == m_end;
}

// Each step goes on behind what it took, or answers that this is not plain.

/// Empty when there is no plain name.
std::string_view PlainXmlReader::takeName() noexcept
{
    char const* const begin = m_at;
    if (m_at == m_end || nameClassOf(*m_at) != NameStart)
        return {};
    while (m_at != m_end && nameClassOf(*m_at) != NoName)
        ++m_at;
    return {begin, static_cast<std::size_t>(m_at - begin)};
}

bool PlainXmlReader::take(char c) noexcept
{
    if (m_at == m_end || *m_at != c)
        return false;
    ++m_at;
    return true;
}

bool PlainXmlReader::takeStartTag()
{
    char const* const begin = m_at;
    if (!take('<'))
        return false;
    std::string_view const name = takeName();
    if (name.empty())
        return false;
    m_scratch.clear();
    m_attributes.clear();
    m_starts.clear();
    while (true) {
        char const* const behind = m_at;
        m_at = skipBlanks(m_at, m_end);
        bool const isEmpty = take('/');
        if (take('>')) {
            noteOffset(begin);
            m_open.push_back(name);
            hand(name);
            if (isEmpty && !m_stopped) {
                noteOffset(m_at);
                m_open.pop_back();
                m_handler.endElement();
            }
            return true;
        }
        if (isEmpty || m_at == behind || !takeAttribute())
            return false;
    }
}

bool PlainXmlReader::takeAttribute()
{
    std::string_view const name = takeName();
    if (name.empty() || name == "xmlns" || m_attributes.size() == kMaxAttributes)
        return false;
    for (ElementAttributes::Entry const& other : m_attributes) {
        if (other.name.size() == name.size() && other.name.front() == name.front() && other.name == name)
            return false;
    }
    m_attributes.push_back({name, {}});
    m_starts.push_back(m_scratch.size());
    if (!take('=') || !take('"') || !takeCharacters<'"', true>())
        return false;
    m_scratch += '\0';
    return take('"');
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

bool PlainXmlReader::takeEndTag()
{
    char const* const begin = m_at;
    m_at += 2;
    if (takeName() != m_open.back())
        return false;
    m_at = skipBlanks(m_at, m_end);
    if (!take('>'))
        return false;
    noteOffset(begin);
    m_open.pop_back();
    m_handler.endElement();
    return true;
}

bool PlainXmlReader::takeText()
{
    if (!m_wantsText)
        return takeCharacters<'<', false>();
    char const* const begin = m_at;
    m_scratch.clear();
    if (!takeCharacters<'<', true>())
        return false;
    if (m_at != begin) {
        noteOffset(begin);
        m_handler.characters(m_scratch);
    }
    return true;
}

/// Everything up to `closing`, into the scratch where it is wanted. Line feeds and tabs are for character data only:
/// in an attribute value they stand for blanks.
template <char closing, bool keep>
bool PlainXmlReader::takeCharacters()
{
    char const* const begin = m_at;
    while (true) {
        char const* const run = m_at;
        m_at = skipPlain(m_at, m_end);
        if (m_at == m_end)
            return false;
        bool const isReference = *m_at == '&';
        char const* behind = m_at + 1; // of the character that ended the run, if it stands for itself
        switch (detail::classOf(*m_at)) {
        case ByteClass::WhiteSpace:
            if (*m_at == '\r' || closing == '"')
                return false;
            behind = skipIndentation(behind, m_end);
            break;
        case ByteClass::Markup:
            if (*m_at == closing || isReference) {
                behind = m_at;
                break;
            }
            if (*m_at == '<')
                return false;
            if (*m_at == '>' && closing == '<' && m_at - begin >= 2 && m_at[-1] == ']' && m_at[-2] == ']')
                return false; // the end of a CDATA section must not stand alone
            break;
        case ByteClass::Forbidden:
            return false;
        default:
            std::size_t const length = detail::characterLength(m_at, m_end);
            if (length == 0 || (length == 3 && detail::isNonCharacter(m_at)))
                return false;
            behind = m_at + length;
        }
        if (keep)
            m_scratch.append(run, behind);
        if (*m_at == closing)
            return true;
        m_at = behind;
        if (isReference && !takeReference(keep))
            return false;
    }
}

bool PlainXmlReader::takeReference(bool keep)
{
    Reference const* const reference = referenceAt(m_at, m_end);
    if (!reference)
        return false;
    if (keep)
        m_scratch += reference->character;
    m_at += reference->text.size();
    return true;
}

} // namespace TAV_marlo_v1
