#pragma once

#include <tav/Compound.h>
#include <tav/Node.h>

#include <string>
#include <vector>

namespace TAV_marlo_v1 {

/// Replaces a compound's contents by those of one that was read and is in no graph.
///
/// Everything that can fail comes first: asking, renaming, collecting what goes. After that only
/// notifications need memory; where there is none they are lost, and the graph is right nevertheless.
class CompoundRestore {
public:
    CompoundRestore(Compound& target, AddRefWrapper<Node> const& stagedOwner);
    CompoundRestore(CompoundRestore const&) = delete;
    CompoundRestore& operator=(CompoundRestore const&) = delete;

    /// @return false, with the compound as it was, when it refuses an item; error() says which
    bool run();
    std::string const& error() const noexcept { return m_error; }

private:
    struct Contents {
        explicit Contents(Compound& compound);
        std::vector<AddRefWrapper<Node>> nodes;
        std::vector<AddRefWrapper<Annotation>> annotations;
        std::vector<AddRefWrapper<Port>> outerPorts;
        std::vector<AddRefWrapper<Port>> innerPorts;
    };

    bool ask();
    void rename();
    void dismiss() noexcept;
    void dismissPort(PortNotification& owner, AddRefWrapper<Port> const& port);
    void exchange() noexcept;
    void welcome() noexcept;
    bool refuse(char const* what, char const* name);

    AddRefWrapper<Compound> m_target;
    AddRefWrapper<Node> m_owner;
    AddRefWrapper<Node> m_stagedOwner;
    AddRefWrapper<Compound> m_staged;
    Contents m_going;
    Contents m_coming;
    bool m_metadataDiffers = false;
    std::string m_error;
};

} // namespace TAV_marlo_v1
