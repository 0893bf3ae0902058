#pragma once

#include "graph/PortListImpl.h"

#include <tav/PortDataType.h>
#include <tav/WatchPoint.h>

#include <optional>

namespace TAV_marlo_v1 {

struct Port::Impl {
    /// What few ports have.
    struct Extras {
        PropertyList options;
        PropertyList metadata;
        AddRefWrapper<WatchPoint> watchPoint;
    };

    explicit Impl(PortIOType direction) noexcept
        : ioType(direction)
    {
    }

    Extras& makeExtras()
    {
        if (!extras)
            extras = std::make_unique<Extras>();
        return *extras;
    }

    PortNotification* owner = nullptr;
    Port* parentPort = nullptr;
    PortList::Impl* home = nullptr; // the list of the owner or of the parent port; not owned
    AddRefWrapper<PortDataType> type;
    AddRefWrapper<PortList> connections; // made with the first connection
    AddRefWrapper<PortList> children;
    std::optional<StringArray> values; // the default values, if some were set
    std::unique_ptr<Extras> extras;
    PortIOType ioType;
    bool isStray = false; // has an owner but stands in no list: the owner keeps a note of it
};

} // namespace TAV_marlo_v1
