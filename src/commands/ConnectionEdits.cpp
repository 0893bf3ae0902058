#include "commands/ConnectionEdits.h"

#include "commands/PortMetadataState.h"
#include "graph/PortImpl.h"

#include <tav/Compound.h>

#include <algorithm>
#include <optional>

namespace TAV_marlo_v1::detail {

namespace {

unsigned placeOf(Port const& other, Port const& port)
{
    return port.connectedTo().findPort(AddRefWrapper<Port>(const_cast<Port*>(&other)));
}

class CutConnection final : public Edit {
public:
    CutConnection(Port& a, Port& b)
        : m_a(a)
        , m_b(b)
        , m_placeInA(placeOf(b, a))
        , m_placeInB(placeOf(a, b))
    {
    }

    bool takeBack(Scene const& scene) override
    {
        AddRefWrapper<Port> const a = m_a.find(scene);
        AddRefWrapper<Port> const b = m_b.find(scene);
        if (!a || !b)
            return false;
        if (a->connectedTo()[m_placeInA] == b && b->connectedTo()[m_placeInB] == a)
            return true;
        if (!a->addConnection(b, /*copyMetadata=*/false))
            return false;
        PortAccess::placeConnection(*a, *b, m_placeInA);
        PortAccess::placeConnection(*b, *a, m_placeInB);
        return true;
    }

private:
    PortAddress m_a, m_b;
    unsigned m_placeInA, m_placeInB;
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
        bool isWhole = a->connectedTo().size() == m_countBefore || a->removeConnection(b);
        if (m_metadata) {
            AddRefWrapper<Port> const target = m_target.find(scene);
            isWhole = target && m_metadata->restore(*target) && isWhole;
        }
        return isWhole;
    }

private:
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
    if (placeOf(b, a) == kNotFound)
        return a.removeConnection(second); // nothing to cut, but the owner is asked and told all the same
    return log.change(std::make_unique<CutConnection>(a, b), [&] { return a.removeConnection(second); });
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
    for (AddRefWrapper<Port> const& other : port.connectedTo())
        m_connections.push_back({PortAddress(port), PortAddress(*other), place++, placeOf(port, *other)});
    if (Port const* const twin = withTwins ? PortAccess::twin(port) : nullptr)
        note(*twin, false);
    if (PortList const* const children = PortAccess::impl(port).children.get())
        note(*children, withTwins);
}

void LostConnections::restore(Scene const& scene) const
{
    struct End {
        AddRefWrapper<Port> port, other;
        unsigned place;
    };
    std::vector<End> ends;
    for (Connection const& connection : m_connections) {
        AddRefWrapper<Port> const mine = connection.mine.find(scene);
        AddRefWrapper<Port> const other = connection.other.find(scene);
        if (!mine || !other || placeOf(*other, *mine) != kNotFound || !mine->addConnection(other, false))
            continue;
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
