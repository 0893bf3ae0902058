#pragma once

#include <tav/Export.h>
#include <tav/ListIterator.h>

#include <cstdint>

namespace TAV_marlo_v1 {

class Node;

/// States that an editor or a runtime gives a node while it is open; they are not saved.
enum NodeStateFlag : std::uint32_t {
    eCollapsedState = 1,
    eBypassedState = 2,
    eMutedState = 4,
    eSoloState = 8,
    eLockedState = 0x10,
    ePinnedState = 0x20,
    eComputingState = 0x40,
    eDirtyState = 0x80
};

/// The states of one node, also as a list of those that are set, lowest bit first.
class TAV_API NodeStateFlags {
public:
    bool test(NodeStateFlag flag) const noexcept { return (m_word & flag) != 0; }
    /// Tells the node (Node::onStateFlagChanged) when this changes something.
    void set(NodeStateFlag flag, bool on);

    unsigned size() const noexcept;
    NodeStateFlag operator[](unsigned index) const noexcept;
    ListIterator<NodeStateFlags> begin() const { return {*this, 0}; }
    ListIterator<NodeStateFlags> end() const { return {*this, size()}; }

private:
    friend class Node;
    explicit NodeStateFlags(Node& node) noexcept
        : m_node(&node)
    {
    }
    NodeStateFlags(NodeStateFlags const&) = delete;
    NodeStateFlags& operator=(NodeStateFlags const&) = delete;

    Node* m_node;
    std::uint32_t m_word = 0;
};

} // namespace TAV_marlo_v1
