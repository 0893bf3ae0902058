#include "persistence/PortReader.h"

#include "foundation/PropertyListAccess.h"
#include "graph/CompoundImpl.h"
#include "graph/PortImpl.h"
#include "persistence/GraphVocabulary.h"
#include "persistence/PortValueText.h"

namespace TAV_marlo_v1 {

using namespace graphtext;

namespace {

void setValues(Port& port, std::string_view text)
{
    PortAccess::setValues(port, splitPortValues(text, PortAccess::impl(port).type.get()));
}

/// A port without flags and values at the end of a list; a taken name becomes the next free one.
Port& appendNew(PortList& list, std::string_view name, AddRefWrapper<PortDataType> const& type)
{
    PortList::Impl& record = PortAccess::impl(list);
    AddRefWrapper<Port> const port = record.ports.hasName(name)
                                         ? Port::createNew(record.ports.freeName(name).c_str(), record.ioType)
                                         : Port::createNew(name.data(), record.ioType);
    PortAccess::setDataType(*port, type);
    PortAccess::append(list, *port);
    return *port;
}

/// The exposure is that of the other side of a compound port, where there is one already.
void keepExposureInStep(Port& port)
{
    if (Port const* const twin = PortAccess::twin(port))
        PortAccess::setFlags(port, eExposed, PortAccess::hasFlag(*twin, eExposed));
}

Port* findChild(Port const& port, std::string_view name)
{
    PortList const* const children = PortAccess::children(port);
    return children ? PortAccess::impl(*children).ports.find(name) : nullptr;
}

} // namespace

Port* ensureTwin(Port& port)
{
    Port* const parent = port.getParentPort();
    if (!parent)
        return PortAccess::twin(port);
    Port* const parentTwin = ensureTwin(*parent);
    if (!parentTwin)
        return nullptr;
    if (Port* const twin = findChild(*parentTwin, port.getName()))
        return twin;
    return &appendNew(*parentTwin->createChildrenList(), port.getName(), PortAccess::impl(port).type);
}

// ---- begin

void PortReader::beginNodePort(PortList& list, PortAttributes const& attributes)
{
    enterPort(append(list, attributes), /*isNew=*/true);
}

void PortReader::beginCompoundPort(Compound& compound, PortIOType outsideType, PortAttributes const& attributes,
                                   bool textIsInner)
{
    PortList& outer = CompoundAccess::outerList(*CompoundAccess::owner(compound), outsideType);
    PortList& inner = CompoundAccess::innerList(compound, outsideType);
    std::string const free = PortAccess::freeNameInBoth(outer, inner, attributes.name);
    PortAttributes named = attributes;
    named.name = free;

    // The two are each other's twins once both stand in their lists; values come after that.
    AddRefWrapper<PortDataType> const type = m_types.find(attributes.type);
    Port& outside = appendNew(outer, free, type);
    Port& inside = appendNew(inner, free, type);
    Port& primary = textIsInner ? inside : outside;
    Port& other = textIsInner ? outside : inside;
    applyFlags(primary, attributes.flags);
    applyFlags(other, attributes.flags & eExposed);
    applyOptions(primary, attributes);
    applyOptions(other, attributes);
    applyValues(primary, attributes);
    enterPort(primary, /*isNew=*/true);
}

void PortReader::beginKnownPort(Port& port, PortAttributes const& attributes)
{
    update(port, attributes);
    enterPort(port, /*isNew=*/false);
}

void PortReader::beginFreePort(Port& port, PortAttributes const& attributes)
{
    applyFlags(port, attributes.flags);
    applyOptions(port, attributes);
    applyValues(port, attributes);
    enterPort(port, /*isNew=*/true);
}

// ---- elements

void PortReader::abandon() noexcept
{
    m_states.clear();
    m_levels.clear();
    m_skipDepth = 0;
}

void PortReader::startElement(std::string_view name, ElementAttributes const& attributes)
{
    if (m_skipDepth > 0 || !enter(m_states.back(), name, attributes))
        ++m_skipDepth;
}

/// @return whether the element is one that may stand here
bool PortReader::enter(State state, std::string_view name, ElementAttributes const& attributes)
{
    switch (state) {
    case State::Port:
        if (name == kMetadatas)
            m_states.push_back(State::Metadatas);
        else if (name == kPorts)
            m_states.push_back(State::Children);
        else if (name == kMembers)
            m_states.push_back(State::Members);
        else
            return false;
        return true;
    case State::Metadatas:
        if (name == kMetadata)
            enterEntry(attributes);
        return name == kMetadata;
    case State::Children:
        if (name == kPort)
            enterChild(attributes);
        return name == kPort;
    case State::Members:
        if (name == kMember)
            enterMember(attributes);
        return name == kMember;
    case State::Entry:
    case State::Member:
        break;
    }
    return false;
}

void PortReader::enterPort(Port& port, bool isNew)
{
    m_levels.push_back({&port, isNew});
    m_states.push_back(State::Port);
}

void PortReader::enterEntry(ElementAttributes const& attributes)
{
    m_states.push_back(State::Entry);
    std::string_view const key = requiredName(m_source, kMetadata, attributes);
    if (m_source.failed() || !m_levels.back().isNew)
        return; // the two sides of a compound port have the same entries: they were read already
    std::string_view value;
    for (auto const& [name, text] : attributes) {
        if (name == kValue)
            value = text;
    }
    PropertyList& metadata = PortAccess::impl(*m_levels.back().port).makeExtras().metadata;
    if (!PropertyListAccess::find(metadata, key.data()))
        PropertyListAccess::appendPair(metadata, detail::SharedTextRef(key),
                                       StringArray(String(value.data(), value.size()).toChar()));
}

void PortReader::enterChild(ElementAttributes const& attributes)
{
    PortAttributes const child = readPortAttributes(m_source, kPort, attributes);
    if (m_levels.size() > kMaxPortDepth)
        m_source.fail(tooDeep("child ports"), atMost(kMaxPortDepth));
    if (m_source.failed())
        return;
    Level const& parent = m_levels.back();
    Port* const known = parent.isNew ? nullptr : findChild(*parent.port, child.name);
    if (known)
        update(*known, child);
    Port& port = known ? *known : append(*parent.port->createChildrenList(), child);
    keepExposureInStep(port);
    enterPort(port, !known);
}

/// A member stands under "ports" too, whole; here it is only made when a filter kept it out there.
void PortReader::enterMember(ElementAttributes const& attributes)
{
    m_states.push_back(State::Member);
    PortAttributes member = readPortAttributes(m_source, kMember, attributes);
    if (m_source.failed())
        return;
    Port& parent = *m_levels.back().port;
    if (findChild(parent, member.name))
        return;
    Port& port = appendNew(*parent.createChildrenList(), member.name, PortAccess::impl(parent).type);
    applyValues(port, member);
}

void PortReader::endElement()
{
    if (m_skipDepth > 0) {
        --m_skipDepth;
        return;
    }
    State const state = m_states.back();
    m_states.pop_back();
    if (state == State::Port)
        leavePort();
}

void PortReader::leavePort()
{
    Level const level = m_levels.back();
    m_levels.pop_back();
    PropertyList const* const metadata = level.isNew ? PortAccess::metadata(*level.port) : nullptr;
    Port* const twin = metadata && m_levels.empty() ? PortAccess::twin(*level.port) : nullptr;
    if (twin)
        PortAccess::setMetadata(*twin, *metadata);
}

// ---- ports

Port& PortReader::append(PortList& list, PortAttributes const& attributes)
{
    Port& port = appendNew(list, attributes.name, m_types.find(attributes.type));
    applyFlags(port, attributes.flags);
    applyOptions(port, attributes);
    applyValues(port, attributes);
    return port;
}

void PortReader::update(Port& port, PortAttributes const& attributes)
{
    PortAccess::setFlags(port, PortAccess::flags(port), false);
    applyFlags(port, attributes.flags);
    keepExposureInStep(port);
    if (attributes.internalValues || attributes.values)
        setValues(port, attributes.internalValues ? *attributes.internalValues : *attributes.values);
    else
        PortAccess::clearValues(port);
}

void PortReader::applyFlags(Port& port, std::uint32_t flags)
{
    // A port that is read stands in a list, so it is not detached, whatever it was when it was saved.
    PortAccess::setFlags(port, static_cast<PortFlags>(flags) & ~eDetached, true);
    if ((flags & eFanIn) != 0)
        port.createChildrenList();
}

void PortReader::applyOptions(Port& port, PortAttributes const& attributes)
{
    if (!attributes.options)
        return;
    PropertyList options;
    if (options.unserialize(attributes.options->data(), eSerializeLossless))
        PortAccess::setOptions(port, options);
    else
        m_source.fail(quoted(*attributes.options) + " in attribute \"options\"", "a serialized property list");
}

/// Of a compound port each side gets its own values, a child's twin being made for it if need be.
void PortReader::applyValues(Port& port, PortAttributes const& attributes)
{
    if (!attributes.values && !attributes.internalValues && !attributes.externalValues)
        return;
    bool const isInner = port.isCompoundInternalPort();
    auto const& outer = attributes.externalValues ? attributes.externalValues : attributes.values;
    auto const& own = isInner ? attributes.internalValues : outer;
    auto const& others = isInner ? outer : attributes.internalValues;
    if (own)
        setValues(port, *own);
    if (!others)
        return;
    if (Port* const twin = ensureTwin(port))
        setValues(*twin, *others);
    else if (!own)
        setValues(port, *others); // the text of one side, read where there is only one
}

} // namespace TAV_marlo_v1
