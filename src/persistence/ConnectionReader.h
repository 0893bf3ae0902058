#pragma once

#include "foundation/SharedText.h"
#include "persistence/ElementSource.h"
#include "persistence/ReadAttributes.h"

#include <tav/AddRefWrapper.h>
#include <tav/Port.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace TAV_marlo_v1 {

class Compound;
class Node;
class PortList;

/// The nodes of one "sub_root" by the names they have in the text. A look-up that tries every prefix of
/// a path takes one pass over it.
class NodeNames {
public:
    /// The name must live as long as this object. Of two equal names the first counts.
    /// @return whether the name is new
    bool add(detail::SharedText const& name, Node& node);

    /// Calls back with each node whose name is followed by "." in the path, with its place in the text and
    /// with what stands behind the ".".
    template <class Visit>
    void forEachPrefix(std::string_view path, Visit const& visit) const
    {
        std::uint64_t hash = kFirstHash;
        for (std::size_t i = 0; i < path.size(); ++i) {
            if (path[i] == '.') {
                if (std::size_t const place = find(hash, path.substr(0, i)); place != kNone)
                    visit(*m_entries[place].node, place, path.substr(i + 1));
            }
            hash = addToHash(hash, path[i]);
        }
    }

    static constexpr std::size_t kNone = ~std::size_t(0);

private:
    struct Entry {
        detail::SharedText const* name;
        Node* node;
    };
    struct Slot {
        std::uint32_t entry = 0; // counted from 1; 0: the slot is free
        std::uint32_t hash = 0;  // the upper half
    };

    static constexpr std::uint64_t kFirstHash = 14695981039346656037ull;
    static std::uint64_t addToHash(std::uint64_t hash, char c) noexcept
    {
        return (hash ^ static_cast<unsigned char>(c)) * 1099511628211ull;
    }
    static std::uint64_t hashOf(std::string_view name) noexcept;

    void grow();
    void place(std::uint64_t hash, std::size_t entry) noexcept;
    /// The place of that name, or kNone.
    std::size_t find(std::uint64_t hash, std::string_view name) const noexcept;

    std::vector<Entry> m_entries;
    std::vector<Slot> m_slots; // a power of two of them, at most half in use
};

/// Reads the "connection" elements of one "sub_root" and makes the links.
///
/// Most links are listed once. The link of a node's output and an inner port, and that of two inner
/// ports, stand twice: first where its source lists it, later where its other end does. Both ends get
/// it in the place in which the text lists it for them.
class ConnectionReader {
public:
    explicit ConnectionReader(Compound& compound) noexcept
        : m_compound(compound)
    {
    }

    /// @return whether no node of that name was added before
    bool addNode(detail::SharedText const& name, Node& node) { return m_nodes.add(name, node); }
    /// The compound only stands in for another one: an inner port that it lacks is made, and what is
    /// to be said about the other one's inner ports is kept in `warnings`, which must outlive this object.
    struct InnerWarning {
        AddRefWrapper<Port> port;
        std::string text;
    };
    void standIn(std::vector<InnerWarning>& warnings) noexcept { m_innerWarnings = &warnings; }
    void read(ElementSource& source, ElementAttributes const& attributes);
    /// Makes the links.
    void finish();

private:
    enum EndKind : unsigned char { eNodeOutput, eNodeInput, eInnerInput, eInnerOutput };

    struct End {
        EndKind kind;
        std::string_view path;
        Port* port = nullptr;
    };

    struct Link {
        Port* source;
        Port* other;
        std::size_t sourcePlace;
        std::size_t otherPlace;
    };

    struct PairHash {
        std::size_t operator()(std::pair<Port*, Port*> const& pair) const noexcept
        {
            return std::hash<Port*>()(pair.first) * 31 + std::hash<Port*>()(pair.second);
        }
    };

    Port* resolve(End const& end);
    Port* resolveOnNode(End const& end);
    Port* resolveInner(End const& end);
    Port* findPort(PortList const& list, std::string_view path);
    void warn(End const& end, std::string const& text);
    void warnOfMissing(End const& found, End const& missing);
    bool takesConnection(End const& end, End const& other);
    void add(End const& a, End const& b);
    void addTwiceListed();
    void putInOrder();

    Compound& m_compound;
    NodeNames m_nodes;
    std::vector<InnerWarning>* m_innerWarnings = nullptr; // set: the compound stands in for another one
    std::size_t m_place = 0;                              // of the next element
    std::vector<Link> m_links;
    std::unordered_map<std::pair<Port*, Port*>, std::vector<std::size_t>, PairHash> m_twice;
    // Ports of a list with children, at any depth, by full name; made when a dotted name asks for it.
    std::unordered_map<PortList const*, std::unordered_map<std::string, Port*>> m_children;
};

} // namespace TAV_marlo_v1
