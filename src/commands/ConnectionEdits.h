#pragma once

#include "commands/EditLog.h"

namespace TAV_marlo_v1::detail {

/// Port::removeConnection; taken back, the connection has its old place in both lists. Nobody is asked then,
/// only told: rules that would refuse the connection today did not keep it from being there.
bool cutConnection(EditLog& log, Port& a, Port& b);

/// As cutConnection, for every connection of the port and of its children.
/// @return whether all were cut
bool cutConnectionsBelow(EditLog& log, Port& port);

/// Port::addConnection; taken back, metadata that was copied is again as it was.
bool makeConnection(EditLog& log, Port& a, Port& b, bool copyMetadata);

/// The connections of a node that are about to go with it, untold: those that its owner would not cut.
class LostConnections {
public:
    /// Of an IO node also those at the outside of the compound ports that it shows.
    explicit LostConnections(Node const& node);
    /// Makes those again that are not there.
    void restore(Scene const& scene) const;

private:
    struct Connection {
        PortAddress mine, other;
        unsigned placeInMine, placeInOther;
    };
    void note(PortList const& list, bool withTwins);
    void note(Port const& port, bool withTwins);

    std::vector<Connection> m_connections;
};

} // namespace TAV_marlo_v1::detail
