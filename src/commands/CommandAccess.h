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

/// The ways of one command to another that is a part of it. Each is defined beside its command.
class CommandAccess {
public:
    /// The part is called only while the bracket of the whole is open, and opens none of its own.
    static void leaveBracketToWhole(RecursiveDisconnectAllCommand& command);

    // Undo on a graph where nodes have other names than when the command ran.

    static bool undo(ConnectNodesCommand& command, detail::Renamings const* renamings);
    static bool undo(ModifyCompoundPortCommand& command, detail::Renamings const* renamings);
    static bool undo(ModifyNodePortCommand& command, detail::Renamings const* renamings);
    static bool undo(RecursiveDisconnectAllCommand& command, detail::Renamings const* renamings);
    static bool undo(WatchPointCommand& command, detail::Renamings const* renamings);
};

} // namespace TAV_marlo_v1
