#include "commands/ConnectionRecord.h"

#include "commands/CommandAccess.h"
#include "commands/ConnectionEdits.h"
#include "foundation/PropertyListAccess.h"
#include "graph/PortImpl.h"

#include <tav/Node.h>
#include <tav/PortDataType.h>
#include <tav/PortList.h>
#include <tav/WatchPoint.h>

#include <string>
#include <typeinfo>
#include <utility>

namespace TAV_marlo_v1::detail {

namespace {

/// Port::getFullPathName, which makes a shared name of each step: only an owner of a class of its own,
/// which may call itself otherwise, is asked.
std::string pathOf(Port const& port)
{
    Node const* const node = PortAccess::asNode(port.getParent());
    std::string path = node && typeid(*node) == typeid(Node) ? PortAddress(port).path() : std::string();
    return path.empty() ? port.getFullPathName().getName() : path;
}

/// Keys of the journal, which are kept so that an entry need not look for its text.
struct JournalKeys {
    SharedTextRef const output{"Output"};
    SharedTextRef const input{"Input"};

    static JournalKeys const& instance()
    {
        static JournalKeys const keys;
        return keys;
    }
};

/// Sets the flag for its own lifetime, unless the port has it already.
class FlagDuring {
public:
    FlagDuring(Port& port, PortFlags flag)
        : m_port(port.testFlag(flag) ? nullptr : &port)
        , m_flag(flag)
    {
        if (m_port)
            m_port->setFlag(m_flag);
    }
    FlagDuring(FlagDuring const&) = delete;
    FlagDuring& operator=(FlagDuring const&) = delete;
    ~FlagDuring()
    {
        if (m_port)
            m_port->clearFlag(m_flag);
    }

private:
    AddRefWrapper<Port> m_port;
    PortFlags m_flag;
};

/// Whether the second of the two is the output side: callers give them in any order.
bool isSwapped(Port const& a, ConnectionOperation operation)
{
    return operation != ConnectionOperation::eDisconnectAll && a.getPortIOType() == eInput;
}

} // namespace

bool ConnectionRecord::record(Container* container, AddRefWrapper<Port> const& a, AddRefWrapper<Port> const& b,
                              ConnectionOperation operation, bool copyMetaData)
{
    if (!container || !a || !b)
        return false;
    bool const swapped = isSwapped(*a, operation);
    PortAddress output(swapped ? *b : *a);
    PortAddress input = a == b ? output : PortAddress(swapped ? *a : *b);
    m_scope.setContainerOnce(container);
    m_operation = operation;
    m_copyMetaData = copyMetaData;
    m_output = std::move(output);
    m_input = std::move(input);
    return true;
}

bool ConnectionRecord::actNow(Container* container, AddRefWrapper<Port> const& a, AddRefWrapper<Port> const& b,
                              ConnectionOperation operation, bool copyMetaData)
{
    if (!record(container, a, b, operation, copyMetaData))
        return false;
    AddRefWrapper<Port> const first(a); // the caller's handles may be those of a list that changes
    AddRefWrapper<Port> const second(b);
    beginRun();
    return isSwapped(*first, operation) ? run(second, first) : run(first, second);
}

bool ConnectionRecord::perform()
{
    beginRun();
    AddRefWrapper<Port> const output = m_output.find(m_scope.scene());
    AddRefWrapper<Port> const input = m_input.find(m_scope.scene());
    return output && input && run(output, input);
}

void ConnectionRecord::beginRun()
{
    m_log.clear();
    m_watchPointCommands.clear();
    m_compoundPortCommands.clear();
    m_nodePortCommands.clear();
    m_journal.removeAll();
}

bool ConnectionRecord::run(AddRefWrapper<Port> const& output, AddRefWrapper<Port> const& input)
{
    noteEnds(*output, *input);
    auto const bracket = m_scope.openBracket();
    bool const isDone = act(*output, *input);
    performSubCommands();
    return isDone;
}

bool ConnectionRecord::act(Port& output, Port& input)
{
    switch (m_operation) {
    case ConnectionOperation::eConnect:
        return connect(output, input);
    case ConnectionOperation::eDisconnect:
        return disconnect(output, input);
    case ConnectionOperation::eDisconnectAll:
        return disconnectAll(input);
    }
    return false;
}

// ---- the three operations

bool ConnectionRecord::connect(Port& output, Port& input)
{
    noteConnections(input);
    noteDataType(input);
    if (m_copyMetaData)
        noteMetadata(input);
    if (!clearInput(input) || !makeConnection(m_log, input, output, m_copyMetaData))
        return false;
    adoptDataType(input, output);
    adoptDataType(output, input);
    return true;
}

/// An input keeps at most one source through this command. The flag tells owners that a removal is the
/// first half of a replacement.
bool ConnectionRecord::clearInput(Port& input)
{
    if (!input.isConnected())
        return true;
    FlagDuring const reconnecting(input, eReconnecting);
    while (input.isConnected()) {
        AddRefWrapper<Port> const other = input.connectedTo()[0u];
        FlagDuring const otherReconnecting(*other, eReconnecting);
        if (!cutConnection(m_log, *other, input))
            return false;
    }
    return true;
}

bool ConnectionRecord::disconnect(Port& output, Port& input)
{
    if (!cutConnection(m_log, input, output))
        return false;
    removeWatchPointOf(input);
    removeWatchPointOf(output);
    return true;
}

bool ConnectionRecord::disconnectAll(Port& port)
{
    noteDataType(port);
    noteConnections(port);
    bool isWhole = true;
    std::vector<AddRefWrapper<Port>> others;
    others.reserve(port.connectedTo().size());
    PortAccess::connections(port).forEach([&others](Port& other) { others.emplace_back(&other); });
    for (AddRefWrapper<Port> const& other : others) {
        if (cutConnection(m_log, port, *other))
            removeWatchPointOf(*other);
        else
            isWhole = false;
    }
    removeWatchPointOf(port);
    return isWhole;
}

void ConnectionRecord::removeWatchPointOf(Port& port)
{
    if (!port.getWatchPoint())
        return;
    WatchPointCommand command;
    command.removeWatchPoint(m_scope.container(), AddRefWrapper<Port>(&port));
    m_watchPointCommands.push_back(std::move(command));
}

/// A compound port that has no data type yet gets that of what it is connected with.
void ConnectionRecord::adoptDataType(Port& port, Port const& other)
{
    AddRefWrapper<PortDataType> const type = other.getDataType();
    AddRefWrapper<Node> const node = port.getParentNode();
    if (!type || port.getDataType() || !node || !node->isCompound() || port.getParentPort())
        return;
    Container* const container = m_scope.container();
    String const nodePath = node->getFullPathName().getName();
    if (port.isCompoundInternalPort()) {
        PortIOType const outside = port.getPortIOType() == eInput ? eOutput : eInput;
        ModifyCompoundPortCommand command;
        command.setParentCompound(container, nodePath.toChar());
        command.setPortDataType(outside, port.getName(), type->getName());
        m_compoundPortCommands.push_back(std::move(command));
    } else {
        ModifyNodePortCommand command;
        command.setParentNode(container, nodePath.toChar());
        command.setPortDataType(port.getPortIOType(), port.getName(), type->getName());
        m_nodePortCommands.push_back(std::move(command));
    }
}

void ConnectionRecord::performSubCommands()
{
    for (WatchPointCommand& command : m_watchPointCommands)
        command.doit();
    for (ModifyCompoundPortCommand& command : m_compoundPortCommands)
        command.doit();
    for (ModifyNodePortCommand& command : m_nodePortCommands)
        command.doit();
}

// ---- journal

void ConnectionRecord::noteEnds(Port const& output, Port const& input)
{
    JournalKeys const& keys = JournalKeys::instance();
    StringArray inputPath(pathOf(input).c_str());
    PropertyListAccess::appendPair(m_journal, keys.output,
                                   &output == &input ? inputPath : StringArray(pathOf(output).c_str()));
    PropertyListAccess::appendPair(m_journal, keys.input, std::move(inputPath));
}

void ConnectionRecord::noteConnections(Port const& port)
{
    PropertyList& list = m_journal.addChildList("Connections");
    PortAccess::connections(port).forEach([&list](Port const& other) {
        PropertyListAccess::appendPair(list, JournalKeys::instance().output, StringArray(pathOf(other).c_str()));
    });
}

void ConnectionRecord::noteDataType(Port const& port)
{
    if (!port.isCompoundInternalPort())
        return;
    AddRefWrapper<PortDataType> const type = port.getDataType();
    m_journal.addChildList("OldPortType").addStringPair(pathOf(port).c_str(), type ? type->getName() : "");
}

void ConnectionRecord::noteMetadata(Port const& input)
{
    AddRefWrapper<Compound> const compound =
        input.isCompoundInternalPort() ? input.getParentCompound() : AddRefWrapper<Compound>();
    AddRefWrapper<Port> const reverse =
        compound ? compound->getReversePort(AddRefWrapper<Port>(const_cast<Port*>(&input))) : AddRefWrapper<Port>();
    if (!reverse)
        return;
    StringArray keys;
    PortAccess::collectMetadataToCopy(*reverse, input, keys);
    PropertyList& list = m_journal.addChildList("PortMetaData");
    for (char const* const key : keys) {
        String const value = reverse->getPortMetaDataValue(key);
        if (!value.empty() && !list.hasStringPair(key))
            list.addStringPair(key, value.toChar());
    }
}

// ---- undo

bool ConnectionRecord::undo(Renamings const* renamings)
{
    if (!m_scope.container())
        return false;
    auto const bracket = m_scope.openBracket();
    undoSubCommands(renamings);
    if (m_journal.empty())
        return false; // nothing was done
    return m_log.takeBack({m_scope.container(), renamings});
}

void ConnectionRecord::undoSubCommands(Renamings const* renamings)
{
    for (auto command = m_nodePortCommands.rbegin(); command != m_nodePortCommands.rend(); ++command)
        CommandAccess::undo(*command, renamings);
    for (auto command = m_compoundPortCommands.rbegin(); command != m_compoundPortCommands.rend(); ++command)
        CommandAccess::undo(*command, renamings);
    for (auto command = m_watchPointCommands.rbegin(); command != m_watchPointCommands.rend(); ++command)
        CommandAccess::undo(*command, renamings);
}

} // namespace TAV_marlo_v1::detail
