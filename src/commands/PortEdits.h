#pragma once

#include "commands/EditLog.h"

namespace TAV_marlo_v1 {

class PortDataType;
class PortProperties;
class StringArray;

namespace detail {

// The changes of ports, noted in the log. Those of one side of a compound port keep the other in step.

/// A top-level port of the node; of a compound's node both sides of a compound port.
/// @return the port of the node, empty after a veto
AddRefWrapper<Port> createPort(EditLog& log, Node& node, PortIOType ioType, char const* name,
                               AddRefWrapper<PortDataType> const& type, PortProperties const& properties);
/// A child, or of a fan-in port a member.
AddRefWrapper<Port> createChildPort(EditLog& log, Port& parent, char const* name,
                                    AddRefWrapper<PortDataType> const& type, PortProperties const& properties);
/// Cuts the port's connections first; those stay cut, for undo to make again, when the removal is refused.
bool deletePort(EditLog& log, Port& port);
bool renamePort(EditLog& log, Port& port, char const* name);
bool movePort(EditLog& log, PortList& list, unsigned from, unsigned to);
bool setPortDataType(EditLog& log, Port& port, AddRefWrapper<PortDataType> const& type);
bool setPortValues(EditLog& log, Port& port, StringArray const& values);
bool resetPortValues(EditLog& log, Port& port);
bool setPortMetadata(EditLog& log, Port& port, char const* key, char const* value);
/// One flag. A port that is no fan-in port any more loses its members.
bool setPortFlag(EditLog& log, Port& port, PortFlags flag, bool on);

} // namespace detail

} // namespace TAV_marlo_v1
