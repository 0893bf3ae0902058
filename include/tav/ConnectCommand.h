#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Export.h>

#include <memory>

namespace TAV_marlo_v1 {

class Container;
class Port;

/// Connects two ports, cuts a connection, or cuts all connections of a port, at once when it is told
/// to; undo() and redo() go on from there. See NodeCommand for what holds for every command.
///
/// Connecting clears the input first: through this command an input keeps one source. A connection that
/// is cut takes the watch points of its ports with it, and undo() sets them again.
class TAV_API ConnectCommand {
public:
    ConnectCommand();
    ConnectCommand(ConnectCommand&& other) noexcept;
    ConnectCommand(ConnectCommand const&) = delete;
    ConnectCommand& operator=(ConnectCommand const&) = delete;
    ~ConnectCommand();

    /// The two ports in either order. @param copyMetaData as for Port::addConnection
    /// @return whether they are connected now; a null container or an empty port changes nothing
    bool connect(Container* container, AddRefWrapper<Port> const& a, AddRefWrapper<Port> const& b, bool copyMetaData);
    /// @return false when the two were not connected, or after a veto
    bool disconnect(Container* container, AddRefWrapper<Port> const& a, AddRefWrapper<Port> const& b);
    /// Goes on past a connection whose removal is refused. @return whether all were cut
    bool disconnectAll(Container* container, AddRefWrapper<Port> const& port);

    bool redo();
    bool undo();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl; // null once moved from
};

} // namespace TAV_marlo_v1
