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
    return PortAccess::impl(*PortAccess::impl(port).children).nextDoomed;
}

} // namespace

AddRefWrapper<Port> Port::createNew(char const* name, PortIOType ioType)
{
    return AddRefWrapper<Port>(new Port(name, ioType));
}

Port::Port(char const* name, PortIOType ioType)
    : Namable(name)
    , m_impl(std::make_unique<Impl>(ioType))
{
}

Port::~Port()
{
    PortAccess::forgetStray(*this);
}

void Port::deleteThis()
{
    static detail::Graveyard<Port, nextDoomedPort> graveyard;
    if (m_impl->children)
        graveyard.bury(*this, [](Port* port) { delete port; });
    else
        delete this;
}

PortIOType Port::getPortIOType() const noexcept
{
    return m_impl->ioType;
}

AddRefWrapper<PortDataType> Port::getDataType() const
{
    return m_impl->type;
}

bool Port::setDataType(AddRefWrapper<PortDataType> const& type)
{
    AddRefWrapper<PortDataType> const kept(type); // `type` may be the very handle that changes below
    if (kept == m_impl->type)
        return true;
    AddRefWrapper<Port> const self(this);
    AddRefWrapper<Port> const twin(PortAccess::twin(*this));

    if (m_impl->owner && !m_impl->owner->onPortSetDataType(self, kept))
        return false;
    if (twin && twin->m_impl->owner && !twin->m_impl->owner->onPortSetDataType(twin, kept))
        return false;

    m_impl->type = kept;
    if (twin)
        twin->m_impl->type = kept;

    if (m_impl->owner)
        m_impl->owner->onPortDataTypeChanged(self, kept);
    if (twin && twin->m_impl->owner)
        twin->m_impl->owner->onPortDataTypeChanged(twin, kept);
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

    if (m_impl->owner && !m_impl->owner->onPortSetName(self, wanted.chars()))
        return;
    if (twin && twin->m_impl->owner && !twin->m_impl->owner->onPortSetName(twin, wanted.chars()))
        return;

    detail::renamePort(*this, wanted);
    if (twin)
        detail::renamePort(*twin, wanted);

    if (m_impl->owner)
        m_impl->owner->onPortNameChanged(self, wanted.chars());
    if (twin && twin->m_impl->owner)
        twin->m_impl->owner->onPortNameChanged(twin, wanted.chars());
}

Namable Port::getFullName() const
{
    std::vector<Port const*> chain;
    for (Port const* port = this; port; port = port->m_impl->parentPort)
        chain.push_back(port);
    std::string text;
    for (auto port = chain.rbegin(); port != chain.rend(); ++port)
        detail::appendToPath(text, '.', (*port)->getName());
    return Namable(text.c_str());
}

Namable Port::getFullPathName() const
{
    Port const* top = this;
    while (top->m_impl->parentPort)
        top = top->m_impl->parentPort;
    Namable const ownName = getFullName();
    if (!top->m_impl->owner)
        return ownName;
    Namable path = top->m_impl->owner->onGetParentFullPathName();
    path.appendPortName(ownName.getName());
    return path;
}

// ---- place

PortNotification* Port::getParent() const noexcept
{
    return m_impl->owner;
}

void Port::setParent(PortNotification* owner)
{
    PortAccess::setOwner(*this, owner);
    if (!m_impl->home || m_impl->home->owner != owner)
        PortAccess::noteStray(*this);
}

Port* Port::getParentPort() const noexcept
{
    return m_impl->parentPort;
}

void Port::setParentPort(Port* parent) noexcept
{
    m_impl->parentPort = parent;
}

AddRefWrapper<Node> Port::getParentNode() const
{
    if (Compound* const compound = PortAccess::asCompound(m_impl->owner))
        return compound->getAsNode();
    return AddRefWrapper<Node>(PortAccess::asNode(m_impl->owner));
}

AddRefWrapper<Compound> Port::getParentCompound() const
{
    if (Node* const node = PortAccess::asNode(m_impl->owner))
        return AddRefWrapper<Compound>(node->getParentCompound());
    return AddRefWrapper<Compound>(PortAccess::asCompound(m_impl->owner));
}

bool Port::isCompoundInternalPort() const noexcept
{
    return PortAccess::asCompound(m_impl->owner) != nullptr;
}

// ---- flags

PortFlags Port::getFlags() const
{
    return m_impl->owner ? m_impl->owner->onPortGetFlags(handleOf(*this)) : PortAccess::flags(*this);
}

bool Port::testFlag(PortFlags flag) const
{
    return m_impl->owner ? m_impl->owner->onPortTestFlag(handleOf(*this), flag) : PortAccess::hasFlag(*this, flag);
}

bool Port::isFanIn() const
{
    return testFlag(eFanIn);
}

bool Port::isMemberFanIn() const
{
    return m_impl->parentPort && m_impl->parentPort->isFanIn();
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
    return !m_impl->owner || m_impl->owner->onPortCanSetFlag(self, flag);
}

bool Port::canClearFlag(PortFlags flag) const
{
    return !m_impl->owner || m_impl->owner->onPortCanClearFlag(handleOf(*this), flag);
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
    auto const owner = [&port] { return port->m_impl->owner; };
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
    AddRefWrapper<PortList> const members = m_impl->children;
    if (!members)
        return;
    // Told like any removal; what an owner keeps connected then is cut, since the member goes.
    for (unsigned i = members->size(); i-- > 0;) {
        if (AddRefWrapper<Port> const member = (*members)[i])
            member->removeAllConnections();
    }
    members->onParentNodeDeleted();
    PortAccess::impl(*members).parentPort = nullptr;
    if (m_impl->children == members)
        m_impl->children.reset();
}

