// Making and deleting compound ports, and connecting by name.

#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PathNames.h"
#include "graph/PortImpl.h"

#include <tav/NewPortHints.h>

#include <unordered_set>

namespace TAV_marlo_v1 {

unsigned Compound::createCompoundPort(PortIOType ioType, char const* name, AddRefWrapper<PortDataType> const& type,
                                      PortProperties const& properties)
{
    AddRefWrapper<Compound> const self(this);
    AddRefWrapper<Node> const owner = getAsNode();
    if (!owner)
        return kNotFound;
    PortList& outer = CompoundAccess::outerList(*owner, ioType);
    PortList& inner = CompoundAccess::innerList(*this, ioType);
    std::string const free = PortAccess::freeNameInBoth(outer, inner, name ? name : "");

    AddRefWrapper<Port> const outside = PortAccess::make(outer, free.c_str(), type, properties);
    AddRefWrapper<Port> const inside = PortAccess::make(inner, free.c_str(), type, properties);
    if (!outer.add(outside))
        return kNotFound;
    bool added = false;
    try {
        added = inner.add(inside);
    } catch (...) {
        PortAccess::takeOut(outer, *outside);
        throw;
    }
    if (!added) {
        if (!outer.remove(outside))
            PortAccess::takeOut(outer, *outside); // both sides or none, also against the owner's will
        return kNotFound;
    }
    return outer.findPort(outside);
}

bool Compound::deleteCompoundPort(AddRefWrapper<Port> const& port)
{
    AddRefWrapper<Compound> const self(this);
    AddRefWrapper<Node> const owner = getAsNode();
    AddRefWrapper<Port> const twin = getReversePort(port);
    if (!owner || !twin || port->getParentPort())
        return false;
    AddRefWrapper<Port> const inside = port->isCompoundInternalPort() ? port : twin;
    AddRefWrapper<Port> const outside = port->isCompoundInternalPort() ? twin : port;
    AddRefWrapper<PortList> const inner(PortAccess::home(*inside));
    AddRefWrapper<PortList> const outer(PortAccess::home(*outside));
    unsigned const outerIndex = outer->findPort(outside);

    PortAccess::removeAllConnectionsBelow(*inside);
    PortAccess::removeAllConnectionsBelow(*outside);
    if (PortAccess::isConnectedBelow(*inside) || PortAccess::isConnectedBelow(*outside) || !outer->remove(outside))
        return false;
    if (inner->remove(inside))
        return true;
    outer->insert(outside, outerIndex);
    return false;
}

namespace {

void takeOutBothSides(Port& outside, Port& inside) noexcept
{
    PortAccess::takeOut(*PortAccess::home(inside), inside);
    PortAccess::takeOut(*PortAccess::home(outside), outside);
}

} // namespace

AddRefWrapper<Port> CompoundAccess::createPortLike(Compound& compound, Port& port, char const* name, PortFlags flags)
{
    OptionalStringArray defaults;
    if (StringArray values; port.getPortDefaultValues(values))
        defaults.setValues(values);
    PortIOType const ioType = port.getPortIOType();
    unsigned const index = compound.createCompoundPort(ioType, name, port.getDataType(),
                                                       PortProperties(flags, port.getOptions(), defaults));
    AddRefWrapper<Node> const owner = compound.getAsNode();
    AddRefWrapper<Port> const outside = index == kNotFound || !owner ? nullptr : outerList(*owner, ioType)[index];
    AddRefWrapper<Port> const inside = compound.getReversePort(outside);
    if (!inside)
        return {};
    try {
        StringArray keys;
        port.getAvailableMetadatas(eAnyMetadata, keys);
        for (char const* key : keys)
            outside->setPortMetaDataValue(key, port.getPortMetaDataValue(key).toChar());
    } catch (...) {
        takeOutBothSides(*outside, *inside);
        throw;
    }
    return outside;
}

AddRefWrapper<Port> Compound::createLinkedPort(AddRefWrapper<Port> const& port, char const* name)
{
    AddRefWrapper<Compound> const self(this);
    AddRefWrapper<Port> const kept(port);
    AddRefWrapper<Node> const node = kept ? kept->getParentNode() : AddRefWrapper<Node>();
    if (!node || kept->isCompoundInternalPort() || node->getParentCompound() != this || !getAsNode())
        return {};

    PortFlags const flags = kept->getFlags() & ~(eDetached | eFanIn | eReconnecting | eUnconnectable);
    AddRefWrapper<Port> const outside =
        CompoundAccess::createPortLike(*this, *kept, name ? name : kept->getName(), flags);
    AddRefWrapper<Port> const inside = getReversePort(outside);
    if (!inside)
        return {};
    try {
        if (inside->addConnection(kept, /*copyMetadata=*/false))
            return outside;
    } catch (...) {
        takeOutBothSides(*outside, *inside);
        throw;
    }
    deleteCompoundPort(outside);
    return {};
}

std::string PortAccess::freeNameInBoth(PortList const& a, PortList const& b, std::string_view wanted)
{
    std::string name(wanted);
    for (;;) {
        std::string const inA = impl(a).ports.freeName(name);
        name = impl(b).ports.freeName(inA);
        if (name == inA)
            return name;
    }
}

void Compound::getNewPortHints(NewPortHints& hints, PortIOType, AddRefWrapper<Port> const& neighbour) const
{
    if (!neighbour)
        return;
    hints.setNameHint(neighbour->getName());
    if (AddRefWrapper<PortDataType> const type = neighbour->getDataType())
        hints.setTypeHint(type->getName());
}

bool Compound::hasPresetPortList() const
{
    return false;
}

bool Compound::getCustomNewInputPorts(PropertyList&) const
{
    return false;
}

bool Compound::portIsPersistable(AddRefWrapper<Port> const&) const
{
    return true;
}

// ---- connections

namespace {

StatusStr portNotFound(char const* portName, Node const& node)
{
    return StatusStr("Can't find port %s on %s in makeConnection", portName ? portName : "", node.getName());
}

} // namespace

StatusStr Compound::makeConnection(AddRefWrapper<Node> const& fromNode, char const* outputName,
                                   AddRefWrapper<Node> const& toNode, char const* inputName)
{
    if (!fromNode)
        return StatusStr("Missing first node in makeConnection");
    if (!toNode)
        return StatusStr("Missing second node in makeConnection");
    PortList const& sources = fromNode.get() == m_impl->owner ? innerInputs() : fromNode->outputs();
    PortList const& destinations = toNode.get() == m_impl->owner ? innerOutputs() : toNode->inputs();
    AddRefWrapper<Port> const source = sources[outputName];
    if (!source)
        return portNotFound(outputName, *fromNode);
    AddRefWrapper<Port> const destination = destinations[inputName];
    if (!destination)
        return portNotFound(inputName, *toNode);
    destination->addConnection(source, /*copyMetadata=*/false);
    return StatusStr();
}

namespace {

/// The connections of one compound that a search has found, each once.
class ConnectionSearch {
public:
    ConnectionSearch(Compound const& compound, CnxType type, StringArray const& nodeNames)
        : m_compound(compound)
        , m_type(type)
    {
        for (char const* name : nodeNames) {
            AddRefWrapper<Node> const node = compound.nodes()[name];
            if (node && m_named.insert(node.get()).second)
                m_order.push_back(node.get());
        }
    }

