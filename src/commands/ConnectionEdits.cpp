#include "commands/ConnectionEdits.h"

#include "commands/PortMetadataState.h"
#include "graph/PortImpl.h"

#include <tav/Compound.h>

#include <algorithm>
#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace TAV_marlo_v1::detail {

namespace {

unsigned placeOf(Port const& other, Port const& port)
{
    return PortAccess::connections(port).indexOf(&other);
}

class CutConnection final : public Edit {
public:
    CutConnection(Port& a, Port& b, unsigned placeInA)
        : m_a(a)
        , m_b(b)
        , m_placeInA(placeInA)
        , m_placeInB(placeOf(a, b))
        , m_countBefore(a.connectedTo().size())
    {
    }

    bool takeBack(Scene const& scene) override
    {
        AddRefWrapper<Port> const a = m_a.find(scene);
        AddRefWrapper<Port> const b = m_b.find(scene);
        if (!a || !b)
            return false;
        if (a->connectedTo().size() == m_countBefore)
            return true; // it was never cut
        PortAccess::connectAgain(*a, *b);
        PortAccess::placeConnection(*a, *b, m_placeInA);
        PortAccess::placeConnection(*b, *a, m_placeInB);
        return true;
    }

private:
    PortAddress m_a, m_b;
    unsigned m_placeInA, m_placeInB;
    unsigned m_countBefore; // at the first port
};

/// The outside of the compound port that a connection of the two copies metadata to.
AddRefWrapper<Port> metadataTarget(Port& a, Port& b)
{
    if (a.isCompoundInternalPort() == b.isCompoundInternalPort())
        return {};
    Port& inner = a.isCompoundInternalPort() ? a : b;
    AddRefWrapper<Compound> const compound = inner.getParentCompound();
    return compound ? compound->getReversePort(AddRefWrapper<Port>(&inner)) : AddRefWrapper<Port>();
}

class MadeConnection final : public Edit {
public:
    MadeConnection(Port& a, Port& b, bool copyMetadata)
        : m_a(a)
        , m_b(b)
        , m_countBefore(a.connectedTo().size())
    {
        AddRefWrapper<Port> const target = copyMetadata ? metadataTarget(a, b) : AddRefWrapper<Port>();
        if (!target)
            return;
        m_target = PortAddress(*target);
        m_metadata.emplace(*target);
    }

    bool takeBack(Scene const& scene) override
    {
        AddRefWrapper<Port> const a = m_a.find(scene);
        AddRefWrapper<Port> const b = m_b.find(scene);
        if (!a || !b)
            return false;
        bool isWhole = a->connectedTo().size() == m_countBefore || removeNewest(*a, *b);
        if (m_metadata) {
            AddRefWrapper<Port> const target = m_target.find(scene);
            isWhole = target && m_metadata->restore(*target) && isWhole;
        }
        return isWhole;
    }

private:
    /// Where the two are connected more than once, the first connection is what goes: the last one then
    /// takes its places.
    static bool removeNewest(Port& a, Port& b)
    {
        unsigned const placeInA = placeOf(b, a);
        unsigned const placeInB = placeOf(a, b);
        if (!a.removeConnection(AddRefWrapper<Port>(&b)))
            return false;
        if (placeOf(b, a) != kNotFound) {
            PortAccess::placeConnection(a, b, placeInA);
            PortAccess::placeConnection(b, a, placeInB);
        }
        return true;
    }

    PortAddress m_a, m_b;
    unsigned m_countBefore;
    PortAddress m_target;
    std::optional<PortMetadataState> m_metadata;
};

} // namespace

bool cutConnection(EditLog& log, Port& a, Port& b)
{
    AddRefWrapper<Port> const first(&a);
    AddRefWrapper<Port> const second(&b);
    unsigned const placeInA = placeOf(b, a);
    if (placeInA == kNotFound)
        return a.removeConnection(second); // nothing to cut, but the owner is asked and told all the same
    return log.change(std::make_unique<CutConnection>(a, b, placeInA), [&] { return a.removeConnection(second); });
}

