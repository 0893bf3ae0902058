#include <tav/Node.h>

#include "graph/CompoundImpl.h"
#include "graph/Graveyard.h"
#include "graph/NodeImpl.h"
#include "graph/PathNames.h"
#include "graph/PortImpl.h"

#include <tav/CnxInfoArray.h>
#include <tav/NewPortHints.h>
#include <tav/NodeUIHints.h>
#include <tav/PortProperties.h>

namespace TAV_marlo_v1 {

namespace {

Node*& nextDoomedNode(Node& node)
{
    return CompoundAccess::impl(*NodeAccess::impl(node).owned).nextDoomedOwner;
}

} // namespace

template <PortIOType type>
NodePorts<type>::NodePorts(Node& node) noexcept
{
    owner = &node;
    isOwnersOwn = true;
    ioType = type;
    ports.setHearsRenames(true);
    addRef(); // the node's
}

template <PortIOType type>
void NodePorts<type>::deleteThis()
{
    static_cast<Node::Impl*>(this)->letGo();
}

Node::Impl::Impl(Node& node, Container* host)
    : NodePorts<eInput>(node)
    , NodePorts<eOutput>(node)
    , container(host)
    , states(node)
{
}

void Node::Impl::retire() noexcept
{
    container = {};
    owned.reset();
    type = {};
    typeDisplayName = {};
    errors.reset();
    inputs().release();
    outputs().release();
    letGo();
}

void Node::Impl::letGo() noexcept
{
    if (--holders == 0)
        delete this;
}

AddRefWrapper<Node> Node::createNew(Container* container, char const* name)
{
    AddRefWrapper<Node> const node(new Node(container));
    if (name)
        node->Namable::setName(name);
    return node;
}

Node::Node(Container* container)
    : m_impl(new Impl(*this, container))
{
    m_kind = Kind::eNode;
}

Node::~Node()
{
    if (m_impl->errors)
        m_impl->errors->forgetNode();
    if (m_impl->owned)
        CompoundAccess::disown(*m_impl->owned);
    NodeAccess::setParent(*this, nullptr);
    PortAccess::orphan(m_impl->inputs());
    PortAccess::orphan(m_impl->outputs());
    m_impl->retire();
}

void Node::deleteThis()
{
    static detail::Graveyard<Node, nextDoomedNode> graveyard;
    if (m_impl->owned)
        graveyard.bury(*this, [](Node* node) { delete node; });
    else
        delete this;
}

// ---- name and type

void Node::setName(char const* name)
{
    if (!name || NamedAccess::text(*this).view() == name || !detail::isLegalName(getContainer(), name))
        return;
    AddRefWrapper<Node> const self(this);
    if (m_impl->home) {
        detail::SharedTextRef const free(m_impl->home->nodes.freeName(name, this));
        if (free.get() == &NamedAccess::text(*this))
            return;
        m_impl->home->nodes.rename(*this, free);
    } else {
        Namable::setName(name);
    }
    NodeAccess::notify(*this, eNodeRenamed);
}

char const* Node::getNodeTypeName() const noexcept
{
    return m_impl->type.chars();
}

char const* Node::getNodeTypeDisplayName() const noexcept
{
    return m_impl->typeDisplayName.empty() ? m_impl->type.chars() : m_impl->typeDisplayName.chars();
}

void Node::setNodeTypeName(char const* type)
{
    setNodeTypeName(type, nullptr);
}

void Node::setNodeTypeName(char const* type, char const* displayName)
{
    if (!type)
        return;
    detail::SharedTextRef const named(type);
    detail::SharedTextRef const shown(displayName);
    if (named == m_impl->type && shown == m_impl->typeDisplayName)
        return;
    m_impl->type = named;
    m_impl->typeDisplayName = shown;
    NodeAccess::notify(*this, eNodeMetadataChanged);
}

String Node::getNodeDisplayName() const
{
    return getName();
}

Namable Node::getFullPathName() const
{
    std::vector<Node const*> chain; // from this node up to the one below the top
    Node const* node = this;
    while (node && node->m_impl->parent) {
        chain.push_back(node);
        node = CompoundAccess::owner(*node->m_impl->parent);
    }
    std::string path;
    for (auto part = chain.rbegin(); part != chain.rend(); ++part)
        path.append("/").append((*part)->getName());
    return Namable(path.empty() ? "/" : path.c_str());
}

Namable Node::onGetParentFullPathName() const
{
    return getFullPathName();
}

// ---- place in the graph

Container* Node::getContainer() const noexcept
{
    return m_impl->container.get();
}

Compound* Node::getParentCompound() const noexcept
{
    return m_impl->parent;
}

void Node::setParentCompound(Compound* compound)
{
    if (m_impl->home)
        return; // a node in a list belongs to the list's compound
    NodeAccess::setParent(*this, nullptr);
    if (!compound)
        return;
    CompoundAccess::strays(*compound).nodes.insert(this);
    m_impl->parent = compound;
    m_impl->isStray = true;
}

void NodeAccess::setParent(Node& node, Compound* compound) noexcept
{
    Node::Impl& record = impl(node);
    if (record.isStray)
        CompoundAccess::strays(*record.parent).nodes.erase(&node);
    record.isStray = false;
    record.parent = compound;
}

bool Node::isCompound() const noexcept
{
    return static_cast<bool>(m_impl->owned);
}

AddRefWrapper<Compound> Node::getAsCompound() const
{
    return m_impl->owned;
}

void Node::setOwnedCompound(AddRefWrapper<Compound> const& compound)
{
    if (compound == m_impl->owned)
        return;
    AddRefWrapper<Compound> const kept(compound);
    Compound* const counting = m_impl->home ? m_impl->parent : nullptr;
    CompoundAccess::addMessageCounts(counting, NodeAccess::messageCounts(*this), -1);
    if (m_impl->owned)
        CompoundAccess::disown(*m_impl->owned);
    m_impl->owned = kept;
    if (kept)
        CompoundAccess::own(*kept, *this);
    CompoundAccess::addMessageCounts(counting, NodeAccess::messageCounts(*this), +1);
}

void Node::recurse_parent_first(NodeCallback callback, void* data)
{
    // The handles keep the way up alive, whatever the callback does.
    std::vector<AddRefWrapper<Node>> chain;
    for (Node* node = this; node;) {
        chain.emplace_back(node);
        node = node->m_impl->parent ? CompoundAccess::owner(*node->m_impl->parent) : nullptr;
    }
    for (auto node = chain.rbegin(); node != chain.rend(); ++node)
        callback(*node, data);
}

// ---- ports

PortList& Node::inputs() noexcept
{
    return m_impl->inputs();
}

PortList const& Node::inputs() const noexcept
{
    return m_impl->inputs();
}

PortList& Node::outputs() noexcept
{
    return m_impl->outputs();
}

PortList const& Node::outputs() const noexcept
{
    return m_impl->outputs();
}

unsigned Node::createNodePort(PortIOType ioType, char const* name, AddRefWrapper<PortDataType> const& type,
                              PortProperties const& properties)
{
    PortList& list = ioType == eInput ? inputs() : outputs();
    AddRefWrapper<Port> const port = PortAccess::make(list, name, type, properties);
    return list.add(port) ? list.findPort(port) : kNotFound;
}

AddRefWrapper<Port> Node::getDefaultPort(PortIOType ioType, DefaultPortFilter filter) const
{
    PortList const& list = ioType == eInput ? inputs() : outputs();
    if (filter == eFirst || (filter == eConnectable && ioType == eOutput))
        return list[0u];
    if (filter != eConnectable)
        return {};
    for (unsigned i = 0; i < list.size(); ++i) {
        AddRefWrapper<Port> const port = list[i];
        if (!port->isConnected())
            return port;
    }
    return {};
}

namespace {

void collectConnections(PortList::Impl const& list, CnxInfoArray& found)
{
    list.ports.forEach([&](Port& port) {
        for (AddRefWrapper<Port> const& other : port.connectedTo()) {
            if (port.getPortIOType() == eInput)
                found.add(CnxInfo(other, AddRefWrapper<Port>(&port)));
            else
                found.add(CnxInfo(AddRefWrapper<Port>(&port), other));
        }
        if (PortList const* const children = PortAccess::children(port))
            collectConnections(PortAccess::impl(*children), found);
    });
}

} // namespace

CnxInfoArray Node::connections(CnxType type) const
{
    CnxInfoArray found;
    if (type == eAllCnx || type == eInputCnx)
        collectConnections(PortAccess::impl(inputs()), found);
    if (type == eAllCnx || type == eOutputCnx)
        collectConnections(PortAccess::impl(outputs()), found);
    return found;
}

// ---- messages and states

AddRefWrapper<ErrorState> Node::getErrorState()
{
    return m_impl->errors;
}

AddRefWrapper<ErrorState const> Node::getErrorState() const
{
    return AddRefWrapper<ErrorState const>(m_impl->errors.get());
}

void Node::addMessage(char const* subject, char const* text, MessageType type)
{
    AddRefWrapper<Node> const self(this);
    if (!m_impl->errors)
        m_impl->errors = AddRefWrapper<NodeErrorState>(new NodeErrorState(this));
    m_impl->errors->addMessage(subject, text, type);
}

bool Node::hasMessage(MessageType type) const
{
    return m_impl->errors && m_impl->errors->hasMessage(type);
}

String Node::getMessagesByType(MessageType type) const
{
    return m_impl->errors ? m_impl->errors->getMessagesAsString(type) : String();
}

NodeStateFlags& Node::stateFlags() noexcept
{
    return m_impl->states;
}

NodeStateFlags const& Node::stateFlags() const noexcept
{
    return m_impl->states;
}

// ---- what derived classes answer

void Node::getUIHints(NodeUIHints& hints) const
{
    if ((hints.requestedHintsFlags() & eNodeNiceNameHint) != 0)
        hints.setNiceName(getNodeDisplayName().toChar());
}

void Node::getNewPortHints(NewPortHints& hints, PortIOType, AddRefWrapper<Port> const& neighbour) const
{
    if (!neighbour)
        return;
    hints.setNameHint(neighbour->getName());
    if (AddRefWrapper<PortDataType> const type = neighbour->getDataType())
        hints.setTypeHint(type->getName());
}

bool Node::isFanInSupported(AddRefWrapper<Port> const&) const
{
    return true;
}

void Node::setInteractionMode(bool)
{
}

bool Node::portIsPersistable(AddRefWrapper<Port> const&) const
{
    return true;
}

void Node::onThisNodeDeleted()
{
    AddRefWrapper<Node> const self(this);
    inputs().onParentNodeDeleted();
    outputs().onParentNodeDeleted();
    if (AddRefWrapper<Compound> const compound = m_impl->owned) {
        compound->innerInputs().onParentNodeDeleted();
        compound->innerOutputs().onParentNodeDeleted();
        for (unsigned i = 0; i < compound->nodes().size(); ++i) {
            if (AddRefWrapper<Node> const node = compound->nodes()[i])
                node->onThisNodeDeleted();
        }
    }
    NodeAccess::notify(*this, eNodeDeleted);
}

} // namespace TAV_marlo_v1
