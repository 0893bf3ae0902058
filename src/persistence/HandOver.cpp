#include "persistence/HandOver.h"

#include "foundation/PropertyListAccess.h"
#include "graph/PortImpl.h"

#include <tav/Compound.h>
#include <tav/Node.h>

#include <typeinfo>
#include <vector>

namespace TAV_marlo_v1 {

namespace {

bool isLibraryClass(PortNotification const& owner)
{
    return typeid(owner) == typeid(Node) || typeid(owner) == typeid(Compound);
}

void handOverMetadata(PortNotification& owner, AddRefWrapper<Port> const& port, PropertyList const& metadata)
{
    for (unsigned i = 0; i < PropertyListAccess::pairCount(metadata); ++i) {
        StringArray const& values = PropertyListAccess::values(metadata, i);
        owner.onPortSetMetaDataValue(port, PropertyListAccess::key(metadata, i).data(),
                                     values.empty() ? "" : values[0]);
    }
}

/// Hooks may change the lists meanwhile.
void handOverPorts(PortNotification const& owner, PortList const& list)
{
    std::vector<AddRefWrapper<Port>> ports;
    PortAccess::impl(list).ports.forEach([&ports](Port& port) { ports.emplace_back(&port); });
    for (AddRefWrapper<Port> const& port : ports) {
        if (port->getParent() == &owner) // an IO node shows ports of another owner
            handOver(*port);
    }
}

} // namespace

void handOver(Port& port)
{
    PortNotification* const owner = port.getParent();
    if (!owner || isLibraryClass(*owner))
        return;
    AddRefWrapper<Port> const kept(&port);
    if (StringArray const* const values = PortAccess::values(port))
        owner->onPortSetDefaultValues(kept, StringArray(*values)); // a copy: the hook may replace them
    if (PropertyList const* const metadata = PortAccess::metadata(port))
        handOverMetadata(*owner, kept, PropertyList(*metadata));
    if (AddRefWrapper<PortList> const children = port.children())
        handOverPorts(*owner, *children);
}

void handOver(Node& node)
{
    if (isLibraryClass(node))
        return;
    handOverPorts(node, node.inputs());
    handOverPorts(node, node.outputs());
}

void handOver(Compound& compound)
{
    if (isLibraryClass(compound))
        return;
    handOverPorts(compound, compound.innerInputs());
    handOverPorts(compound, compound.innerOutputs());
}

} // namespace TAV_marlo_v1
