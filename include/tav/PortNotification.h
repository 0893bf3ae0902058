#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Export.h>
#include <tav/Namable.h>
#include <tav/PropertyList.h>
#include <tav/String.h>
#include <tav/StringArray.h>
#include <tav/Types.h>

namespace TAV_marlo_v1 {

class Compound;
class Node;
class Port;
class PortDataType;
class PortList;
class PortUIHints;
class WatchPoint;

/// The owner of ports: asked before a change of one of its ports, told after it.
///
/// Questions answer whether the change may happen; "no" leaves everything unchanged. A question
/// that carries a value to be kept (default values, a metadata value) also keeps it. The answers
/// here are those of a permissive owner that keeps values and metadata with the port and reports
/// nothing. Hooks may change the graph; callers hold handles to what they touch afterwards.
class TAV_API PortNotification {
public:
    PortNotification() noexcept = default;
    /// Ports belong to one owner: a copy starts without any.
    PortNotification(PortNotification const&) noexcept {}
    PortNotification& operator=(PortNotification const&) noexcept { return *this; }

    virtual ~PortNotification();
    virtual bool onPortAddConnection(AddRefWrapper<Port> const& port, AddRefWrapper<Port> const& other);
    virtual void onPortConnectionAdded(AddRefWrapper<Port> const& port, AddRefWrapper<Port> const& other);
    virtual bool onPortRemoveConnection(AddRefWrapper<Port> const& port, AddRefWrapper<Port> const& other);
    /// Told also when the two were not connected: the removal was allowed.
    virtual void onPortConnectionRemoved(AddRefWrapper<Port> const& port, AddRefWrapper<Port> const& other);
    virtual bool onPortSetDataType(AddRefWrapper<Port> const& port, AddRefWrapper<PortDataType> const& type);
    virtual void onPortDataTypeChanged(AddRefWrapper<Port> const& port, AddRefWrapper<PortDataType> const& type);
    virtual bool onPortListPortAdd(PortList const& list, AddRefWrapper<Port> const& port);
    virtual void onPortListPortAdded(PortList const& list, AddRefWrapper<Port> const& port);
    virtual bool onPortListPortRemove(PortList const& list, AddRefWrapper<Port> const& port);
    virtual void onPortListPortRemoved(PortList const& list, AddRefWrapper<Port> const& port);
    virtual bool onPortListPortMove(PortList const& list, unsigned from, unsigned to);
    virtual void onPortListPortMoved(PortList const& list, unsigned from, unsigned to);
    virtual bool onPortCanSaveDefaultValues(AddRefWrapper<Port> const& port) const;
    virtual bool onPortHandlesHierarchicValues(AddRefWrapper<Port> const& port) const;
    /// Appends the values. @return whether the port has default values, be they an empty list
    virtual bool onPortGetDefaultValues(AddRefWrapper<Port> const& port, StringArray& values) const;
    virtual bool onPortSetDefaultValues(AddRefWrapper<Port> const& port, StringArray const& values);
    virtual void onPortValuesChanged(AddRefWrapper<Port> const& port, StringArray const& values);
    /// Takes the port's values away. `values` may be filled with what the port falls back to.
    virtual bool onPortResetDefaultValues(AddRefWrapper<Port> const& port, StringArray& values);
    virtual void onPortValuesReset(AddRefWrapper<Port> const& port);
    virtual bool onPortSetName(AddRefWrapper<Port> const& port, char const* name);
    /// `name` is the new name.
    virtual void onPortNameChanged(AddRefWrapper<Port> const& port, char const* name);
    /// The path that stands in front of a port's name.
    virtual Namable onGetParentFullPathName() const;
    virtual void onPortExposureChanged(AddRefWrapper<Port> const& port, bool exposed);
    virtual void onPortFanInStateChanged(AddRefWrapper<Port> const& port, bool fanIn);
    virtual String onPortGetMetaDataValue(AddRefWrapper<Port> const& port, char const* key) const;
    virtual bool onPortSetMetaDataValue(AddRefWrapper<Port> const& port, char const* key, char const* value);
    virtual PropertyList onPortGetOptions(AddRefWrapper<Port> const& port) const;
    virtual void onPortGetAvailableMetadatas(MetadataType type, AddRefWrapper<Port> const& port,
                                             StringArray& keys) const;
    virtual void onPortGetAcceptableMetadataValues(AddRefWrapper<Port> const& port, char const* key,
                                                   StringArray& values) const;
    virtual String onPortGetMetaDataUIName(AddRefWrapper<Port> const& port, char const* key) const;
    virtual String onPortGetMetaDataDescription(AddRefWrapper<Port> const& port, char const* key) const;
    virtual void onPortGetUIHints(AddRefWrapper<Port> const& port, PortUIHints& hints) const;
    virtual void onPortGetToolTip(AddRefWrapper<Port> const& port, StringArray& lines) const;
    virtual bool onPortCreateWatchPoint(AddRefWrapper<Port> const& port, AddRefWrapper<WatchPoint>& watchPoint);
    virtual bool onPortRemoveWatchPoint(AddRefWrapper<Port> const& port);
    virtual void onPortSetFlag(AddRefWrapper<Port> const& port, PortFlags flag);
    virtual void onPortClearFlag(AddRefWrapper<Port> const& port, PortFlags flag);
    virtual bool onPortCanSetFlag(AddRefWrapper<Port> const& port, PortFlags flag) const;
    virtual bool onPortCanClearFlag(AddRefWrapper<Port> const& port, PortFlags flag) const;
    virtual bool onPortTestFlag(AddRefWrapper<Port> const& port, PortFlags flag) const;
    virtual PortFlags onPortGetFlags(AddRefWrapper<Port> const& port) const;

private:
    friend class Compound;
    friend class Node;
    friend class Port;
    friend class PortAccess;
    // Which of the library's owners this is, or one of somebody else's making.
    enum class Kind : unsigned char { eOther, eNode, eCompound };
    Kind m_kind = Kind::eOther;
    struct Dependents;
    Dependents* m_dependents = nullptr; // made when a stray port or a foreign list names this owner
};

} // namespace TAV_marlo_v1
