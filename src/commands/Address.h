#pragma once

#include "foundation/SharedText.h"

#include <tav/AddRefWrapper.h>
#include <tav/Types.h>

#include <string>
#include <string_view>
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

/// The names of what is passed on a way down. All that have the same way share one text, and a short way
/// costs nothing: most addresses are those of nodes in the top graph and of ports without parent port.
class NameChain {
public:
    /// No names.
    NameChain() = default;
    /// From the innermost name to the outermost.
    explicit NameChain(std::vector<SharedText const*> const& upwards);

    NameChain with(SharedText const& name) const;
    bool empty() const noexcept { return m_names.empty(); }
    std::string_view text() const noexcept { return m_names.view(); }

    /// Calls `step(name, above)` from the outermost name on, with the text of the names above it, until
    /// one answers false. @return whether none did
    template <class Step>
    bool walk(Step&& step) const
    {
        std::string_view const all = m_names.view();
        for (std::size_t begin = 0; begin < all.size();) {
            std::size_t const end = all.find('\0', begin);
            if (!step(all.substr(begin, end - begin), all.substr(0, begin)))
                return false;
            begin = end + 1;
        }
        return true;
    }

private:
    SharedTextRef m_names; // outermost first, each closed by a NUL, which no name holds
};

/// A node by the names on the way down from the top node. A path would do but for names that hold "/".
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
    friend class PortAddress;
    friend class PortListAddress;
    friend class Renamings;

    enum class Kind : unsigned char {
        Nowhere, ///< the way up did not end at a top node
        Top,     ///< the top node
        Inside   ///< a node below it
    };

    Node* lookUp(Scene const& scene) const;
    void appendPath(std::string& path) const;
    /// The names of this node and of those around it.
    NameChain namesDown() const;

    NameChain m_around; // the nodes around it, without the top node
    SharedTextRef m_name;
    Kind m_kind = Kind::Nowhere;
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
    PortList* lookUpTop(Scene const& scene) const;
    /// As find, but a port without child list gets none.
    PortList* lookUp(Scene const& scene) const;
    Port* lookUpParentPort(Scene const& scene) const;

    NodeAddress m_node;
    NameChain m_parents;          // the ports above
    PortIOType m_ioType = eInput; // of the ports in the list
    bool m_isInner = false;
};

/// One port: an input and an output of one name, and the two sides of a compound port, are told apart.
class PortAddress {
public:
    PortAddress() = default;
    explicit PortAddress(Port const& port);

    /// Empty when the names lead nowhere.
    AddRefWrapper<Port> find(Scene const& scene) const;
    /// What Port::getFullPathName answers where nobody overrides it; empty for an invalid address.
    std::string path() const;

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
    /// @param around the names of the nodes around it, as they were noted
    std::string_view present(std::string_view around, std::string_view name) const;

private:
    // The addresses are texts as in a NameChain, without the last NUL.
    std::unordered_map<std::string, SharedTextRef> m_present; // by the address as it was noted
    std::unordered_map<std::string, std::string> m_noted;     // the way back: present address to noted one
};

} // namespace detail

} // namespace TAV_marlo_v1
