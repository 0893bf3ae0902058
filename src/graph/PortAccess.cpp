#include "graph/PortImpl.h"

#include <algorithm>

namespace TAV_marlo_v1 {

struct PortNotification::Dependents {
    std::vector<Port*> strays;
    std::vector<PortList::Impl*> lists;
};

void PortAccess::setFlags(Port& port, PortFlags flags, bool on)
{
    if (on)
        port.Flaggable<PortFlags>::setFlag(flags);
    else
        port.Flaggable<PortFlags>::clearFlag(flags);
}

namespace {

/// The port behind `port` in the tree below `top`, parents first; null at the end. Goes by the lists the
/// ports stand in, so that neither a stack nor memory is needed however deep the tree is.
Port* nextInTree(Port& port, Port const& top) noexcept
{
    if (PortList* const children = PortAccess::children(port); children && !children->empty())
        return PortAccess::impl(*children).ports.at(0);
    for (Port* last = &port; last != &top;) {
        PortList::Impl const& list = *PortAccess::impl(*last).home;
        if (Port* const sibling = list.ports.at(list.ports.indexOf(last) + 1))
            return sibling;
        last = list.parentPort;
    }
    return nullptr;
}

template <class Visit>
void forPortAndChildren(Port& top, Visit&& visit)
{
    for (Port* port = &top; port; port = nextInTree(*port, top))
        visit(*port);
}

} // namespace

void PortAccess::setOwner(Port& top, PortNotification* owner) noexcept
{
    // What is below has the owner of what is above; a tree that dies from the top is walked once.
    if (impl(top).owner == owner && !impl(top).isStray)
        return;
    forPortAndChildren(top, [owner](Port& port) {
        forgetStray(port);
        impl(port).owner = owner;
        if (PortList* const children = PortAccess::children(port))
            impl(*children).owner = owner;
    });
}

void PortAccess::setDetached(Port& top, bool detached)
{
    forPortAndChildren(top, [detached](Port& port) { setFlags(port, eDetached, detached); });
}

void PortAccess::noteStray(Port& port) noexcept
{
    Port::Impl& record = impl(port);
    if (!record.owner || record.isStray)
        return;
    try {
        if (!record.owner->m_dependents)
            record.owner->m_dependents = new PortNotification::Dependents;
        record.owner->m_dependents->strays.push_back(&port);
        record.isStray = true;
    } catch (std::bad_alloc const&) {
        setOwner(port, nullptr);
    }
}

void PortAccess::forgetStray(Port& port) noexcept
{
    Port::Impl& record = impl(port);
    if (!record.isStray)
        return;
    std::erase(record.owner->m_dependents->strays, &port);
    record.isStray = false;
}

void PortAccess::noteList(PortList::Impl& list)
{
    if (!list.owner || list.isOwnersOwn)
        return;
    if (!list.owner->m_dependents)
        list.owner->m_dependents = new PortNotification::Dependents;
    list.owner->m_dependents->lists.push_back(&list);
}

void PortAccess::forgetList(PortList::Impl& list) noexcept
{
    if (list.owner && !list.isOwnersOwn && list.owner->m_dependents)
        std::erase(list.owner->m_dependents->lists, &list);
}

void PortAccess::dropDependents(PortNotification& owner) noexcept
{
    std::unique_ptr<PortNotification::Dependents> const dependents(std::exchange(owner.m_dependents, nullptr));
    if (!dependents)
        return;
    for (Port* port : dependents->strays) {
        impl(*port).isStray = false;
        setOwner(*port, nullptr);
    }
    for (PortList::Impl* list : dependents->lists) {
        list->owner = nullptr;
        list->ports.setHearsRenames(false);
        list->ports.forEach([&](Port& port) {
            if (impl(port).owner == &owner)
                setOwner(port, nullptr);
            if (impl(port).home == list)
                impl(port).home = nullptr;
        });
    }
}

void PortAccess::orphan(PortList& list) noexcept
{
    list.onParentNodeDeleted();
    impl(list).owner = nullptr;
    impl(list).isOwnersOwn = false;
}

PortList* PortAccess::children(Port const& port) noexcept
{
    return impl(port).extras ? impl(port).extras->children.get() : nullptr;
}

void PortAccess::setChildren(Port& port, AddRefWrapper<PortList> const& children)
{
    if (children || impl(port).extras)
        impl(port).makeExtras().children = children;
}

detail::NamedList<Port> const& PortAccess::connections(Port const& port) noexcept
{
    return ports(port.connectedTo());
}

StringArray const* PortAccess::values(Port const& port) noexcept
{
    return impl(port).hasValues ? &impl(port).values : nullptr;
}

PropertyList const* PortAccess::metadata(Port const& port) noexcept
{
    Port::Impl::Extras const* const extras = impl(port).extras.get();
    return extras && !extras->metadata.empty() ? &extras->metadata : nullptr;
}

PropertyList const* PortAccess::options(Port const& port) noexcept
{
    Port::Impl::Extras const* const extras = impl(port).extras.get();
    return extras && !extras->options.empty() ? &extras->options : nullptr;
}

WatchPoint* PortAccess::watchPoint(Port const& port) noexcept
{
    return impl(port).extras ? impl(port).extras->watchPoint.get() : nullptr;
}

void PortAccess::setValues(Port& port, StringArray values)
{
    impl(port).values = std::move(values);
    impl(port).hasValues = true;
}

void PortAccess::clearValues(Port& port) noexcept
{
    impl(port).values = {};
    impl(port).hasValues = false;
}

void PortAccess::setOptions(Port& port, PropertyList const& options)
{
    if (!options.empty() || impl(port).extras)
        impl(port).makeExtras().options = options;
}

bool PortAccess::setMetadata(Port& port, char const* key, char const* value)
{
    if (!value)
        return impl(port).extras && impl(port).extras->metadata.removeStringPair(key);
    PropertyList& metadata = impl(port).makeExtras().metadata;
    char const* const present = metadata.getStringPairValue(key);
    if (present && String(present) == value)
        return false;
    return metadata.setStringPairValue(key, value) || metadata.addStringPair(key, value);
}

void PortAccess::setMetadata(Port& port, PropertyList const& metadata)
{
    if (!metadata.empty() || impl(port).extras)
        impl(port).makeExtras().metadata = metadata;
}

void PortAccess::setMetadataInStep(Port& port, char const* key, char const* value)
{
    AddRefWrapper<Port> const kept(&port);
    AddRefWrapper<Port> const other(twin(port));
    // Both sides or none, also where memory ends.
    PropertyList former = other && metadata(port) ? *metadata(port) : PropertyList();
    bool const changed = setMetadata(port, key, value);
    bool otherChanged = false;
    try {
        otherChanged = other && setMetadata(*other, key, value);
    } catch (...) {
        if (changed)
            impl(port).extras->metadata.swap(former);
        throw;
    }
    if (changed)
        port.notifyChange(ePortMetadataChanged);
    if (otherChanged)
        other->notifyChange(ePortMetadataChanged);
}

bool PortAccess::isReportedByFlagsChange(PortFlags flag) noexcept
{
    return (flag & ~(eFanIn | eExposed | eReconnecting)) != eNoPortFlags;
}

AddRefWrapper<Port> PortAccess::make(PortList const& list, char const* name, AddRefWrapper<PortDataType> const& type,
                                     PortProperties const& properties)
{
    PortList::Impl const& record = impl(list);
    AddRefWrapper<Port> port = Port::createNew(record.ports.freeName(name ? name : "").c_str(), record.ioType);
    setDataType(*port, type);
    setFlags(*port, properties.getFlags() & ~eDetached, true);
    if (hasFlag(*port, eFanIn))
        port->createChildrenList();
    if (!properties.getOptions().empty())
        setOptions(*port, properties.getOptions());
    if (properties.getDefaultValues().isValid())
        setValues(*port, properties.getDefaultValues().getValues());
    return port;
}

void PortAccess::setDataType(Port& port, AddRefWrapper<PortDataType> const& type) noexcept
{
    impl(port).type = type;
}

void PortAccess::setIOType(Port& top, PortIOType ioType) noexcept
{
    forPortAndChildren(top, [ioType](Port& port) {
        impl(port).ioType = ioType;
        if (PortList* const children = PortAccess::children(port))
            impl(*children).ioType = ioType;
    });
}

void PortAccess::append(PortList& list, Port& port)
{
    PortList::Impl& record = impl(list);
    record.ports.insert(record.ports.size(), &port);
    if (record.owner || record.parentPort) {
        setOwner(port, record.owner);
        impl(port).home = &record;
    }
    if (record.parentPort)
        impl(port).parentPort = record.parentPort;
    if (record.owner)
        setDetached(port, false);
    if (PortList::Impl* const shown = record.presentation)
        shown->ports.insert(shown->ports.size(), &port);
}

void PortAccess::takeOut(PortList& list, Port& port) noexcept
{
    PortList::Impl& record = impl(list);
    AddRefWrapper<Port> const taken = record.ports.take(&port);
    if (!taken || impl(port).home != &record)
        return;
    if (record.presentation)
        record.presentation->ports.take(&port);
    impl(port).home = nullptr;
    if (impl(port).parentPort == record.parentPort)
        impl(port).parentPort = nullptr;
    setOwner(port, nullptr);
    setDetached(port, true);
}

void PortAccess::dropEmptyChildList(Port& port) noexcept
{
    PortList* const children = PortAccess::children(port);
    if (!children || !children->empty() || hasFlag(port, eFanIn))
        return;
    impl(*children).parentPort = nullptr;
    setChildren(port, nullptr);
}

void PortAccess::endFanInKeepingChildren(Port& port)
{
    if (!hasFlag(port, eFanIn) || !port.canClearFlag(eFanIn))
        return;
    setFlags(port, eFanIn, false);
    Port::tellFlagChanged(AddRefWrapper<Port>(&port), eFanIn, false);
}

void PortAccess::swapPorts(PortList& a, PortList& b) noexcept
{
    PortList::Impl& ofA = impl(a);
    PortList::Impl& ofB = impl(b);
    ofA.ports.swap(ofB.ports);
    PortList::Impl* const shownByA = ofA.presentation;
    PortList::Impl* const shownByB = ofB.presentation;
    ofA.setPresentation(nullptr);
    ofB.setPresentation(shownByA);
    ofA.setPresentation(shownByB);
    for (PortList::Impl* list : {&ofA, &ofB}) {
        list->ports.forEach([list](Port& port) {
            impl(port).home = list;
            setOwner(port, list->owner);
        });
    }
}

void PortAccess::link(Port& a, Port& b)
{
    auto const listOf = [](Port& port) -> detail::NamedList<Port>& {
        Port::Impl& record = impl(port);
        if (!record.connections)
            record.connections = new PortList::Entries;
        return record.connections->ports;
    };
    detail::NamedList<Port>& ofA = listOf(a);
    detail::NamedList<Port>& ofB = listOf(b);
    ofA.insert(ofA.size(), &b);
    try {
        ofB.insert(ofB.size(), &a);
    } catch (...) {
        // The link that was just made is the last one; an earlier link of the two keeps its place.
        ofA.takeLast();
        throw;
    }
}

bool PortAccess::unlink(Port& a, Port& b) noexcept
{
    Port::Impl& ofA = impl(a);
    Port::Impl& ofB = impl(b);
    if (!ofA.connections || !ofA.connections->ports.take(&b))
        return false;
    return ofB.connections && ofB.connections->ports.take(&a);
}

void PortAccess::unlinkAll(Port& top) noexcept
{
    forPortAndChildren(top, [](Port& port) {
        if (!impl(port).connections)
            return;
        AddRefWrapper<Port> const kept(&port); // the other ends may hold the last references
        detail::NamedList<Port>& links = impl(port).connections->ports;
        while (AddRefWrapper<Port> const other = links.takeLast())
            impl(*other).connections->ports.take(&port);
    });
}

void PortAccess::setConnectionOrder(Port& port, std::vector<Port*> const& order)
{
    impl(port).connections->ports.reorder(order);
}

void PortAccess::placeConnection(Port& port, Port const& other, unsigned place)
{
    detail::NamedList<Port>& links = impl(port).connections->ports;
    // Of several connections with the same port the last one is the newest.
    unsigned const last = links.size() - 1;
    unsigned const from = links.at(last) == &other ? last : links.indexOf(&other);
    if (from != kNotFound && from != std::min(place, last))
        links.move(from, std::min(place, last));
}

PortList::Impl* PortAccess::home(Port const& port) noexcept
{
    return impl(port).home;
}

} // namespace TAV_marlo_v1
