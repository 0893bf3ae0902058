#include <tav/RecursiveDisconnectAllCommand.h>

#include "commands/CommandAccess.h"
#include "commands/ConnectionRecord.h"

#include <tav/PortList.h>

#include <list>
#include <vector>

namespace TAV_marlo_v1 {

struct RecursiveDisconnectAllCommand::Impl {
    bool disconnect(Port& port);
    bool disconnect(PortList const& ports);
    bool disconnectOne(Port& port);
    void begin(Container* container);

    bool includeReversePorts = false;
    std::list<detail::ConnectionRecord> records; // each disconnects one port; they are too large to be moved about
    detail::CommandScope scope;
};

RecursiveDisconnectAllCommand::RecursiveDisconnectAllCommand()
    : m_impl(std::make_unique<Impl>())
{
}

RecursiveDisconnectAllCommand::RecursiveDisconnectAllCommand(RecursiveDisconnectAllCommand&& other) noexcept = default;

RecursiveDisconnectAllCommand::~RecursiveDisconnectAllCommand() = default;

void RecursiveDisconnectAllCommand::Impl::begin(Container* container)
{
    records.clear();
    scope.setContainer(container);
}

bool RecursiveDisconnectAllCommand::disconnectAll(Container* container, AddRefWrapper<Node> const& node,
                                                  bool includeReversePorts)
{
    if (!m_impl || !container || !node)
        return false;
    m_impl->begin(container);
    m_impl->includeReversePorts = includeReversePorts;
    auto const bracket = m_impl->scope.openBracket();
    AddRefWrapper<Node> const kept(node);
    bool const inputsDone = m_impl->disconnect(kept->inputs());
    return m_impl->disconnect(kept->outputs()) && inputsDone;
}

// The two below keep the includeReversePorts of an earlier call for a node: a wanted oddity.

bool RecursiveDisconnectAllCommand::disconnectAll(Container* container, AddRefWrapper<Port> const& port)
{
    if (!m_impl || !container || !port)
        return false;
    m_impl->begin(container);
    auto const bracket = m_impl->scope.openBracket();
    AddRefWrapper<Port> const kept(port);
    return m_impl->disconnect(*kept);
}

bool RecursiveDisconnectAllCommand::disconnectAll(Container* container, PortList const& ports)
{
    if (!m_impl || !container)
        return false;
    m_impl->begin(container);
    auto const bracket = m_impl->scope.openBracket();
    return m_impl->disconnect(ports);
}

bool RecursiveDisconnectAllCommand::Impl::disconnect(PortList const& ports)
{
    // Hooks may change the list meanwhile.
    std::vector<AddRefWrapper<Port>> copies;
    for (AddRefWrapper<Port> const& port : ports)
        copies.push_back(port);
    bool isWhole = true;
    for (auto port = copies.rbegin(); port != copies.rend(); ++port)
        isWhole = disconnect(**port) && isWhole;
    return isWhole;
}

bool RecursiveDisconnectAllCommand::Impl::disconnect(Port& port)
{
    bool isWhole = !port.isConnected() || disconnectOne(port);
    if (includeReversePorts) {
        AddRefWrapper<Node> const node = port.getParentNode();
        AddRefWrapper<Compound> const compound = node ? node->getAsCompound() : AddRefWrapper<Compound>();
        AddRefWrapper<Port> const reverse =
            compound ? compound->getReversePort(AddRefWrapper<Port>(&port)) : AddRefWrapper<Port>();
        if (reverse && reverse->isConnected())
            isWhole = disconnectOne(*reverse) && isWhole;
    }
    if (AddRefWrapper<PortList> const children = port.children())
        isWhole = disconnect(*children) && isWhole;
    return isWhole;
}

bool RecursiveDisconnectAllCommand::Impl::disconnectOne(Port& port)
{
    AddRefWrapper<Port> const kept(&port);
    records.emplace_back().leaveBracketToWhole();
    return records.back().actNow(scope.container(), kept, kept, detail::ConnectionOperation::eDisconnectAll, false);
}

bool RecursiveDisconnectAllCommand::redo()
{
    if (!m_impl || !m_impl->scope.container())
        return false;
    auto const bracket = m_impl->scope.openBracket();
    bool isWhole = true;
    for (detail::ConnectionRecord& record : m_impl->records)
        isWhole = record.perform() && isWhole;
    return isWhole;
}

bool RecursiveDisconnectAllCommand::undo()
{
    return CommandAccess::undo(*this, nullptr);
}

void CommandAccess::leaveBracketToWhole(RecursiveDisconnectAllCommand& command)
{
    command.m_impl->scope.leaveBracketToWhole();
}

bool CommandAccess::undo(RecursiveDisconnectAllCommand& command, detail::Renamings const* renamings)
{
    if (!command.m_impl || !command.m_impl->scope.container())
        return false;
    auto const bracket = command.m_impl->scope.openBracket();
    std::list<detail::ConnectionRecord>& records = command.m_impl->records;
    bool isWhole = true;
    for (auto record = records.rbegin(); record != records.rend(); ++record)
        isWhole = record->undo(renamings) && isWhole;
    return isWhole;
}

} // namespace TAV_marlo_v1
