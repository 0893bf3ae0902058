#pragma once

#include "commands/CommandScope.h"
#include "commands/EditLog.h"

#include <tav/ModifyCompoundPortCommand.h>
#include <tav/ModifyNodePortCommand.h>
#include <tav/PropertyList.h>
#include <tav/WatchPointCommand.h>

#include <cstdint>
#include <vector>

namespace TAV_marlo_v1::detail {

enum class ConnectionOperation : std::uint32_t { eConnect = 0, eDisconnect = 1, eDisconnectAll = 2 };

/// One operation on connections, with what undoes and redoes it: the work of ConnectCommand,
/// NewConnectCommand and RecursiveDisconnectAllCommand.
class ConnectionRecord {
public:
    /// The record is a part of a command, which has its bracket open whenever it calls.
    void leaveBracketToWhole() noexcept { m_scope.leaveBracketToWhole(); }

    /// Notes the operation without doing it. @return false, with nothing noted, for a missing argument
    bool record(Container* container, AddRefWrapper<Port> const& a, AddRefWrapper<Port> const& b,
                ConnectionOperation operation, bool copyMetaData);

    /// Notes the operation and does it, on these very ports.
    bool actNow(Container* container, AddRefWrapper<Port> const& a, AddRefWrapper<Port> const& b,
                ConnectionOperation operation, bool copyMetaData);
    /// Does what was noted; so again for redo. @return false also when a port is not found any more
    bool perform();
    bool undo(Renamings const* renamings = nullptr);

    /// What the last run found and did, by full path names: "Output", "Input", "Connections",
    /// "OldPortType" and "PortMetaData". Paths alone would not tell the sides of a compound port, or an
    /// input and an output of one name apart, and say nothing of places: undo goes by the log.
    PropertyList const& journal() const noexcept { return m_journal; }

private:
    void beginRun();
    bool run(AddRefWrapper<Port> const& output, AddRefWrapper<Port> const& input);
    bool act(Port& output, Port& input);
    bool connect(Port& output, Port& input);
    bool disconnect(Port& output, Port& input);
    bool disconnectAll(Port& port);
    bool clearInput(Port& input);
    void removeWatchPointOf(Port& port);
    void adoptDataType(Port& port, Port const& other);

    void noteEnds(Port const& output, Port const& input);
    void noteConnections(Port const& port);
    void noteDataType(Port const& port);
    void noteMetadata(Port const& input);
    void performSubCommands();
    void undoSubCommands(Renamings const* renamings);

    ConnectionOperation m_operation = ConnectionOperation::eConnect;
    bool m_copyMetaData = false;
    CommandScope m_scope;
    PropertyList m_journal;
    std::vector<ModifyCompoundPortCommand> m_compoundPortCommands;
    std::vector<ModifyNodePortCommand> m_nodePortCommands;
    std::vector<WatchPointCommand> m_watchPointCommands;

    PortAddress m_output, m_input;
    EditLog m_log;
};

} // namespace TAV_marlo_v1::detail