// ---- values and metadata

bool Port::getPortDefaultValues(StringArray& values) const
{
    return m_impl->owner && m_impl->owner->onPortGetDefaultValues(handleOf(*this), values);
}

bool Port::setPortDefaultValues(StringArray const& values)
{
    if (!m_impl->owner)
        return false;
    StringArray present;
    if (getPortDefaultValues(present) && present == values)
        return true;
    AddRefWrapper<Port> const self(this);
    PortNotification* const owner = m_impl->owner;
    if (!owner->onPortSetDefaultValues(self, values))
        return false;
    if (m_impl->owner)
        m_impl->owner->onPortValuesChanged(self, values);
    return true;
}

bool Port::resetPortDefaultValues()
{
    if (!m_impl->owner)
        return false;
    StringArray present;
    if (!getPortDefaultValues(present))
        return true;
    AddRefWrapper<Port> const self(this);
    StringArray fallback;
    if (!m_impl->owner->onPortResetDefaultValues(self, fallback))
        return false;
    if (m_impl->owner)
        m_impl->owner->onPortValuesReset(self);
    return true;
}

bool Port::canSaveDefaultValues() const
{
    return m_impl->owner && m_impl->owner->onPortCanSaveDefaultValues(handleOf(*this));
}

String Port::getPortMetaDataValue(char const* key) const
{
    return m_impl->owner && key ? m_impl->owner->onPortGetMetaDataValue(handleOf(*this), key) : String();
}

bool Port::setPortMetaDataValue(char const* key, char const* value)
{
    return m_impl->owner && key && m_impl->owner->onPortSetMetaDataValue(AddRefWrapper<Port>(this), key, value);
}

String Port::getPortMetaDataUIName(char const* key) const
{
    return m_impl->owner && key ? m_impl->owner->onPortGetMetaDataUIName(handleOf(*this), key) : String();
}

String Port::getPortMetaDataDescription(char const* key) const
{
    return m_impl->owner && key ? m_impl->owner->onPortGetMetaDataDescription(handleOf(*this), key) : String();
}

void Port::getAcceptableMetadataValues(char const* key, StringArray& values) const
{
    if (m_impl->owner && key)
        m_impl->owner->onPortGetAcceptableMetadataValues(handleOf(*this), key, values);
}

void Port::getAvailableMetadatas(MetadataType type, StringArray& keys) const
{
    if (m_impl->owner)
        m_impl->owner->onPortGetAvailableMetadatas(type, handleOf(*this), keys);
}

PropertyList Port::getOptions() const
{
    return m_impl->owner ? m_impl->owner->onPortGetOptions(handleOf(*this)) : PropertyList();
}

void Port::getPortToolTip(StringArray& lines) const
{
    if (m_impl->owner)
        m_impl->owner->onPortGetToolTip(handleOf(*this), lines);
}

void Port::getUIHints(PortUIHints& hints) const
{
    if (m_impl->owner)
        m_impl->owner->onPortGetUIHints(handleOf(*this), hints);
}

bool Port::handlesHierarchicValues() const
{
    return m_impl->owner && m_impl->owner->onPortHandlesHierarchicValues(handleOf(*this));
}

// ---- children

AddRefWrapper<PortList> Port::createChildrenList()
{
    if (!m_impl->children) {
        AddRefWrapper<PortList> const list = PortList::createNew();
        PortList::Impl& record = PortAccess::impl(*list);
        record.owner = m_impl->owner;
        record.isOwnersOwn = true; // its owner is reached, and forgotten, through this port
        record.parentPort = this;
        record.ioType = m_impl->ioType;
        record.ports.setHearsRenames(true);
        m_impl->children = list;
    }
    return m_impl->children;
}

AddRefWrapper<PortList> Port::children() const
{
    return m_impl->children;
}

// ---- watch point

bool Port::setWatchPoint()
{
    AddRefWrapper<Port> const self(this);
    AddRefWrapper<WatchPoint> watchPoint;
    if (!m_impl->owner || !m_impl->owner->onPortCreateWatchPoint(self, watchPoint) || !watchPoint)
        return false;
    m_impl->makeExtras().watchPoint = watchPoint;
    notifyChange(eWatchPointSet);
    return true;
}

void Port::setWatchPoint(AddRefWrapper<WatchPoint> const& watchPoint)
{
    if (watchPoint || m_impl->extras)
        m_impl->makeExtras().watchPoint = watchPoint;
}

AddRefWrapper<WatchPoint> Port::getWatchPoint() const
{
    return AddRefWrapper<WatchPoint>(PortAccess::watchPoint(*this));
}

bool Port::removeWatchPoint()
{
    AddRefWrapper<Port> const self(this);
    if (!getWatchPoint() || (m_impl->owner && !m_impl->owner->onPortRemoveWatchPoint(self)))
        return false;
    m_impl->extras->watchPoint.reset();
    notifyChange(eWatchPointRemoved);
    return true;
}

// ---- notification

void Port::notifyChange(EPortChangeType type)
{
    AddRefWrapper<Port> const self(this);
    if (Node* const node = PortAccess::asNode(m_impl->owner)) {
        node->notifyNodePortChange(type, self);
        return;
    }
    Compound* const compound = PortAccess::asCompound(m_impl->owner);
    if (!compound)
        return;
    if (Node* const ioNode = PortAccess::presentingNode(*this))
        ioNode->notifyNodePortChange(type, self);
    else if (AddRefWrapper<Node> const owner = compound->getAsNode())
        owner->notifyCompoundPortChange(type, self);
}

} // namespace TAV_marlo_v1
