#pragma once

#include "foundation/SmallBlocks.h"
#include "graph/PortListImpl.h"

#include <tav/PortDataType.h>
#include <tav/WatchPoint.h>

#include <memory>

namespace TAV_marlo_v1 {

/// A port and its record in one block: a graph has several ports for each node.
struct Port::Impl final : Port, detail::InSmallBlock {
    /// What few ports have.
    struct Extras {
        PropertyList options;
        PropertyList metadata;
        AddRefWrapper<WatchPoint> watchPoint;
        AddRefWrapper<PortList> children;
        Port* nextDoomed = nullptr; // see Graveyard.h; used only while a port with children dies
    };

    Impl(char const* name, PortIOType direction)
        : Port(name)
        , ioType(direction)
    {
    }
    ~Impl() override;

    Extras& makeExtras()
    {
        if (!extras)
            extras = std::make_unique<Extras>();
        return *extras;
    }

    PortIOType ioType : 8;
    bool isStray = false;   // has an owner but stands in no list: the owner keeps a note of it
    bool hasValues = false; // some default values were set, be they none
    PortNotification* owner = nullptr;
    AddRefWrapper<PortList::Entries> connections; // made with the first connection
    Port* parentPort = nullptr;
    PortList::Impl* home = nullptr; // the list of the owner or of the parent port; not owned
    AddRefWrapper<PortDataType> type;
    StringArray values;
    std::unique_ptr<Extras> extras;
};

inline Port::Impl& Port::impl() noexcept
{
    return static_cast<Impl&>(*this);
}

inline Port::Impl const& Port::impl() const noexcept
{
    return static_cast<Impl const&>(*this);
}

inline Port::Impl& PortAccess::impl(Port& port) noexcept
{
    return port.impl();
}

inline Port::Impl const& PortAccess::impl(Port const& port) noexcept
{
    return port.impl();
}

} // namespace TAV_marlo_v1
