#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Export.h>
#include <tav/Types.h>

#include <memory>

namespace TAV_marlo_v1 {

class Container;
class PortProperties;
class StringArray;

/// Edits the ports of a compound, both sides in step, in the order of recording. See NodeCommand for
/// what holds for every command.
///
/// Ports are named by the direction of their outside and by name, children and members by dotted name;
/// names may be those that an earlier record of the command makes. Values are those of the inside with
/// `inner`, else of the outside; a flag is the outside's. Data types are named as the runtime names
/// them; "" is none.
class TAV_API ModifyCompoundPortCommand {
public:
    ModifyCompoundPortCommand();
    ModifyCompoundPortCommand(ModifyCompoundPortCommand&& other) noexcept;
    ModifyCompoundPortCommand(ModifyCompoundPortCommand const&) = delete;
    ModifyCompoundPortCommand& operator=(ModifyCompoundPortCommand const&) = delete;
    ~ModifyCompoundPortCommand();

    /// @return whether the path leads to a compound now
    bool setParentCompound(Container* container, char const* path);
    bool createPort(PortIOType ioType, char const* name, char const* typeName, PortProperties const& properties);
    bool deletePort(PortIOType ioType, char const* name);
    bool renamePort(PortIOType ioType, char const* name, char const* newName);
    bool movePort(PortIOType ioType, unsigned from, unsigned to);
    bool setPortDataType(PortIOType ioType, char const* name, char const* typeName);
    bool setPortValues(PortIOType ioType, char const* name, StringArray const& values, bool inner);
    bool resetPortValues(PortIOType ioType, char const* name, bool inner);
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
