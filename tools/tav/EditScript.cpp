#include "EditScript.h"

#include <QtCore/QStringDecoder>

#include <algorithm>
#include <utility>

namespace tool {

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

/// What "\c" stands for within quotes; 0 for nothing.
char unescaped(char c)
{
    switch (c) {
    case '"':
    case '\\':
        return c;
    case 'n':
        return '\n';
    default:
        return 0;
    }
}

class Scanner {
public:
    explicit Scanner(std::string_view line)
        : m_line(line)
    {
    }

    /// Goes to where the next word begins. @return false at the end of the line or at a comment
    bool findWord()
    {
        while (m_at < m_line.size() && isBlank(m_line[m_at]))
            ++m_at;
        return m_at < m_line.size() && m_line[m_at] != '#';
    }

    bool isAtEnd() const { return m_at == m_line.size(); }
    std::size_t position() const { return m_at; }
    /// The last word's quotes are not closed.
    bool isOpen() const { return m_isOpen; }

    std::string readWord()
    {
        if (m_line[m_at] == '"')
            return readQuoted();
        std::size_t const begin = m_at;
        while (m_at < m_line.size() && !isBlank(m_line[m_at]))
            ++m_at;
        return std::string(m_line.substr(begin, m_at - begin));
    }

private:
    std::string readQuoted()
    {
        std::string word;
        for (++m_at; m_at < m_line.size() && m_line[m_at] != '"'; ++m_at) {
            if (m_line[m_at] != '\\') {
                word += m_line[m_at];
                continue;
            }
            char const meant = ++m_at < m_line.size() ? unescaped(m_line[m_at]) : '\0';
            if (meant == 0)
                throw EditError(R"(expected \", \\ or \n behind the backslash in quotes)");
            word += meant;
        }
        m_isOpen = m_at == m_line.size();
        if (m_isOpen)
            return word;
        ++m_at;
        if (m_at < m_line.size() && !isBlank(m_line[m_at]))
            throw EditError("expected a blank behind the quotes, found \"" + std::string(m_line.substr(m_at)) + '"');
        return word;
    }

    std::string_view m_line;
    std::size_t m_at = 0;
    bool m_isOpen = false;
};

/// A name with other bytes would be another one once the graph was saved or a removed node came back.
void requireText(std::string_view line)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString const text = decoder(QByteArrayView(line.data(), static_cast<qsizetype>(line.size())));
    if (decoder.hasError())
        throw EditError("expected UTF-8 text, found other bytes");
    for (QChar const c : text) {
        bool const isControl = c < QChar(0x20) && c != QChar('\t') && c != QChar('\r');
        if (isControl || c == QChar(0xfffe) || c == QChar(0xffff))
            throw EditError("expected text, found the character U+"
                            + QString("%1").arg(c.unicode(), 4, 16, QChar('0')).toUpper().toStdString());
    }
}

} // namespace

Words wordsOf(std::string_view line)
{
    requireText(line);
    Words words;
    Scanner scanner(line);
    while (scanner.findWord())
        words.push_back(scanner.readWord());
    if (scanner.isOpen())
        throw EditError("expected a closing quote, found the end of the line");
    return words;
}

std::string quoted(std::string const& word)
{
    bool const isPlain = !word.empty() && word[0] != '#' && word[0] != '"'
                         && std::none_of(word.begin(), word.end(), [](char c) { return isBlank(c) || c == '\n'; });
    if (isPlain)
        return word;
    std::string text = "\"";
    for (char const c : word) {
        if (c == '"' || c == '\\' || c == '\n')
            text += '\\';
        text += c == '\n' ? 'n' : c;
    }
    return text + '"';
}

UnfinishedLine unfinishedLine(std::string_view line)
{
    UnfinishedLine result;
    result.begin = line.size();
    Scanner scanner(line);
    while (scanner.findWord()) {
        result.begin = scanner.position();
        result.words.push_back(scanner.readWord());
    }
    result.isComment = !scanner.isAtEnd();
    bool const isBehindWord = scanner.isOpen() || (!line.empty() && !isBlank(line.back()));
    if (!result.isComment && isBehindWord && !result.words.empty()) {
        result.last = std::move(result.words.back());
        result.words.pop_back();
    } else {
        result.begin = line.size();
    }
    return result;
}

} // namespace tool
