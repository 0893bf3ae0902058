#pragma once

#include "commands/EditLog.h"

namespace TAV_marlo_v1::detail {

/// Port::removeConnection; taken back, the connection has its old place in both lists.
bool cutConnection(EditLog& log, Port& a, Port& b);

/// As cutConnection, for every connection of the port and of its children.
/// @return whether all were cut
bool cutConnectionsBelow(EditLog& log, Port& port);

/// Port::addConnection; taken back, metadata that was copied is again as it was.
bool makeConnection(EditLog& log, Port& a, Port& b, bool copyMetadata);

} // namespace TAV_marlo_v1::detail
