#pragma once

#include "commands/PortState.h"

#include <tav/Compound.h>

#include <vector>

namespace TAV_marlo_v1::detail {

/// A node of the library's own class that holds no compound and shows no ports of one, without its place,
/// its connections and what NodeExtras keeps. Any other node is kept as text: its class, or the reader,
/// knows better what belongs to it. This way costs a third of writing and reading.
class NodeState {
public:
    static bool suffices(Node const& node);
    explicit NodeState(Node const& node);

    /// Adds a node like it at the end of the compound: made by the compound as for text, asked and told.
    /// @return empty after a veto
    AddRefWrapper<Node> restoreInto(Compound& compound) const;

private:
    AddRefWrapper<Node> build(Compound& compound) const;

    SharedTextRef m_name;
    SharedTextRef m_type;
    NodeFlags m_flags;
    PropertyList m_metadata;
    std::vector<PortState> m_inputs, m_outputs;
};

} // namespace TAV_marlo_v1::detail
