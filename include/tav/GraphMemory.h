#pragma once

#include <tav/Export.h>

namespace TAV_marlo_v1 {

class Compound;

/// What a graph takes in memory, by kind of object, in bytes. It is what the library asked the allocator for: the
/// allocator's own overhead comes on top, and so does what classes derived from Node and Compound add.
struct GraphMemory {
    struct Share {
        unsigned long long count = 0;
        unsigned long long bytes = 0;
    };

    Share nodes;       // of compounds too, with their lists of ports
    Share compounds;   // what is inside of a node, its lists of nodes and annotations
    Share ports;       // on all sides, with their children
    Share connections; // each counted once, though both ports list it
    Share values;      // default values of ports
    Share metadata;    // entries of ports, nodes, compounds and annotations, and options of ports
    Share annotations;
    Share texts; // names, types and keys; one that recurs counts once

    unsigned long long totalBytes() const noexcept
    {
        return nodes.bytes + compounds.bytes + ports.bytes + connections.bytes + values.bytes + metadata.bytes
               + annotations.bytes + texts.bytes;
    }
};

/// Of the compound, its owner node and everything inside. Takes time, and memory meanwhile, in proportion to the graph.
TAV_API GraphMemory measureMemory(Compound const& compound);

} // namespace TAV_marlo_v1
