// Any text on both roads through XML: directly where it is plain, and through the parser. They have to hand over
// the same elements, or to refuse the text in the same words.

#include "persistence/XmlSource.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

using namespace TAV_marlo_v1;

namespace {

/// Writes down what it gets. Each second depth wants text, and an element "stop" stops the reading.
class RecordingHandler final : public ElementHandler {
public:
    std::string read(std::string_view text, XmlSource::Road road)
    {
        bool const good = m_source.parse(text, road);
        return m_record + (good ? "" : "!" + m_source.error());
    }

    void startElement(std::string_view name, ElementAttributes const& attributes) override
    {
        endText();
        m_record.append("<").append(name);
        for (ElementAttributes::Entry const& attribute : attributes) {
            m_record.append(" ").append(attribute.name).append("=").append(attribute.value);
            if (attribute.value.data()[attribute.value.size()] != '\0')
                std::abort(); // values are closed by a NUL
        }
        m_record.append(">");
        if (name == "stop")
            m_source.fail("stop", "another");
        m_source.wantText(++m_depth % 2 == 1);
    }
    void characters(std::string_view part) override
    {
        m_record.append(m_inText ? "" : "'").append(part); // the parts of one text are cut as a road likes
        m_inText = true;
    }
    void endElement() override
    {
        endText();
        m_record.append("/");
        m_source.wantText(--m_depth % 2 == 1);
    }
    void startOver() override
    {
        m_record.clear();
        m_depth = 0;
        m_inText = false;
    }

private:
    void endText()
    {
        m_record.append(m_inText ? "'" : "");
        m_inText = false;
    }

    XmlSource m_source{*this};
    std::string m_record;
    unsigned m_depth = 0;
    bool m_inText = false;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string_view const text(reinterpret_cast<char const*>(data), size);
    std::string const shortest = RecordingHandler().read(text, XmlSource::eShortest);
    std::string const parsed = RecordingHandler().read(text, XmlSource::eParser);
    if (shortest == parsed)
        return 0;
    std::fprintf(stderr, "the roads differ:\n%s\n---- by the parser\n%s\n", shortest.c_str(), parsed.c_str());
    std::abort();
}
