#include <tav/ExplodeCompoundCommand.h>

#include "commands/AnnotationEdits.h"
#include "commands/CommandScope.h"
#include "commands/ConnectionEdits.h"
#include "commands/NodeEdits.h"
#include "commands/PortEdits.h"
#include "graph/AnnotationListImpl.h"
#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PortImpl.h"

#include <tav/NodeList.h>

#include <unordered_set>
#include <utility>
#include <vector>

namespace TAV_marlo_v1 {

namespace {

using detail::EditLog;
using Ports = std::vector<AddRefWrapper<Port>>;

void collectWithChildren(PortList const& list, Ports& ports)
{
    PortAccess::impl(list).ports.forEach([&ports](Port& port) {
        ports.emplace_back(&port);
        if (AddRefWrapper<PortList> const children = port.children())
            collectWithChildren(*children, ports);
    });
}

/// Finds out which ports are connected through the ports of one compound, and what these ports hold for
/// those that they feed. All of it is looked at before anything changes.
class BorderConnections {
public:
    explicit BorderConnections(Compound& compound)
        : m_compound(compound)
        , m_owner(compound.getAsNode())
    {
        collectWithChildren(m_owner->inputs(), m_outsides);
        collectWithChildren(m_owner->outputs(), m_outsides);
        collectWithChildren(compound.innerInputs(), m_insides);
        collectWithChildren(compound.innerOutputs(), m_insides);
        for (Ports const* ports : {&m_outsides, &m_insides}) {
            for (AddRefWrapper<Port> const& port : *ports)
                m_border.insert(port.get());
        }
        for (Ports const* ports : {&m_outsides, &m_insides}) {
            for (AddRefWrapper<Port> const& port : *ports) {
                if (port->getPortIOType() == eInput)
                    join(*port);
            }
        }
        for (Node* const ioNode : CompoundAccess::impl(compound).ioNodes) {
            collectWithChildren(ioNode->inputs(), m_portsOfIONodes);
            collectWithChildren(ioNode->outputs(), m_portsOfIONodes);
        }
        std::erase_if(m_portsOfIONodes, [](auto const& port) { return port->isCompoundInternalPort(); });
    }

    struct Joint {
        AddRefWrapper<Port> source, target;
    };
    struct Feed {
        StringArray values;
        AddRefWrapper<Port> target;
    };
    std::vector<Joint> const& joints() const noexcept { return m_joints; }
    std::vector<Feed> const& feeds() const noexcept { return m_feeds; }
    Ports const& outsides() const noexcept { return m_outsides; }
    Ports const& insides() const noexcept { return m_insides; }
    /// Those that are the IO nodes' own: what is connected to them goes with the compound.
    Ports const& portsOfIONodes() const noexcept { return m_portsOfIONodes; }

private:
    /// A port of the border that takes: from outside, or from inside.
    void join(Port& port)
    {
        Ports targets;
        std::unordered_set<Port const*> visited;
        collectTargets(port, targets, visited);
        for (AddRefWrapper<Port> const& source : port.connectedTo()) {
            if (m_border.count(source.get()) != 0)
                continue; // what feeds that one is joined there
            for (AddRefWrapper<Port> const& target : targets)
                m_joints.push_back({source, target});
        }
        StringArray values;
        if (port.isCompoundInternalPort() || port.isConnected() || !port.getPortDefaultValues(values))
            return;
        for (AddRefWrapper<Port> const& target : targets)
            m_feeds.push_back({values, target});
    }

    /// What the other side of the port feeds, through further ports of the border where it leads there.
    void collectTargets(Port& port, Ports& targets, std::unordered_set<Port const*>& visited) const
    {
        AddRefWrapper<Port> const other = m_compound.getReversePort(AddRefWrapper<Port>(&port));
        if (!other || !visited.insert(&port).second)
            return;
        for (AddRefWrapper<Port> const& target : other->connectedTo()) {
            if (m_border.count(target.get()) != 0)
                collectTargets(*target, targets, visited);
            else
                targets.push_back(target);
        }
    }

    Compound& m_compound;
    AddRefWrapper<Node> m_owner;
    Ports m_outsides, m_insides, m_portsOfIONodes;
    std::unordered_set<Port const*> m_border;
    std::vector<Joint> m_joints;
    std::vector<Feed> m_feeds;
};

} // namespace

struct ExplodeCompoundCommand::Impl {
    bool explode(Compound& parent, Compound& compound);
    bool moveOut(Compound& parent, Compound& compound, StringArray& nodeNames, StringArray& noteNames);
    bool join(BorderConnections const& border);

