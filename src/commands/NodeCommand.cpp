#include <tav/NodeCommand.h>

#include "commands/CommandAccess.h"
#include "commands/CommandScope.h"
#include "commands/NodeEdits.h"
#include "foundation/NamedAccess.h"

#include <tav/ConnectNodesCommand.h>
#include <tav/NodeList.h>
#include <tav/RecursiveDisconnectAllCommand.h>

namespace TAV_marlo_v1 {

using detail::NodeAddress;
using detail::Renamings;
using detail::Scene;
using detail::SharedTextRef;

struct NodeCommand::Impl {
    struct CreateRecord {
        NodeAddress parent;
        String presetName; // empty for an IO node
        NodeFlags ioFlags;
        String connectFromName;
        SharedTextRef createdName; // empty until the node was made
        std::unique_ptr<ConnectNodesCommand> connectCommand;
        detail::CompoundPortNames portsBefore; // of the parent, for a node that is an IO node
    };
    struct RemoveRecord {
        NodeAddress parent;
        SharedTextRef nodeName; // undo gives it the restored node's
        std::unique_ptr<RecursiveDisconnectAllCommand> disconnectCommand;
        std::optional<detail::RemovedNode> removed;
        bool isGone = false; // otherwise the removal was refused
    };
    struct RenameRecord {
        NodeAddress parent;
        SharedTextRef oldName;
        SharedTextRef newName;
        bool isDone = false;
    };

    bool empty() const noexcept { return creations.empty() && removals.empty() && renames.empty(); }
    void fixContainer(Compound const& compound);
    bool recordCreation(AddRefWrapper<Compound> const& compound, char const* presetName, NodeFlags ioFlags,
                        char const* connectFromName);
    void forgetLastRun() noexcept;

    bool remove(RemoveRecord& record);
    bool create(CreateRecord& record);
    AddRefWrapper<Node> make(Compound& parent, CreateRecord& record);
    void connectCreated(Compound& parent, CreateRecord& record);
    void rename(RenameRecord& record);

    bool takeBack(CreateRecord& record, Renamings const& renamings);
    bool bringBack(RemoveRecord& record, Renamings& renamings);
    void renameBack(RenameRecord& record, Renamings& renamings);
    Renamings presentNames() const;

