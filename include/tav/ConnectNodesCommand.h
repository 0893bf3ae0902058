#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Export.h>

#include <memory>

namespace TAV_marlo_v1 {

class Node;
class NodeList;

/// Connects nodes through their default ports: the first output of one with the first unconnected
/// input of the next. See NodeCommand for what holds for every command.
class TAV_API ConnectNodesCommand {
public:
    ConnectNodesCommand();
    ConnectNodesCommand(ConnectNodesCommand&& other) noexcept;
    ConnectNodesCommand(ConnectNodesCommand const&) = delete;
    ConnectNodesCommand& operator=(ConnectNodesCommand const&) = delete;
    ~ConnectNodesCommand();

    /// @return false, with nothing recorded: a node is missing, both are the same or in different
    ///         compounds, `from` is an output IO node or `to` an input IO node
    bool connect(AddRefWrapper<Node> const& from, AddRefWrapper<Node> const& to);
    /// Each node to the next. @return false for fewer than two, or when a pair was not recorded
    bool connect(NodeList const& nodes);

    bool doit();
    bool redo();
    bool undo();

private:
    friend class CommandAccess;
    struct Impl;
    std::unique_ptr<Impl> m_impl; // null once moved from
};

} // namespace TAV_marlo_v1
