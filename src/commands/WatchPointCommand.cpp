#include <tav/WatchPointCommand.h>

#include "commands/CommandAccess.h"
#include "commands/CommandScope.h"
#include "commands/WatchPointState.h"

namespace TAV_marlo_v1 {

struct WatchPointCommand::Impl {
    enum class Operation { eSet, eRemove, eEnable, eDisable };
    struct Record {
        Operation operation;
        detail::PortAddress port;
    };

    bool record(Container* container, AddRefWrapper<Port> const& port, Operation operation);
    bool perform(Record const& record);

    detail::CommandScope scope;
    std::vector<Record> records;
    detail::EditLog log;
};

WatchPointCommand::WatchPointCommand()
    : m_impl(std::make_unique<Impl>())
{
}

WatchPointCommand::WatchPointCommand(WatchPointCommand&& other) noexcept = default;

WatchPointCommand::~WatchPointCommand() = default;

bool WatchPointCommand::Impl::record(Container* container, AddRefWrapper<Port> const& port, Operation operation)
{
    if (!container || !port)
        return false;
    records.push_back({operation, detail::PortAddress(*port)});
    scope.setContainerOnce(container);
    return true;
}

bool WatchPointCommand::setWatchPoint(Container* container, AddRefWrapper<Port> const& port)
{
    return m_impl && m_impl->record(container, port, Impl::Operation::eSet);
}

bool WatchPointCommand::removeWatchPoint(Container* container, AddRefWrapper<Port> const& port)
{
    return m_impl && m_impl->record(container, port, Impl::Operation::eRemove);
}

bool WatchPointCommand::enableWatchPoint(Container* container, AddRefWrapper<Port> const& port, bool on)
{
    return m_impl && m_impl->record(container, port, on ? Impl::Operation::eEnable : Impl::Operation::eDisable);
}

bool WatchPointCommand::doit()
{
    if (!m_impl || m_impl->records.empty() || !m_impl->scope.container())
        return false;
    m_impl->log.clear();
    auto const bracket = m_impl->scope.openBracket();
    bool isWhole = true;
    for (Impl::Record const& record : m_impl->records)
        isWhole = m_impl->perform(record) && isWhole;
    return isWhole;
}

bool WatchPointCommand::Impl::perform(Record const& record)
{
    AddRefWrapper<Port> const port = record.port.find(scope.scene());
    if (!port)
        return false;
    switch (record.operation) {
    case Operation::eSet:
        return detail::setWatchPoint(log, *port);
    case Operation::eRemove:
        return detail::removeWatchPoint(log, *port);
    case Operation::eEnable:
    case Operation::eDisable:
        return detail::enableWatchPoint(log, *port, record.operation == Operation::eEnable);
    }
    return false;
}

bool WatchPointCommand::redo()
{
    return doit();
}

void WatchPointCommand::undo()
{
    CommandAccess::undo(*this, nullptr);
}

bool CommandAccess::undo(WatchPointCommand& command, detail::Renamings const* renamings)
{
    if (!command.m_impl || !command.m_impl->scope.container())
        return false;
    auto const bracket = command.m_impl->scope.openBracket();
    return command.m_impl->log.takeBack({command.m_impl->scope.container(), renamings});
}

} // namespace TAV_marlo_v1
