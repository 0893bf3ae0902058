#pragma once

#include <tav/kit/Export.h>

#include <tav/Compound.h>
#include <tav/Container.h>
#include <tav/StatusStr.h>

#include <memory>

namespace TAV_marlo_v1::kit {

/// A top-level graph that lives in a file. Paths are UTF-8.
///
/// The top compound stays the same object for the document's whole life: opening replaces what is in
/// it. StandardRuntime::makeCompound makes it; with a runtime of another kind it is a StandardCompound.
/// Errors name the file and, where text is wrong, line and column.
class TAV_KIT_API Document : public Container {
public:
    struct Impl; // the private record, known inside the kit alone

    /// An empty document. The runtime, which may be null, is not owned and has to live longer; the
    /// document is registered with it.
    explicit Document(Runtime* runtime);
    ~Document() override;

    /// Empties the document, which then has no file.
    void newDocument(char const* name = "untitled");
    /// Reads the whole file or changes nothing at all.
    [[nodiscard]] StatusStr open(char const* path);
    /// As open, for text that has no file.
    /// @param sourceName stands in front of an error message
    [[nodiscard]] StatusStr openText(char const* bytes, unsigned long long size, char const* sourceName = "text");
    /// Writes the file that was opened or saved last. The new text is written beside the file and takes
    /// its place once it is on the disk: whatever fails leaves the old file.
    [[nodiscard]] StatusStr save();
    /// As save, to another file, which is the document's from then on.
    [[nodiscard]] StatusStr saveAs(char const* path);

    /// Whether anything that is saved has changed since the document was opened, saved or made; not when
    /// its UndoStack is back at that state. States and messages of nodes are not saved, but a compound's
    /// flags are. A change inside an open bracket counts once that closes.
    bool hasUnsavedChanges() const noexcept;
    AddRefWrapper<Compound> getTopCompound() const;

    /// The file's name without its folder; without file the top node's name.
    char const* getName() const override;
    char const* getFilePath() const override;
    /// Does nothing: nodes are copies of their presets, and no compound stands for a definition.
    void rebuildCompounds() override;
    /// The file is there and may not be written.
    bool isReadOnly() const override;
    Runtime* getRuntime() const override;

private:
    void setPath(char const* path);
    void replaced(char const* path);

    friend class UndoStack;
    std::unique_ptr<Impl> m_impl; // never null; kit/src/DocumentImpl.h
};

} // namespace TAV_marlo_v1::kit
