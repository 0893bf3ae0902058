#pragma once

#include "foundation/SmallBlocks.h"
#include "graph/NamedList.h"

#include <tav/Compound.h>
#include <tav/Node.h>
#include <tav/PortDataType.h>
#include <tav/PortList.h>
#include <tav/PortNotification.h>
#include <tav/PortProperties.h>
#include <tav/WatchPoint.h>

#include <cassert>
#include <string>
#include <string_view>
#include <vector>

namespace TAV_marlo_v1 {

/// A list and its record in one block. As it stands, it is the list of a port's connections, of which a graph has
/// more than of anything else: what only a list with an owner needs is not part of it.
struct PortList::Entries : PortList, detail::InSmallBlock {
    PortIOType ioType : 8 = eInput;
    bool canHaveOwner = false;
    bool isOwnersOwn = false; // a list of a Node or Compound itself, which lets go of it when it dies
    detail::NamedList<Port> ports;
};

/// A list that has an owner or may get one.
struct PortList::Impl : PortList::Entries {
    Impl() noexcept { canHaveOwner = true; }
    ~Impl() override;

    PortNotification* owner = nullptr;
    Port* parentPort = nullptr;   // of a list of children
    Impl* presentation = nullptr; // the IO node's list that shows this one
    Impl* presented = nullptr;    // the inner list that this one shows

    /// From now on `shown` follows this list, object by object.
    void setPresentation(Impl* shown) noexcept;
    void move(unsigned from, unsigned to);
};

inline PortList::Entries& PortList::entries() noexcept
{
    return static_cast<Entries&>(*this);
}

inline PortList::Entries const& PortList::entries() const noexcept
{
    return static_cast<Entries const&>(*this);
}

inline PortList::Impl& PortList::impl() noexcept
{
    assert(entries().canHaveOwner);
    return static_cast<Impl&>(*this);
}

inline PortList::Impl const& PortList::impl() const noexcept
{
    assert(entries().canHaveOwner);
    return static_cast<Impl const&>(*this);
}

/// The library's way to the records of ports and port lists. What is done through it is neither asked
/// nor told.
class PortAccess {
public:
    static Port::Impl& impl(Port& port) noexcept;
    static Port::Impl const& impl(Port const& port) noexcept;
    /// Of any list but that of a port's connections.
    static PortList::Impl& impl(PortList& list) noexcept { return list.impl(); }
    static PortList::Impl const& impl(PortList const& list) noexcept { return list.impl(); }
    static detail::NamedList<Port> const& ports(PortList const& list) noexcept { return list.entries().ports; }
    static Node* asNode(PortNotification const* owner) noexcept
    {
        bool const isNode = owner && owner->m_kind == PortNotification::Kind::eNode;
        return isNode ? const_cast<Node*>(static_cast<Node const*>(owner)) : nullptr;
    }
    static Compound* asCompound(PortNotification const* owner) noexcept
    {
        bool const isCompound = owner && owner->m_kind == PortNotification::Kind::eCompound;
        return isCompound ? const_cast<Compound*>(static_cast<Compound const*>(owner)) : nullptr;
    }
    /// The list of the port's children or members; null when it has none.
    static PortList* children(Port const& port) noexcept;
    static void setChildren(Port& port, AddRefWrapper<PortList> const& children);
    /// The ports that the port is connected to, in order; an empty list when there are none.
    static detail::NamedList<Port> const& connections(Port const& port) noexcept;

    /// The flag word as stored, without asking the owner.
    static PortFlags flags(Port const& port) { return port.Flaggable<PortFlags>::getFlags(); }
    static bool hasFlag(Port const& port, PortFlags flag) { return port.Flaggable<PortFlags>::testFlag(flag); }
    static void setFlags(Port& port, PortFlags flags, bool on);

