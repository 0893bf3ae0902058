#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Export.h>

#include <memory>

namespace TAV_marlo_v1 {

class Container;

/// Groups nodes and annotations of a compound: they move into a new compound inside it, in their order,
/// with everything that belongs to them. See NodeCommand for what holds for every command.
///
/// A connection across the new border goes through a compound port: one input for each source outside,
/// named after the first port that it feeds, one output for each output inside. The compound gets IO
/// nodes if Compound::createIONode makes them. A selection that can't be grouped
/// (Compound::canCreateCompound) changes nothing.
class TAV_API CreateCompoundCommand {
public:
    CreateCompoundCommand();
    CreateCompoundCommand(CreateCompoundCommand&& other) noexcept;
    CreateCompoundCommand(CreateCompoundCommand const&) = delete;
    CreateCompoundCommand& operator=(CreateCompoundCommand const&) = delete;
    ~CreateCompoundCommand();

    /// Where the items are. @return whether the path leads to a compound now
    bool setParentCompound(Container* container, char const* path);
    bool addNode(char const* name);
    bool addAnnotation(char const* name);
    /// Without a name it is "compound"; a taken one is counted up.
    bool setCompoundName(char const* name);
    /// The name that the compound got in the last run; "" before.
    char const* getCreatedCompoundName() const;

    bool doit();
    bool redo();
    bool undo();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl; // null once moved from
};

} // namespace TAV_marlo_v1