    CnxInfoArray run()
    {
        if (m_type == eThroughCnx) {
            addThrough();
            return m_found;
        }
        for (Node const* node : m_order) {
            if (m_type != eOutputCnx)
                addAll(node->connections(eInputCnx), eInput);
            if (m_type != eInputCnx)
                addAll(node->connections(eOutputCnx), eOutput);
        }
        return m_found;
    }

private:
    void addThrough()
    {
        for (AddRefWrapper<Port> const& port : m_compound.innerInputs()) {
            for (AddRefWrapper<Port> const& other : port->connectedTo()) {
                if (other->isCompoundInternalPort())
                    m_found.add(CnxInfo(port, other));
            }
        }
    }

    void addAll(CnxInfoArray const& connections, PortIOType side)
    {
        for (CnxInfo const& connection : connections) {
            AddRefWrapper<Port> const farEnd = side == eInput ? connection.getOutputPort() : connection.getInputPort();
            bool const isInner = !farEnd->isCompoundInternalPort() && m_named.count(farEnd->getParentNode().get()) != 0;
            if ((m_type == eInnerCnx && !isInner) || (m_type == eCrossingCnx && isInner))
                continue;
            // A connection between two named nodes is met at its input; its output has nothing to add.
            bool const isMetTwice = isInner && m_type != eInputCnx && m_type != eOutputCnx;
            if (!isMetTwice || side == eInput)
                m_found.add(connection);
        }
    }

    Compound const& m_compound;
    CnxType m_type;
    std::unordered_set<Node const*> m_named;
    std::vector<Node const*> m_order;
    CnxInfoArray m_found;
};

} // namespace

CnxInfoArray Compound::searchConnections(CnxType type, StringArray const& nodeNames) const
{
    return ConnectionSearch(*this, type, nodeNames).run();
}

} // namespace TAV_marlo_v1
