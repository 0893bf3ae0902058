#include "commands/PortMetadataState.h"

#include "graph/PortImpl.h"

namespace TAV_marlo_v1::detail {

PortMetadataState::PortMetadataState(Port const& port)
{
    StringArray keys;
    port.getAvailableMetadatas(eAnyMetadata, keys);
    for (char const* const key : keys)
        m_shown.addStringPair(key, port.getPortMetaDataValue(key).toChar());
    if (PropertyList const* const stored = PortAccess::metadata(port))
        m_stored = *stored;
}

bool PortMetadataState::restore(Port& port) const
{
    AddRefWrapper<Port> const self(&port);
    StringArray present;
    port.getAvailableMetadatas(eAnyMetadata, present);
    bool isWhole = true;
    for (char const* const key : present) {
        if (!m_shown.hasStringPair(key))
            isWhole = port.setPortMetaDataValue(key, nullptr) && isWhole;
    }
    StringArray wanted;
    m_shown.getStringPairNames(wanted);
    for (char const* const key : wanted) {
        char const* const value = m_shown.getStringPairValue(key);
        if (!present.contains(key) || port.getPortMetaDataValue(key) != value)
            isWhole = port.setPortMetaDataValue(key, value) && isWhole;
    }
    // What setting by key does not bring back: the order of the entries, and those with several values.
    PropertyList const* const stored = PortAccess::metadata(port);
    if (stored ? *stored != m_stored : !m_stored.empty()) {
        PortAccess::setMetadata(port, m_stored);
        if (Port* const twin = PortAccess::twin(port))
            PortAccess::setMetadata(*twin, m_stored);
    }
    return isWhole;
}

} // namespace TAV_marlo_v1::detail
