#include "persistence/ItemCommit.h"

#include "graph/AnnotationListImpl.h"
#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PortImpl.h"
#include "host/NotifierAccess.h"
#include "persistence/HandOver.h"
#include "persistence/InnerConnections.h"

#include <tav/Container.h>

namespace TAV_marlo_v1 {

// ---- marks

PendingMarks::PendingMarks(Compound& compound)
{
    AddRefWrapper<Node> const owner = compound.getAsNode();
    if (!owner)
        return;
    add(owner, *owner);
    if (Container* const container = owner->getContainer())
        add({}, container->getEditorNotifier());
    for (Node* const ioNode : CompoundAccess::impl(compound).ioNodes)
        add(AddRefWrapper<Node>(ioNode), *ioNode);
}

void PendingMarks::add(AddRefWrapper<Node> const& node, HostEditorNotifier& notifier)
{
    m_marks.push_back({node, &notifier, NotifierAccess::pendingCount(notifier)});
}

void PendingMarks::drop() noexcept
{
    for (Mark const& mark : m_marks)
        NotifierAccess::dropPendingFrom(*mark.notifier, mark.count);
}

// ---- commit

ItemCommit::ItemCommit(Compound& target, StagedItems& items)
    : m_target(target)
    , m_owner(target.getAsNode())
    , m_items(items)
    , m_marks(target)
{
}

bool ItemCommit::run(Names const& names)
{
    try {
        if (addAll(names)) {
            handOutNames(names);
            return true;
        }
    } catch (...) {
        takeBack();
        throw;
    }
    takeBack();
    return false;
}

bool ItemCommit::addAll(Names const& names)
{
    if (!addCompoundPorts(eInput) || !addCompoundPorts(eOutput) || !addNodes() || !addAnnotations())
        return false;
    collectNames(names);
    InnerConnections(*this).connect();
    return true;
}

/// The compound ports that IO nodes in the text show and the compound lacks.
bool ItemCommit::addCompoundPorts(PortIOType outsideType)
{
    if (!m_owner)
        return true;
    PortList& stagedInner = CompoundAccess::innerList(*m_items.standIn, outsideType);
    PortList& stagedOuter = CompoundAccess::outerList(*m_items.standInOwner, outsideType);
    PortList& inner = CompoundAccess::innerList(m_target, outsideType);
    PortList& outer = CompoundAccess::outerList(*m_owner, outsideType);
    std::vector<std::pair<AddRefWrapper<Port>, AddRefWrapper<Port>>> missing;
    PortAccess::impl(stagedOuter).ports.forEach([&](Port& outside) {
        std::string_view const name = NamedAccess::text(outside).view();
        if (!PortAccess::impl(inner).ports.hasName(name) && !PortAccess::impl(outer).ports.hasName(name))
            missing.emplace_back(&outside, PortAccess::twin(outside));
    });
    m_addedPorts.reserve(m_addedPorts.size() + 2 * missing.size());
    for (auto const& [outside, inside] : missing) {
        PortAccess::takeOut(stagedOuter, *outside);
        PortAccess::takeOut(stagedInner, *inside);
        // Each is noted first: when a told hook throws, the port is in the list already.
        m_addedPorts.emplace_back(&outer, outside);
        if (!outer.add(outside))
            return refuse("port", outside->getName());
        m_addedPorts.emplace_back(&inner, inside);
        if (!inner.add(inside))
            return refuse("port", inside->getName());
        handOver(*outside);
        handOver(*inside);
    }
    return true;
}

bool ItemCommit::addNodes()
{
    for (AddRefWrapper<Node> const& node : m_items.nodes) {
        // Counted first: when a told hook throws, the node is in the list already.
        ++m_addedNodes;
        if (!m_target.nodes().add(node))
            return refuse("node", node->getName());
    }
    return true;
}

bool ItemCommit::addAnnotations()
{
    for (AddRefWrapper<Annotation> const& annotation : m_items.annotations) {
        ++m_addedAnnotations;
        if (!m_target.annotations().add(annotation))
            return refuse("annotation", annotation->getName());
    }
    return true;
}

bool ItemCommit::refuse(char const* what, char const* name)
{
    m_error.append("The compound ").append(quoted(m_target.getName()));
    m_error.append(" refuses the ").append(what).append(" ").append(quoted(name)).append(".");
    return false;
}

void ItemCommit::collectNames(Names const& names)
{
    if (names.nodes)
        m_nodeNames = *names.nodes;
    if (names.annotations)
        m_annotationNames = *names.annotations;
    if (names.sources)
        m_sourceNames = *names.sources;
    for (AddRefWrapper<Node> const& node : m_items.nodes)
        m_nodeNames.add(node->getName());
    for (AddRefWrapper<Annotation> const& annotation : m_items.annotations)
        m_annotationNames.add(annotation->getName());
    m_sourceNames.add(m_items.sourceNames);
}

void ItemCommit::handOutNames(Names const& names) noexcept
{
    if (names.nodes)
        *names.nodes = std::move(m_nodeNames);
    if (names.annotations)
        *names.annotations = std::move(m_annotationNames);
    if (names.sources)
        *names.sources = std::move(m_sourceNames);
}

void ItemCommit::takeBack() noexcept
{
    for (auto const& [port, other] : m_addedLinks)
        PortAccess::unlink(*port, *other);
    for (AddRefWrapper<Port> const& port : m_addedWatchPoints)
        port->setWatchPoint(AddRefWrapper<WatchPoint>());
    while (m_addedAnnotations > 0)
        CompoundAccess::takeOut(m_target, *m_items.annotations[--m_addedAnnotations]);
    while (m_addedNodes > 0) {
        Node& node = *m_items.nodes[--m_addedNodes];
        if (NodeAccess::impl(node).home != &NodeAccess::impl(m_target.nodes()))
            continue; // it was refused
        CompoundAccess::stopShowing(node);
        CompoundAccess::takeOut(m_target, node);
    }
    for (auto const& [list, port] : m_addedPorts)
        PortAccess::takeOut(*list, *port);
    m_marks.drop();
}

} // namespace TAV_marlo_v1
