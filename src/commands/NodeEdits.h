#pragma once

#include "commands/ConnectionEdits.h"
#include "commands/EditLog.h"
#include "commands/NodeExtras.h"
#include "commands/NodeState.h"
#include "commands/PortState.h"

#include <tav/Compound.h>

#include <optional>
#include <vector>

namespace TAV_marlo_v1::detail {

/// A node that was removed, after everything connected to it had been cut: what brings it back to its
/// old place, exactly.
class RemovedNode {
public:
    /// Notes down a node that is still in its compound and is about to go.
    explicit RemovedNode(Node const& node);

    /// @return empty when the compound is gone, or after a veto
    AddRefWrapper<Node> restore(Scene const& scene) const;
    /// For an IO node that stayed after all: the compound ports that went.
    void restorePorts(Scene const& scene) const;
    /// Of the node restored, or of the one that stayed: those that went unnoted by anybody else.
    void restoreConnections(Scene const& scene) const { m_connections.restore(scene); }

private:
    struct PortPair {
        PortState outside, inside;
    };

    AddRefWrapper<Node> add(Compound& compound) const;
    void noteShownPorts(Node const& node);
    void restoreShownPorts(Compound& compound) const;

    NodeAddress m_compound;
    unsigned m_index;
    std::optional<NodeState> m_state; // for a node that this suffices for; any other is saved as text
    bool m_isSavedAsCompound;         // otherwise as a node, which a referenced compound is too
    std::optional<String> m_text;
    NodeExtras m_extras;
    LostConnections m_connections;
    // Of an IO node: the compound ports that it shows, which go with it.
    bool m_isShowing = false;
    PortIOType m_shownType = eInput; // of their outside
    std::vector<PortPair> m_shown;
};

/// The ports that a compound has, so that those which came later can be told.
class CompoundPortNames {
public:
    CompoundPortNames() = default;
    explicit CompoundPortNames(Compound const& compound);
    void deleteOthers(Compound& compound) const;

private:
    std::vector<SharedTextRef> m_inputs, m_outputs;
};

/// Takes a node out again that a command has put in, with the compound ports that came with it: an IO
/// node leaves those that were there before.
bool removeCreatedNode(Compound& compound, AddRefWrapper<Node> const& node, CompoundPortNames const& before);

/// Removes a node that nothing is connected to; noted in the log.
bool removeNode(EditLog& log, Node& node);
/// Moves a node to the end of another compound, as it is. @see CompoundAccess::moveNode
bool moveNode(EditLog& log, Node& node, Compound& target);
/// Compound::createNewCompound. @return empty after a veto, or when the parent makes none
AddRefWrapper<Compound> createCompound(EditLog& log, Compound& parent, char const* name);

} // namespace TAV_marlo_v1::detail
