// What a node tells of itself, its ports and its messages, and whom.

#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PortImpl.h"
#include "host/NotifierAccess.h"

#include <tav/Container.h>
#include <tav/Node.h>

#include <bit>

namespace TAV_marlo_v1 {

void NodeAccess::notify(Node& node, ENodeChangeType type)
{
    node.notifyNodeChange(type, AddRefWrapper<Compound>(node.getParentCompound()), AddRefWrapper<Node>(&node));
}

Node* NodeAccess::notifierOf(Compound const* compound) noexcept
{
    return compound ? CompoundAccess::owner(*compound) : nullptr;
}

// ---- scope

HostEditorNotifier* Node::enclosingNotifier() const
{
    Container const* const container = m_impl->container.get();
    HostEditorNotifier* const notifier = container ? ContainerAccess::activeNotifier(*container) : nullptr;
    if (!notifier)
        return nullptr;
    // A node hears of its container for life, but is in the graph only while the way up ends at the top.
    Node const* top = this;
    while (Compound const* const compound = top->m_impl->parent) {
        top = CompoundAccess::owner(*compound);
        if (!top)
            return nullptr;
    }
    return top == ContainerAccess::topNode(*container) ? notifier : nullptr;
}

bool Node::postponeNotification() const
{
    return HostEditorNotifier::postponeNotification() || (m_impl->owned && m_impl->owned->activeChangeBracket());
}

void Node::executeChange()
{
    HostEditorNotifier::executeChange();
}

// ---- connections

bool Node::onPortAddConnection(AddRefWrapper<Port> const&, AddRefWrapper<Port> const&)
{
    return true;
}

void Node::onPortConnectionAdded(AddRefWrapper<Port> const& port, AddRefWrapper<Port> const& other)
{
    Node* const above = NodeAccess::notifierOf(m_impl->parent);
    (above ? above : this)->notifyConnectionChange(other->isMemberFanIn() ? eFanInCnxAdded : eCnxAdded, port, other);
    other->notifyChange(ePortConnected);
}

void Node::onPortConnectionRemoved(AddRefWrapper<Port> const& port, AddRefWrapper<Port> const& other)
{
    Node* const above = NodeAccess::notifierOf(m_impl->parent);
    (above ? above : this)->notifyConnectionChange(eCnxRemoved, port, other);
    port->notifyChange(ePortDisconnected);
    other->notifyChange(ePortDisconnected);
}

// ---- ports

void Node::onPortDataTypeChanged(AddRefWrapper<Port> const& port, AddRefWrapper<PortDataType> const&)
{
    port->notifyChange(ePortDataTypeChanged);
}

void Node::onPortListPortAdded(PortList const&, AddRefWrapper<Port> const& port)
{
    port->notifyChange(ePortAdded);
}

void Node::onPortListPortRemoved(PortList const&, AddRefWrapper<Port> const& port)
{
    port->notifyChange(ePortRemoved);
}

void Node::onPortListPortMoved(PortList const& list, unsigned, unsigned to)
{
    if (AddRefWrapper<Port> const port = list[to])
        port->notifyChange(ePortMoved);
}

void Node::onPortValuesChanged(AddRefWrapper<Port> const& port, StringArray const&)
{
    port->notifyChange(ePortValuesChanged);
}

void Node::onPortValuesReset(AddRefWrapper<Port> const& port)
{
    port->notifyChange(ePortValuesReset);
}

void Node::onPortNameChanged(AddRefWrapper<Port> const& port, char const*)
{
    port->notifyChange(ePortRenamed);
}

void Node::onPortExposureChanged(AddRefWrapper<Port> const& port, bool)
{
    port->notifyChange(ePortExposureChanged);
}

void Node::onPortFanInStateChanged(AddRefWrapper<Port> const& port, bool)
{
    port->notifyChange(ePortFanInChanged);
}

bool Node::onPortSetMetaDataValue(AddRefWrapper<Port> const& port, char const* key, char const* value)
{
    PortAccess::setMetadataInStep(*port, key, value);
    return true;
}

void Node::onPortSetFlag(AddRefWrapper<Port> const& port, PortFlags flag)
{
    if (PortAccess::isReportedByFlagsChange(flag))
        port->notifyChange(ePortFlagsChanged);
}

void Node::onPortClearFlag(AddRefWrapper<Port> const& port, PortFlags flag)
{
    if (PortAccess::isReportedByFlagsChange(flag))
        port->notifyChange(ePortFlagsChanged);
}

// ---- states, metadata, messages

void Node::onStateFlagChanged(NodeStateFlag)
{
    NodeAccess::notify(*this, eNodeStateChanged);
}

void Node::onMetadataChanged()
{
    NodeAccess::notify(*this, eNodeMetadataChanged);
}

void NodeStateFlags::set(NodeStateFlag flag, bool on)
{
    if (test(flag) == on)
        return;
    m_word = on ? m_word | flag : m_word & ~static_cast<std::uint32_t>(flag);
    m_node->onStateFlagChanged(flag);
}

unsigned NodeStateFlags::size() const noexcept
{
    return static_cast<unsigned>(std::popcount(m_word));
}

NodeStateFlag NodeStateFlags::operator[](unsigned index) const noexcept
{
    std::uint32_t rest = m_word;
    for (; index > 0; --index)
        rest &= rest - 1;
    return static_cast<NodeStateFlag>(rest & (0u - rest));
}

MessageCounts NodeAccess::messageCounts(Node const& node) noexcept
{
    MessageCounts counts{};
    Node::Impl const& record = impl(node);
    if (record.owned)
        counts = CompoundAccess::impl(*record.owned).messageCounts;
    if (record.errors) {
        for (unsigned kind = eInfo; kind <= eAnyMessage; ++kind)
            counts[kind] += record.errors->hasMessage(static_cast<MessageType>(kind)) ? 1 : 0;
    }
    return counts;
}

NodeErrorState::NodeErrorState(Node* node)
    : m_node(node)
{
}

NodeErrorState::~NodeErrorState() = default;

namespace {

/// Reports that the messages of the node changed, to every level so that each can refresh its count.
void reportMessagesChanged(Node& node)
{
    std::vector<AddRefWrapper<Node>> chain;
    for (Node* level = &node; level;) {
        chain.emplace_back(level);
        level = level->getParentCompound() ? CompoundAccess::owner(*level->getParentCompound()) : nullptr;
    }
    for (AddRefWrapper<Node> const& level : chain)
        NodeAccess::notify(*level, eNodeMessagesChanged);
}

/// Runs a change of the node's messages between two looks at what it counts for in the compounds around.
template <class Change>
void changeMessages(Node* node, Change&& change)
{
    Compound* const compound = node && NodeAccess::impl(*node).home ? node->getParentCompound() : nullptr;
    MessageCounts const before = node ? NodeAccess::messageCounts(*node) : MessageCounts{};
    change();
    if (!compound)
        return;
    CompoundAccess::addMessageCounts(compound, before, -1);
    CompoundAccess::addMessageCounts(compound, NodeAccess::messageCounts(*node), +1);
}

} // namespace

void NodeErrorState::addMessage(char const* subject, char const* text, MessageType type)
{
    changeMessages(m_node, [&] { ErrorState::addMessage(subject, text, type); });
    if (m_node)
        reportMessagesChanged(*m_node);
}

bool NodeErrorState::clearMessages(MessageType type)
{
    AddRefWrapper<ErrorState> const self(this);
    bool removed = false;
    changeMessages(m_node, [&] { removed = ErrorState::clearMessages(type); });
    if (removed && m_node)
        reportMessagesChanged(*m_node);
    return removed;
}

} // namespace TAV_marlo_v1
