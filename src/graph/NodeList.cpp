#include <tav/NodeList.h>

#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"

#include <algorithm>

namespace TAV_marlo_v1 {

NodeList NodeList::createNew(Compound* compound)
{
    return NodeList(compound);
}

NodeList::NodeList()
    : m_impl(std::make_unique<Impl>())
{
}

NodeList::NodeList(Compound* compound)
    : NodeList()
{
    m_impl->compound = compound;
    m_impl->nodes.setHearsRenames(compound != nullptr);
}

NodeList::NodeList(NodeList const& other)
    : NodeList()
{
    other.m_impl->nodes.forEach([this](Node& node) { m_impl->nodes.insert(m_impl->nodes.size(), &node); });
}

NodeList::NodeList(NodeList&& other) noexcept
    : NodeList()
{
    // A compound's nodes stay with the compound: what moves out of its list is a selection.
    if (other.m_impl->compound)
        *this = other;
    else
        m_impl->nodes.swap(other.m_impl->nodes);
}

NodeList::~NodeList()
{
    m_impl->nodes.forEach([this](Node& node) {
        Node::Impl& record = NodeAccess::impl(node);
        if (record.home != m_impl.get())
            return;
        record.home = nullptr;
        record.parent = nullptr;
    });
}

NodeList& NodeList::operator=(NodeList const& other)
{
    if (this == &other)
        return *this;
    if (m_impl->compound)
        return *this; // the nodes of a compound come and go one by one, asked and told
    detail::NamedList<Node> copies;
    other.m_impl->nodes.forEach([&](Node& node) { copies.insert(copies.size(), &node); });
    m_impl->nodes.swap(copies);
    return *this;
}

unsigned NodeList::size() const noexcept
{
    return m_impl->nodes.size();
}

AddRefWrapper<Node> NodeList::operator[](unsigned index) const
{
    return AddRefWrapper<Node>(m_impl->nodes.at(index));
}

AddRefWrapper<Node> NodeList::operator[](char const* name) const
{
    return AddRefWrapper<Node>(name ? m_impl->nodes.find(name) : nullptr);
}

unsigned NodeList::findNode(AddRefWrapper<Node> const& node) const
{
    return node ? m_impl->nodes.indexOf(node.get()) : kNotFound;
}

Compound* NodeList::getParentCompound() const noexcept
{
    return m_impl->compound;
}

bool NodeList::add(AddRefWrapper<Node> const& node)
{
    return insert(node, size());
}

bool NodeList::insert(AddRefWrapper<Node> const& node, unsigned index)
{
    if (!node)
        return false;
    AddRefWrapper<Node> const kept(node);
    if (!m_impl->compound) {
        m_impl->nodes.insert(index, kept.get());
        return true;
    }
    Node::Impl& record = NodeAccess::impl(*kept);
    if (record.home || NodeAccess::holds(*kept, *m_impl->compound))
        return false;
    AddRefWrapper<Compound> const compound(m_impl->compound);
    AddRefWrapper<Compound> const formerParent(record.parent);

    NodeAccess::setParent(*kept, compound.get());
    if (!compound->onNodeAdd(kept)) {
        NodeAccess::setParent(*kept, nullptr);
        kept->setParentCompound(formerParent.get());
        return false;
    }

    try {
        NodeAccess::join(*m_impl, *kept, index);
    } catch (...) {
        NodeAccess::setParent(*kept, nullptr);
        throw;
    }

    compound->onNodeAdded(kept);
    return true;
}

bool NodeList::remove(AddRefWrapper<Node> const& node)
{
    if (!node || !m_impl->nodes.contains(node.get()))
        return false;
    AddRefWrapper<Node> const kept(node); // `node` may be the very entry that goes away below
    if (!m_impl->compound) {
        m_impl->nodes.take(kept.get());
        return true;
    }
    AddRefWrapper<Compound> const compound(m_impl->compound);

    if (!compound->onNodeRemove(kept))
        return false;

    kept->onThisNodeDeleted();
    CompoundAccess::takeOut(*compound, *kept);

    compound->onNodeRemoved(kept);
    return true;
}

// ---- without asking or telling

bool NodeAccess::holds(Node const& node, Compound const& compound) noexcept
{
    Compound const* const owned = impl(node).owned.get();
    if (!owned || (owned != &compound && owned->nodes().empty()))
        return false;
    for (Compound const* around = &compound; around;) {
        Node const* const owner = CompoundAccess::owner(*around);
        if (owner == &node)
            return true;
        around = owner ? owner->getParentCompound() : nullptr;
    }
    return false;
}

void NodeAccess::join(NodeList::Impl& list, Node& node, unsigned index, bool nameIsFree)
{
    Node::Impl& record = impl(node);
    detail::SharedTextRef const former(NamedAccess::text(node));
    // A name that only this node holds is taken by no other. This spares a list that is being filled the
    // look-up, and with it the index, until somebody looks for a name.
    bool const isUnheard = !former.empty() && former->references() == 2; // the node and `former`
    detail::SharedTextRef const name =
        nameIsFree || isUnheard ? former : detail::SharedTextRef(list.nodes.freeName(former.view()));
    Compound::Impl& compound = CompoundAccess::impl(*list.compound);
    bool const isIONode = node.testFlag(eAnyIO);
    if (isIONode)
        compound.ioNodes.reserve(compound.ioNodes.size() + 1);
    NamedAccess::setText(node, name);
    try {
        list.nodes.insert(index, &node);
    } catch (...) {
        NamedAccess::setText(node, former);
        throw;
    }
    record.home = &list;
    record.parent = list.compound;
    if (isIONode)
        compound.ioNodes.push_back(&node);
    CompoundAccess::addMessageCounts(list.compound, messageCounts(node), +1);
}

void NodeAccess::place(NodeList& list, Node& node, unsigned index)
{
    detail::NamedList<Node>& nodes = impl(list).nodes;
    unsigned const from = nodes.indexOf(&node);
    unsigned const to = std::min(index, nodes.size() - 1);
    if (from != to)
        nodes.move(from, to);
}

} // namespace TAV_marlo_v1