    /// Gives the port and all its children that owner.
    static void setOwner(Port& port, PortNotification* owner) noexcept;
    /// Notes a port that names an owner without standing in a list of it, so that the owner can let go of
    /// it when it dies first. When there is no memory for the note the port goes without owner.
    static void noteStray(Port& port) noexcept;
    static void forgetStray(Port& port) noexcept;
    /// The same for a list that is not a part of its owner.
    static void noteList(PortList::Impl& list);
    static void forgetList(PortList::Impl& list) noexcept;
    /// Lets go of the ports and lists that were noted.
    static void dropDependents(PortNotification& owner) noexcept;
    /// Lets go of a list that is a part of a dying owner: its ports are cut off and lose that owner.
    static void orphan(PortList& list) noexcept;
    static void setDetached(Port& port, bool detached);
    /// The values, metadata and options as kept with the port; null when there are none.
    static StringArray const* values(Port const& port) noexcept;
    static PropertyList const* metadata(Port const& port) noexcept;
    static PropertyList const* options(Port const& port) noexcept;
    static WatchPoint* watchPoint(Port const& port) noexcept;
    static void setValues(Port& port, StringArray values);
    static void clearValues(Port& port) noexcept;
    static void setOptions(Port& port, PropertyList const& options);
    /// A null value removes the entry. @return whether something changed
    static bool setMetadata(Port& port, char const* key, char const* value);
    static void setMetadata(Port& port, PropertyList const& metadata);
    /// As setMetadata, for both sides of a compound port; each side that changed reports it.
    static void setMetadataInStep(Port& port, char const* key, char const* value);
    /// The metadata names that a connection with `source` copies onto a compound's outside port: the
    /// runtime's, then those that the port itself lists under "metaDataToCopy", then that name too.
    static void collectMetadataToCopy(Port const& outside, Port const& source, StringArray& names);
    /// Whether a flag has no change type of its own. eReconnecting is for owners alone: it comes and goes
    /// within one operation.
    static bool isReportedByFlagsChange(PortFlags flag) noexcept;
    /// A port for that list, not in it yet, with a name that is free there.
    static AddRefWrapper<Port> make(PortList const& list, char const* name, AddRefWrapper<PortDataType> const& type,
                                    PortProperties const& properties);
    /// `wanted` or the next name that is free in both lists.
    static std::string freeNameInBoth(PortList const& a, PortList const& b, std::string_view wanted);
    /// Removes the connections of the port and of its children, asking and telling.
    static void removeAllConnectionsBelow(Port& port);
    static bool isConnectedBelow(Port const& port);
    static void setDataType(Port& port, AddRefWrapper<PortDataType> const& type) noexcept;
    static void setIOType(Port& port, PortIOType ioType) noexcept;

    /// Appends to a list that has an owner or will get one, on the terms of its owner but unasked.
    static void append(PortList& list, Port& port);
    /// Takes the port out of a list, unasked; it has no owner afterwards.
    static void takeOut(PortList& list, Port& port) noexcept;
    /// Takes the child list away when it holds nothing and the port is no fan-in port.
    static void dropEmptyChildList(Port& port) noexcept;
    /// As clearing eFanIn, but what were the port's children before it was set stays.
    static void endFanInKeepingChildren(Port& port);
    /// Exchanges the ports of two lists of owners, with the IO nodes that show them.
    static void swapPorts(PortList& a, PortList& b) noexcept;
    /// One link between the two, each listing the other; all or nothing.
    static void link(Port& a, Port& b);
    /// Port::addConnection without a question: for what was connected before, which is not to be judged again.
    static void connectAgain(Port& a, Port& b);
    /// Cuts one link. @return whether both ends listed each other
    static bool unlink(Port& a, Port& b) noexcept;
    /// Cuts every link of the port and of its children.
    static void unlinkAll(Port& port) noexcept;
    /// Puts the connections of a port into that order, which holds exactly the connected ports.
    static void setConnectionOrder(Port& port, std::vector<Port*> const& order);
    /// Moves the connection with `other` to that place in the port's list; past the end is the end.
    static void placeConnection(Port& port, Port const& other, unsigned place);

    /// The other side of a compound port (or of a child of one), null for any other port.
    static Port* twin(Port const& port);
    /// How the other side of a compound port moves with it; no list when it need not.
    struct TwinMove {
        PortList* list = nullptr;
        unsigned from = 0;
        unsigned to = 0;
    };
    static TwinMove twinMove(PortList::Impl const& list, unsigned from, unsigned to);

    /// The IO node that shows the inner port, null when none does.
    static Node* presentingNode(Port const& port) noexcept;
    /// The list of an owner that the port stands in as a top-level port or child; null for none.
    static PortList::Impl* home(Port const& port) noexcept;
};

} // namespace TAV_marlo_v1
