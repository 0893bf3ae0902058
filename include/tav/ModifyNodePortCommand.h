#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Export.h>
#include <tav/Types.h>

#include <memory>

namespace TAV_marlo_v1 {

class Container;
class PortProperties;
class StringArray;

/// Edits the ports of a node in the order of recording: of a compound's node the outside ports, of an IO
/// node the inner ones, in both cases with their other sides kept in step. Names are as for
/// ModifyCompoundPortCommand. See NodeCommand for what holds for every command.
class TAV_API ModifyNodePortCommand {
public:
    ModifyNodePortCommand();
    ModifyNodePortCommand(ModifyNodePortCommand&& other) noexcept;
    ModifyNodePortCommand(ModifyNodePortCommand const&) = delete;
    ModifyNodePortCommand& operator=(ModifyNodePortCommand const&) = delete;
    ~ModifyNodePortCommand();

    /// @return whether the path leads to a node now
    bool setParentNode(Container* container, char const* path);
    bool createPort(PortIOType ioType, char const* name, char const* typeName, PortProperties const& properties);
    bool deletePort(PortIOType ioType, char const* name);
    bool renamePort(PortIOType ioType, char const* name, char const* newName);
    bool movePort(PortIOType ioType, unsigned from, unsigned to);
    bool setPortDataType(PortIOType ioType, char const* name, char const* typeName);
    bool setPortValues(PortIOType ioType, char const* name, StringArray const& values);
    bool resetPortValues(PortIOType ioType, char const* name);
    /// A null value removes the entry.
    bool setPortMetaDataValue(PortIOType ioType, char const* name, char const* key, char const* value);
    /// @param flag one flag
    bool setPortFlag(PortIOType ioType, char const* name, PortFlags flag, bool on);

    bool doit();
    bool redo();
    void undo();

private:
    friend class CommandAccess;
    struct Impl;
    std::unique_ptr<Impl> m_impl; // null once moved from
};

} // namespace TAV_marlo_v1
