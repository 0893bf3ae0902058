#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/CopyPasteCommandBase.h>
#include <tav/Export.h>

#include <memory>

namespace TAV_marlo_v1 {

class Compound;
class Container;

/// Puts nodes and annotations of a compound on the clipboard, with the connections between the nodes. It
/// changes no graph and is not undone.
class TAV_API CopyCommand : public CopyPasteCommandBase {
public:
    CopyCommand();
    /// As setParentCompound, with the compound's container and path.
    explicit CopyCommand(AddRefWrapper<Compound> const& compound);
    CopyCommand(CopyCommand&& other) noexcept;
    CopyCommand(CopyCommand const&) = delete;
    CopyCommand& operator=(CopyCommand const&) = delete;
    ~CopyCommand();

    /// @return whether the path leads to a compound now
    bool setParentCompound(Container* container, char const* path);
    /// @return false, with nothing added: there is no such node
    bool addSourceNode(char const* name);
    bool addSourceAnnotation(char const* name);

    bool doit();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl; // null once moved from
};

} // namespace TAV_marlo_v1
