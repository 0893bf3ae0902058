#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Annotation.h>
#include <tav/Export.h>
#include <tav/StringArray.h>

#include <memory>

namespace TAV_marlo_v1 {

class Container;

/// Makes, removes, renames and changes annotations of a compound, in the order of recording. See
/// NodeCommand for what holds for every command.
class TAV_API ModifyCompoundAnnotationCommand {
public:
    ModifyCompoundAnnotationCommand();
    ModifyCompoundAnnotationCommand(ModifyCompoundAnnotationCommand&& other) noexcept;
    ModifyCompoundAnnotationCommand(ModifyCompoundAnnotationCommand const&) = delete;
    ModifyCompoundAnnotationCommand& operator=(ModifyCompoundAnnotationCommand const&) = delete;
    ~ModifyCompoundAnnotationCommand();

    /// @return whether the path leads to a compound now
    bool setParentCompound(Container* container, char const* path);
    /// A taken name becomes the next free one.
    bool createAnnotation(Annotation::AnnotationType type, char const* name);
    bool removeAnnotation(char const* name);
    bool renameAnnotation(char const* name, char const* newName);
    bool setAnnotationMetadata(char const* name, char const* key, StringArray const& values);
    bool removeAnnotationMetadata(char const* name, char const* key);
    /// @see Compound::createStickyNoteFromBackdrop
    bool createStickyNoteFromBackdrop(char const* name);
    /// The names of what the last run created, in the order of creation.
    StringArray const& getCreatedAnnotationNames() const;

    bool doit();
    bool redo();
    void undo();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl; // null once moved from
};

} // namespace TAV_marlo_v1
