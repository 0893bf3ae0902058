#include "XmlPasses.h"

#include "Row.h"

#include <QByteArray>
#include <QString>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <vector>

namespace bench {

namespace {

struct Token {
    QXmlStreamReader::TokenType type;
    QString text; // name of an element, or character data
    QXmlStreamAttributes attributes;
};

/// Content as opposed to layout, which the writer makes by itself.
bool isContent(QXmlStreamReader const& reader)
{
    return reader.isCharacters() && !reader.isWhitespace();
}

void takeSlice(QXmlStreamReader& reader, std::vector<Token>& slice)
{
    constexpr std::size_t kTokens = 200000;
    slice.clear();
    while (slice.size() < kTokens && !reader.atEnd()) {
        QXmlStreamReader::TokenType const type = reader.readNext();
        if (reader.isStartElement() || reader.isEndElement())
            slice.push_back({type, reader.name().toString(), reader.attributes()});
        else if (isContent(reader))
            slice.push_back({type, reader.text().toString(), {}});
    }
}

void write(QXmlStreamWriter& writer, std::vector<Token> const& slice)
{
    for (Token const& token : slice) {
        if (token.type == QXmlStreamReader::StartElement) {
            writer.writeStartElement(token.text);
            writer.writeAttributes(token.attributes);
        } else if (token.type == QXmlStreamReader::EndElement) {
            writer.writeEndElement();
        } else {
            writer.writeCharacters(token.text);
        }
    }
}

QByteArray bytesOf(std::string_view text)
{
    return QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

XmlPass readerPass(std::string_view text)
{
    QByteArray const bytes = bytesOf(text);
    XmlPass pass{};
    pass.seconds = secondsOf([&] {
        QXmlStreamReader reader(bytes);
        while (!reader.atEnd()) {
            if (reader.readNext() == QXmlStreamReader::StartElement)
                ++pass.elements;
        }
        pass.good = !reader.hasError();
    });
    return pass;
}

XmlPass writerPass(std::string_view text)
{
    QByteArray const bytes = bytesOf(text);
    QXmlStreamReader reader(bytes);
    QString written;
    QXmlStreamWriter writer(&written);
    writer.setAutoFormatting(true);

    XmlPass pass{};
    std::vector<Token> slice;
    while (!reader.atEnd()) {
        takeSlice(reader, slice);
        pass.seconds += secondsOf([&] { write(writer, slice); });
        for (Token const& token : slice)
            pass.elements += token.type == QXmlStreamReader::StartElement ? 1 : 0;
    }
    // The layout may begin or end with a line break, which graph text has not.
    pass.good = !reader.hasError() && written.trimmed().toUtf8() == bytes;
    return pass;
}

} // namespace bench
