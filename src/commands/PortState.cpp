#include "commands/PortState.h"

#include "graph/PortImpl.h"
#include "persistence/HandOver.h"

namespace TAV_marlo_v1::detail {

namespace {

/// The stored entries; of an owner that keeps them elsewhere, what it answers.
PropertyList metadataOf(Port const& port)
{
    if (PropertyList const* const stored = PortAccess::metadata(port))
        return *stored;
    PropertyList shown;
    StringArray keys;
    port.getAvailableMetadatas(eAnyMetadata, keys);
    for (char const* const key : keys)
        shown.addStringPair(key, port.getPortMetaDataValue(key).toChar());
    return shown;
}

} // namespace

PortState::PortState(Port const& port)
    : m_name(NamedAccess::text(port))
    , m_type(port.getDataType())
    , m_flags(PortAccess::flags(port) & ~(eDetached | eReconnecting))
    , m_options(port.getOptions())
    , m_metadata(metadataOf(port))
    , m_hasChildList(port.children())
    , m_watchPoint(WatchPointState::of(port))
{
    if (StringArray values; port.getPortDefaultValues(values))
        m_values = std::move(values);
    if (m_hasChildList)
        PortAccess::impl(*port.children()).ports.forEach([this](Port const& child) { m_children.emplace_back(child); });
}

AddRefWrapper<Port> PortState::build(PortIOType ioType) const
{
    AddRefWrapper<Port> port = Port::createNew(m_name.chars(), ioType);
    PortAccess::setDataType(*port, m_type);
    PortAccess::setFlags(*port, m_flags, true);
    if (m_values)
        PortAccess::setValues(*port, *m_values);
    PortAccess::setOptions(*port, m_options);
    PortAccess::setMetadata(*port, m_metadata);
    if (m_hasChildList) {
        AddRefWrapper<PortList> const children = port->createChildrenList();
        for (PortState const& child : m_children)
            PortAccess::append(*children, *child.build(ioType));
    }
    return port;
}

AddRefWrapper<Port> PortState::restoreInto(PortList& list, unsigned index) const
{
    AddRefWrapper<PortList> const kept(&list);
    AddRefWrapper<Port> const port = build(PortAccess::impl(list).ioType);
    if (!list.insert(port, index))
        return {};
    handOver(*port);
    restoreWatchPoints(*port);
    return port;
}

void PortState::restoreWatchPoints(Port& port) const
{
    if (m_watchPoint)
        m_watchPoint->restore(port);
    AddRefWrapper<PortList> const children = port.children();
    for (unsigned i = 0; children && i < m_children.size(); ++i) {
        if (AddRefWrapper<Port> const child = (*children)[i])
            m_children[i].restoreWatchPoints(*child);
    }
}

} // namespace TAV_marlo_v1::detail
