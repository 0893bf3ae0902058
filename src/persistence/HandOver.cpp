#include "persistence/HandOver.h"

#include "foundation/PropertyListAccess.h"
#include "graph/PortImpl.h"

#include <tav/Compound.h>
#include <tav/Node.h>

#include <typeinfo>
#include <vector>

namespace TAV_marlo_v1 {

namespace {

/// Calls the owner for the ports of the list and their children; hooks may change the lists meanwhile.
void handOverPorts(PortNotification& owner, PortList const& list)
{
    std::vector<AddRefWrapper<Port>> ports;
    PortAccess::impl(list).ports.forEach([&ports](Port& port) { ports.emplace_back(&port); });
    for (AddRefWrapper<Port> const& port : ports) {
        if (port->getParent() != &owner)
            continue;
        if (StringArray const* const kept = PortAccess::values(*port)) {
            StringArray const values(*kept);
            owner.onPortSetDefaultValues(port, values);
        }
        if (PropertyList const* const kept = PortAccess::metadata(*port)) {
            PropertyList const metadata(*kept);
            for (unsigned i = 0; i < PropertyListAccess::pairCount(metadata); ++i) {
                StringArray const& values = PropertyListAccess::values(metadata, i);
                owner.onPortSetMetaDataValue(port, PropertyListAccess::key(metadata, i).data(),
                                             values.empty() ? "" : values[0]);
            }
        }
        if (AddRefWrapper<PortList> const children = port->children())
            handOverPorts(owner, *children);
    }
}

} // namespace

void handOver(Node& node)
{
    if (typeid(node) == typeid(Node))
        return;
    handOverPorts(node, node.inputs());
    handOverPorts(node, node.outputs());
}

void handOver(Compound& compound)
{
    if (typeid(compound) == typeid(Compound))
        return;
    handOverPorts(compound, compound.innerInputs());
    handOverPorts(compound, compound.innerOutputs());
}

} // namespace TAV_marlo_v1
