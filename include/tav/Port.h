#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Flaggable.h>
#include <tav/Namable.h>
#include <tav/PropertyList.h>
#include <tav/ReferenceCounted.h>
#include <tav/StatusStr.h>
#include <tav/String.h>
#include <tav/StringArray.h>
#include <tav/Types.h>

namespace TAV_marlo_v1 {

class Compound;
class Node;
class PortDataType;
class PortFilterCallback;
class PortList;
class PortNotification;
class PortUIHints;
class WatchPoint;

/// One named, typed input or output of a node, or of a compound as seen from inside; always held
/// by AddRefWrapper<Port>.
///
/// A port keeps alive its child ports and the ports it is connected to (a cycle: removeConnection
/// cuts it, and so does the death of its owner). The owner and the parent port are plain pointers
/// that own nothing. Changes are asked of the owner first and told to it afterwards; a port without
/// owner has nobody to ask, takes no values and no metadata, and answers empty.
/// Texts handed out as `char const*` live until the next change of this port.
class TAV_API Port : public ReferenceCounted, public Namable, public Flaggable<PortFlags> {
public:
    struct Impl; // the port with its private record, known inside the library alone

    /// A port without owner or connections. A null `name` leaves the name empty.
    static AddRefWrapper<Port> createNew(char const* name, PortIOType ioType);

    PortIOType getPortIOType() const noexcept;
    AddRefWrapper<PortDataType> getDataType() const;
    /// Asks, changes and tells. Both sides of a compound port get the type, and both owners are asked
    /// and told. @return false, with nothing changed, after a veto
    bool setDataType(AddRefWrapper<PortDataType> const& type);

    /// Asks, changes and tells; so on both sides of a compound port. A taken name becomes the next
    /// free one of its list; a name that the runtime refuses, a null and the present name change nothing.
    void setName(char const* name) override;

    PortNotification* getParent() const noexcept;
    /// Called by the list that takes the port up. Neither asks nor tells.
    void setParent(PortNotification* owner);
    /// The port that this one is a child or member of; null for a top-level port. Not owned.
    Port* getParentPort() const noexcept;
    void setParentPort(Port* parent) noexcept;
    /// The node with this port; for an inner port of a compound the compound's owner node.
    AddRefWrapper<Node> getParentNode() const;
    /// The compound that holds the node with this port; for an inner port the compound itself.
    AddRefWrapper<Compound> getParentCompound() const;
    /// The owner is a compound: this is one of its ports seen from inside.
    bool isCompoundInternalPort() const noexcept;

    /// "color.r": the parent ports' names in front, joined by "."; no node name. Built anew.
    Namable getFullName() const;
    /// "/c/n.color.r"; the own name alone without owner. Built anew.
    Namable getFullPathName() const;

    // ---- flags

    PortFlags getFlags() const override;
    /// Sets every bit of the mask or, unless canSetFlag allows the ones that are not set yet, none; these
    /// alone are asked and told of, in one call. eFanIn makes the member list; eDetached goes on to the
    /// children; eExposed, and no other bit, is kept in step on both sides of a compound port.
    void setFlag(PortFlags flag) override;
    /// Mirrors setFlag; clearing eFanIn drops the members.
    void clearFlag(PortFlags flag) override;
    bool testFlag(PortFlags flag) const override;
    /// Of a mask, whether all its bits can be set at once.
    bool canSetFlag(PortFlags flag) const;
    bool canClearFlag(PortFlags flag) const;
    bool isFanIn() const;
    /// The parent port is a fan-in port.
    bool isMemberFanIn() const;

    // ---- values and metadata, kept by the owner

