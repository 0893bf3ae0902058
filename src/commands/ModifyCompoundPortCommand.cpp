#include <tav/ModifyCompoundPortCommand.h>

#include "commands/CommandAccess.h"
#include "commands/PortRecords.h"

namespace TAV_marlo_v1 {

struct ModifyCompoundPortCommand::Impl : detail::PortCommand {};

ModifyCompoundPortCommand::ModifyCompoundPortCommand()
    : m_impl(std::make_unique<Impl>())
{
}

ModifyCompoundPortCommand::ModifyCompoundPortCommand(ModifyCompoundPortCommand&& other) noexcept = default;

ModifyCompoundPortCommand::~ModifyCompoundPortCommand() = default;

bool ModifyCompoundPortCommand::setParentCompound(Container* container, char const* path)
{
    return m_impl && m_impl->target.setCompound(container, path);
}

// ---- recording

bool ModifyCompoundPortCommand::createPort(PortIOType ioType, char const* name, char const* typeName,
                                           PortProperties const& properties)
{
    return m_impl && m_impl->records.createPort(ioType, name, typeName, properties);
}

bool ModifyCompoundPortCommand::deletePort(PortIOType ioType, char const* name)
{
    return m_impl && m_impl->records.deletePort(ioType, name);
}

bool ModifyCompoundPortCommand::renamePort(PortIOType ioType, char const* name, char const* newName)
{
    return m_impl && m_impl->records.renamePort(ioType, name, newName);
}

bool ModifyCompoundPortCommand::movePort(PortIOType ioType, unsigned from, unsigned to)
{
    return m_impl && m_impl->records.movePort(ioType, from, to);
}

bool ModifyCompoundPortCommand::setPortDataType(PortIOType ioType, char const* name, char const* typeName)
{
    return m_impl && m_impl->records.setPortDataType(ioType, name, typeName);
}

bool ModifyCompoundPortCommand::setPortValues(PortIOType ioType, char const* name, StringArray const& values,
                                              bool inner)
{
    return m_impl && m_impl->records.setPortValues(ioType, name, values, inner);
}

bool ModifyCompoundPortCommand::resetPortValues(PortIOType ioType, char const* name, bool inner)
{
    return m_impl && m_impl->records.resetPortValues(ioType, name, inner);
}

bool ModifyCompoundPortCommand::setPortMetaDataValue(PortIOType ioType, char const* name, char const* key,
                                                     char const* value)
{
    return m_impl && m_impl->records.setPortMetaDataValue(ioType, name, key, value);
}

bool ModifyCompoundPortCommand::setPortFlag(PortIOType ioType, char const* name, PortFlags flag, bool on)
{
    return m_impl && m_impl->records.setPortFlag(ioType, name, flag, on);
}

// ---- doit and undo

bool ModifyCompoundPortCommand::doit()
{
    return m_impl && m_impl->doit(/*wantsCompound=*/true);
}

bool ModifyCompoundPortCommand::redo()
{
    return doit();
}

void ModifyCompoundPortCommand::undo()
{
    CommandAccess::undo(*this, nullptr);
}

bool CommandAccess::undo(ModifyCompoundPortCommand& command, detail::Renamings const* renamings)
{
    return command.m_impl && command.m_impl->undo(renamings);
}

} // namespace TAV_marlo_v1
