#pragma once

#include "foundation/SharedText.h"
#include "graph/NodeListImpl.h"
#include "graph/PortListImpl.h"

#include <tav/AnnotationList.h>
#include <tav/Compound.h>

#include <array>
#include <memory>
#include <unordered_set>
#include <vector>

namespace TAV_marlo_v1 {

/// How many nodes carry messages of each kind; the last entry counts those with any.
using MessageCounts = std::array<int, 4>;

/// Nodes and annotations that name a compound as their parent without standing in one of its lists; it
/// lets go of them when it dies first.
struct StrayItems {
    std::unordered_set<Node*> nodes;
    std::unordered_set<Annotation*> annotations;
};

struct Compound::Impl {
    explicit Impl(Compound& compound);

    Node* owner = nullptr;           // holds this compound; null once it died
    Node* nextDoomedOwner = nullptr; // of the owner node, see Graveyard.h
    NodeList nodes;
    AddRefWrapper<PortList> innerInputs;
    AddRefWrapper<PortList> innerOutputs;
    AnnotationList annotations;
    MessageCounts messageCounts{}; // of the nodes in here, at any depth
    std::vector<Node*> ioNodes;    // those among the nodes, in no order; not owned
    std::unique_ptr<StrayItems> strays;
};

/// The library's way to the record of a compound.
class CompoundAccess {
public:
    static Compound::Impl& impl(Compound& compound) noexcept { return *compound.m_impl; }
    static Compound::Impl const& impl(Compound const& compound) noexcept { return *compound.m_impl; }
    /// The owner node without a count; null once it died.
    static Node* owner(Compound const& compound) noexcept { return compound.m_impl->owner; }
    /// The writer's question whether the class writes the compound itself.
    static bool ownText(Compound const& compound, PortFilterCallback* filter, String& text)
    {
        return compound.onSaveToString(filter, text);
    }

    static StrayItems& strays(Compound& compound)
    {
        if (!compound.m_impl->strays)
            compound.m_impl->strays = std::make_unique<StrayItems>();
        return *compound.m_impl->strays;
    }

    static PortList& outerList(Node& owner, PortIOType outsideType) noexcept;
    static PortList& innerList(Compound& compound, PortIOType outsideType) noexcept;

    /// A compound port of the same direction, type, options, values and metadata as the port.
    /// @return the outside, empty after a veto
    static AddRefWrapper<Port> createPortLike(Compound& compound, Port& port, char const* name, PortFlags flags);

    /// The list of the IO node, filled with inner ports by hand, follows the compound's inner list.
    static void adoptPresentation(Node& ioNode, PortList& list) noexcept;
    /// Gives an IO node the inner ports unless another one shows them already. Tells nobody.
    static void fillIONode(Compound& compound, Node& ioNode);

    /// The IO node's list lets the inner ports go, and is empty. @return whether it showed any list
    static bool stopShowing(Node& ioNode) noexcept;
    /// Lets this IO node show the inner ports instead of the one that does. Tells nobody.
    static void takeOverPresentation(Compound& compound, Node& ioNode);

    /// The IO node left the compound: the next one of its kind, if any, shows the ports from now on.
    static void handOverPresentation(Compound& compound, Node& ioNode) noexcept;

    /// Adds to the counts of the compound and of every compound around it.
    static void addMessageCounts(Compound* compound, MessageCounts const& counts, int sign) noexcept;

    /// Exchanges flags, metadata, ports of both sides, nodes and annotations of two compounds that both
    /// have an owner node, together with the owner nodes' metadata. Asks and tells nobody.
    static void swapContents(Compound& a, Compound& b) noexcept;
    /// Takes the node out of the compound it is in, unasked and untold; its connections stay.
    static void takeOut(Compound& compound, Node& node) noexcept;
    static void takeOut(Compound& compound, Annotation& annotation) noexcept;
    /// Moves the node, which is no IO node, to another compound as it is, with its connections. Both
    /// compounds are asked and told as of a removal and an addition, but nobody hears that it was deleted.
    /// @param name what it is to be called there; a taken name becomes the next free one
    /// @return false after a veto or when the target lies within the node
    static bool moveNode(Node& node, Compound& target, unsigned index, detail::SharedTextRef const& name);
    static bool moveAnnotation(Annotation& annotation, Compound& target, unsigned index,
                               detail::SharedTextRef const& name);
    /// Lets go of the compound when its owner node dies or gets another one.
    static void disown(Compound& compound) noexcept;
    static void own(Compound& compound, Node& owner) noexcept;
};

} // namespace TAV_marlo_v1
