#include <tav/NewConnectCommand.h>

#include "commands/ConnectionRecord.h"

namespace TAV_marlo_v1 {

using detail::ConnectionOperation;

struct NewConnectCommand::Impl {
    detail::ConnectionRecord record;
};

NewConnectCommand::NewConnectCommand()
    : m_impl(std::make_unique<Impl>())
{
}

NewConnectCommand::NewConnectCommand(NewConnectCommand&& other) noexcept = default;

NewConnectCommand::~NewConnectCommand() = default;

bool NewConnectCommand::connect(Container* container, AddRefWrapper<Port> const& a, AddRefWrapper<Port> const& b,
                                bool copyMetaData)
{
    return m_impl && m_impl->record.record(container, a, b, ConnectionOperation::eConnect, copyMetaData);
}

bool NewConnectCommand::disconnect(Container* container, AddRefWrapper<Port> const& a, AddRefWrapper<Port> const& b)
{
    return m_impl && m_impl->record.record(container, a, b, ConnectionOperation::eDisconnect, false);
}

bool NewConnectCommand::disconnectAll(Container* container, AddRefWrapper<Port> const& port)
{
    return m_impl && m_impl->record.record(container, port, port, ConnectionOperation::eDisconnectAll, false);
}

bool NewConnectCommand::doit()
{
    return m_impl && m_impl->record.perform();
}

bool NewConnectCommand::redo()
{
    return m_impl && m_impl->record.perform();
}

bool NewConnectCommand::undo()
{
    return m_impl && m_impl->record.undo();
}

} // namespace TAV_marlo_v1
