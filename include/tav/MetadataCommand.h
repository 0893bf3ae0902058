#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Export.h>

#include <memory>

namespace TAV_marlo_v1 {

class Container;
class PropertyList;
class StringArray;

/// Changes the metadata of a node, of a compound or of a watch point, in the order of recording. See
/// NodeCommand for what holds for every command.
class TAV_API MetadataCommand {
public:
    MetadataCommand();
    MetadataCommand(MetadataCommand&& other) noexcept;
    MetadataCommand(MetadataCommand const&) = delete;
    MetadataCommand& operator=(MetadataCommand const&) = delete;
    ~MetadataCommand();

    // One target for each command: a second one is refused and changes nothing.

    /// @return whether the path leads to a node now
    bool setParentNode(Container* container, char const* path);
    bool setParentCompound(Container* container, char const* path);
    /// The watch point of the port at that path; of two ports with one path the input.
    bool setParentWatchPoint(Container* container, char const* path);

    // Recording answers false without a target.

    /// Replaces the values of the key, or adds the entry.
    bool setMetadataValue(char const* key, char const* value);
    bool setMetadataValues(char const* key, StringArray const& values);
    bool removeMetadata(char const* key);
    /// Replaces the whole store.
    bool setFromPropertyList(PropertyList const& list);

    bool doit();
    bool redo();
    void undo();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl; // null once moved from
};

} // namespace TAV_marlo_v1
