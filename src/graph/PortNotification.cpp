#include <tav/PortNotification.h>

#include "graph/PortImpl.h"

#include <tav/PortUIHints.h>

#include <cctype>
#include <string_view>

namespace TAV_marlo_v1 {

PortNotification::~PortNotification()
{
    PortAccess::dropDependents(*this);
}

// ---- questions that are always answered yes, and what a plain owner does not care to hear

bool PortNotification::onPortAddConnection(AddRefWrapper<Port> const&, AddRefWrapper<Port> const&)
{
    return true;
}

void PortNotification::onPortConnectionAdded(AddRefWrapper<Port> const&, AddRefWrapper<Port> const&)
{
}

bool PortNotification::onPortRemoveConnection(AddRefWrapper<Port> const&, AddRefWrapper<Port> const&)
{
    return true;
}

void PortNotification::onPortConnectionRemoved(AddRefWrapper<Port> const&, AddRefWrapper<Port> const&)
{
}

bool PortNotification::onPortSetDataType(AddRefWrapper<Port> const&, AddRefWrapper<PortDataType> const&)
{
    return true;
}

void PortNotification::onPortDataTypeChanged(AddRefWrapper<Port> const&, AddRefWrapper<PortDataType> const&)
{
}

bool PortNotification::onPortListPortAdd(PortList const&, AddRefWrapper<Port> const&)
{
    return true;
}

void PortNotification::onPortListPortAdded(PortList const&, AddRefWrapper<Port> const&)
{
}

bool PortNotification::onPortListPortRemove(PortList const&, AddRefWrapper<Port> const&)
{
    return true;
}

void PortNotification::onPortListPortRemoved(PortList const&, AddRefWrapper<Port> const&)
{
}

bool PortNotification::onPortListPortMove(PortList const&, unsigned, unsigned)
{
    return true;
}

void PortNotification::onPortListPortMoved(PortList const&, unsigned, unsigned)
{
}

bool PortNotification::onPortCanSaveDefaultValues(AddRefWrapper<Port> const&) const
{
    return true;
}

bool PortNotification::onPortHandlesHierarchicValues(AddRefWrapper<Port> const&) const
{
    return false;
}

void PortNotification::onPortValuesChanged(AddRefWrapper<Port> const&, StringArray const&)
{
}

void PortNotification::onPortValuesReset(AddRefWrapper<Port> const&)
{
}

bool PortNotification::onPortSetName(AddRefWrapper<Port> const&, char const*)
{
    return true;
}

void PortNotification::onPortNameChanged(AddRefWrapper<Port> const&, char const*)
{
}

Namable PortNotification::onGetParentFullPathName() const
{
    return Namable();
}

void PortNotification::onPortExposureChanged(AddRefWrapper<Port> const&, bool)
{
}

void PortNotification::onPortFanInStateChanged(AddRefWrapper<Port> const&, bool)
{
}

void PortNotification::onPortGetAcceptableMetadataValues(AddRefWrapper<Port> const&, char const*, StringArray&) const
{
}

String PortNotification::onPortGetMetaDataUIName(AddRefWrapper<Port> const&, char const* key) const
{
    return key;
}

String PortNotification::onPortGetMetaDataDescription(AddRefWrapper<Port> const&, char const*) const
{
    return String();
}

bool PortNotification::onPortCreateWatchPoint(AddRefWrapper<Port> const&, AddRefWrapper<WatchPoint>&)
{
    return false;
}

bool PortNotification::onPortRemoveWatchPoint(AddRefWrapper<Port> const&)
{
    return true;
}

void PortNotification::onPortSetFlag(AddRefWrapper<Port> const&, PortFlags)
{
}

void PortNotification::onPortClearFlag(AddRefWrapper<Port> const&, PortFlags)
{
}

bool PortNotification::onPortCanSetFlag(AddRefWrapper<Port> const&, PortFlags) const
{
    return true;
}

bool PortNotification::onPortCanClearFlag(AddRefWrapper<Port> const&, PortFlags) const
{
    return true;
}

// ---- what is kept with the port

bool PortNotification::onPortTestFlag(AddRefWrapper<Port> const& port, PortFlags flag) const
{
    return PortAccess::hasFlag(*port, flag);
}

PortFlags PortNotification::onPortGetFlags(AddRefWrapper<Port> const& port) const
{
    return PortAccess::flags(*port);
}

bool PortNotification::onPortGetDefaultValues(AddRefWrapper<Port> const& port, StringArray& values) const
{
    StringArray const* const kept = PortAccess::values(*port);
    if (kept)
        values.add(*kept);
    return kept != nullptr;
}

bool PortNotification::onPortSetDefaultValues(AddRefWrapper<Port> const& port, StringArray const& values)
{
    PortAccess::setValues(*port, values);
    return true;
}

bool PortNotification::onPortResetDefaultValues(AddRefWrapper<Port> const& port, StringArray& values)
{
    PortAccess::clearValues(*port);
    if (AddRefWrapper<PortDataType> const type = port->getDataType())
        values.add(type->getDefaultValue());
    return true;
}

String PortNotification::onPortGetMetaDataValue(AddRefWrapper<Port> const& port, char const* key) const
{
    PropertyList const* const metadata = PortAccess::metadata(*port);
    return metadata ? String(metadata->getStringPairValue(key)) : String();
}

bool PortNotification::onPortSetMetaDataValue(AddRefWrapper<Port> const& port, char const* key, char const* value)
{
    PortAccess::setMetadata(*port, key, value);
    return true;
}

PropertyList PortNotification::onPortGetOptions(AddRefWrapper<Port> const& port) const
{
    PropertyList const* const options = PortAccess::options(*port);
    return options ? *options : PropertyList();
}

namespace {

bool isUIKey(std::string_view key)
{
    auto const lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return key.size() >= 2 && lower(key[0]) == 'u' && lower(key[1]) == 'i';
}

} // namespace

void PortNotification::onPortGetAvailableMetadatas(MetadataType type, AddRefWrapper<Port> const& port,
                                                   StringArray& keys) const
{
    PropertyList const* const metadata = PortAccess::metadata(*port);
    StringArray all;
    if (metadata)
        metadata->getStringPairNames(all);
    for (char const* key : all) {
        if (type == eAnyMetadata || isUIKey(key) == (type == eUIMetadata))
            keys.add(key);
    }
}

void PortNotification::onPortGetUIHints(AddRefWrapper<Port> const& port, PortUIHints& hints) const
{
    if ((hints.requestedHintsFlags() & ePortNiceNameHint) != 0)
        hints.setNiceName(port->getName());
    AddRefWrapper<PortDataType> const type = port->getDataType();
    if (type && (hints.requestedHintsFlags() & ePortResolvedTypeHint) != 0)
        hints.setResolvedDataType(type->getName());
}

void PortNotification::onPortGetToolTip(AddRefWrapper<Port> const& port, StringArray& lines) const
{
    lines.add(port->getFullName().getName());
    if (AddRefWrapper<PortDataType> const type = port->getDataType())
        lines.add(type->getName());
}

} // namespace TAV_marlo_v1
