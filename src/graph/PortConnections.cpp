#include "graph/PortImpl.h"

#include <tav/Compound.h>
#include <tav/Container.h>
#include <tav/Node.h>
#include <tav/Runtime.h>

#include <string_view>

namespace TAV_marlo_v1 {

namespace {

/// Which of two ports carries out what was asked of `port`: the output of two node ports, the inner port
/// of a node port and an inner port, the inner output of two inner ports. Decided once, so that two
/// ports that would each point at the other (two inputs) still come to an end.
bool otherActs(Port const& port, Port const& other)
{
    bool const isInner = port.isCompoundInternalPort();
    bool const otherIsInner = other.isCompoundInternalPort();
    bool const isInput = port.getPortIOType() == eInput;
    return (!isInner && isInput) || (otherIsInner && !isInner) || (isInner && otherIsInner && isInput);
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view kBlanks = " \t\r\n";
    std::size_t const first = text.find_first_not_of(kBlanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

} // namespace

void PortAccess::collectMetadataToCopy(Port const& outside, Port const& source, StringArray& names)
{
    AddRefWrapper<Node> const node = outside.getParentNode();
    Container* const container = node ? node->getContainer() : nullptr;
    if (Runtime* const runtime = container ? container->getRuntime() : nullptr)
        runtime->getPortMetaDatasToCopy(names);

    String const listed = source.getPortMetaDataValue("metaDataToCopy");
    if (listed.empty())
        return;
    std::string_view rest = listed.toChar();
    while (!rest.empty()) {
        std::size_t const comma = rest.find(',');
        std::string_view const piece = trimmed(rest.substr(0, comma));
        if (!piece.empty())
            names.add(String(piece.data(), piece.size()));
        rest = comma == std::string_view::npos ? std::string_view() : rest.substr(comma + 1);
    }
    names.add("metaDataToCopy");
}

namespace {

void copyMetadataToOutside(Port& inner, Port const& source)
{
    AddRefWrapper<Compound> const compound = inner.getParentCompound();
    AddRefWrapper<Port> const outside = compound->getReversePort(AddRefWrapper<Port>(&inner));
    if (!outside || !outside->getParent())
        return;
    StringArray names;
    PortAccess::collectMetadataToCopy(*outside, source, names);
    for (char const* name : names) {
        String const value = source.getPortMetaDataValue(name);
        if (!value.empty() && outside->getParent())
            outside->getParent()->onPortSetMetaDataValue(outside, name, value.toChar());
    }
}

} // namespace

bool Port::addConnection(AddRefWrapper<Port> const& other, bool copyMetadata)
{
    if (!other || testFlag(eUnconnectable) || other->testFlag(eUnconnectable))
        return false;
    AddRefWrapper<Port> const self(this);
    AddRefWrapper<Port> const kept(other); // hooks may drop the last handle on either
    return otherActs(*this, *other) ? kept->connectActing(self, copyMetadata) : connectActing(kept, copyMetadata);
}

bool Port::connectActing(AddRefWrapper<Port> const& other, bool copyMetadata)
{
    AddRefWrapper<Port> const self(this);
    if (impl().owner && !impl().owner->onPortAddConnection(self, other))
        return false;

    PortAccess::link(*this, *other);

    if (copyMetadata && isCompoundInternalPort() && !other->isCompoundInternalPort())
        copyMetadataToOutside(*this, *other);
    if (impl().owner)
        impl().owner->onPortConnectionAdded(self, other);
    return true;
}

void PortAccess::connectAgain(Port& a, Port& b)
{
    AddRefWrapper<Port> const acting(otherActs(a, b) ? &b : &a);
    AddRefWrapper<Port> const other(acting.get() == &a ? &b : &a);
    link(*acting, *other);
    if (PortNotification* const owner = acting->getParent())
        owner->onPortConnectionAdded(acting, other);
}

bool Port::removeConnection(AddRefWrapper<Port> const& other)
{
    if (!other)
        return false;
    AddRefWrapper<Port> const self(this);
    AddRefWrapper<Port> const kept(other); // may be the entry of the list that goes away below
    return otherActs(*this, *other) ? kept->disconnectActing(self) : disconnectActing(kept);
}

bool Port::disconnectActing(AddRefWrapper<Port> const& other)
{
    AddRefWrapper<Port> const self(this);
    if (impl().owner && !impl().owner->onPortRemoveConnection(self, other))
        return false;

    bool const wereConnected = PortAccess::unlink(*this, *other);

    // Told even when nothing was linked: an owner hears of every removal that it allowed.
    if (impl().owner)
        impl().owner->onPortConnectionRemoved(self, other);
    return wereConnected;
}

void Port::removeAllConnections()
{
    AddRefWrapper<Port> const self(this);
    // From the last to the first. What is behind `left` was tried and refused; hooks may cut more than
    // the one connection, so the place is looked up anew each time.
    unsigned left = connectedTo().size();
    while (left > 0) {
        left = std::min(left, connectedTo().size());
        if (left == 0)
            return;
        --left;
        removeConnection(connectedTo()[left]);
    }
}

void PortAccess::removeAllConnectionsBelow(Port& port)
{
    port.removeAllConnections();
    if (AddRefWrapper<PortList> const children = port.children()) {
        for (unsigned i = children->size(); i-- > 0;) {
            if (AddRefWrapper<Port> const child = (*children)[i])
                removeAllConnectionsBelow(*child);
        }
    }
}

bool PortAccess::isConnectedBelow(Port const& port)
{
    bool connected = port.isConnected();
    if (AddRefWrapper<PortList> const children = port.children())
        impl(*children).ports.forEach([&](Port const& child) { connected = connected || isConnectedBelow(child); });
    return connected;
}

namespace {

/// Never destroyed: a static object of the program may ask for connections when it dies.
PortList const& noConnections()
{
    static auto const* const list = new AddRefWrapper<PortList>(PortList::createNew());
    return **list;
}

} // namespace

PortList const& Port::connectedTo() const noexcept
{
    return impl().connections ? *impl().connections : noConnections();
}

bool Port::isConnected() const noexcept
{
    return impl().connections && !impl().connections->empty();
}

} // namespace TAV_marlo_v1
