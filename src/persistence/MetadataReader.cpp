#include "persistence/MetadataReader.h"

#include "foundation/MetadataText.h"
#include "foundation/PropertyListAccess.h"
#include "persistence/GraphVocabulary.h"
#include "persistence/ReadAttributes.h"

namespace TAV_marlo_v1 {

using namespace graphtext;

void MetadataReader::begin(PropertyList& store)
{
    m_stores.push_back(&store);
    m_states.push_back(State::Store);
}

void MetadataReader::abandon() noexcept
{
    m_states.clear();
    m_stores.clear();
    m_skipDepth = 0;
    m_values.clear();
    m_value.clear();
}

void MetadataReader::startElement(std::string_view name, ElementAttributes const& attributes)
{
    if (m_skipDepth > 0 || !enter(m_states.back(), name, attributes))
        ++m_skipDepth;
}

/// @return whether the element is one that may stand here
bool MetadataReader::enter(State state, std::string_view name, ElementAttributes const& attributes)
{
    switch (state) {
    case State::Store:
        if (name == kMetadata)
            enterEntry(attributes);
        else if (name == kPropertyLists)
            m_states.push_back(State::Children);
        else
            return false;
        return true;
    case State::Entry:
        if (name == kValue)
            enterValue();
        return name == kValue;
    case State::Children:
        if (name == kPropertyList)
            enterChild(attributes);
        return name == kPropertyList;
    case State::Child:
        if (name == kMetadatas)
            m_states.push_back(State::Store);
        return name == kMetadatas;
    case State::Value:
        break;
    }
    return false;
}

void MetadataReader::enterEntry(ElementAttributes const& attributes)
{
    m_key = requiredName(m_source, kMetadata, attributes);
    m_states.push_back(State::Entry);
}

void MetadataReader::enterValue()
{
    m_value.clear();
    m_source.wantText(true);
    m_states.push_back(State::Value);
}

void MetadataReader::enterChild(ElementAttributes const& attributes)
{
    std::string const name(requiredName(m_source, kPropertyList, attributes));
    if (m_stores.size() > kMaxPropertyListDepth)
        m_source.fail(tooDeep("property lists"), atMost(kMaxPropertyListDepth));
    if (m_source.failed())
        return;
    m_stores.push_back(&m_stores.back()->addChildList(name.c_str()));
    m_states.push_back(State::Child);
}

void MetadataReader::characters(std::string_view part)
{
    if (m_skipDepth == 0)
        m_value.append(part);
}

void MetadataReader::endElement()
{
    if (m_skipDepth > 0) {
        --m_skipDepth;
        return;
    }
    State const state = m_states.back();
    m_states.pop_back();
    leave(state);
}

void MetadataReader::leave(State state)
{
    switch (state) {
    case State::Value:
        m_source.wantText(false);
        m_values.add(m_value.c_str());
        break;
    case State::Entry:
        PropertyListAccess::appendPair(*m_stores.back(), detail::SharedTextRef(m_key), std::move(m_values));
        break;
    case State::Child:
        m_stores.pop_back();
        break;
    case State::Store:
        if (m_states.empty())
            m_stores.clear();
        break;
    case State::Children:
        break;
    }
}

namespace {

/// Takes a text that is a "metadatas" element and nothing else.
class MetadataTextHandler final : public ElementHandler {
public:
    explicit MetadataTextHandler(PropertyList& store) noexcept
        : m_store(store)
    {
    }

    StatusStr read(char const* text)
    {
        return m_source.parse(text) ? StatusStr() : StatusStr(m_source.error().c_str());
    }

    void startElement(std::string_view name, ElementAttributes const& attributes) override
    {
        if (m_reader.isActive())
            m_reader.startElement(name, attributes);
        else if (name == kMetadatas)
            m_reader.begin(m_store);
        else
            failAtElement(m_source, name, kMetadatas);
    }
    void characters(std::string_view part) override { m_reader.characters(part); }
    void endElement() override { m_reader.endElement(); }
    void startOver() override
    {
        m_reader.abandon();
        m_store.removeAll();
    }

private:
    PropertyList& m_store;
    ElementSource m_source{*this};
    MetadataReader m_reader{m_source};
};

} // namespace

StatusStr metadatasFromText(char const* text, PropertyList& out)
{
    if (!text)
        return StatusStr(noTextFound(kMetadatas).c_str());
    PropertyList store;
    StatusStr status = MetadataTextHandler(store).read(text);
    if (!!status)
        out.swap(store);
    return status;
}

} // namespace TAV_marlo_v1
