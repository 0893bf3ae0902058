#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Export.h>
#include <tav/StringArray.h>
#include <tav/Types.h>

#include <memory>

namespace TAV_marlo_v1 {

class Compound;
class Node;

/// Creates, removes and renames nodes of compounds, in that one command.
///
/// What is common to all commands. A command is a movable handle: fill it by its recording operations,
/// call doit() once, keep it, and call undo() and redo() in turns. Recording checks its arguments and
/// notes them down; it never changes the graph, unless the class says otherwise. Targets are kept by
/// container and path, never by pointer, so a command outlives what it names; the container itself
/// must outlive the calls. Each call resolves the paths anew, works inside one change bracket of the
/// container, and holds nothing afterwards. A record that can't be carried out is skipped and the others
/// are still carried out: false says that something was left out, and nothing is rolled back. undo()
/// takes back exactly what the last run changed, whatever it answered. A command moved from answers
/// false to everything.
///
/// doit() removes first, then creates, then renames, so that a new node can get a freed name.
class TAV_API NodeCommand {
public:
    NodeCommand();
    NodeCommand(NodeCommand&& other) noexcept;
    NodeCommand(NodeCommand const&) = delete;
    NodeCommand& operator=(NodeCommand const&) = delete;
    ~NodeCommand();

    /// @param connectFromName the node in there whose default output is connected to the new node's
    ///        default input; null or "" for none
    /// @return false, with nothing recorded: no compound
    bool createNode(AddRefWrapper<Compound> const& compound, char const* presetName, char const* connectFromName);
    /// @param flags eInputIO or eOutputIO, not both
    bool createIONode(AddRefWrapper<Compound> const& compound, NodeFlags flags, char const* connectFromName);
    /// @return false, with nothing recorded: the node is not in the compound
    bool removeNode(AddRefWrapper<Compound> const& compound, AddRefWrapper<Node> const& node);
    bool removeNode(AddRefWrapper<Compound> const& compound, char const* name);
    /// A name that is taken by the time of doit() becomes the next free one.
    /// @return false, with nothing recorded: there is no node `oldName`
    bool renameNode(AddRefWrapper<Compound> const& compound, char const* oldName, char const* newName);

    /// After doit() and redo() the names of the nodes created, after undo() of those brought back.
    StringArray const& getCreatedNodeNames() const;

    /// @return whether every creation and every removal was carried out; false for an empty command
    bool doit();
    bool redo();
    /// Takes back creations, then removals, then renames, these in the order of recording.
    bool undo();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl; // null once moved from
};

} // namespace TAV_marlo_v1
