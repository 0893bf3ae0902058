// The debug dump. Its layout, to the case of the titles, is part of the interface.

#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PortImpl.h"

#include <string>

namespace TAV_marlo_v1 {

namespace {

std::string quoted(char const* name)
{
    return '"' + std::string(name) + '"';
}

std::string ownerName(Port const& port)
{
    PortNotification const* const owner = port.getParent();
    if (Compound const* const compound = PortAccess::asCompound(owner))
        return compound->getName();
    Node const* const node = PortAccess::asNode(owner);
    return node ? node->getName() : "";
}

void dumpPorts(PortList const& list, char const* title, StringArray& lines)
{
    lines.add((std::to_string(list.size()) + ' ' + title + ':').c_str());
    unsigned index = 0;
    for (AddRefWrapper<Port> const& port : list) {
        AddRefWrapper<PortDataType> const type = port->getDataType();
        lines.add(("#" + std::to_string(index++) + ":  " + quoted(port->getName()) + " of type "
                   + quoted(type ? type->getName() : ""))
                      .c_str());
        for (AddRefWrapper<Port> const& other : port->connectedTo()) {
            lines.add(("  connected to " + quoted(other->getName()) + " of node " + quoted(ownerName(*other).c_str()))
                          .c_str());
        }
    }
}

void dumpNode(Node const& node, unsigned index, StringArray& lines)
{
    Compound const* const compound = node.getParentCompound();
    lines.add("====================================");
    lines.add(
        ("NODE #" + std::to_string(index) + " of compound " + quoted(compound ? compound->getName() : "")).c_str());
    lines.add((std::string("name: ") + node.getFullPathName().getName()).c_str());
    dumpPorts(node.inputs(), "inputs", lines);
    dumpPorts(node.outputs(), "outputs", lines);
}

} // namespace

void Compound::debug(StringArray& lines) const
{
    AddRefWrapper<PortList> const none = PortList::createNew();
    AddRefWrapper<Node> const owner = getAsNode();
    lines.add(("TAV Compound " + quoted(getName())).c_str());
    dumpPorts(innerInputs(), "Internal Inputs", lines);
    dumpPorts(innerOutputs(), "Internal Outputs", lines);
    dumpPorts(owner ? owner->inputs() : *none, "Inputs", lines);
    dumpPorts(owner ? owner->outputs() : *none, "Outputs", lines);
    lines.add((std::to_string(nodes().size()) + " nodes").c_str());
    unsigned index = 0;
    for (AddRefWrapper<Node> const& node : nodes()) {
        if (AddRefWrapper<Compound> const compound = node->getAsCompound())
            compound->debug(lines);
        else
            dumpNode(*node, index, lines);
        ++index;
    }
}

} // namespace TAV_marlo_v1