    /// Appends the default values. @return whether there are any, be they an empty list
    bool getPortDefaultValues(StringArray& values) const;
    bool setPortDefaultValues(StringArray const& values);
    /// Takes the default values away.
    bool resetPortDefaultValues();
    bool canSaveDefaultValues() const;
    /// "" when there is none.
    String getPortMetaDataValue(char const* key) const;
    /// A null value removes the entry. Both sides of a compound port get it.
    bool setPortMetaDataValue(char const* key, char const* value);
    String getPortMetaDataUIName(char const* key) const;
    String getPortMetaDataDescription(char const* key) const;
    void getAcceptableMetadataValues(char const* key, StringArray& values) const;
    void getAvailableMetadatas(MetadataType type, StringArray& keys) const;
    PropertyList getOptions() const;
    void getPortToolTip(StringArray& lines) const;
    void getUIHints(PortUIHints& hints) const;
    bool handlesHierarchicValues() const;

    // ---- children

    /// Makes the child list if there is none and returns it. The children of a fan-in port are its members.
    AddRefWrapper<PortList> createChildrenList();
    /// Empty when there is no child list.
    AddRefWrapper<PortList> children() const;

    // ---- connections

    /// Connects the two ports, each listing the other. Either end may be called: the output of two
    /// node ports acts, the inner port of a node port and an inner port, the output of two inner
    /// ports. Only the acting port's owner is asked and told. Duplicates and type rules are that
    /// owner's business.
    /// @param copyMetadata copy what the runtime and the port's "metaDataToCopy" list name onto the
    ///        compound's outside port, when an inner port of a compound and a node port are connected
    /// @return false, with nothing changed: `other` is empty, an end is unconnectable, or a veto
    bool addConnection(AddRefWrapper<Port> const& other, bool copyMetadata);
    /// Cuts one link between the two. The owner that allowed it is told also when there was none.
    /// @return whether both ports listed each other
    bool removeConnection(AddRefWrapper<Port> const& other);
    /// Cuts from the last to the first; one whose removal is refused stays.
    void removeAllConnections();
    /// The connected ports; lives as long as this port.
    PortList const& connectedTo() const noexcept;
    bool isConnected() const noexcept;

    // ---- watch point

    /// Lets the owner make a watch point, keeps it and reports it.
    /// @return false when the owner makes none
    bool setWatchPoint();
    /// Keeps the given watch point without asking or telling anyone.
    void setWatchPoint(AddRefWrapper<WatchPoint> const& watchPoint);
    AddRefWrapper<WatchPoint> getWatchPoint() const;
    /// @return false when there is none, or after a veto
    bool removeWatchPoint();

    /// Reports a change of this port: of an inner port as one of the IO node that shows it, or else of
    /// the compound; of any other as one of its node. Nothing for a port without owner.
    void notifyChange(EPortChangeType type);

    // ---- text

    /// Graph text rooted at "port". The filter acts on the first level of child ports.
    String saveToString(PortFilterCallback* filter) const;
    /// Takes over values, flags, options, metadata, children and members of a "port" text; name,
    /// type and direction stay. Text that can't be used changes nothing; when the owner refuses a part,
    /// all that was changed before is put back, told like any change, and the error says what it refused.
    StatusStr restoreFromString(char const* text);

    /// Values as a person or a command types them: one value for a type with one; "{a,b}" for
    /// several; text without brackets is one value, except that empty text is no value for a list type.
    /// @return false only for a null text
    static bool unserializePortValuesString(char const* text, StringArray& values,
                                            AddRefWrapper<PortDataType> const& type);

protected:
    void deleteThis() override;

private:
    explicit Port(char const* name); // of Impl alone: nobody else derives from this class
    ~Port() override;
    Port(Port const&) = delete;
    Port& operator=(Port const&) = delete;

    Impl& impl() noexcept;
    Impl const& impl() const noexcept;

    bool connectActing(AddRefWrapper<Port> const& other, bool copyMetadata);
    bool disconnectActing(AddRefWrapper<Port> const& other);
    static void tellFlagChanged(AddRefWrapper<Port> const& port, PortFlags changed, bool on);
    void dropMembers();

    friend class PortAccess;
};

} // namespace TAV_marlo_v1
