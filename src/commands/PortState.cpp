#include "commands/PortState.h"

#include "graph/PortImpl.h"
#include "persistence/HandOver.h"

#include <tav/Compound.h>
#include <tav/Node.h>

#include <typeinfo>

namespace TAV_marlo_v1::detail {

namespace {

/// Whether the owner answers what is kept with the port.
bool isLibraryOwned(Port const& port)
{
    PortNotification const* const owner = port.getParent();
    return owner && (typeid(*owner) == typeid(Node) || typeid(*owner) == typeid(Compound));
}

std::optional<StringArray> valuesOf(Port const& port)
{
    std::optional<StringArray> values;
    if (StringArray const* const answered = defaultValues(port, values); answered && !values)
        values.emplace(*answered);
    else if (!answered)
        values.reset();
    return values;
}

PropertyList optionsOf(Port const& port)
{
    if (!isLibraryOwned(port))
        return port.getOptions();
    PropertyList const* const stored = PortAccess::options(port);
    return stored ? *stored : PropertyList();
}

/// The stored entries; of an owner that keeps them elsewhere, what it answers.
PropertyList metadataOf(Port const& port)
{
    if (PropertyList const* const stored = PortAccess::metadata(port))
        return *stored;
    PropertyList shown;
    if (isLibraryOwned(port))
        return shown;
    StringArray keys;
    port.getAvailableMetadatas(eAnyMetadata, keys);
    for (char const* const key : keys)
        shown.addStringPair(key, port.getPortMetaDataValue(key).toChar());
    return shown;
}

} // namespace

StringArray const* defaultValues(Port const& port, std::optional<StringArray>& storage)
{
    if (isLibraryOwned(port))
        return PortAccess::values(port);
    return port.getPortDefaultValues(storage.emplace()) ? &*storage : nullptr;
}

PortState::PortState(Port const& port)
    : m_name(NamedAccess::text(port))
    , m_type(port.getDataType())
    , m_flags(PortAccess::flags(port) & ~(eDetached | eReconnecting))
    , m_values(valuesOf(port))
    , m_options(optionsOf(port))
    , m_metadata(metadataOf(port))
    , m_hasChildList(port.children())
    , m_watchPoint(WatchPointState::of(port))
{
    if (m_hasChildList)
        PortAccess::impl(*port.children()).ports.forEach([this](Port const& child) { m_children.emplace_back(child); });
}

AddRefWrapper<Port> PortState::build(PortIOType ioType) const
{
    AddRefWrapper<Port> port = Port::createNew(nullptr, ioType);
    NamedAccess::setText(*port, m_name);
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

void PortState::appendTo(PortList& list) const
{
    PortList::Impl const& record = PortAccess::impl(list);
    AddRefWrapper<Port> const port = build(record.ioType);
    if (record.ports.hasName(m_name.view()))
        NamedAccess::setText(*port, SharedTextRef(std::string_view(record.ports.freeName(m_name.view()))));
    PortAccess::append(list, *port);
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
