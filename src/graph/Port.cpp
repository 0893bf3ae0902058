#include <tav/Port.h>

#include "foundation/PathText.h"
#include "graph/Graveyard.h"
#include "graph/NodeImpl.h"
#include "graph/PathNames.h"
#include "graph/PortImpl.h"

#include <tav/Compound.h>
#include <tav/HostEditorNotifier.h>
#include <tav/Node.h>
#include <tav/PortUIHints.h>

namespace TAV_marlo_v1 {

namespace {

AddRefWrapper<Port> handleOf(Port const& port)
{
    return AddRefWrapper<Port>(const_cast<Port*>(&port));
}

bool has(PortFlags flags, PortFlags flag)
{
    return (flags & flag) != eNoPortFlags;
}

Port*& nextDoomedPort(Port& port)
{
    return PortAccess::impl(port).extras->nextDoomed;
}

} // namespace

AddRefWrapper<Port> Port::createNew(char const* name, PortIOType ioType)
{
    return AddRefWrapper<Port>(new Impl(name, ioType));
}

Port::Port(char const* name)
    : Namable(name)
{
}

Port::~Port() = default;

Port::Impl::~Impl()
{
    PortAccess::forgetStray(*this);
}

void Port::deleteThis()
{
    static detail::Graveyard<Port, nextDoomedPort> graveyard;
    if (PortAccess::children(*this))
        graveyard.bury(*this, [](Port* port) { delete port; });
    else
        delete this;
}

PortIOType Port::getPortIOType() const noexcept
{
    return impl().ioType;
}

AddRefWrapper<PortDataType> Port::getDataType() const
{
    return impl().type;
}

bool Port::setDataType(AddRefWrapper<PortDataType> const& type)
{
    AddRefWrapper<PortDataType> const kept(type); // `type` may be the very handle that changes below
    if (kept == impl().type)
        return true;
    AddRefWrapper<Port> const self(this);
    AddRefWrapper<Port> const twin(PortAccess::twin(*this));

    if (impl().owner && !impl().owner->onPortSetDataType(self, kept))
        return false;
    if (twin && twin->impl().owner && !twin->impl().owner->onPortSetDataType(twin, kept))
        return false;

    impl().type = kept;
    if (twin)
        twin->impl().type = kept;

    if (impl().owner)
        impl().owner->onPortDataTypeChanged(self, kept);
    if (twin && twin->impl().owner)
        twin->impl().owner->onPortDataTypeChanged(twin, kept);
    return true;
}

// ---- name

void Port::setName(char const* name)
{
    if (!name || PortAccess::home(*this) == nullptr) {
        Namable::setName(name);
        return;
    }
    if (NamedAccess::text(*this).view() == name || !detail::isLegalName(*this, name))
        return;
    AddRefWrapper<Port> const self(this);
    AddRefWrapper<Port> const twin(PortAccess::twin(*this));
    detail::SharedTextRef const wanted(detail::freePortName(name, *this, twin.get()));
    if (wanted.get() == &NamedAccess::text(*this))
        return;

    if (impl().owner && !impl().owner->onPortSetName(self, wanted.chars()))
        return;
    if (twin && twin->impl().owner && !twin->impl().owner->onPortSetName(twin, wanted.chars()))
        return;

    detail::renamePort(*this, wanted);
    if (twin)
        detail::renamePort(*twin, wanted);

    if (impl().owner)
        impl().owner->onPortNameChanged(self, wanted.chars());
    if (twin && twin->impl().owner)
        twin->impl().owner->onPortNameChanged(twin, wanted.chars());
}

Namable Port::getFullName() const
{
    std::vector<Port const*> chain;
    for (Port const* port = this; port; port = port->impl().parentPort)
        chain.push_back(port);
    std::string text;
    for (auto port = chain.rbegin(); port != chain.rend(); ++port)
        detail::appendToPath(text, '.', (*port)->getName());
    return Namable(text.c_str());
}

Namable Port::getFullPathName() const
{
    Port const* top = this;
    while (top->impl().parentPort)
        top = top->impl().parentPort;
    Namable const ownName = getFullName();
    if (!top->impl().owner)
        return ownName;
    Namable path = top->impl().owner->onGetParentFullPathName();
    path.appendPortName(ownName.getName());
    return path;
}

// ---- place

PortNotification* Port::getParent() const noexcept
{
    return impl().owner;
}

void Port::setParent(PortNotification* owner)
{
    PortAccess::setOwner(*this, owner);
    if (!impl().home || impl().home->owner != owner)
        PortAccess::noteStray(*this);
}

Port* Port::getParentPort() const noexcept
{
    return impl().parentPort;
}

void Port::setParentPort(Port* parent) noexcept
{
    impl().parentPort = parent;
}

AddRefWrapper<Node> Port::getParentNode() const
{
    if (Compound* const compound = PortAccess::asCompound(impl().owner))
        return compound->getAsNode();
    return AddRefWrapper<Node>(PortAccess::asNode(impl().owner));
}

AddRefWrapper<Compound> Port::getParentCompound() const
{
    if (Node* const node = PortAccess::asNode(impl().owner))
        return AddRefWrapper<Compound>(node->getParentCompound());
    return AddRefWrapper<Compound>(PortAccess::asCompound(impl().owner));
}

bool Port::isCompoundInternalPort() const noexcept
{
    return PortAccess::asCompound(impl().owner) != nullptr;
}

// ---- flags

PortFlags Port::getFlags() const
{
    return impl().owner ? impl().owner->onPortGetFlags(handleOf(*this)) : PortAccess::flags(*this);
}

bool Port::testFlag(PortFlags flag) const
{
    return impl().owner ? impl().owner->onPortTestFlag(handleOf(*this), flag) : PortAccess::hasFlag(*this, flag);
}

bool Port::isFanIn() const
{
    return testFlag(eFanIn);
}

bool Port::isMemberFanIn() const
{
    return impl().parentPort && impl().parentPort->isFanIn();
}

bool Port::canSetFlag(PortFlags flag) const
{
    AddRefWrapper<Port> const self = handleOf(*this);
    if (has(flag, eFanIn)) {
        AddRefWrapper<Node> const node = getParentNode();
        if (!node || !node->isFanInSupported(self))
            return false;
    }
    if (has(flag, eUnconnectable) && isConnected())
        return false;
    return !impl().owner || impl().owner->onPortCanSetFlag(self, flag);
}

bool Port::canClearFlag(PortFlags flag) const
{
    return !impl().owner || impl().owner->onPortCanClearFlag(handleOf(*this), flag);
}

void Port::setFlag(PortFlags flag)
{
    PortFlags const added = flag & ~PortAccess::flags(*this);
    if (added == eNoPortFlags || !canSetFlag(added))
        return;
    AddRefWrapper<Port> const self(this);
    AddRefWrapper<Port> const twin(has(added, eExposed) ? PortAccess::twin(*this) : nullptr);
    bool const twinChanges = twin && !PortAccess::hasFlag(*twin, eExposed);
    if (has(added, eFanIn))
        createChildrenList();

    PortAccess::setFlags(*this, added, true);
    if (has(added, eDetached))
        PortAccess::setDetached(*this, true);
    if (twinChanges)
        PortAccess::setFlags(*twin, eExposed, true);

    tellFlagChanged(self, added, true);
    if (twinChanges)
        tellFlagChanged(twin, eExposed, true);
}

void Port::clearFlag(PortFlags flag)
{
    PortFlags const removed = flag & PortAccess::flags(*this);
    if (removed == eNoPortFlags || !canClearFlag(removed))
        return;
    AddRefWrapper<Port> const self(this);
    AddRefWrapper<Port> const twin(has(removed, eExposed) ? PortAccess::twin(*this) : nullptr);
    bool const twinChanges = twin && PortAccess::hasFlag(*twin, eExposed);

    PortAccess::setFlags(*this, removed, false);
    if (has(removed, eDetached))
        PortAccess::setDetached(*this, false);
    if (twinChanges)
        PortAccess::setFlags(*twin, eExposed, false);

    tellFlagChanged(self, removed, false);
    if (has(removed, eFanIn))
        dropMembers();
    if (twinChanges)
        tellFlagChanged(twin, eExposed, false);
}

void Port::tellFlagChanged(AddRefWrapper<Port> const& port, PortFlags changed, bool on)
{
    // The owner is looked up anew for each hook: the one before may have taken the port away from it.
    auto const owner = [&port] { return port->impl().owner; };
    if (owner() && on)
        owner()->onPortSetFlag(port, changed);
    else if (owner())
        owner()->onPortClearFlag(port, changed);
    if (owner() && has(changed, eFanIn))
        owner()->onPortFanInStateChanged(port, on);
    if (owner() && has(changed, eExposed))
        owner()->onPortExposureChanged(port, on);
}

void Port::dropMembers()
{
    AddRefWrapper<PortList> const members = children();
    if (!members)
        return;
    // Told like any removal; what an owner keeps connected then is cut, since the member goes.
    for (unsigned i = members->size(); i-- > 0;) {
        if (AddRefWrapper<Port> const member = (*members)[i])
            member->removeAllConnections();
    }
    members->onParentNodeDeleted();
    PortAccess::impl(*members).parentPort = nullptr;
    if (PortAccess::children(*this) == members.get())
        PortAccess::setChildren(*this, nullptr);
}

// ---- values and metadata

bool Port::getPortDefaultValues(StringArray& values) const
{
    return impl().owner && impl().owner->onPortGetDefaultValues(handleOf(*this), values);
}

bool Port::setPortDefaultValues(StringArray const& values)
{
    if (!impl().owner)
        return false;
    StringArray present;
    if (getPortDefaultValues(present) && present == values)
        return true;
    AddRefWrapper<Port> const self(this);
    PortNotification* const owner = impl().owner;
    if (!owner->onPortSetDefaultValues(self, values))
        return false;
    if (impl().owner)
        impl().owner->onPortValuesChanged(self, values);
    return true;
}

bool Port::resetPortDefaultValues()
{
    if (!impl().owner)
        return false;
    StringArray present;
    if (!getPortDefaultValues(present))
        return true;
    AddRefWrapper<Port> const self(this);
    StringArray fallback;
    if (!impl().owner->onPortResetDefaultValues(self, fallback))
        return false;
    if (impl().owner)
        impl().owner->onPortValuesReset(self);
    return true;
}

bool Port::canSaveDefaultValues() const
{
    return impl().owner && impl().owner->onPortCanSaveDefaultValues(handleOf(*this));
}

String Port::getPortMetaDataValue(char const* key) const
{
    return impl().owner && key ? impl().owner->onPortGetMetaDataValue(handleOf(*this), key) : String();
}

bool Port::setPortMetaDataValue(char const* key, char const* value)
{
    return impl().owner && key && impl().owner->onPortSetMetaDataValue(AddRefWrapper<Port>(this), key, value);
}

String Port::getPortMetaDataUIName(char const* key) const
{
    return impl().owner && key ? impl().owner->onPortGetMetaDataUIName(handleOf(*this), key) : String();
}

String Port::getPortMetaDataDescription(char const* key) const
{
    return impl().owner && key ? impl().owner->onPortGetMetaDataDescription(handleOf(*this), key) : String();
}

void Port::getAcceptableMetadataValues(char const* key, StringArray& values) const
{
    if (impl().owner && key)
        impl().owner->onPortGetAcceptableMetadataValues(handleOf(*this), key, values);
}

void Port::getAvailableMetadatas(MetadataType type, StringArray& keys) const
{
    if (impl().owner)
        impl().owner->onPortGetAvailableMetadatas(type, handleOf(*this), keys);
}

PropertyList Port::getOptions() const
{
    return impl().owner ? impl().owner->onPortGetOptions(handleOf(*this)) : PropertyList();
}

void Port::getPortToolTip(StringArray& lines) const
{
    if (impl().owner)
        impl().owner->onPortGetToolTip(handleOf(*this), lines);
}

void Port::getUIHints(PortUIHints& hints) const
{
    if (impl().owner)
        impl().owner->onPortGetUIHints(handleOf(*this), hints);
}

bool Port::handlesHierarchicValues() const
{
    return impl().owner && impl().owner->onPortHandlesHierarchicValues(handleOf(*this));
}

// ---- children

AddRefWrapper<PortList> Port::createChildrenList()
{
    if (!PortAccess::children(*this)) {
        AddRefWrapper<PortList> const list = PortList::createNew();
        PortList::Impl& record = PortAccess::impl(*list);
        record.owner = impl().owner;
        record.isOwnersOwn = true; // its owner is reached, and forgotten, through this port
        record.parentPort = this;
        record.ioType = impl().ioType;
        record.ports.setHearsRenames(true);
        PortAccess::setChildren(*this, list);
    }
    return children();
}

AddRefWrapper<PortList> Port::children() const
{
    return AddRefWrapper<PortList>(PortAccess::children(*this));
}

// ---- watch point

bool Port::setWatchPoint()
{
    AddRefWrapper<Port> const self(this);
    AddRefWrapper<WatchPoint> watchPoint;
    if (!impl().owner || !impl().owner->onPortCreateWatchPoint(self, watchPoint) || !watchPoint)
        return false;
    impl().makeExtras().watchPoint = watchPoint;
    notifyChange(eWatchPointSet);
    return true;
}

void Port::setWatchPoint(AddRefWrapper<WatchPoint> const& watchPoint)
{
    if (watchPoint || impl().extras)
        impl().makeExtras().watchPoint = watchPoint;
}

AddRefWrapper<WatchPoint> Port::getWatchPoint() const
{
    return AddRefWrapper<WatchPoint>(PortAccess::watchPoint(*this));
}

bool Port::removeWatchPoint()
{
    AddRefWrapper<Port> const self(this);
    if (!getWatchPoint() || (impl().owner && !impl().owner->onPortRemoveWatchPoint(self)))
        return false;
    impl().extras->watchPoint.reset();
    notifyChange(eWatchPointRemoved);
    return true;
}

// ---- notification

void Port::notifyChange(EPortChangeType type)
{
    AddRefWrapper<Port> const self(this);
    if (Node* const node = PortAccess::asNode(impl().owner)) {
        node->notifyNodePortChange(type, self);
        return;
    }
    Compound* const compound = PortAccess::asCompound(impl().owner);
    if (!compound)
        return;
    if (Node* const ioNode = PortAccess::presentingNode(*this))
        ioNode->notifyNodePortChange(type, self);
    else if (AddRefWrapper<Node> const owner = compound->getAsNode())
        owner->notifyCompoundPortChange(type, self);
}

} // namespace TAV_marlo_v1
