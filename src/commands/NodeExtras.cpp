#include "commands/NodeExtras.h"

#include "commands/PortState.h"
#include "graph/AnnotationListImpl.h"
#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PortImpl.h"

#include <algorithm>
#include <functional>

namespace TAV_marlo_v1::detail {

namespace {

/// Whether graph text might give these values back otherwise: the separator, an empty text, and bytes
/// that XML may not carry. Rather too often than too seldom.
bool mayGetLostInText(StringArray const& values)
{
    if (values.empty())
        return true;
    for (char const* value : values) {
        if (*value == '\0')
            return true;
        for (char const* c = value; *c != '\0'; ++c) {
            auto const byte = static_cast<unsigned char>(*c);
            if (byte == ';' || byte >= 0x7f || (byte < 0x20 && byte != '\t' && byte != '\n'))
                return true;
        }
    }
    return false;
}

/// Graph text lists connections by the outputs of the nodes that are no IO nodes, and has no words for two
/// ports that both give or both take. Asked of both ends, true for one of them.
bool isLeftOutOfText(Port const& port, Port const& other)
{
    if (port.isCompoundInternalPort() || other.isCompoundInternalPort())
        return port.isCompoundInternalPort() == other.isCompoundInternalPort()
               && port.getPortIOType() == other.getPortIOType() && std::less<Port const*>()(&port, &other);
    if (port.getPortIOType() == other.getPortIOType())
        return std::less<Port const*>()(&port, &other);
    return port.getPortIOType() == eOutput && port.getParentNode()->testFlag(eAnyIO);
}

bool isShownByIONode(Port const& port)
{
    return PortAccess::presentingNode(port) != nullptr;
}

} // namespace

// ---- noting

NodeExtras::NodeExtras(Node const& node)
    : m_flags(node.getFlags())
    , m_states(node.stateFlags().begin(), node.stateFlags().end())
    , m_typeDisplayName(NodeAccess::impl(node).typeDisplayName)
{
    if (AddRefWrapper<ErrorState const> const errors = node.getErrorState()) {
        StringArray all;
        errors->getMessages(eAnyMessage, all);
        // Which of them are of which kind: each kind's own list has its messages in the same order.
        StringArray ofKind[eAnyMessage];
        unsigned next[eAnyMessage] = {};
        for (unsigned kind = 0; kind < eAnyMessage; ++kind)
            errors->getMessages(static_cast<MessageType>(kind), ofKind[kind]);
        for (unsigned i = 0; i + 1 < all.size(); i += 2) {
            for (unsigned kind = 0; kind < eAnyMessage; ++kind) {
                StringArray const& own = ofKind[kind];
                unsigned& at = next[kind];
                if (at + 1 >= own.size() || String(own[at]) != all[i] || String(own[at + 1]) != all[i + 1])
                    continue;
                m_messages.push_back({all[i], all[i + 1], static_cast<MessageType>(kind)});
                at += 2;
                break;
            }
        }
    }
    notePorts(node.inputs(), /*isInner=*/false, /*notesFlags=*/false);
    notePorts(node.outputs(), /*isInner=*/false, /*notesFlags=*/false);
    if (AddRefWrapper<Compound> const compound = node.getAsCompound())
        noteCompound(*compound);
}

void NodeExtras::notePorts(PortList const& list, bool isInner, bool notesFlags)
{
    PortAccess::impl(list).ports.forEach([&](Port const& port) {
        if (port.isCompoundInternalPort() == isInner) // an IO node shows ports that belong to its compound
            notePort(port, notesFlags);
    });
}

void NodeExtras::notePort(Port const& port, bool notesFlags)
{
    std::optional<StringArray> storage;
    StringArray const* const values = defaultValues(port, storage);
    bool const notesValues = values && mayGetLostInText(*values);
    std::optional<WatchPointState> watchPoint = WatchPointState::of(port);
    PortFlags const flags = notesFlags ? PortAccess::flags(port) : eNoPortFlags;
    if (notesValues || watchPoint || flags != eNoPortFlags) {
        m_ports.push_back({placeOf(port), notesValues ? std::optional<StringArray>(*values) : std::nullopt,
                           std::move(watchPoint), flags});
    }
    if (PortList const* const children = PortAccess::children(port))
        notePorts(*children, port.isCompoundInternalPort(), notesFlags);
}

void NodeExtras::noteCompound(Compound const& compound)
{
    for (PortIOType const ioType : {eInput, eOutput}) {
        PortList const& list = ioType == eInput ? compound.innerOutputs() : compound.innerInputs();
        bool const isShown = !list.empty() && isShownByIONode(*list[0u]);
        notePorts(list, /*isInner=*/true, !isShown);
        noteConnections(compound, list, true);
    }
    noteAnnotationOrder(compound);
    unsigned index = 0;
    NodeAccess::impl(compound.nodes()).nodes.forEach([&](Node const& node) {
        NodeExtras extras(node);
        if (!extras.empty())
            m_nodes.emplace_back(index, std::move(extras));
        ++index;
        noteConnections(compound, node.inputs(), false);
        noteConnections(compound, node.outputs(), false);
    });
}

void NodeExtras::noteConnections(Compound const& compound, PortList const& list, bool isInner)
{
    PortAccess::impl(list).ports.forEach([&](Port const& port) {
        if (port.isCompoundInternalPort() != isInner)
            return;
        noteConnections(compound, port);
        if (PortList const* const children = PortAccess::children(port))
            noteConnections(compound, *children, isInner);
    });
}

void NodeExtras::noteConnections(Compound const& compound, Port const& port)
{
    if (port.connectedTo().size() > 1)
        noteOrder(compound, port);
    if (port.isConnected()) {
        PortAccess::connections(port).forEach([&](Port const& other) {
            if (isLeftOutOfText(port, other))
                m_unsaved.emplace_back(endOf(compound, port), endOf(compound, other));
        });
    }
}

void NodeExtras::noteAnnotationOrder(Compound const& compound)
{
    std::vector<Annotation::AnnotationType> types;
    AnnotationAccess::impl(compound.annotations()).annotations.forEach([&types](Annotation const& annotation) {
        types.push_back(annotation.getType());
    });
    if (!std::is_sorted(types.begin(), types.end()))
        m_annotationTypes = std::move(types);
}

void NodeExtras::noteOrder(Compound const& compound, Port const& port)
{
    ConnectionOrder order{endOf(compound, port), {}};
    PortAccess::connections(port).forEach([&](Port const& other) { order.others.push_back(endOf(compound, other)); });
    m_orders.push_back(std::move(order));
}

NodeExtras::End NodeExtras::endOf(Compound const& compound, Port const& port)
{
    PortPlace place = placeOf(port);
    if (place.isInner)
        return {kNotFound, std::move(place)};
    return {compound.nodes().findNode(port.getParentNode()), std::move(place)};
}

NodeExtras::PortPlace NodeExtras::placeOf(Port const& port)
{
    PortPlace place{port.getPortIOType(), port.isCompoundInternalPort(), {}};
    for (Port const* step = &port; step; step = step->getParentPort()) {
        PortList::Impl const* const home = PortAccess::home(*step);
        place.indices.push_back(home ? home->ports.indexOf(step) : kNotFound);
    }
    std::reverse(place.indices.begin(), place.indices.end());
    return place;
}

bool NodeExtras::empty() const noexcept
{
    return m_flags == eNoNodeFlags && m_states.empty() && m_typeDisplayName.empty() && m_messages.empty()
           && m_ports.empty() && m_unsaved.empty() && m_orders.empty() && m_annotationTypes.empty() && m_nodes.empty();
}

// ---- restoring

void NodeExtras::restore(Node& node) const
{
    AddRefWrapper<Node> const self(&node);
    if (node.getFlags() != m_flags)
        node.setFlag(m_flags);
    for (NodeStateFlag const state : m_states)
        node.stateFlags().set(state, true);
    if (NodeAccess::impl(node).typeDisplayName != m_typeDisplayName)
        NodeAccess::impl(node).typeDisplayName = m_typeDisplayName;
    restoreMessages(node);
    for (PortExtras const& extras : m_ports) {
        if (Port* const port = find(node, extras.place))
            restorePort(*port, extras);
    }
    AddRefWrapper<Compound> const compound = node.getAsCompound();
    if (!compound)
        return;
    for (auto const& [index, extras] : m_nodes) {
        if (AddRefWrapper<Node> const inside = compound->nodes()[index])
            extras.restore(*inside);
    }
    for (auto const& [end, otherEnd] : m_unsaved) {
        AddRefWrapper<Port> const port(find(*compound, end));
        AddRefWrapper<Port> const other(find(*compound, otherEnd));
        if (port && other)
            PortAccess::connectAgain(*port, *other);
    }
    for (ConnectionOrder const& order : m_orders)
        restoreOrder(*compound, order);
    restoreAnnotationOrder(*compound);
}

Port* NodeExtras::find(Node& node, PortPlace const& place)
{
    Compound* const compound = NodeAccess::impl(node).owned.get();
    if (place.isInner && !compound)
        return nullptr;
    PortList const* list = place.isInner
                               ? (place.ioType == eInput ? &compound->innerOutputs() : &compound->innerInputs())
                               : (place.ioType == eInput ? &node.inputs() : &node.outputs());
    Port* port = nullptr;
    for (unsigned const index : place.indices) {
        port = list ? PortAccess::impl(*list).ports.at(index) : nullptr;
        list = port ? PortAccess::children(*port) : nullptr;
    }
    return port;
}

Port* NodeExtras::find(Compound& compound, End const& end)
{
    Node* const node = end.node == kNotFound ? CompoundAccess::owner(compound) : compound.nodes()[end.node].get();
    return node ? find(*node, end.place) : nullptr;
}

void NodeExtras::restorePort(Port& port, PortExtras const& extras)
{
    AddRefWrapper<Port> const self(&port);
    if (extras.flags != eNoPortFlags)
        port.setFlag(extras.flags);
    if (extras.values)
        port.setPortDefaultValues(*extras.values);
    if (extras.watchPoint)
        extras.watchPoint->restore(port);
}

void NodeExtras::restoreOrder(Compound& compound, ConnectionOrder const& order)
{
    Port* const port = find(compound, order.port);
    if (!port || port->connectedTo().size() != order.others.size())
        return;
    std::vector<Port*> wanted, present;
    for (End const& end : order.others)
        wanted.push_back(find(compound, end));
    PortAccess::connections(*port).forEach([&present](Port& other) { present.push_back(&other); });
    std::vector<Port*> sortedWanted = wanted;
    std::sort(sortedWanted.begin(), sortedWanted.end());
    std::sort(present.begin(), present.end());
    if (sortedWanted == present) // else not all came back
        PortAccess::setConnectionOrder(*port, wanted);
}

void NodeExtras::restoreAnnotationOrder(Compound& compound) const
{
    NamedList<Annotation>& list = AnnotationAccess::impl(compound.annotations()).annotations;
    if (m_annotationTypes.empty() || list.size() != m_annotationTypes.size())
        return;
    std::vector<Annotation*> ofType[2]; // in the order of the text
    list.forEach([&](Annotation& annotation) { ofType[annotation.getType()].push_back(&annotation); });
    std::vector<Annotation*> order;
    std::size_t next[2] = {};
    for (Annotation::AnnotationType const type : m_annotationTypes) {
        if (next[type] == ofType[type].size())
            return; // something else came back than went
        order.push_back(ofType[type][next[type]++]);
    }
    list.reorder(order);
}

void NodeExtras::restoreMessages(Node& node) const
{
    AddRefWrapper<ErrorState> const errors = node.getErrorState();
    if (!errors && m_messages.empty())
        return;
    StringArray wanted, present;
    for (Message const& message : m_messages) {
        wanted.add(message.subject);
        wanted.add(message.text);
    }
    if (errors)
        errors->getMessages(eAnyMessage, present);
    if (present == wanted)
        return;
    if (errors)
        errors->clearMessages(eAnyMessage);
    for (Message const& message : m_messages)
        node.addMessage(message.subject.toChar(), message.text.toChar(), message.type);
}

} // namespace TAV_marlo_v1::detail
