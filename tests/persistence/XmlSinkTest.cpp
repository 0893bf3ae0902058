#include "persistence/XmlSink.h"

#include <QtCore/QString>
#include <QtCore/QXmlStreamWriter>

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>

namespace TAV_marlo_v1 {
namespace {

using Random = std::mt19937;

/// Pieces of text that a writer could get wrong: markup, white space, several scripts, an astral character.
std::string randomText(Random& random)
{
    static char const* const pieces[] = {"a",  "value", "<",  ">",    "&",        "\"",           "'",
                                         "\t", "\n",    " ",  "]]>",  "\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x98\x80",
                                         "{}", ";",     "&#", "\x7F", "--",       "\xEF\xBF\xBD", "1.5"};
    std::string text;
    for (unsigned left = random() % 6; left > 0; --left)
        text += pieces[random() % std::size(pieces)];
    return text;
}

/// Writes one random document to both writers. Empty text is left out: there the two differ on purpose.
class TwinWriters {
public:
    TwinWriters()
        : m_qt(&m_qtText)
    {
        m_qt.setAutoFormatting(true);
    }

    void element(Random& random, unsigned depth)
    {
        std::string const name = depth % 2 ? "node" : "port";
        m_qt.writeStartElement(QString::fromStdString(name));
        m_sink.start(name);
        for (unsigned i = 0; i < random() % 4; ++i) {
            std::string const key = "a" + std::to_string(i);
            std::string const value = randomText(random);
            m_qt.writeAttribute(QString::fromStdString(key), QString::fromStdString(value));
            m_sink.attribute(key, value);
        }
        for (unsigned left = depth > 5 ? 0 : random() % 5; left > 0; --left) {
            if (random() % 4 == 0)
                text(randomText(random));
            else
                element(random, depth + 1);
        }
        m_qt.writeEndElement();
        m_sink.end();
    }

    std::string expected() const { return m_qtText.mid(m_qtText.indexOf(u'<')).toStdString(); }
    std::string actual() const { return std::string(m_sink.bytes()); }

private:
    void text(std::string const& characters)
    {
        if (characters.empty())
            return;
        m_qt.writeCharacters(QString::fromStdString(characters));
        m_sink.text(characters);
    }

    QString m_qtText;
    QXmlStreamWriter m_qt;
    XmlSink m_sink;
};

TEST(XmlSink, LaysOutAndEscapesAsTheStreamWriterDoes)
{
    for (unsigned seed = 0; seed < 3000; ++seed) {
        Random random(seed);
        TwinWriters twins;
        twins.element(random, 0);
        ASSERT_EQ(twins.actual(), twins.expected()) << "seed " << seed;
    }
}

std::string written(std::function<void(XmlSink&)> const& write)
{
    XmlSink sink;
    sink.start("v");
    write(sink);
    sink.end();
    return std::string(sink.bytes());
}

TEST(XmlSink, EmptyTextIsNoContent)
{
    EXPECT_EQ(written([](XmlSink& sink) { sink.text(""); }), "<v/>");
}

TEST(XmlSink, CarriageReturnsAreReferencesEverywhere)
{
    EXPECT_EQ(written([](XmlSink& sink) { sink.text("a\r\nb"); }), "<v>a&#13;\nb</v>");
    EXPECT_EQ(written([](XmlSink& sink) { sink.attribute("k", "a\r\n\tb"); }), "<v k=\"a&#13;&#10;&#9;b\"/>");
}

TEST(XmlSink, AttributeInPiecesIsTheWholeOne)
{
    std::string const pieces = written([](XmlSink& sink) {
        sink.beginAttribute("k");
        for (char const* piece : {"<", "", "b;", "\""})
            sink.attributePiece(piece);
        sink.endAttribute();
        sink.attribute("flag", 4294967295ul);
    });
    EXPECT_EQ(pieces, "<v k=\"&lt;b;&quot;\" flag=\"4294967295\"/>");
}

TEST(XmlSink, ReplacesWhatXmlCannotCarry)
{
    struct {
        std::string bytes;
        unsigned replacements;
    } const cases[] = {
        {"\x01", 1},         {"\x1F", 1},
        {"\x80", 1},         {"\xC3", 1},             // a continuation alone, a character cut off
        {"\xC0\xAF", 2},     {"\xE0\x80\x80", 3},     // overlong
        {"\xED\xA0\x80", 3}, {"\xF4\x90\x80\x80", 4}, // a surrogate, beyond the last character
        {"\xEF\xBF\xBE", 1}, {"\xEF\xBF\xBF", 1},
        {"\xFF", 1},
    };
    for (auto const& [text, replacements] : cases) {
        std::string const& bytes = text; // a lambda below takes it, which a binding's name is not fit for
        std::string expected = "a";
        for (unsigned i = 0; i < replacements; ++i)
            expected += "\xEF\xBF\xBD";
        EXPECT_EQ(written([&](XmlSink& sink) { sink.text("a" + bytes + "b"); }), "<v>" + expected + "b</v>") << bytes;
        EXPECT_EQ(written([&](XmlSink& sink) { sink.text("a" + bytes); }), "<v>" + expected + "</v>") << bytes;
    }
}

} // namespace
} // namespace TAV_marlo_v1
