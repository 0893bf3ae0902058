#pragma once

#include "persistence/ElementSink.h"

#include <tav/Types.h>

#include <unordered_set>
#include <vector>

namespace TAV_marlo_v1 {

class Compound;
class Node;
class Port;
class PortList;

/// The nodes of one compound whose text is written: those named, or all of them.
class NodeSelection {
public:
    /// All nodes of the compound.
    explicit NodeSelection(Compound const& compound) noexcept
        : m_compound(&compound)
    {
    }
    /// These nodes.
    explicit NodeSelection(std::vector<Node*> const& nodes)
        : m_nodes(nodes.begin(), nodes.end())
    {
    }

    bool contains(Node const* node) const;

private:
    Compound const* m_compound = nullptr; // null: the set counts
    std::unordered_set<Node const*> m_nodes;
};

/// Writes element "connections" for a selection of nodes.
class ConnectionWriter {
public:
    ConnectionWriter(ElementSink& sink, NodeSelection const& selection) noexcept
        : m_sink(sink)
        , m_selection(selection)
    {
    }

    void writeConnections(Compound const& compound, std::vector<Node*> const& nodes, ESaveMode mode);

private:
    /// What drops a connection from a port P to a port Q.
    enum Filter : unsigned {
        eNoFilter = 0,
        eNotToInnerPort = 1, ///< Q is a compound's inner port
        eNotToSelected = 2,  ///< Q's node is selected: written from Q's side
        eOnlyToSelected = 4, ///< Q's node is not selected
        eNotThrough = 8      ///< both are inner ports
    };

    void writeList(PortList const& ports, unsigned filter);
    void writeOf(Port& port, unsigned filter);
    static bool canBeNamed(Port const& port, Port const& other) noexcept;
    bool isDropped(Port const& port, Port const& other, unsigned filter) const;
    void writeConnection(Port& port, Port& other);
    void writeEnd(Port& port);

    ElementSink& m_sink;
    NodeSelection const& m_selection;
};

} // namespace TAV_marlo_v1
