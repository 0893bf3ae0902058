#pragma once

#include "foundation/SharedText.h"
#include "graph/NodeListImpl.h"
#include "host/ContainerLink.h"

#include <tav/Compound.h>
#include <tav/NodeErrorState.h>
#include <tav/NodeStateFlags.h>
#include <tav/PortList.h>

#include <array>

namespace TAV_marlo_v1 {

struct Node::Impl {
    Impl(Node& node, Container* container);

    detail::ContainerLinkRef container; // empty once the container died
    AddRefWrapper<PortList> inputs;
    AddRefWrapper<PortList> outputs;
    Compound* parent = nullptr;
    bool isStray = false;           // names a parent without standing in its list: the compound keeps a note of it
    NodeList::Impl* home = nullptr; // the list of the parent compound, while the node stands in it
    AddRefWrapper<Compound> owned;
    detail::SharedTextRef type;
    detail::SharedTextRef typeDisplayName; // empty: the type itself
    AddRefWrapper<NodeErrorState> errors;
    NodeStateFlags states;
    Node* nextDoomed = nullptr; // see Graveyard.h
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
