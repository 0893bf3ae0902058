#include <tav/PortList.h>

#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PathNames.h"
#include "graph/PortImpl.h"

#include <string_view>

namespace TAV_marlo_v1 {

PortList::Impl::~Impl()
{
    setPresentation(nullptr);
    if (presented)
        presented->presentation = nullptr;
    PortAccess::forgetList(*this);
    ports.forEach([this](Port& port) {
        Port::Impl& record = PortAccess::impl(port);
        if (record.home != this)
            return;
        record.home = nullptr;
        if (record.parentPort == parentPort)
            record.parentPort = nullptr;
        PortAccess::setOwner(port, nullptr);
    });
}

void PortList::Impl::setPresentation(Impl* shown) noexcept
{
    if (presentation)
        presentation->presented = nullptr;
    presentation = shown;
    if (shown)
        shown->presented = this;
}

void PortList::Impl::move(unsigned from, unsigned to)
{
    ports.move(from, to);
    if (presentation)
        presentation->ports.move(from, to);
}

AddRefWrapper<PortList> PortList::createNew()
{
    return AddRefWrapper<PortList>(new Impl);
}

PortList::PortList() noexcept = default;
PortList::~PortList() = default;

// ---- look-up

unsigned PortList::size() const noexcept
{
    return entries().ports.size();
}

AddRefWrapper<Port> PortList::operator[](unsigned index) const
{
    return AddRefWrapper<Port>(entries().ports.at(index));
}

AddRefWrapper<Port> PortList::operator[](char const* name) const
{
    return AddRefWrapper<Port>(name ? entries().ports.find(name) : nullptr);
}

AddRefWrapper<Port> PortList::findPort(char const* name, unsigned& index) const
{
    AddRefWrapper<Port> port = (*this)[name];
    index = port ? entries().ports.indexOf(port.get()) : kNotFound;
    return port;
}

unsigned PortList::findPort(AddRefWrapper<Port> const& port) const
{
    return port ? entries().ports.indexOf(port.get()) : kNotFound;
}

namespace {

/// The port of that dotted name in the list or below it, the port's own name tried first: names may hold
/// dots themselves.
Port* findDotted(detail::NamedList<Port> const& ports, std::string_view name)
{
    if (Port* const port = ports.find(name))
        return port;
    for (std::size_t dot = name.find('.'); dot != std::string_view::npos; dot = name.find('.', dot + 1)) {
        Port const* const parent = ports.find(name.substr(0, dot));
        PortList const* const children = parent ? PortAccess::children(*parent) : nullptr;
        if (Port* const port = children ? findDotted(PortAccess::ports(*children), name.substr(dot + 1)) : nullptr)
            return port;
    }
    return nullptr;
}

} // namespace

AddRefWrapper<Port> PortList::findPortRecursive(char const* name, unsigned& index) const
{
    index = kNotFound;
    Port* const port = name ? findDotted(entries().ports, name) : nullptr;
    if (!port)
        return {};
    Port const* top = port;
    while (entries().ports.indexOf(top) == kNotFound && top->getParentPort())
        top = top->getParentPort();
    index = entries().ports.indexOf(top);
    return AddRefWrapper<Port>(port);
}

// ---- changes

bool PortList::add(AddRefWrapper<Port> const& port)
{
    return insert(port, size());
}

bool PortList::insert(AddRefWrapper<Port> const& port, unsigned index)
{
    if (!port)
        return false;
    AddRefWrapper<Port> const kept(port);
    if (!impl().owner && !impl().parentPort) {
        impl().ports.insert(index, kept.get());
        return true;
    }
    Port::Impl& record = PortAccess::impl(*kept);
    if (record.home)
        return false; // it stands in the list of an owner, this one or another
    AddRefWrapper<PortList> const self(this);

    PortAccess::setOwner(*kept, impl().owner);
    record.parentPort = impl().parentPort;
    if (impl().owner && !impl().owner->onPortListPortAdd(*this, kept)) {
        if (!record.home) {
            record.parentPort = nullptr;
            PortAccess::noteStray(*kept); // it keeps the owner, who may die first
        }
        return false;
    }

    try {
        impl().ports.insert(index, kept.get());
        if (impl().presentation) {
            try {
                impl().presentation->ports.insert(index, kept.get());
            } catch (...) {
                impl().ports.take(kept.get());
                throw;
            }
        }
    } catch (...) {
        record.parentPort = nullptr;
        PortAccess::setOwner(*kept, nullptr);
        throw;
    }
    record.home = &impl();
    PortAccess::forgetStray(*kept);
    if (impl().owner)
        PortAccess::setDetached(*kept, false);

    if (impl().owner)
        impl().owner->onPortListPortAdded(*this, kept);
    return true;
}

AddRefWrapper<Port> PortList::addPort(char const* name, AddRefWrapper<PortDataType> const& type, PortFlags flags)
{
    AddRefWrapper<Port> const port = PortAccess::make(*this, name, type, PortProperties(flags, {}, {}));
    return add(port) ? port : AddRefWrapper<Port>();
}

bool PortList::remove(AddRefWrapper<Port> const& port)
{
    if (!port || !impl().ports.contains(port.get()))
        return false;
    AddRefWrapper<Port> const kept(port); // `port` may be the very entry that goes away below
    AddRefWrapper<PortList> const self(this);

    if (impl().owner && !impl().owner->onPortListPortRemove(*this, kept))
        return false;

    impl().ports.take(kept.get());
    if (impl().presentation)
        impl().presentation->ports.take(kept.get());
    Port::Impl& record = PortAccess::impl(*kept);
    bool const isMine = record.home == &impl();
    if (isMine) {
        record.home = nullptr;
        record.parentPort = nullptr;
        if (impl().owner)
            PortAccess::setDetached(*kept, true);
    }

    if (impl().owner)
        impl().owner->onPortListPortRemoved(*this, kept);

    if (isMine && !record.home)
        PortAccess::setOwner(*kept, nullptr);
    return true;
}

bool PortList::removeMemberPort(AddRefWrapper<Port> const& port)
{
    if (!port)
        return false;
    if (impl().ports.contains(port.get()))
        return remove(port);
    Port const* top = port.get();
    while (top && !impl().ports.contains(top))
        top = top->getParentPort();
    AddRefWrapper<PortList> const siblings = top ? port->getParentPort()->children() : nullptr;
    return siblings && siblings->remove(port);
}

bool PortList::movePort(unsigned from, unsigned to)
{
    if (from >= size() || to >= size())
        return false;
    if (from == to)
        return true;
    AddRefWrapper<PortList> const self(this);
    AddRefWrapper<Port> const port = (*this)[from];
    PortAccess::TwinMove const twin = PortAccess::twinMove(impl(), from, to);
    AddRefWrapper<PortList> const twins(twin.list);

    if (impl().owner && !impl().owner->onPortListPortMove(*this, from, to))
        return false;
    if (twins && twins->getParent() && !twins->getParent()->onPortListPortMove(*twins, twin.from, twin.to))
        return false;

    impl().move(from, to);
    if (twins)
        twins->impl().move(twin.from, twin.to);

    if (impl().owner)
        impl().owner->onPortListPortMoved(*this, from, to);
    if (twins && twins->getParent())
        twins->getParent()->onPortListPortMoved(*twins, twin.from, twin.to);
    return true;
}

// ---- owner

void PortList::setParent(PortNotification* owner) noexcept
{
    if (owner == impl().owner)
        return;
    PortNotification* const former = impl().owner;
    PortAccess::forgetList(impl());
    impl().owner = owner;
    impl().ports.setHearsRenames(owner != nullptr);
    if (former && !impl().isOwnersOwn)
        impl().ports.forEach([](Port& port) { PortAccess::noteStray(port); });
    try {
        PortAccess::noteList(impl());
    } catch (std::bad_alloc const&) {
        impl().owner = nullptr;
        impl().ports.setHearsRenames(false);
    }
    Node* const node = PortAccess::asNode(owner);
    if (node && impl().isOwnersOwn && node->testFlag(eAnyIO))
        CompoundAccess::adoptPresentation(*node, *this);
}

PortNotification* PortList::getParent() const noexcept
{
    return entries().canHaveOwner ? impl().owner : nullptr;
}

void PortList::setPortIOType(PortIOType type)
{
    impl().ioType = type;
    impl().ports.forEach([type](Port& port) { PortAccess::setIOType(port, type); });
}

void PortList::onParentNodeDeleted()
{
    AddRefWrapper<PortList> const self(this);
    detail::NamedList<Port> former;
    former.swap(impl().ports);
    impl().ports.setHearsRenames(former.hearsRenames());
    if (impl().presentation)
        impl().presentation->ports.clear();
    former.forEach([this](Port& port) {
        Port::Impl& record = PortAccess::impl(port);
        if (record.home && record.home != &impl())
            return; // shown here, at home elsewhere
        record.home = nullptr;
        record.parentPort = nullptr;
        PortAccess::setOwner(port, nullptr);
        PortAccess::setDetached(port, true);
        PortAccess::unlinkAll(port);
    });
}

} // namespace TAV_marlo_v1
