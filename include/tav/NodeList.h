#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/ListIterator.h>
#include <tav/Node.h>

#include <memory>

namespace TAV_marlo_v1 {

class Compound;

/// An ordered list of nodes: those of a compound, or a free selection.
///
/// The list of a compound asks and tells that compound and keeps names unique; a free list only
/// holds handles. In the list of a compound, access by index and by name and removal take constant
/// time, in the longest lists at most logarithmic. Copies copy the handles and are free lists.
class TAV_API NodeList {
public:
    struct Impl; // the private record, known inside the library alone

    static NodeList createNew(Compound* compound);
    NodeList();
    NodeList(NodeList const& other);
    NodeList(NodeList&& other) noexcept;
    ~NodeList();
    NodeList& operator=(NodeList const& other);

    unsigned size() const noexcept;
    bool empty() const noexcept { return size() == 0; }
    /// Empty past the end.
    AddRefWrapper<Node> operator[](unsigned index) const;
    /// The first node of exactly that name; empty when absent or when the name is null.
    AddRefWrapper<Node> operator[](char const* name) const;
    /// The index of the node, compared by identity, or kNotFound.
    unsigned findNode(AddRefWrapper<Node> const& node) const;

    /// Appends. In a compound the node gets that compound as parent; a taken name becomes the next
    /// free one. A node that is in a compound already has to leave it first.
    /// @return false, with the node as it was: `node` is empty, in a list already, or a veto
    bool add(AddRefWrapper<Node> const& node);
    /// As add, at `index`; past the end appends.
    bool insert(AddRefWrapper<Node> const& node, unsigned index);
    /// Takes the node out; in a compound it is cut off from everything it was connected to.
    /// @return false: the node is not in the list, or a veto
    bool remove(AddRefWrapper<Node> const& node);

    /// Not owned; null for a free list.
    Compound* getParentCompound() const noexcept;

    ListIterator<NodeList> begin() const { return {*this, 0}; }
    ListIterator<NodeList> end() const { return {*this, size()}; }

private:
    explicit NodeList(Compound* compound);
    friend class NodeAccess;
    std::unique_ptr<Impl> m_impl; // never null; src/graph/NodeListImpl.h
};

} // namespace TAV_marlo_v1
