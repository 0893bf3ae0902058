#include "persistence/EmbeddedText.h"

#include "persistence/GraphVocabulary.h"

#include <QtCore/QByteArray>
#include <QtCore/QXmlStreamReader>

#include <algorithm>
#include <string>

namespace TAV_marlo_v1 {

namespace {

/// Elements of the vocabulary that hold elements only.
constexpr std::string_view kWithoutText[] = {
    graphtext::kNodeRoot,      graphtext::kCompoundRoot,  graphtext::kBackdrop,    graphtext::kStickyNote,
    graphtext::kSubRoot,       graphtext::kNodes,         graphtext::kNode,        graphtext::kCompound,
    graphtext::kBackdrops,     graphtext::kStickyNotes,   graphtext::kConnections, graphtext::kConnection,
    graphtext::kChildGraph,    graphtext::kNodeMetadatas, graphtext::kPorts,       graphtext::kPort,
    graphtext::kMembers,       graphtext::kMember,        graphtext::kMetadatas,   graphtext::kMetadata,
    graphtext::kPropertyLists, graphtext::kPropertyList};

bool holdsText(std::string_view element) noexcept
{
    return std::find(std::begin(kWithoutText), std::end(kWithoutText), element) == std::end(kWithoutText);
}

class TokenCopier {
public:
    TokenCopier(std::string_view text, ElementSink& sink)
        : m_reader(QByteArray(text.data(), static_cast<qsizetype>(text.size())))
        , m_sink(sink)
        , m_outerDepth(sink.depth())
    {
    }

    void copy()
    {
        while (!m_reader.atEnd())
            copyToken(m_reader.readNext());
        while (m_sink.depth() > m_outerDepth)
            m_sink.end();
    }

private:
    void copyToken(QXmlStreamReader::TokenType token)
    {
        if (token == QXmlStreamReader::Characters && m_reader.isWhitespace() && !m_reader.isCDATA()) {
            m_blanks += utf8(m_reader.text());
            return;
        }
        // Blanks were content only if the tags of one element enclose them.
        if (token == QXmlStreamReader::EndElement && m_justStarted && holdsText(m_element))
            m_sink.text(m_blanks);
        m_blanks.clear();
        m_justStarted = token == QXmlStreamReader::StartElement;

        switch (token) {
        case QXmlStreamReader::StartElement:
            copyStart();
            break;
        case QXmlStreamReader::EndElement:
            m_sink.end();
            break;
        case QXmlStreamReader::Characters:
            if (m_reader.isCDATA())
                m_sink.cdata(utf8(m_reader.text()));
            else
                m_sink.text(utf8(m_reader.text()));
            break;
        case QXmlStreamReader::Comment:
            m_sink.comment(utf8(m_reader.text()));
            break;
        case QXmlStreamReader::ProcessingInstruction:
            m_sink.processingInstruction(utf8(m_reader.processingInstructionTarget()),
                                         utf8(m_reader.processingInstructionData()));
            break;
        default: // the ends of the document, a document type: nothing that could stand inside a text
            break;
        }
    }

    void copyStart()
    {
        m_element = utf8(m_reader.qualifiedName());
        m_sink.start(m_element);
        for (QXmlStreamNamespaceDeclaration const& declaration : m_reader.namespaceDeclarations()) {
            std::string const prefix = utf8(declaration.prefix());
            m_sink.attribute(prefix.empty() ? "xmlns" : "xmlns:" + prefix, utf8(declaration.namespaceUri()));
        }
        for (QXmlStreamAttribute const& attribute : m_reader.attributes())
            m_sink.attribute(utf8(attribute.qualifiedName()), utf8(attribute.value()));
    }

    static std::string utf8(QStringView text) { return text.toUtf8().toStdString(); }

    QXmlStreamReader m_reader;
    ElementSink& m_sink;
    std::size_t m_outerDepth;
    std::string m_element; // started last
    std::string m_blanks;  // white space read since the last other token
    bool m_justStarted = false;
};

} // namespace

void copyEmbeddedText(std::string_view text, ElementSink& sink)
{
    TokenCopier(text, sink).copy();
}

} // namespace TAV_marlo_v1
