#include "graph/PathNames.h"

#include "graph/PortImpl.h"

#include <tav/Container.h>
#include <tav/Node.h>
#include <tav/Runtime.h>

namespace TAV_marlo_v1::detail {

bool isLegalName(Container* container, char const* name)
{
    Runtime* const runtime = container ? container->getRuntime() : nullptr;
    return !runtime || runtime->isLegalName(name);
}

bool isLegalName(Port const& port, char const* name)
{
    AddRefWrapper<Node> const node = port.getParentNode();
    return isLegalName(node ? node->getContainer() : nullptr, name);
}

std::string freePortName(std::string_view wanted, Port const& port, Port const* twin)
{
    auto const freeIn = [](std::string_view name, Port const* member) {
        PortList::Impl const* const list = member ? PortAccess::home(*member) : nullptr;
        return list ? list->ports.freeName(name, member) : std::string(name);
    };
    std::string name(wanted);
    for (;;) {
        name = freeIn(name, &port);
        std::string const there = freeIn(name, twin);
        if (there == name)
            return name;
        name = there;
    }
}

void renamePort(Port& port, SharedTextRef const& name)
{
    PortList::Impl* const list = PortAccess::home(port);
    if (!list) {
        NamedAccess::setText(port, name);
        return;
    }
    list->ports.rename(port, name);
    if (list->presentation)
        list->presentation->ports.renamedElsewhere();
}

} // namespace TAV_marlo_v1::detail
