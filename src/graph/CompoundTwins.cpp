// The two sides of a compound port, and the IO nodes that show the inner one.

#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PortImpl.h"

#include <new>

namespace TAV_marlo_v1 {

PortList& CompoundAccess::outerList(Node& owner, PortIOType outsideType) noexcept
{
    return outsideType == eInput ? owner.inputs() : owner.outputs();
}

PortList& CompoundAccess::innerList(Compound& compound, PortIOType outsideType) noexcept
{
    return outsideType == eInput ? compound.innerInputs() : compound.innerOutputs();
}

namespace {

PortIOType opposite(PortIOType type)
{
    return type == eInput ? eOutput : eInput;
}

/// The list that holds the other sides of the ports of this list; null when there are none.
PortList* twinListOf(PortList::Impl const& list)
{
    if (Compound* const compound = PortAccess::asCompound(list.owner)) {
        Node* const owner = CompoundAccess::owner(*compound);
        return owner ? &CompoundAccess::outerList(*owner, opposite(list.ioType)) : nullptr;
    }
    Node* const node = PortAccess::asNode(list.owner);
    Compound* const compound = node ? NodeAccess::impl(*node).owned.get() : nullptr;
    bool const isNodesOwn = node && (&list == &node->inputs() || &list == &node->outputs());
    return compound && isNodesOwn ? &CompoundAccess::innerList(*compound, list.ioType) : nullptr;
}

Port* childOfSameName(Port const& parent, Port const& port)
{
    PortList const* const children = PortAccess::children(parent);
    return children ? PortAccess::impl(*children).ports.find(NamedAccess::text(port).view()) : nullptr;
}

} // namespace

Port* PortAccess::twin(Port const& port)
{
    std::vector<Port const*> chain; // from the port up to the top-level one
    Port const* top = &port;
    for (; impl(*top).parentPort; top = impl(*top).parentPort)
        chain.push_back(top);
    PortList::Impl const* const list = impl(*top).home;
    PortList const* const twins = list ? twinListOf(*list) : nullptr;
    Port* found = twins ? impl(*twins).ports.find(NamedAccess::text(*top).view()) : nullptr;
    for (auto child = chain.rbegin(); found && child != chain.rend(); ++child)
        found = childOfSameName(*found, **child);
    return found;
}

PortAccess::TwinMove PortAccess::twinMove(PortList::Impl const& list, unsigned from, unsigned to)
{
    Port const* const moved = list.ports.at(from);
    PortList* const twins = twinListOf(list);
    Port const* const twinOfMoved = twins ? twin(*moved) : nullptr;
    if (!twinOfMoved)
        return {};
    detail::NamedList<Port> const& others = impl(*twins).ports;
    TwinMove step{twins, others.indexOf(twinOfMoved), to};
    if (others.size() != list.ports.size()) {
        // Some ports have no other side: the place is behind those twins that stay in front.
        step.to = 0;
        for (unsigned i = 0; i < (from < to ? to + 1 : to); ++i) {
            Port const* const port = list.ports.at(i);
            step.to += port != moved && others.hasName(NamedAccess::text(*port).view()) ? 1 : 0;
        }
    }
    return step.from == step.to ? TwinMove() : step;
}

Node* PortAccess::presentingNode(Port const& port) noexcept
{
    Port const* top = &port;
    while (impl(*top).parentPort)
        top = impl(*top).parentPort;
    PortList::Impl const* const list = impl(*top).home;
    if (!list || !list->presentation || !asCompound(list->owner))
        return nullptr;
    return asNode(list->presentation->owner);
}

AddRefWrapper<Port> Compound::getReversePort(AddRefWrapper<Port> const& port) const
{
    if (!port)
        return {};
    PortNotification const* const owner = port->getParent();
    bool const isMine =
        PortAccess::asCompound(owner) == this || (m_impl->owner && PortAccess::asNode(owner) == m_impl->owner);
    return AddRefWrapper<Port>(isMine ? PortAccess::twin(*port) : nullptr);
}

AddRefWrapper<Node> Compound::getAssociatedIONode(AddRefWrapper<Port> const& port) const
{
    if (!port || PortAccess::asCompound(port->getParent()) != this)
        return {};
    return AddRefWrapper<Node>(PortAccess::presentingNode(*port));
}

void CompoundAccess::adoptPresentation(Node& ioNode, PortList& list) noexcept
{
    Port const* const first = PortAccess::impl(list).ports.at(0);
    PortList::Impl* const inner = first ? PortAccess::impl(*first).home : nullptr;
    if (!inner || !PortAccess::asCompound(inner->owner) || inner->presentation)
        return;
    bool const isOfItsKind = inner->ioType == (ioNode.testFlag(eInputIO) ? eOutput : eInput);
    if (isOfItsKind)
        inner->setPresentation(&PortAccess::impl(list));
}

void CompoundAccess::fillIONode(Compound& compound, Node& ioNode)
{
    bool const isInputNode = ioNode.testFlag(eInputIO);
    PortList::Impl& inner = PortAccess::impl(isInputNode ? compound.innerInputs() : compound.innerOutputs());
    PortList& shown = isInputNode ? ioNode.outputs() : ioNode.inputs();
    if (inner.presentation || PortAccess::impl(shown).presented)
        return;
    detail::NamedList<Port>& ports = PortAccess::impl(shown).ports;
    if (ports.empty())
        inner.ports.forEach([&](Port& port) { ports.insert(ports.size(), &port); });
    inner.setPresentation(&PortAccess::impl(shown));
}

bool CompoundAccess::stopShowing(Node& ioNode) noexcept
{
    bool showed = false;
    for (PortList* list : {&ioNode.inputs(), &ioNode.outputs()}) {
        PortList::Impl& record = PortAccess::impl(*list);
        if (!record.presented)
            continue;
        record.presented->setPresentation(nullptr);
        record.ports.clear();
        showed = true;
    }
    return showed;
}

void CompoundAccess::takeOverPresentation(Compound& compound, Node& ioNode)
{
    PortList::Impl& inner = PortAccess::impl(innerList(compound, ioNode.testFlag(eInputIO) ? eInput : eOutput));
    if (Node* const shower = inner.presentation ? PortAccess::asNode(inner.presentation->owner) : nullptr) {
        if (shower == &ioNode)
            return;
        stopShowing(*shower);
    }
    fillIONode(compound, ioNode);
}

void CompoundAccess::handOverPresentation(Compound& compound, Node& ioNode) noexcept
{
    for (PortList* list : {&ioNode.inputs(), &ioNode.outputs()}) {
        PortList::Impl* const inner = PortAccess::impl(*list).presented;
        if (!inner)
            continue;
        inner->setPresentation(nullptr);
        Node* next = nullptr;
        unsigned nextIndex = kNotFound;
        for (Node* other : impl(compound).ioNodes) {
            unsigned const index = compound.nodes().findNode(AddRefWrapper<Node>(other));
            bool const isOfItsKind = other->testFlag(inner->ioType == eOutput ? eInputIO : eOutputIO);
            if (isOfItsKind && index < nextIndex) {
                next = other;
                nextIndex = index;
            }
        }
        try {
            if (next) // most often of nothing: the ports went with the node that left, but for those refused
                fillIONode(compound, *next);
        } catch (std::bad_alloc const&) {
            stopShowing(*next);
        }
    }
}

} // namespace TAV_marlo_v1
