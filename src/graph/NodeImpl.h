#pragma once

#include "foundation/SharedText.h"
#include "graph/NodeListImpl.h"
#include "graph/PortListImpl.h"
#include "host/ContainerLink.h"

#include <tav/Compound.h>
#include <tav/NodeErrorState.h>
#include <tav/NodeStateFlags.h>

#include <array>
#include <cstdint>

namespace TAV_marlo_v1 {

/// The inputs or the outputs of a node, a part of the node's record. Whoever keeps a handle on the list longer
/// than the node lives keeps the emptied record.
template <PortIOType>
struct NodePorts : PortList::Impl {
    explicit NodePorts(Node& node) noexcept;
    void deleteThis() override;
};

/// In one block with both lists of ports, since every node has them.
struct Node::Impl final : NodePorts<eInput>, NodePorts<eOutput> {
    Impl(Node& node, Container* container);

    PortList& inputs() noexcept { return static_cast<NodePorts<eInput>&>(*this); }
    PortList& outputs() noexcept { return static_cast<NodePorts<eOutput>&>(*this); }
    PortList const& inputs() const noexcept { return static_cast<NodePorts<eInput> const&>(*this); }
    PortList const& outputs() const noexcept { return static_cast<NodePorts<eOutput> const&>(*this); }

    /// The node dies, and lets go of all that it holds.
    void retire() noexcept;
    /// One of those that hold the record does so no longer: the node, or the handles on one of the lists.
    void letGo() noexcept;

    detail::ContainerLinkRef container; // empty once the container died
    Compound* parent = nullptr;
    NodeList::Impl* home = nullptr; // the list of the parent compound, while the node stands in it
    AddRefWrapper<Compound> owned;
    detail::SharedTextRef type;
    detail::SharedTextRef typeDisplayName; // empty: the type itself
    AddRefWrapper<NodeErrorState> errors;
    NodeStateFlags states;
    bool isStray = false; // names a parent without standing in its list: the compound keeps a note of it
    std::uint8_t holders = 3;
};

/// The library's way to the records of nodes and node lists.
class NodeAccess {
public:
    static Node::Impl& impl(Node& node) noexcept { return *node.m_impl; }
    static Node::Impl const& impl(Node const& node) noexcept { return *node.m_impl; }
    static NodeList::Impl& impl(NodeList& list) noexcept { return *list.m_impl; }
    static NodeList::Impl const& impl(NodeList const& list) noexcept { return *list.m_impl; }
    static NodeList listOf(Compound& compound) { return NodeList(&compound); }

    /// The writer's question whether the class writes the node itself.
    static bool ownText(Node const& node, PortFilterCallback* filter, String& text)
    {
        return node.onSaveToString(filter, text);
    }

    /// For a node that stands in the compound's list or is about to.
    static void setParent(Node& node, Compound* compound) noexcept;
    /// Whether the node's own compound is the given one or lies around it.
    static bool holds(Node const& node, Compound const& compound) noexcept;
    /// Puts the node into the list of a compound, under the next free name; all or nothing.
    /// @param nameIsFree the caller knows that no node in the list has that name
    static void join(NodeList::Impl& list, Node& node, unsigned index, bool nameIsFree = false);

    /// Moves a node of the list to that index, asking and telling nobody; past the end is the end.
    static void place(NodeList& list, Node& node, unsigned index);

    /// Tells what happened to a node, by the node itself.
    static void notify(Node& node, ENodeChangeType type);
    /// The node's part in the message counts of the compounds around it, with what its compound holds.
    static std::array<int, 4> messageCounts(Node const& node) noexcept;
    /// The notifier that hears of what happens to a compound's contents; null without owner node.
    static Node* notifierOf(Compound const* compound) noexcept;
};

} // namespace TAV_marlo_v1
