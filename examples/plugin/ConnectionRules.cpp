#include "ConnectionRules.h"

#include <tav/Node.h>
#include <tav/PortDataType.h>
#include <tav/PortList.h>

#include <unordered_set>
#include <vector>

using namespace TAV_marlo_v1;

namespace arithmetic {

namespace {

/// Whether what `start` computes goes into `goal`. A compound passes on everything that goes into it.
bool feeds(AddRefWrapper<Node> const& start, Node const* goal)
{
    // No recursion: a chain of nodes may be longer than any stack.
    std::vector<AddRefWrapper<Node>> open{start};
    std::unordered_set<Node const*> seen{start.get()};
    while (!open.empty()) {
        AddRefWrapper<Node> const node = open.back();
        open.pop_back();
        if (node.get() == goal)
            return true;
        for (AddRefWrapper<Port> const& output : node->outputs()) {
            for (AddRefWrapper<Port> const& taker : output->connectedTo()) {
                AddRefWrapper<Node> const next = taker->getParentNode();
                // An inner port leads out of this sub-graph.
                if (!taker->isCompoundInternalPort() && seen.insert(next.get()).second)
                    open.push_back(next);
            }
        }
    }
    return false;
}

} // namespace

bool mayConnect(Port const& port, Port const& other)
{
    if (port.getPortIOType() == other.getPortIOType())
        return false;
    Port const& giver = port.getPortIOType() == eOutput ? port : other;
    Port const& taker = port.getPortIOType() == eOutput ? other : port;
    if (taker.isConnected() || giver.getDataType() != taker.getDataType())
        return false;
    bool const isBetweenNodes = !giver.isCompoundInternalPort() && !taker.isCompoundInternalPort();
    return !isBetweenNodes || !feeds(taker.getParentNode(), giver.getParentNode().get());
}

} // namespace arithmetic
