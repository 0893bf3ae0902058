#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Export.h>
#include <tav/StringArray.h>

#include <memory>

namespace TAV_marlo_v1 {

class Container;

/// Replaces compounds by their contents, the reverse of CreateCompoundCommand. Connections through the
/// compound's ports are joined; the values of its unconnected inputs go to the ports that they fed;
/// names that are taken are counted up; IO nodes go. A compound that is not explodable stays.
/// See NodeCommand for what holds for every command.
class TAV_API ExplodeCompoundCommand {
public:
    ExplodeCompoundCommand();
    ExplodeCompoundCommand(ExplodeCompoundCommand&& other) noexcept;
    ExplodeCompoundCommand(ExplodeCompoundCommand const&) = delete;
    ExplodeCompoundCommand& operator=(ExplodeCompoundCommand const&) = delete;
    ~ExplodeCompoundCommand();

    /// Where the compounds are. @return whether the path leads to a compound now
    bool setParentCompound(Container* container, char const* path);
    bool addCompound(char const* name);
    /// What moved out in the last run, under the names that it got.
    StringArray const& getCreatedNodeNames() const;
    StringArray const& getCreatedAnnotationNames() const;

    bool doit();
    bool redo();
    bool undo();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl; // null once moved from
};

} // namespace TAV_marlo_v1