    detail::CommandScope scope;
    std::vector<CreateRecord> creations;
    std::vector<RemoveRecord> removals;
    std::vector<RenameRecord> renames;
    StringArray createdNodeNames;
};

NodeCommand::NodeCommand()
    : m_impl(std::make_unique<Impl>())
{
}

NodeCommand::NodeCommand(NodeCommand&& other) noexcept = default;

NodeCommand::~NodeCommand() = default;

// ---- recording

void NodeCommand::Impl::fixContainer(Compound const& compound)
{
    if (AddRefWrapper<Node> const owner = compound.getAsNode())
        scope.setContainerOnce(owner->getContainer());
}

bool NodeCommand::Impl::recordCreation(AddRefWrapper<Compound> const& compound, char const* presetName,
                                       NodeFlags ioFlags, char const* connectFromName)
{
    if (!compound)
        return false;
    creations.push_back({NodeAddress(*compound), presetName, ioFlags, connectFromName, {}, nullptr, {}});
    fixContainer(*compound);
    return true;
}

bool NodeCommand::createNode(AddRefWrapper<Compound> const& compound, char const* presetName,
                             char const* connectFromName)
{
    return m_impl && m_impl->recordCreation(compound, presetName, eNoNodeFlags, connectFromName);
}

bool NodeCommand::createIONode(AddRefWrapper<Compound> const& compound, NodeFlags flags, char const* connectFromName)
{
    if (flags != eInputIO && flags != eOutputIO)
        return false;
    return m_impl && m_impl->recordCreation(compound, "", flags, connectFromName);
}

bool NodeCommand::removeNode(AddRefWrapper<Compound> const& compound, AddRefWrapper<Node> const& node)
{
    if (!m_impl || !compound || !node || compound->nodes().findNode(node) == kNotFound)
        return false;
    m_impl->removals.push_back({NodeAddress(*compound), SharedTextRef(node->getName()), nullptr, std::nullopt, false});
    m_impl->fixContainer(*compound);
    return true;
}

bool NodeCommand::removeNode(AddRefWrapper<Compound> const& compound, char const* name)
{
    return compound && removeNode(compound, compound->nodes()[name]);
}

bool NodeCommand::renameNode(AddRefWrapper<Compound> const& compound, char const* oldName, char const* newName)
{
    if (!m_impl || !compound || !compound->nodes()[oldName])
        return false;
    m_impl->renames.push_back({NodeAddress(*compound), SharedTextRef(oldName), SharedTextRef(newName), false});
    m_impl->fixContainer(*compound);
    return true;
}

StringArray const& NodeCommand::getCreatedNodeNames() const
{
    static StringArray const none;
    return m_impl ? m_impl->createdNodeNames : none;
}

// ---- doit

bool NodeCommand::doit()
{
    if (!m_impl || m_impl->empty() || !m_impl->scope.container())
        return false;
    m_impl->forgetLastRun();
    auto const bracket = m_impl->scope.openBracket();

    // Removals first: a creation below may want a name that a removal frees.
    std::size_t removedCount = 0;
    for (Impl::RemoveRecord& record : m_impl->removals)
        removedCount += m_impl->remove(record) ? 1 : 0;
    for (Impl::CreateRecord& record : m_impl->creations)
        m_impl->create(record);
    for (Impl::RenameRecord& record : m_impl->renames)
        m_impl->rename(record);

    return m_impl->createdNodeNames.size() == m_impl->creations.size() && removedCount == m_impl->removals.size();
}

bool NodeCommand::redo()
{
    return doit();
}

void NodeCommand::Impl::forgetLastRun() noexcept
{
    createdNodeNames.clear();
    for (CreateRecord& record : creations) {
        record.createdName = SharedTextRef();
        record.connectCommand.reset();
    }
    for (RemoveRecord& record : removals) {
        record.removed.reset();
        record.isGone = false;
        record.disconnectCommand.reset();
    }
    for (RenameRecord& record : renames)
        record.isDone = false;
}

bool NodeCommand::Impl::remove(RemoveRecord& record)
{
    AddRefWrapper<Compound> const parent = record.parent.findCompound(scope.scene());
    AddRefWrapper<Node> const node = parent ? parent->nodes()[record.nodeName.chars()] : AddRefWrapper<Node>();
    if (!node)
        return false;
    // Kept whatever follows: what it cut is made again also when the removal is refused.
    record.disconnectCommand = std::make_unique<RecursiveDisconnectAllCommand>();
    CommandAccess::leaveBracketToWhole(*record.disconnectCommand);
    record.disconnectCommand->disconnectAll(scope.container(), node, /*includeReversePorts=*/node->testFlag(eAnyIO));
    record.removed.emplace(*node);
    try {
        record.isGone = parent->nodes().remove(node);
    } catch (...) {
        record.isGone = node->getParentCompound() != parent.get();
        throw;
    }
    return record.isGone;
}

bool NodeCommand::Impl::create(CreateRecord& record)
{
    AddRefWrapper<Compound> const parent = record.parent.findCompound(scope.scene());
    if (!parent)
        return false;
    record.portsBefore = detail::CompoundPortNames(*parent); // a preset may be an IO node, too
    AddRefWrapper<Node> const node = make(*parent, record);
    if (!node)
        return false;
    createdNodeNames.add(node->getName());
    connectCreated(*parent, record);
    return true;
}

/// Whatever comes in the way, a node that was added is noted.
AddRefWrapper<Node> NodeCommand::Impl::make(Compound& parent, CreateRecord& record)
{
    unsigned const countBefore = parent.nodes().size();
    try {
        AddRefWrapper<Node> const node = record.ioFlags != eNoNodeFlags
                                             ? parent.createIONode(record.ioFlags)
                                             : parent.createNodeFromPreset(record.presetName.toChar());
        if (node)
            record.createdName = SharedTextRef(NamedAccess::text(*node));
        return node;
    } catch (...) {
        if (parent.nodes().size() > countBefore)
            record.createdName = SharedTextRef(NamedAccess::text(*parent.nodes()[countBefore]));
        throw;
    }
}

void NodeCommand::Impl::connectCreated(Compound& parent, CreateRecord& record)
{
    AddRefWrapper<Node> const from =
        record.connectFromName.empty() ? AddRefWrapper<Node>() : parent.nodes()[record.connectFromName.toChar()];
    AddRefWrapper<Node> const to = parent.nodes()[record.createdName.chars()];
    if (!from || !to)
        return;
    record.connectCommand = std::make_unique<ConnectNodesCommand>();
    record.connectCommand->connect(from, to);
    record.connectCommand->doit();
}

void NodeCommand::Impl::rename(RenameRecord& record)
{
    AddRefWrapper<Compound> const parent = record.parent.findCompound(scope.scene());
    AddRefWrapper<Node> const node = parent ? parent->nodes()[record.oldName.chars()] : AddRefWrapper<Node>();
    if (!node)
        return;
    node->setName(record.newName.chars());
    record.newName = SharedTextRef(NamedAccess::text(*node));
    record.isDone = true;
}

// ---- undo

bool NodeCommand::undo()
{
    if (!m_impl || m_impl->empty() || !m_impl->scope.container())
        return false;
    auto const bracket = m_impl->scope.openBracket();
    m_impl->createdNodeNames.clear();
    // Renames are undone last, in the order of recording: until then what was noted before them is
    // found under the present names.
    Renamings renamings = m_impl->presentNames();

    std::size_t removedCount = 0;
    for (auto record = m_impl->creations.rbegin(); record != m_impl->creations.rend(); ++record)
        removedCount += m_impl->takeBack(*record, renamings) ? 1 : 0;
    for (auto record = m_impl->removals.rbegin(); record != m_impl->removals.rend(); ++record)
        m_impl->bringBack(*record, renamings);
    for (Impl::RenameRecord& record : m_impl->renames)
        m_impl->renameBack(record, renamings);

    return m_impl->createdNodeNames.size() == m_impl->removals.size() && removedCount == m_impl->creations.size();
}

Renamings NodeCommand::Impl::presentNames() const
{
    Renamings renamings;
    for (RenameRecord const& record : renames) {
        if (record.isDone)
            renamings.add(record.parent, record.oldName, record.newName);
    }
    return renamings;
}

bool NodeCommand::Impl::takeBack(CreateRecord& record, Renamings const& renamings)
{
    if (record.createdName.empty())
        return false;
    if (record.connectCommand) {
        CommandAccess::undo(*record.connectCommand, &renamings);
        record.connectCommand.reset();
    }
    Scene const scene{scope.container(), &renamings};
    AddRefWrapper<Compound> const parent = record.parent.findCompound(scene);
    return parent
           && detail::removeCreatedNode(*parent, record.parent.child(record.createdName).find(scene),
                                        record.portsBefore);
}

bool NodeCommand::Impl::bringBack(RemoveRecord& record, Renamings& renamings)
{
    Scene const scene{scope.container(), &renamings};
    AddRefWrapper<Node> node;
    if (record.removed && record.isGone) {
        node = record.removed->restore(scene);
        if (!node)
            return false;
        // What was connected to the removed node is connected to this one, whatever it is called.
        renamings.replace(record.parent, record.nodeName, SharedTextRef(NamedAccess::text(*node)));
    } else if (record.removed) {
        record.removed->restorePorts(scene);
    }
    if (record.removed)
        record.removed->restoreConnections(scene);
    if (record.disconnectCommand)
        CommandAccess::undo(*record.disconnectCommand, &renamings);
    record.isGone = false;
    if (!node)
        return false;
    record.nodeName = SharedTextRef(NamedAccess::text(*node));
    createdNodeNames.add(node->getName());
    return true;
}

void NodeCommand::Impl::renameBack(RenameRecord& record, Renamings& renamings)
{
    AddRefWrapper<Compound> const parent = record.parent.findCompound({scope.container(), &renamings});
    AddRefWrapper<Node> const node =
        parent && record.isDone ? parent->nodes()[record.newName.chars()] : AddRefWrapper<Node>();
    if (!node)
        return;
    node->setName(record.oldName.chars());
    record.oldName = SharedTextRef(NamedAccess::text(*node));
    renamings.add(record.parent, record.newName, record.oldName);
}

} // namespace TAV_marlo_v1
