#pragma once

#include <vector>

namespace tool {

/// For each node, the nodes it leads to.
using Edges = std::vector<std::vector<unsigned>>;

/// The groups of nodes that can reach each other: those of two or more, and nodes that lead to
/// themselves. Takes no stack that grows with the graph.
std::vector<std::vector<unsigned>> findCycles(Edges const& edges);

} // namespace tool
