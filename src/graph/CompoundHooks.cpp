// What a compound answers and tells when its nodes, annotations and inner ports change.

#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PortImpl.h"

#include <vector>

namespace TAV_marlo_v1 {

void Compound::executeChange()
{
    if (AddRefWrapper<Node> const owner = getAsNode())
        owner->executeChange();
}

// ---- nodes

bool Compound::onNodeAdd(AddRefWrapper<Node> const&)
{
    return true;
}

void Compound::onNodeAdded(AddRefWrapper<Node> const& node)
{
    if (node->testFlag(eAnyIO) && !testFlag(eNoIOPortFill))
        CompoundAccess::fillIONode(*this, *node);
    if (AddRefWrapper<Node> const owner = getAsNode())
        owner->notifyNodeChange(eNodeAdded, AddRefWrapper<Compound>(this), node);
}

bool Compound::onNodeRemove(AddRefWrapper<Node> const& node)
{
    if (!node->testFlag(eAnyIO))
        return true;
    PortList const& shown = node->testFlag(eInputIO) ? node->outputs() : node->inputs();
    std::vector<AddRefWrapper<Port>> ports;
    for (AddRefWrapper<Port> const& port : shown)
        ports.push_back(port);
    if (ports.empty())
        return true;
    bool const isFirst = !testFlag(eDeletingIOPorts);
    setFlag(eDeletingIOPorts);
    for (AddRefWrapper<Port> const& port : ports)
        deleteCompoundPort(port);
    if (isFirst)
        clearFlag(eDeletingIOPorts);
    return true;
}

void Compound::onNodeRemoved(AddRefWrapper<Node> const& node)
{
    if (AddRefWrapper<Node> const owner = getAsNode())
        owner->notifyNodeChange(eNodeRemoved, AddRefWrapper<Compound>(this), node);
}

// ---- annotations

namespace {

void notify(Compound& compound, EAnnotationChangeType type, AddRefWrapper<Annotation> const& annotation)
{
    if (AddRefWrapper<Node> const owner = compound.getAsNode())
        owner->notifyAnnotationChange(type, AddRefWrapper<Compound>(&compound), annotation);
}

} // namespace

bool Compound::onAnnotationAdd(AddRefWrapper<Annotation> const&)
{
    return true;
}

void Compound::onAnnotationAdded(AddRefWrapper<Annotation> const& annotation)
{
    notify(*this, eAnnotationAdded, annotation);
}

bool Compound::onAnnotationRemove(AddRefWrapper<Annotation> const&)
{
    return true;
}

void Compound::onAnnotationRemoved(AddRefWrapper<Annotation> const& annotation)
{
    notify(*this, eAnnotationRemoved, annotation);
}

bool Compound::onAnnotationSetName(AddRefWrapper<Annotation> const&, char const*)
{
    return true;
}

void Compound::onAnnotationNameChanged(AddRefWrapper<Annotation> const& annotation, char const*)
{
    notify(*this, eAnnotationRenamed, annotation);
}

void Compound::onAnnotationStateChanged(AddRefWrapper<Annotation> const& annotation)
{
    notify(*this, eAnnotationStateChanged, annotation);
}

void Compound::onMetadataChanged()
{
    if (AddRefWrapper<Node> const owner = getAsNode())
        NodeAccess::notify(*owner, eNodeMetadataChanged);
}

// ---- inner ports

Namable Compound::onGetParentFullPathName() const
{
    AddRefWrapper<Node> const owner = getAsNode();
    return owner ? owner->getFullPathName() : Namable(getName());
}

bool Compound::onPortAddConnection(AddRefWrapper<Port> const&, AddRefWrapper<Port> const&)
{
    return true;
}

void Compound::onPortConnectionAdded(AddRefWrapper<Port> const& port, AddRefWrapper<Port> const& other)
{
    ECnxChangeType const type = other->isMemberFanIn() ? eFanInCnxAdded : eCnxAdded;
    if (AddRefWrapper<Node> const owner = getAsNode())
        owner->notifyCompoundConnectionChange(type, port, other);
    other->notifyChange(ePortConnected);
}

void Compound::onPortConnectionRemoved(AddRefWrapper<Port> const& port, AddRefWrapper<Port> const& other)
{
    if (AddRefWrapper<Node> const owner = getAsNode())
        owner->notifyCompoundConnectionChange(eCnxRemoved, port, other);
    port->notifyChange(ePortDisconnected);
    other->notifyChange(ePortDisconnected);
}

void Compound::onPortDataTypeChanged(AddRefWrapper<Port> const& port, AddRefWrapper<PortDataType> const&)
{
    port->notifyChange(ePortDataTypeChanged);
}

void Compound::onPortListPortAdded(PortList const&, AddRefWrapper<Port> const& port)
{
    port->notifyChange(ePortAdded);
}

void Compound::onPortListPortRemoved(PortList const& list, AddRefWrapper<Port> const& port)
{
    // The port has left the list by which it is reported, so its way is taken through the list.
    PortList::Impl const* const shown = PortAccess::impl(list).presentation;
    if (Node* const ioNode = shown ? PortAccess::asNode(shown->owner) : nullptr)
        ioNode->notifyNodePortChange(ePortRemoved, port);
    else if (AddRefWrapper<Node> const owner = getAsNode())
        owner->notifyCompoundPortChange(ePortRemoved, port);
}

void Compound::onPortListPortMoved(PortList const& list, unsigned, unsigned to)
{
    if (AddRefWrapper<Port> const port = list[to])
        port->notifyChange(ePortMoved);
}

void Compound::onPortValuesChanged(AddRefWrapper<Port> const& port, StringArray const&)
{
    port->notifyChange(ePortValuesChanged);
}

void Compound::onPortValuesReset(AddRefWrapper<Port> const& port)
{
    port->notifyChange(ePortValuesReset);
}

void Compound::onPortNameChanged(AddRefWrapper<Port> const& port, char const*)
{
    port->notifyChange(ePortRenamed);
}

void Compound::onPortExposureChanged(AddRefWrapper<Port> const& port, bool)
{
    port->notifyChange(ePortExposureChanged);
}

void Compound::onPortFanInStateChanged(AddRefWrapper<Port> const& port, bool)
{
    port->notifyChange(ePortFanInChanged);
}

bool Compound::onPortSetMetaDataValue(AddRefWrapper<Port> const& port, char const* key, char const* value)
{
    PortAccess::setMetadataInStep(*port, key, value);
    return true;
}

void Compound::onPortSetFlag(AddRefWrapper<Port> const& port, PortFlags flag)
{
    if (PortAccess::isReportedByFlagsChange(flag))
        port->notifyChange(ePortFlagsChanged);
}

void Compound::onPortClearFlag(AddRefWrapper<Port> const& port, PortFlags flag)
{
    if (PortAccess::isReportedByFlagsChange(flag))
        port->notifyChange(ePortFlagsChanged);
}

} // namespace TAV_marlo_v1
