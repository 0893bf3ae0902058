#include <tav/ConnectCommand.h>

#include "commands/ConnectionRecord.h"

namespace TAV_marlo_v1 {

using detail::ConnectionOperation;

struct ConnectCommand::Impl {
    detail::ConnectionRecord record;
};

ConnectCommand::ConnectCommand()
    : m_impl(std::make_unique<Impl>())
{
}

ConnectCommand::ConnectCommand(ConnectCommand&& other) noexcept = default;

ConnectCommand::~ConnectCommand() = default;

bool ConnectCommand::connect(Container* container, AddRefWrapper<Port> const& a, AddRefWrapper<Port> const& b,
                             bool copyMetaData)
{
    return m_impl && m_impl->record.actNow(container, a, b, ConnectionOperation::eConnect, copyMetaData);
}

bool ConnectCommand::disconnect(Container* container, AddRefWrapper<Port> const& a, AddRefWrapper<Port> const& b)
{
    return m_impl && m_impl->record.actNow(container, a, b, ConnectionOperation::eDisconnect, false);
}

bool ConnectCommand::disconnectAll(Container* container, AddRefWrapper<Port> const& port)
{
    return m_impl && m_impl->record.actNow(container, port, port, ConnectionOperation::eDisconnectAll, false);
}

bool ConnectCommand::redo()
{
    return m_impl && m_impl->record.perform();
}

bool ConnectCommand::undo()
{
    return m_impl && m_impl->record.undo();
}

} // namespace TAV_marlo_v1
