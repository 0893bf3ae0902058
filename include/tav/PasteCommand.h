#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/CopyPasteCommandBase.h>
#include <tav/Export.h>

#include <memory>

namespace TAV_marlo_v1 {

class Compound;
class Container;

/// Adds what the clipboard holds to a compound, all of it or nothing. See NodeCommand for what holds
/// for every command.
///
/// doit() keeps the text, so that redo() does not depend on the clipboard; names may then turn out
/// otherwise than the first time.
class TAV_API PasteCommand : public CopyPasteCommandBase {
public:
    PasteCommand();
    /// As setParentCompound, with the compound's container and path.
    explicit PasteCommand(AddRefWrapper<Compound> const& compound);
    PasteCommand(PasteCommand&& other) noexcept;
    PasteCommand(PasteCommand const&) = delete;
    PasteCommand& operator=(PasteCommand const&) = delete;
    ~PasteCommand();

    /// @return whether the path leads to a compound now
    bool setParentCompound(Container* container, char const* path);
    /// Connects the inputs of pasted nodes as those of the nodes of the names they had in the text, where
    /// these are still in the compound. Off at first.
    void duplicateSourceInputConnections(bool on);

    /// @return false, with nothing changed: no compound, or text that can't be used
    bool doit();
    bool redo();
    bool undo();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl; // null once moved from
};

} // namespace TAV_marlo_v1
