#pragma once

#include <tav/Port.h>
#include <tav/PropertyList.h>

namespace TAV_marlo_v1::detail {

/// The metadata of one port, to be brought back in their order.
class PortMetadataState {
public:
    explicit PortMetadataState(Port const& port);
    /// Sets what differs, asking and telling. Of a compound port both sides get it.
    bool restore(Port& port) const;

private:
    PropertyList m_shown;  // as the owner answers
    PropertyList m_stored; // as kept with the port
};

} // namespace TAV_marlo_v1::detail
