#pragma once

#include "foundation/SharedText.h"

#include <string>
#include <string_view>

namespace TAV_marlo_v1 {

class Container;
class Node;
class Port;

namespace detail {

/// Whether the runtime of the container accepts the name; any name without container or runtime.
bool isLegalName(Container* container, char const* name);
bool isLegalName(Port const& port, char const* name);

/// `wanted` or the next name that is free in the lists of the port and of its twin, which may be null.
std::string freePortName(std::string_view wanted, Port const& port, Port const* twin);

/// Sets the name and keeps the lists that the port stands in up to date.
void renamePort(Port& port, SharedTextRef const& name);

} // namespace detail
} // namespace TAV_marlo_v1
