#include "persistence/InnerConnections.h"

#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PortImpl.h"

#include <tav/WatchPoint.h>

#include <algorithm>
#include <new>
#include <unordered_set>

namespace TAV_marlo_v1 {

namespace {

std::vector<Port*> connectionsOf(Port const& port)
{
    std::vector<Port*> order;
    PortAccess::connections(port).forEach([&order](Port& other) { order.push_back(&other); });
    return order;
}

} // namespace

void InnerConnections::connect()
{
    collect(m_commit.m_items.standIn->innerInputs());
    collect(m_commit.m_items.standIn->innerOutputs());
    if (!m_staged.empty()) {
        recordOrders();
        for (AddRefWrapper<Port> const& port : m_staged)
            PortAccess::unlinkAll(*port);
        m_commit.m_addedLinks.reserve(m_links.size());
        for (Link const& link : m_links)
            make(link);
        putInOrder();
    }
    tellOwner();
}

void InnerConnections::collect(PortList const& staged)
{
    PortAccess::impl(staged).ports.forEach([this](Port& port) { collect(port); });
}

void InnerConnections::collect(Port& staged)
{
    PortList const& list =
        staged.getPortIOType() == eOutput ? m_commit.m_target.innerInputs() : m_commit.m_target.innerOutputs();
    unsigned index = kNotFound;
    AddRefWrapper<Port> const real = list.findPortRecursive(staged.getFullName().getName(), index);
    m_real[&staged] = real.get();
    if (staged.isConnected())
        m_staged.emplace_back(&staged);
    if (AddRefWrapper<PortList> const children = staged.children())
        collect(*children);
}

Port* InnerConnections::realPort(Port& port) const
{
    auto const real = m_real.find(&port);
    return real == m_real.end() ? &port : real->second;
}

/// Notes every link once and, for every port that takes part, the order of its connections.
void InnerConnections::recordOrders()
{
    std::unordered_set<Port*> known;
    auto const want = [&](Port& port, Order&& earlier) {
        Port* const real = realPort(port);
        if (!real || !known.insert(real).second)
            return;
        Order const added = realOrder(port);
        earlier.insert(earlier.end(), added.begin(), added.end());
        m_wanted.push_back({real, std::move(earlier)});
    };
    for (AddRefWrapper<Port> const& staged : m_staged) {
        Port* const real = realPort(*staged);
        want(*staged, real ? connectionsOf(*real) : Order());
        for (Port* const other : connectionsOf(*staged)) {
            if (!isStoodIn(*other))
                want(*other, Order());
            else if (staged->getPortIOType() == eInput)
                continue; // straight through: noted from the side that gives
            m_links.push_back({staged.get(), other});
        }
    }
}

InnerConnections::Order InnerConnections::realOrder(Port& port) const
{
    Order order;
    for (Port* const other : connectionsOf(port)) {
        if (Port* const real = realPort(*other))
            order.push_back(real);
    }
    return order;
}

void InnerConnections::make(Link const& link)
{
    AddRefWrapper<Port> const port(realPort(*link.stagedPort));
    AddRefWrapper<Port> const other(realPort(*link.stagedOther));
    if (!port && !other)
        return;
    if (!port || !other) {
        warnOfMissing(port ? *port : *other, port ? *link.stagedOther : *link.stagedPort);
        return;
    }
    unsigned const linksBefore = port->connectedTo().size();
    bool isLinked = false;
    try {
        isLinked = port->addConnection(other, /*copyMetadata=*/false);
    } catch (...) {
        if (port->connectedTo().size() > linksBefore) // a told hook threw
            m_commit.m_addedLinks.emplace_back(port, other);
        throw;
    }
    if (isLinked) {
        m_commit.m_addedLinks.emplace_back(port, other); // there is room for it
    } else {
        warn(*other, "The connection with " + quoted(port->getFullName().getName()) + " is refused.");
        return;
    }
    if (link.stagedPort->getPortIOType() == eInput)
        moveWatchPoint(*link.stagedPort, *port);
    else if (isStoodIn(*link.stagedOther))
        moveWatchPoint(*link.stagedOther, *other);
}

void InnerConnections::moveWatchPoint(Port& staged, Port& real)
{
    if (!staged.getWatchPoint() || real.getWatchPoint())
        return;
    m_commit.m_addedWatchPoints.emplace_back(&real);
    real.setWatchPoint(staged.getWatchPoint());
    real.notifyChange(eWatchPointSet);
}

void InnerConnections::warnOfMissing(Port& found, Port& missing)
{
    warn(found, "The connection with " + quoted(missing.getFullName().getName())
                    + " is left out: the compound has no such port.");
}

/// A message for the compound's owner node waits for the end.
void InnerConnections::warn(Port& port, std::string const& text)
{
    AddRefWrapper<Node> const node = port.getParentNode();
    if (node == m_commit.m_owner || !node)
        m_ownerText.append(m_ownerText.empty() ? "" : " ").append(text);
    else
        node->addMessage(node->getName(), text.c_str(), eWarning);
}

/// Where the hooks let every connection come about as wanted; an owner that made others knows better.
void InnerConnections::putInOrder()
{
    for (Wanted& wanted : m_wanted) {
        Order const present = connectionsOf(*wanted.port);
        if (present == wanted.order)
            continue;
        Order sorted = present;
        Order sortedWanted = wanted.order;
        std::sort(sorted.begin(), sorted.end());
        std::sort(sortedWanted.begin(), sortedWanted.end());
        if (sorted == sortedWanted)
            PortAccess::setConnectionOrder(*wanted.port, wanted.order);
    }
}

void InnerConnections::tellOwner()
{
    for (ConnectionReader::InnerWarning const& warning : m_commit.m_items.innerWarnings) {
        if (realPort(*warning.port))
            m_ownerText.append(m_ownerText.empty() ? "" : " ").append(warning.text);
    }
    if (m_ownerText.empty() || !m_commit.m_owner)
        return;
    try {
        m_commit.m_owner->addMessage(m_commit.m_owner->getName(), m_ownerText.c_str(), eWarning);
    } catch (std::bad_alloc const&) {
        // Everything is in its place; for want of memory nobody is told what was left out.
    }
}

} // namespace TAV_marlo_v1
