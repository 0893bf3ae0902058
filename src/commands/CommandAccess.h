#pragma once

namespace TAV_marlo_v1 {

class ConnectNodesCommand;
class ModifyCompoundPortCommand;
class ModifyNodePortCommand;
class RecursiveDisconnectAllCommand;
class WatchPointCommand;

namespace detail {
class Renamings;
}

/// The way of one command to another that is a part of it: its undo, on a graph where nodes have other
/// names than when it ran. Each is defined beside its command.
class CommandAccess {
public:
    static bool undo(ConnectNodesCommand& command, detail::Renamings const* renamings);
    static bool undo(ModifyCompoundPortCommand& command, detail::Renamings const* renamings);
    static bool undo(ModifyNodePortCommand& command, detail::Renamings const* renamings);
    static bool undo(RecursiveDisconnectAllCommand& command, detail::Renamings const* renamings);
    static bool undo(WatchPointCommand& command, detail::Renamings const* renamings);
};

} // namespace TAV_marlo_v1
