#include "persistence/ConnectionWriter.h"

#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PortImpl.h"
#include "persistence/GraphVocabulary.h"

namespace TAV_marlo_v1 {

using namespace graphtext;

namespace {

Node* nodeOf(Port const& port) noexcept
{
    return PortAccess::asNode(port.getParent());
}

} // namespace

bool NodeSelection::contains(Node const* node) const
{
    if (!node)
        return false;
    if (m_compound)
        return NodeAccess::impl(*node).home == &NodeAccess::impl(m_compound->nodes());
    return m_nodes.count(node) != 0;
}

void ConnectionWriter::writeConnections(Compound const& compound, std::vector<Node*> const& nodes, ESaveMode mode)
{
    bool const onlyInner = mode == eSaveInnerConnections;
    m_sink.start(kConnections);
    for (Node* const node : nodes) {
        if (node->testFlag(eAnyIO))
            continue; // its ports are the compound's own
        writeList(node->outputs(), onlyInner ? eNotToInnerPort | eOnlyToSelected : eNoFilter);
        if (!onlyInner)
            writeList(node->inputs(), eNotToInnerPort | eNotToSelected);
    }
    if (!onlyInner) {
        unsigned const filter = mode == eSaveAllButThroughConnections ? eNotThrough : eNoFilter;
        writeList(compound.innerInputs(), filter);
        writeList(compound.innerOutputs(), filter);
    }
    m_sink.end();
}

void ConnectionWriter::writeList(PortList const& ports, unsigned filter)
{
    PortAccess::impl(ports).ports.forEach([&](Port& port) { writeOf(port, filter); });
}

/// The port's own connections, then those of its children.
void ConnectionWriter::writeOf(Port& port, unsigned filter)
{
    PortAccess::connections(port).forEach([&](Port& other) {
        if (!isDropped(port, other, filter))
            writeConnection(port, other);
    });
    if (PortList const* const children = PortAccess::children(port))
        writeList(*children, filter);
}

/// Whether a text has names for both ends: the other port stands on a node or compound, and the two are
/// not of one kind and direction, which would take the same attribute twice.
bool ConnectionWriter::canBeNamed(Port const& port, Port const& other) noexcept
{
    bool const toInnerPort = other.isCompoundInternalPort();
    if (!toInnerPort && !nodeOf(other))
        return false;
    return toInnerPort != port.isCompoundInternalPort() || port.getPortIOType() != other.getPortIOType();
}

bool ConnectionWriter::isDropped(Port const& port, Port const& other, unsigned filter) const
{
    bool const toInnerPort = other.isCompoundInternalPort();
    if (!canBeNamed(port, other))
        return true;
    if ((filter & eNotToInnerPort) != 0 && toInnerPort)
        return true;
    if ((filter & eNotThrough) != 0 && toInnerPort && port.isCompoundInternalPort())
        return true;
    if ((filter & (eNotToSelected | eOnlyToSelected)) == 0)
        return false;
    return m_selection.contains(nodeOf(other)) == ((filter & eNotToSelected) != 0);
}

void ConnectionWriter::writeConnection(Port& port, Port& other)
{
    m_sink.start(kConnection);
    writeEnd(port);
    writeEnd(other);
    Port const& inputEnd = port.getPortIOType() == eInput ? port : other;
    if (WatchPoint const* const watchPoint = PortAccess::watchPoint(inputEnd))
        m_sink.attribute(kWatchPoint, watchPoint->enabled() ? kYes : kDisabled);
    m_sink.end();
}

void ConnectionWriter::writeEnd(Port& port)
{
    bool const isOutput = port.getPortIOType() == eOutput;
    if (port.isCompoundInternalPort()) {
        // The inside of a compound input gives, that of a compound output takes.
        m_sink.beginAttribute(isOutput ? kInnerInputPort : kInnerOutputPort);
    } else {
        m_sink.beginAttribute(isOutput ? kOutputPort : kInputPort);
        m_sink.attributePiece(nodeOf(port)->getName());
        m_sink.attributePiece(".");
    }
    if (port.getParentPort())
        m_sink.attributePiece(port.getFullName().getName());
    else
        m_sink.attributePiece(port.getName());
    m_sink.endAttribute();
}

} // namespace TAV_marlo_v1
