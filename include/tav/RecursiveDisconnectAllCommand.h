#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Export.h>

#include <memory>

namespace TAV_marlo_v1 {

class Container;
class Node;
class Port;
class PortList;

/// Cuts every connection of a node, a port or a list of ports, with those of their child ports, at once
/// when it is told to. A port that refuses does not stop the others. See NodeCommand for what holds for
/// every command.
class TAV_API RecursiveDisconnectAllCommand {
public:
    RecursiveDisconnectAllCommand();
    RecursiveDisconnectAllCommand(RecursiveDisconnectAllCommand&& other) noexcept;
    RecursiveDisconnectAllCommand(RecursiveDisconnectAllCommand const&) = delete;
    RecursiveDisconnectAllCommand& operator=(RecursiveDisconnectAllCommand const&) = delete;
    ~RecursiveDisconnectAllCommand();

    /// @param includeReversePorts also the other sides of compound ports; kept for later calls of the
    ///        other two
    /// @return whether everything was cut
    bool disconnectAll(Container* container, AddRefWrapper<Node> const& node, bool includeReversePorts);
    bool disconnectAll(Container* container, AddRefWrapper<Port> const& port);
    bool disconnectAll(Container* container, PortList const& ports);

    bool redo();
    bool undo();

private:
    friend class CommandAccess;
    struct Impl;
    std::unique_ptr<Impl> m_impl; // null once moved from
};

} // namespace TAV_marlo_v1
