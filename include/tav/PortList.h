#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/ListIterator.h>
#include <tav/Port.h>
#include <tav/ReferenceCounted.h>
#include <tav/Types.h>

namespace TAV_marlo_v1 {

class PortNotification;

/// An ordered list of ports: a node's inputs or outputs, a port's children, the ports a port is
/// connected to.
///
/// With an owner, the list gives the ports that owner, asks and tells it about each change and
/// keeps flag eDetached; without one it only holds handles. Access by index and by name and removal
/// take constant time, in the longest lists at most logarithmic.
class TAV_API PortList : public ReferenceCounted {
public:
    struct Entries; // the list with its private record, known inside the library alone
    struct Impl;    // so for a list that can have an owner

    static AddRefWrapper<PortList> createNew();

    unsigned size() const noexcept;
    bool empty() const noexcept { return size() == 0; }
    /// Empty past the end.
    AddRefWrapper<Port> operator[](unsigned index) const;
    /// The first port of that name; empty when absent or when the name is null.
    AddRefWrapper<Port> operator[](char const* name) const;

    /// The first port of that name and its index; `index` is kNotFound when there is none.
    AddRefWrapper<Port> findPort(char const* name, unsigned& index) const;
    /// The index of the port, compared by identity, or kNotFound.
    unsigned findPort(AddRefWrapper<Port> const& port) const;
    /// As findPort, for a dotted full name ("color.r") too: a port's own name is tried first, then its
    /// children. `index` is that of the top-level port.
    AddRefWrapper<Port> findPortRecursive(char const* name, unsigned& index) const;

    /// Appends. The port gets the owner before the owner is asked, and keeps it after a veto.
    /// @return false: `port` is empty, or a veto
    bool add(AddRefWrapper<Port> const& port);
    /// As add, at `index`; past the end appends.
    bool insert(AddRefWrapper<Port> const& port, unsigned index);
    /// Makes a port with the list's direction and appends it. A taken name becomes the next free one.
    /// @return empty after a veto
    AddRefWrapper<Port> addPort(char const* name, AddRefWrapper<PortDataType> const& type, PortFlags flags);
    /// @return false: the port is not in the list (nobody is asked), or a veto
    bool remove(AddRefWrapper<Port> const& port);
    /// As remove, for a port that may be a child or member, at any depth, of a port in this list.
    bool removeMemberPort(AddRefWrapper<Port> const& port);
    /// Moves one port; the ports between shift by one. True, and nobody asked, for equal indices.
    /// @return false: an index past the end, or a veto
    bool movePort(unsigned from, unsigned to);

    ListIterator<PortList> begin() const { return {*this, 0}; }
    ListIterator<PortList> end() const { return {*this, size()}; }

    /// The owner that the ports get when they are added; those in the list keep theirs.
    void setParent(PortNotification* owner) noexcept;
    PortNotification* getParent() const noexcept;
    /// The direction of every port in the list and of those that addPort makes.
    void setPortIOType(PortIOType type);

    /// Empties the list at once and cuts all connections of its former ports, asking and telling nobody.
    void onParentNodeDeleted();

private:
    PortList() noexcept; // of Entries alone: nobody else derives from this class
    ~PortList() override;
    PortList(PortList const&) = delete;
    PortList& operator=(PortList const&) = delete;

    Entries& entries() noexcept;
    Entries const& entries() const noexcept;
    Impl& impl() noexcept;
    Impl const& impl() const noexcept;

    friend class PortAccess;
};

} // namespace TAV_marlo_v1
