#pragma once

#include "foundation/SharedText.h"

#include <tav/AddRefWrapper.h>
#include <tav/Types.h>

#include <string>
#include <unordered_map>
#include <vector>

namespace TAV_marlo_v1 {

class Compound;
class Container;
class Node;
class Port;
class PortList;

namespace detail {

class Renamings;

/// Where addresses are looked up: the graph of a container and, while a command is undone, what its
/// renaming made of the names that were noted before.
struct Scene {
    Container* container = nullptr; // null once it died
    Renamings const* renamings = nullptr;
};

/// A node by the names on the way down from the top node. A path in one text would do but for names
/// that hold "/".
class NodeAddress {
public:
    NodeAddress() = default;
    explicit NodeAddress(Node const& node);
    /// The owner node's; invalid when that died.
    explicit NodeAddress(Compound const& compound);

    /// Empty when the names lead nowhere.
    AddRefWrapper<Node> find(Scene const& scene) const;
    AddRefWrapper<Compound> findCompound(Scene const& scene) const;
    NodeAddress child(SharedTextRef const& name) const;

private:
    friend class Renamings;
    std::vector<SharedTextRef> m_names; // outermost first, without the top node's
    bool m_isValid = false;             // the way up ended at a top node
};

/// The list that a port stands in: of a node, of a compound seen from inside, or of a port.
class PortListAddress {
public:
    PortListAddress() = default;
    /// The list that this port stands in; invalid for a port without list.
    explicit PortListAddress(Port const& port);
    /// The node's own list.
    PortListAddress(Node const& node, PortIOType ioType);
    static PortListAddress childrenOf(Port const& parent);

    /// Empty when the names lead nowhere. A port whose children these are gets a child list if it has none.
    AddRefWrapper<PortList> find(Scene const& scene) const;
    /// The port that the list belongs to; empty for the list of a node or compound.
    AddRefWrapper<Port> findParentPort(Scene const& scene) const;

private:
    friend class PortAddress;
    AddRefWrapper<PortList> findTop(Scene const& scene) const;

    NodeAddress m_node;
    std::vector<SharedTextRef> m_parents; // the ports above, outermost first
    PortIOType m_ioType = eInput;         // of the ports in the list
    bool m_isInner = false;
};

/// One port: an input and an output of one name, and the two sides of a compound port, are told apart.
class PortAddress {
public:
    PortAddress() = default;
    explicit PortAddress(Port const& port);

    /// Empty when the names lead nowhere.
    AddRefWrapper<Port> find(Scene const& scene) const;

private:
    PortListAddress m_list;
    SharedTextRef m_name;
};

/// What nodes are called now that were called otherwise when addresses were noted.
class Renamings {
public:
    /// A node of the compound got a new name. Names that were renamed before are followed.
    void add(NodeAddress const& compound, SharedTextRef const& former, SharedTextRef const& present);
    /// What was noted under that name is now found under this one.
    void replace(NodeAddress const& compound, SharedTextRef const& noted, SharedTextRef const& present);
    bool empty() const noexcept { return m_present.empty(); }
    SharedTextRef const& present(NodeAddress const& node, std::size_t depth) const;

private:
    static std::string keyOf(NodeAddress const& address, std::size_t depth, SharedText const& name);

    std::unordered_map<std::string, SharedTextRef> m_present; // by the address as it was noted
    std::unordered_map<std::string, std::string> m_noted;     // the way back: present address to noted one
};

} // namespace detail

} // namespace TAV_marlo_v1
