#pragma once

#include "persistence/ItemCommit.h"

#include <unordered_map>

namespace TAV_marlo_v1 {

/// The last step of a commit: the connections of new nodes with inner ports of the compound itself,
/// which were read onto the inner ports of the compound that stood in for it. They are made like any
/// connection with a port in a graph: asked and told. Their order is that of the text.
class InnerConnections {
public:
    explicit InnerConnections(ItemCommit& commit) noexcept
        : m_commit(commit)
    {
    }

    void connect();

private:
    using Order = std::vector<Port*>;

    /// The connections of a port as they are to be in the end.
    struct Wanted {
        Port* port;
        Order order;
    };

    /// A link of a stood-in port with another port.
    struct Link {
        Port* stagedPort;
        Port* stagedOther;
    };

    void collect(PortList const& staged);
    void collect(Port& staged);
    /// The compound's own port for a stood-in one, any other port itself; null when there is none.
    Port* realPort(Port& port) const;
    bool isStoodIn(Port& port) const { return m_real.count(&port) != 0; }
    void recordOrders();
    Order realOrder(Port& port) const;
    void make(Link const& link);
    void moveWatchPoint(Port& staged, Port& real);
    void warnOfMissing(Port& found, Port& missing);
    void warn(Port& port, std::string const& text);
    void putInOrder();
    void tellOwner();

    ItemCommit& m_commit;
    std::unordered_map<Port*, Port*> m_real;   // stood-in ports to real ones, null when missing
    std::vector<AddRefWrapper<Port>> m_staged; // the stood-in ports with connections, in order
    std::vector<Link> m_links;
    std::vector<Wanted> m_wanted;
    std::string m_ownerText; // one message at the end, as that can't be taken back
};

} // namespace TAV_marlo_v1
