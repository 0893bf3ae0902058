#include "persistence/ConnectionReader.h"

#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PortImpl.h"
#include "persistence/DataTypeLookup.h"
#include "persistence/GraphVocabulary.h"
#include "persistence/PortReader.h"
#include "persistence/TextWatchPoint.h"

#include <algorithm>

namespace TAV_marlo_v1 {

using namespace graphtext;

// ---- names

std::uint64_t NodeNames::hashOf(std::string_view name) noexcept
{
    std::uint64_t hash = kFirstHash;
    for (char const c : name)
        hash = addToHash(hash, c);
    return hash;
}

bool NodeNames::add(detail::SharedText const& name, Node& node)
{
    std::uint64_t const hash = hashOf(name.view());
    if (find(hash, name.view()) != kNone)
        return false;
    if (2 * (m_entries.size() + 1) > m_slots.size())
        grow();
    m_entries.push_back({&name, &node});
    place(hash, m_entries.size() - 1);
    return true;
}

void NodeNames::grow()
{
    std::size_t const size = std::max<std::size_t>(16, 4 * m_slots.size());
    m_slots.clear();
    m_slots.resize(size);
    for (std::size_t i = 0; i < m_entries.size(); ++i)
        place(hashOf(m_entries[i].name->view()), i);
}

void NodeNames::place(std::uint64_t hash, std::size_t entry) noexcept
{
    std::size_t const mask = m_slots.size() - 1;
    std::size_t i = hash & mask;
    while (m_slots[i].entry != 0)
        i = (i + 1) & mask;
    m_slots[i] = {static_cast<std::uint32_t>(entry + 1), static_cast<std::uint32_t>(hash >> 32)};
}

std::size_t NodeNames::find(std::uint64_t hash, std::string_view name) const noexcept
{
    if (m_slots.empty())
        return kNone;
    std::size_t const mask = m_slots.size() - 1;
    for (std::size_t i = hash & mask; m_slots[i].entry != 0; i = (i + 1) & mask) {
        std::size_t const entry = m_slots[i].entry - 1;
        if (m_slots[i].hash == static_cast<std::uint32_t>(hash >> 32) && m_entries[entry].name->view() == name)
            return entry;
    }
    return kNone;
}

// ---- ends

Port* ConnectionReader::resolve(End const& end)
{
    return end.kind == eNodeOutput || end.kind == eNodeInput ? resolveOnNode(end) : resolveInner(end);
}

/// Names may hold dots, so a path may fit several ports: the one on the node that comes first is meant.
Port* ConnectionReader::resolveOnNode(End const& end)
{
    Port* found = nullptr;
    std::size_t foundPlace = NodeNames::kNone;
    m_nodes.forEachPrefix(end.path, [&](Node& node, std::size_t place, std::string_view rest) {
        if (place >= foundPlace)
            return;
        if (Port* const port = findPort(end.kind == eNodeOutput ? node.outputs() : node.inputs(), rest)) {
            found = port;
            foundPlace = place;
        }
    });
    return found;
}

Port* ConnectionReader::resolveInner(End const& end)
{
    PortIOType const outsideType = end.kind == eInnerInput ? eInput : eOutput;
    PortList& inner = CompoundAccess::innerList(m_compound, outsideType);
    if (Port* const port = findPort(inner, end.path))
        return port;
    // A child that only the outside has so far.
    PortList const& outer = CompoundAccess::outerList(*CompoundAccess::owner(m_compound), outsideType);
    if (Port* const outside = findPort(outer, end.path))
        return ensureTwin(*outside);
    if (!m_innerWarnings)
        return nullptr;
    AddRefWrapper<Port> const port = Port::createNew(std::string(end.path).c_str(), PortAccess::impl(inner).ioType);
    PortAccess::append(inner, *port);
    return port.get();
}

namespace {

void collectBelow(Port& port, std::unordered_map<std::string, Port*>& found)
{
    PortList const* const children = PortAccess::children(port);
    if (!children)
        return;
    PortAccess::impl(*children).ports.forEach([&](Port& child) {
        found.emplace(child.getFullName().getName(), &child); // of two equal names the first counts
        collectBelow(child, found);
    });
}

} // namespace

/// The port of that full name; a port's own name is tried before its children's.
Port* ConnectionReader::findPort(PortList const& list, std::string_view path)
{
    detail::NamedList<Port> const& ports = PortAccess::impl(list).ports;
    if (Port* const port = ports.find(path))
        return port;
    if (path.find('.') == std::string_view::npos)
        return nullptr;
    auto const [known, isNew] = m_children.try_emplace(&list);
    auto& below = known->second;
    if (isNew)
        ports.forEach([&](Port& port) { collectBelow(port, below); });
    auto const found = below.find(std::string(path));
    return found == below.end() ? nullptr : found->second;
}

// ---- elements

void ConnectionReader::read(ElementSource& source, ElementAttributes const& attributes)
{
    End ends[2];
    unsigned count = 0;
    std::string_view watchPoint;
    for (auto const& [name, value] : attributes) {
        bool isEnd = true;
        EndKind kind = eNodeOutput;
        if (name == kOutputPort)
            kind = eNodeOutput;
        else if (name == kInputPort)
            kind = eNodeInput;
        else if (name == kInnerInputPort)
            kind = eInnerInput;
        else if (name == kInnerOutputPort)
            kind = eInnerOutput;
        else
            isEnd = false;
        if (isEnd && count < 2)
            ends[count] = {kind, value};
        count += isEnd ? 1 : 0;
        if (name == kWatchPoint)
            watchPoint = value;
    }
    if (count != 2) {
        source.fail("a \"connection\" with " + std::to_string(count) + " ends", "two ends");
        return;
    }
    if (watchPoint.data() && watchPoint != kYes && watchPoint != kDisabled) {
        source.fail(quoted(watchPoint) + " in attribute \"watchpoint\"", "\"yes\" or \"disabled\"");
        return;
    }

    for (End& end : ends)
        end.port = resolve(end);
    if (ends[0].port && ends[1].port) {
        if (!takesConnection(ends[0], ends[1]) || !takesConnection(ends[1], ends[0]))
            return;
        add(ends[0], ends[1]);
        Port* const inputEnd = ends[0].port->getPortIOType() == eInput ? ends[0].port : ends[1].port;
        if (watchPoint.data())
            ensureWatchPoint(*inputEnd, watchPoint == kYes);
    } else if (ends[0].port) {
        warnOfMissing(ends[0], ends[1]);
    } else if (ends[1].port) {
        warnOfMissing(ends[1], ends[0]);
    }
}

void ConnectionReader::warn(End const& end, std::string const& text)
{
    if (m_innerWarnings && end.port->isCompoundInternalPort()) {
        m_innerWarnings->push_back({AddRefWrapper<Port>(end.port), text});
        return;
    }
    if (AddRefWrapper<Node> const node = end.port->getParentNode())
        node->addMessage(node->getName(), text.c_str(), eWarning);
}

void ConnectionReader::warnOfMissing(End const& found, End const& missing)
{
    warn(found, "The connection of " + quoted(found.path) + " is left out: there is no " + quoted(missing.path)
                    + " to connect it to.");
}

bool ConnectionReader::takesConnection(End const& end, End const& other)
{
    if (!PortAccess::hasFlag(*end.port, eUnconnectable))
        return true;
    warn(end,
         "The connection with " + quoted(other.path) + " is left out: " + quoted(end.path) + " takes no connections.");
    return false;
}

void ConnectionReader::add(End const& a, End const& b)
{
    auto const isInner = [](End const& end) { return end.kind == eInnerInput || end.kind == eInnerOutput; };
    auto const isSource = [](End const& end) { return end.kind == eNodeOutput || end.kind == eInnerInput; };
    // The source is the node's output, then the inside of a compound input, then whatever comes first.
    bool const aIsSource = a.kind == eNodeOutput || (b.kind != eNodeOutput && (isSource(a) || !isSource(b)));
    Port* const source = aIsSource ? a.port : b.port;
    Port* const other = aIsSource ? b.port : a.port;

    bool const isListedTwice =
        (isInner(a) && isInner(b)) || (isInner(a) && b.kind == eNodeOutput) || (isInner(b) && a.kind == eNodeOutput);
    if (isListedTwice)
        m_twice[{source, other}].push_back(m_place);
    else
        m_links.push_back({source, other, m_place, m_place});
    ++m_place;
}

// ---- links

/// m elements are half as many links, rounded up: the first places are the source's, the last ones the
/// other end's. A single element stands for one link.
void ConnectionReader::addTwiceListed()
{
    for (auto const& [pair, places] : m_twice) {
        std::size_t const count = (places.size() + 1) / 2;
        for (std::size_t i = 0; i < count; ++i)
            m_links.push_back({pair.first, pair.second, places[i], places[places.size() - count + i]});
    }
    std::sort(m_links.begin(), m_links.end(),
              [](Link const& a, Link const& b) { return a.sourcePlace < b.sourcePlace; });
}

void ConnectionReader::finish()
{
    if (!m_twice.empty())
        addTwiceListed();
    for (Link const& link : m_links)
        PortAccess::link(*link.source, *link.other);
    if (!m_twice.empty())
        putInOrder();
}

/// The links were made in the order of their sources; here the other ends of those listed twice get theirs.
void ConnectionReader::putInOrder()
{
    std::unordered_map<Port*, std::vector<std::pair<std::size_t, Port*>>> places;
    for (auto const& entry : m_twice)
        places.try_emplace(entry.first.second);
    for (Link const& link : m_links) {
        if (auto const list = places.find(link.other); list != places.end())
            list->second.emplace_back(link.otherPlace, link.source);
        if (auto const list = places.find(link.source); list != places.end())
            list->second.emplace_back(link.sourcePlace, link.other);
    }
    for (auto& [port, list] : places) {
        if (std::is_sorted(list.begin(), list.end()))
            continue;
        std::sort(list.begin(), list.end());
        std::vector<Port*> order;
        for (auto const& entry : list)
            order.push_back(entry.second);
        PortAccess::setConnectionOrder(*port, order);
    }
}

} // namespace TAV_marlo_v1
