#include <tav/ModifyNodePortCommand.h>

#include "commands/CommandAccess.h"
#include "commands/PortRecords.h"

namespace TAV_marlo_v1 {

struct ModifyNodePortCommand::Impl : detail::PortCommand {};

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
    return m_impl && m_impl->doit(/*wantsCompound=*/false);
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
    return command.m_impl && command.m_impl->undo(renamings);
}

} // namespace TAV_marlo_v1
