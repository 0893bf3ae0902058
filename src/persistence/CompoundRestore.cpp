#include "persistence/CompoundRestore.h"

#include "graph/AnnotationListImpl.h"
#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PortImpl.h"
#include "persistence/ReadAttributes.h"

#include <new>

namespace TAV_marlo_v1 {

namespace {

/// From the point of no return on: what cannot be told for want of memory is not told.
template <class Tell>
void tell(Tell const& tellIt) noexcept
{
    try {
        tellIt();
    } catch (std::bad_alloc const&) {
    }
}

void collect(PortList const& list, std::vector<AddRefWrapper<Port>>& ports)
{
    PortAccess::impl(list).ports.forEach([&ports](Port& port) { ports.emplace_back(&port); });
}

PortList const& homeOf(Port const& port)
{
    return *PortAccess::home(port);
}

} // namespace

CompoundRestore::Contents::Contents(Compound& compound)
{
    NodeAccess::impl(compound.nodes()).nodes.forEach([this](Node& node) { nodes.emplace_back(&node); });
    AnnotationAccess::impl(compound.annotations()).annotations.forEach([this](Annotation& annotation) {
        annotations.emplace_back(&annotation);
    });
    collect(CompoundAccess::owner(compound)->inputs(), outerPorts);
    collect(CompoundAccess::owner(compound)->outputs(), outerPorts);
    collect(compound.innerInputs(), innerPorts);
    collect(compound.innerOutputs(), innerPorts);
}

CompoundRestore::CompoundRestore(Compound& target, AddRefWrapper<Node> const& stagedOwner)
    : m_target(&target)
    , m_owner(target.getAsNode())
    , m_stagedOwner(stagedOwner)
    , m_staged(stagedOwner->getAsCompound())
    , m_going(target)
    , m_coming(*m_staged)
{
}

bool CompoundRestore::run()
{
    if (!ask())
        return false;
    m_metadataDiffers = m_owner->getPropertyList() != m_stagedOwner->getPropertyList()
                        || m_target->getPropertyList() != m_staged->getPropertyList();
    rename();
    // ---- nothing below fails
    dismiss();
    exchange();
    welcome();
    return true;
}

bool CompoundRestore::ask()
{
    for (AddRefWrapper<Node> const& node : m_coming.nodes) {
        if (!m_target->onNodeAdd(node))
            return refuse("node", node->getName());
    }
    for (AddRefWrapper<Annotation> const& annotation : m_coming.annotations) {
        if (!m_target->onAnnotationAdd(annotation))
            return refuse("annotation", annotation->getName());
    }
    return true;
}

bool CompoundRestore::refuse(char const* what, char const* name)
{
    m_error.append("The compound ").append(quoted(m_target->getName()));
    m_error.append(" refuses the ").append(what).append(" ").append(quoted(name)).append(".");
    return false;
}

void CompoundRestore::rename()
{
    detail::SharedTextRef const former(NamedAccess::text(*m_owner));
    try {
        m_owner->setName(m_stagedOwner->getName());
    } catch (std::bad_alloc const&) {
        if (former.get() == &NamedAccess::text(*m_owner))
            throw; // nothing has happened yet; otherwise only the telling failed
    }
}

/// Takes leave of the old contents while they are still in the graph: they are cut off, and told of like
/// nodes, annotations and ports that are removed.
void CompoundRestore::dismiss() noexcept
{
    for (AddRefWrapper<Annotation> const& annotation : m_going.annotations) {
        tell([&] { annotation->onThisAnnotationDeleted(); });
        tell([&] { m_target->onAnnotationRemoved(annotation); });
    }
    for (AddRefWrapper<Node> const& node : m_going.nodes) {
        tell([&] { node->onThisNodeDeleted(); });
        tell([&] { m_target->onNodeRemoved(node); });
    }
    for (AddRefWrapper<Port> const& port : m_going.innerPorts)
        tell([&] { dismissPort(*m_target, port); });
    for (AddRefWrapper<Port> const& port : m_going.outerPorts)
        tell([&] { dismissPort(*m_owner, port); });
}

void CompoundRestore::dismissPort(PortNotification& owner, AddRefWrapper<Port> const& port)
{
    if (!PortAccess::home(*port))
        return; // cut off with the node that showed it
    for (unsigned left = port->connectedTo().size(); left > 0; --left) {
        AddRefWrapper<Port> const other = port->connectedTo()[left - 1];
        PortAccess::unlink(*port, *other);
        bool const otherActs = port->getPortIOType() == eInput && !port->isCompoundInternalPort();
        PortNotification* const acting = otherActs ? other->getParent() : &owner;
        if (acting)
            acting->onPortConnectionRemoved(otherActs ? other : port, otherActs ? port : other);
    }
    owner.onPortListPortRemoved(homeOf(*port), port);
}

void CompoundRestore::exchange() noexcept
{
    CompoundAccess::swapContents(*m_target, *m_staged);
    std::swap(NodeAccess::impl(*m_owner).type, NodeAccess::impl(*m_stagedOwner).type);
    for (AddRefWrapper<Port> const& port : m_going.outerPorts)
        PortAccess::unlinkAll(*port); // children, and what telling left out
    for (AddRefWrapper<Port> const& port : m_going.innerPorts)
        PortAccess::unlinkAll(*port);
}

void CompoundRestore::welcome() noexcept
{
    if (m_metadataDiffers)
        tell([&] { NodeAccess::notify(*m_owner, eNodeMetadataChanged); });
    for (AddRefWrapper<Port> const& port : m_coming.outerPorts)
        tell([&] { m_owner->onPortListPortAdded(homeOf(*port), port); });
    for (AddRefWrapper<Port> const& port : m_coming.innerPorts)
        tell([&] { m_target->onPortListPortAdded(homeOf(*port), port); });
    for (AddRefWrapper<Node> const& node : m_coming.nodes)
        tell([&] { m_target->onNodeAdded(node); });
    for (AddRefWrapper<Annotation> const& annotation : m_coming.annotations)
        tell([&] { m_target->onAnnotationAdded(annotation); });
}

} // namespace TAV_marlo_v1
