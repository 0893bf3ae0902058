#include "GraphFacts.h"

#include <tav/AnnotationList.h>
#include <tav/NodeList.h>
#include <tav/Port.h>
#include <tav/PortList.h>

using namespace TAV_marlo_v1;

namespace tool {

namespace {

/// Counts ports and, at the outputs, connections: each has exactly one end that values come out of.
qint64 countPorts(PortList const& list, GraphFacts& facts)
{
    qint64 count = 0;
    for (AddRefWrapper<Port> const& port : list) {
        ++count;
        if (port->getPortIOType() == eOutput)
            facts.connections += port->connectedTo().size();
        if (AddRefWrapper<PortList> const children = port->children())
            count += countPorts(*children, facts);
    }
    return count;
}

void countCompound(Compound const& compound, qint64 level, GraphFacts& facts);

void countNode(Node const& node, qint64 level, GraphFacts& facts)
{
    if (node.testFlag(eAnyIO)) {
        // Its ports are the compound's, and counted there.
        ++facts.ioNodes;
        return;
    }
    ++facts.types[QString::fromUtf8(node.getNodeTypeName())];
    facts.inputs += countPorts(node.inputs(), facts);
    facts.outputs += countPorts(node.outputs(), facts);
    AddRefWrapper<Compound> const compound = node.getAsCompound();
    if (!compound) {
        ++facts.nodes;
        return;
    }
    ++facts.compounds;
    countCompound(*compound, level + 1, facts);
}

void countCompound(Compound const& compound, qint64 level, GraphFacts& facts)
{
    facts.depth = qMax(facts.depth, level);
    countPorts(compound.innerInputs(), facts);
    countPorts(compound.innerOutputs(), facts);
    for (AddRefWrapper<Node> const& node : compound.nodes())
        countNode(*node, level, facts);
    for (AddRefWrapper<Annotation> const& annotation : compound.annotations())
        ++(annotation->getType() == Annotation::eBackdrop ? facts.backdrops : facts.stickyNotes);
}

} // namespace

GraphFacts countFacts(Compound const& top)
{
    GraphFacts facts;
    AddRefWrapper<Node> const owner = top.getAsNode();
    facts.name = QString::fromUtf8(top.getName());
    facts.type = QString::fromUtf8(owner->getNodeTypeName());
    facts.inputs = countPorts(owner->inputs(), facts);
    facts.outputs = countPorts(owner->outputs(), facts);
    countCompound(top, 0, facts);
    return facts;
}

QJsonObject toJson(GraphFacts const& facts)
{
    QJsonObject types;
    for (auto it = facts.types.begin(); it != facts.types.end(); ++it)
        types.insert(it.key(), it.value());
    return {{"name", facts.name},
            {"type", facts.type},
            {"nodes", facts.nodes},
            {"compounds", facts.compounds},
            {"io_nodes", facts.ioNodes},
            {"depth", facts.depth},
            {"inputs", facts.inputs},
            {"outputs", facts.outputs},
            {"connections", facts.connections},
            {"backdrops", facts.backdrops},
            {"sticky_notes", facts.stickyNotes},
            {"types", types}};
}

} // namespace tool
