#include <tav/Metadata.h>

#include "foundation/MetadataText.h"
#include "foundation/PropertyListAccess.h"

#include <cstring>

namespace TAV_marlo_v1 {

Metadata::~Metadata() = default;

bool Metadata::addMetadata(char const* key, char const* value)
{
    if (!m_store.addStringPair(key, value))
        return false;
    onMetadataChanged();
    return true;
}

bool Metadata::setMetadataValue(char const* key, char const* value)
{
    if (!key || !value)
        return false;
    StringArray const* const present = PropertyListAccess::find(m_store, key);
    if (present && present->size() == 1 && std::strcmp((*present)[0], value) == 0)
        return true;
    if (present)
        m_store.setStringPairValue(key, value);
    else
        m_store.addStringPair(key, value);
    onMetadataChanged();
    return true;
}

bool Metadata::removeMetadata(char const* key)
{
    if (!m_store.removeStringPair(key))
        return false;
    onMetadataChanged();
    return true;
}

bool Metadata::hasMetadata(char const* key) const
{
    return m_store.hasStringPair(key);
}

bool Metadata::getMetadata(char const* key, StringArray& values) const
{
    return m_store.getStringPairValues(key, values);
}

void Metadata::getMetadatas(StringArray& keys) const
{
    m_store.getStringPairNames(keys);
}

PropertyList const& Metadata::getPropertyList() const
{
    return m_store;
}

bool Metadata::setChildList(char const* name, PropertyList const& list)
{
    PropertyList const* const present = m_store.getChildList(name);
    if (present && *present == list)
        return true;
    if (!m_store.setChildList(name, list))
        return false;
    onMetadataChanged();
    return true;
}

bool Metadata::getChildList(char const* name, PropertyList& list) const
{
    PropertyList const* const present = m_store.getChildList(name);
    if (!present)
        return false;
    list = *present;
    return true;
}

bool Metadata::hasChildList(char const* name) const
{
    return m_store.getChildList(name) != nullptr;
}

bool Metadata::removeChildList(char const* name)
{
    if (!m_store.removeChildList(name))
        return false;
    onMetadataChanged();
    return true;
}

String Metadata::saveMetadatasToXML() const
{
    return metadatasToText(m_store);
}

StatusStr Metadata::createMetadatasFromXML(char const* text)
{
    PropertyList list;
    StatusStr status = metadatasFromText(text, list);
    if (!status)
        return status;
    setFromPropertyList(list);
    return status;
}

bool Metadata::metadataCallback(char const*, MetadataCallBackType, AddRefWrapper<MetadataCallBack>&)
{
    return false;
}

void Metadata::setFromPropertyList(PropertyList const& list)
{
    if (m_store == list)
        return;
    m_store = list;
    onMetadataChanged();
}

void Metadata::onMetadataChanged()
{
}

} // namespace TAV_marlo_v1
