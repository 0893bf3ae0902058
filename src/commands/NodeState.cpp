#include "commands/NodeState.h"

#include "foundation/MetadataAccess.h"
#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PortImpl.h"
#include "persistence/HandOver.h"
#include "persistence/ItemCommit.h"

#include <typeinfo>

namespace TAV_marlo_v1::detail {

namespace {

std::vector<PortState> statesOf(PortList const& list)
{
    std::vector<PortState> states;
    states.reserve(list.size());
    PortAccess::impl(list).ports.forEach([&states](Port const& port) { states.emplace_back(port); });
    return states;
}

/// Adds the node or, whatever comes in the way, leaves the compound as it was with nobody told.
bool addWhole(Compound& compound, AddRefWrapper<Node> const& node)
{
    PendingMarks marks(compound);
    try {
        if (compound.nodes().add(node))
            return true;
    } catch (...) { // of a hook, which may have been told of the node already
        if (NodeAccess::impl(*node).home)
            CompoundAccess::takeOut(compound, *node);
        marks.drop();
        throw;
    }
    marks.drop();
    return false;
}

} // namespace

bool NodeState::suffices(Node const& node)
{
    return typeid(node) == typeid(Node) && !node.isCompound() && !node.testFlag(eAnyIO);
}

NodeState::NodeState(Node const& node)
    : m_name(NamedAccess::text(node))
    , m_type(NodeAccess::impl(node).type)
    , m_flags(node.getFlags())
    , m_metadata(MetadataAccess::store(node))
    , m_inputs(statesOf(node.inputs()))
    , m_outputs(statesOf(node.outputs()))
{
}

/// A node outside of any graph. Nobody is asked or told of what is still being made.
AddRefWrapper<Node> NodeState::build(Compound& compound) const
{
    AddRefWrapper<Node> node = compound.createBareNode(m_type.chars(), m_flags);
    if (!node || NodeAccess::impl(*node).home) {
        Node const* const owner = CompoundAccess::owner(compound);
        node = Node::createNew(owner ? owner->getContainer() : nullptr, nullptr);
    }
    NamedAccess::setText(*node, m_name);
    NodeAccess::impl(*node).type = m_type;
    node->Flaggable<NodeFlags>::clearFlag(static_cast<NodeFlags>(~0u));
    node->Flaggable<NodeFlags>::setFlag(m_flags);
    MetadataAccess::store(*node) = m_metadata;
    for (PortState const& port : m_inputs)
        port.appendTo(node->inputs());
    for (PortState const& port : m_outputs)
        port.appendTo(node->outputs());
    handOver(*node);
    return node;
}

AddRefWrapper<Node> NodeState::restoreInto(Compound& compound) const
{
    AddRefWrapper<Compound> const kept(&compound);
    AddRefWrapper<Node> node = build(compound);
    return addWhole(compound, node) ? node : AddRefWrapper<Node>();
}

} // namespace TAV_marlo_v1::detail