    detail::CommandTarget target;
    StringArray compoundNames;
    StringArray createdNodeNames;
    StringArray createdAnnotationNames;
    EditLog log;
};

ExplodeCompoundCommand::ExplodeCompoundCommand()
    : m_impl(std::make_unique<Impl>())
{
}

ExplodeCompoundCommand::ExplodeCompoundCommand(ExplodeCompoundCommand&& other) noexcept = default;

ExplodeCompoundCommand::~ExplodeCompoundCommand() = default;

bool ExplodeCompoundCommand::setParentCompound(Container* container, char const* path)
{
    return m_impl && m_impl->target.setCompound(container, path);
}

bool ExplodeCompoundCommand::addCompound(char const* name)
{
    if (!m_impl || !name)
        return false;
    m_impl->compoundNames.add(name);
    return true;
}

StringArray const& ExplodeCompoundCommand::getCreatedNodeNames() const
{
    static StringArray const none;
    return m_impl ? m_impl->createdNodeNames : none;
}

StringArray const& ExplodeCompoundCommand::getCreatedAnnotationNames() const
{
    static StringArray const none;
    return m_impl ? m_impl->createdAnnotationNames : none;
}

bool ExplodeCompoundCommand::doit()
{
    if (!m_impl || m_impl->compoundNames.empty())
        return false;
    m_impl->log.clear();
    m_impl->createdNodeNames.clear();
    m_impl->createdAnnotationNames.clear();
    AddRefWrapper<Compound> const parent = m_impl->target.findCompound();
    if (!parent)
        return false;
    auto const bracket = m_impl->target.scope().openBracket();
    bool isWhole = true;
    for (char const* const name : m_impl->compoundNames) {
        AddRefWrapper<Node> const node = parent->nodes()[name];
        AddRefWrapper<Compound> const compound = node ? node->getAsCompound() : AddRefWrapper<Compound>();
        isWhole = compound && compound->isExplodable() && m_impl->explode(*parent, *compound) && isWhole;
    }
    return isWhole;
}

/// @return false, with the graph as it was, when anything is refused
bool ExplodeCompoundCommand::Impl::explode(Compound& parent, Compound& compound)
{
    std::size_t const start = log.mark();
    BorderConnections const border(compound);
    StringArray nodeNames, annotationNames;
    AddRefWrapper<Node> const owner = compound.getAsNode();

    bool isWhole = true;
    for (Ports const* ports : {&border.outsides(), &border.insides(), &border.portsOfIONodes()}) {
        for (AddRefWrapper<Port> const& port : *ports)
            isWhole = isWhole && detail::cutConnectionsBelow(log, *port);
    }
    if (isWhole && moveOut(parent, compound, nodeNames, annotationNames) && detail::removeNode(log, *owner)
        && join(border)) {
        createdNodeNames.add(nodeNames);
        createdAnnotationNames.add(annotationNames);
        return true;
    }
    log.takeBackTo(start, target.scope().scene());
    return false;
}

/// The IO nodes stay, and go with the compound.
bool ExplodeCompoundCommand::Impl::moveOut(Compound& parent, Compound& compound, StringArray& nodeNames,
                                           StringArray& noteNames)
{
    std::vector<AddRefWrapper<Node>> nodes;
    NodeAccess::impl(compound.nodes()).nodes.forEach([&nodes](Node& node) {
        if (!node.testFlag(eAnyIO))
            nodes.emplace_back(&node);
    });
    for (AddRefWrapper<Node> const& node : nodes) {
        if (!detail::moveNode(log, *node, parent))
            return false;
        nodeNames.add(node->getName());
    }
    std::vector<AddRefWrapper<Annotation>> annotations;
    AnnotationAccess::impl(compound.annotations()).annotations.forEach([&annotations](Annotation& annotation) {
        annotations.emplace_back(&annotation);
    });
    for (AddRefWrapper<Annotation> const& annotation : annotations) {
        if (!detail::moveAnnotation(log, *annotation, parent))
            return false;
        noteNames.add(annotation->getName());
    }
    return true;
}

bool ExplodeCompoundCommand::Impl::join(BorderConnections const& border)
{
    for (BorderConnections::Joint const& joint : border.joints()) {
        if (!detail::makeConnection(log, *joint.source, *joint.target, /*copyMetadata=*/false))
            return false;
    }
    for (BorderConnections::Feed const& feed : border.feeds()) {
        if (!detail::setPortValues(log, *feed.target, feed.values))
            return false;
    }
    return true;
}

bool ExplodeCompoundCommand::redo()
{
    return doit();
}

bool ExplodeCompoundCommand::undo()
{
    if (!m_impl || !m_impl->target.scope().container() || m_impl->log.empty())
        return false;
    auto const bracket = m_impl->target.scope().openBracket();
    m_impl->createdNodeNames.clear();
    m_impl->createdAnnotationNames.clear();
    return m_impl->log.takeBack(m_impl->target.scope().scene());
}

} // namespace TAV_marlo_v1