bool cutConnectionsBelow(EditLog& log, Port& port)
{
    bool isWhole = true;
    // From the last to the first: what is refused stays behind `left`.
    for (unsigned left = port.connectedTo().size(); left > 0;) {
        left = std::min(left, port.connectedTo().size());
        if (left == 0)
            break;
        AddRefWrapper<Port> const other = port.connectedTo()[--left];
        isWhole = cutConnection(log, port, *other) && isWhole;
    }
    if (AddRefWrapper<PortList> const children = port.children()) {
        for (unsigned i = children->size(); i-- > 0;) {
            if (AddRefWrapper<Port> const child = (*children)[i])
                isWhole = cutConnectionsBelow(log, *child) && isWhole;
        }
    }
    return isWhole;
}

bool makeConnection(EditLog& log, Port& a, Port& b, bool copyMetadata)
{
    AddRefWrapper<Port> const first(&a);
    AddRefWrapper<Port> const second(&b);
    return log.change(std::make_unique<MadeConnection>(a, b, copyMetadata),
                      [&] { return a.addConnection(second, copyMetadata); });
}

// ---- connections that go with their node

namespace {

/// The place of the connection with `other` in the port's list that has so many like it in front.
unsigned placeOfRepeated(Port const& other, Port const& port, unsigned inFront)
{
    unsigned place = placeOf(other, port);
    for (; inFront > 0 && place != kNotFound; --inFront) {
        do
            ++place;
        while (place < port.connectedTo().size() && port.connectedTo()[place].get() != &other);
    }
    return place;
}

/// How often each pair is connected now, as far as it was asked for.
class PresentConnections {
public:
    /// Whether there is one left that was not taken yet.
    bool take(Port const& port, Port const& other)
    {
        if (m_seen.insert(&port).second) {
            for (AddRefWrapper<Port> const& present : port.connectedTo())
                ++m_counts[{&port, present.get()}];
        }
        unsigned& count = m_counts[{&port, &other}];
        return count > 0 && count-- > 0;
    }

private:
    std::unordered_set<Port const*> m_seen;
    std::map<std::pair<Port const*, Port const*>, unsigned> m_counts;
};

} // namespace

LostConnections::LostConnections(Node const& node)
{
    note(node.inputs(), node.testFlag(eAnyIO));
    note(node.outputs(), node.testFlag(eAnyIO));
}

void LostConnections::note(PortList const& list, bool withTwins)
{
    PortAccess::impl(list).ports.forEach([&](Port const& port) { note(port, withTwins); });
}

void LostConnections::note(Port const& port, bool withTwins)
{
    unsigned place = 0;
    std::unordered_map<Port const*, unsigned> met; // ports may be connected more than once
    for (AddRefWrapper<Port> const& other : port.connectedTo()) {
        unsigned const placeInOther = placeOfRepeated(port, *other, met[other.get()]++);
        m_connections.push_back({PortAddress(port), PortAddress(*other), place++, placeInOther});
    }
    if (Port const* const twin = withTwins ? PortAccess::twin(port) : nullptr)
        note(*twin, false);
    if (PortList const* const children = PortAccess::children(port))
        note(*children, withTwins);
}

void LostConnections::restore(Scene const& scene) const
{
    struct End {
        AddRefWrapper<Port> port, other;
        unsigned place;
    };
    std::vector<End> ends;
    PresentConnections present;
    for (Connection const& connection : m_connections) {
        AddRefWrapper<Port> const mine = connection.mine.find(scene);
        AddRefWrapper<Port> const other = connection.other.find(scene);
        if (!mine || !other || present.take(*mine, *other))
            continue;
        PortAccess::connectAgain(*mine, *other);
        ends.push_back({mine, other, connection.placeInMine});
        ends.push_back({other, mine, connection.placeInOther});
    }
    // All are at the ends of their lists now. In the order of their places each finds those in front of
    // it in place.
    std::stable_sort(ends.begin(), ends.end(), [](End const& a, End const& b) { return a.place < b.place; });
    for (End const& end : ends)
        PortAccess::placeConnection(*end.port, *end.other, end.place);
}

} // namespace TAV_marlo_v1::detail
