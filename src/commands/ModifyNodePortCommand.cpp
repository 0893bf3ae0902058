#include <tav/ModifyNodePortCommand.h>

#include "commands/CommandAccess.h"
#include "commands/CommandScope.h"
#include "commands/PortRecords.h"

namespace TAV_marlo_v1 {

struct ModifyNodePortCommand::Impl {
    detail::CommandTarget target;
    detail::PortRecords records;
    detail::EditLog log;
};

ModifyNodePortCommand::ModifyNodePortCommand()
    : m_impl(std::make_unique<Impl>())
{
}

ModifyNodePortCommand::ModifyNodePortCommand(ModifyNodePortCommand&& other) noexcept = default;

ModifyNodePortCommand::~ModifyNodePortCommand() = default;

bool ModifyNodePortCommand::setParentNode(Container* container, char const* path)
{
    return m_impl && m_impl->target.setNode(container, path);
}

// ---- recording

bool ModifyNodePortCommand::createPort(PortIOType ioType, char const* name, char const* typeName,
                                       PortProperties const& properties)
{
    return m_impl && m_impl->records.createPort(ioType, name, typeName, properties);
}

bool ModifyNodePortCommand::deletePort(PortIOType ioType, char const* name)
{
    return m_impl && m_impl->records.deletePort(ioType, name);
}

bool ModifyNodePortCommand::renamePort(PortIOType ioType, char const* name, char const* newName)
{
    return m_impl && m_impl->records.renamePort(ioType, name, newName);
}

bool ModifyNodePortCommand::movePort(PortIOType ioType, unsigned from, unsigned to)
{
    return m_impl && m_impl->records.movePort(ioType, from, to);
}

bool ModifyNodePortCommand::setPortDataType(PortIOType ioType, char const* name, char const* typeName)
{
    return m_impl && m_impl->records.setPortDataType(ioType, name, typeName);
}

bool ModifyNodePortCommand::setPortValues(PortIOType ioType, char const* name, StringArray const& values)
{
    return m_impl && m_impl->records.setPortValues(ioType, name, values, /*onInside=*/false);
}

bool ModifyNodePortCommand::resetPortValues(PortIOType ioType, char const* name)
{
    return m_impl && m_impl->records.resetPortValues(ioType, name, /*onInside=*/false);
}

bool ModifyNodePortCommand::setPortMetaDataValue(PortIOType ioType, char const* name, char const* key,
                                                 char const* value)
{
    return m_impl && m_impl->records.setPortMetaDataValue(ioType, name, key, value);
}

bool ModifyNodePortCommand::setPortFlag(PortIOType ioType, char const* name, PortFlags flag, bool on)
{
    return m_impl && m_impl->records.setPortFlag(ioType, name, flag, on);
}

// ---- doit and undo

bool ModifyNodePortCommand::doit()
{
    if (!m_impl || m_impl->records.empty())
        return false;
    m_impl->log.clear();
    AddRefWrapper<Node> const node = m_impl->target.findNode();
    if (!node)
        return false;
    ChangeBracket const bracket = m_impl->target.scope().openBracket();
    return m_impl->records.perform(m_impl->log, *node);
}

bool ModifyNodePortCommand::redo()
{
    return doit();
}

void ModifyNodePortCommand::undo()
{
    CommandAccess::undo(*this, nullptr);
}

bool CommandAccess::undo(ModifyNodePortCommand& command, detail::Renamings const* renamings)
{
    if (!command.m_impl)
        return false;
    detail::CommandScope& scope = command.m_impl->target.scope();
    ChangeBracket const bracket = scope.openBracket();
    return command.m_impl->log.takeBack({scope.container(), renamings});
}

} // namespace TAV_marlo_v1
