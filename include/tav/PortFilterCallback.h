#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Export.h>

namespace TAV_marlo_v1 {

class Port;

/// Decides which child ports a port's text holds. A null filter accepts every port.
class TAV_API PortFilterCallback {
public:
    virtual ~PortFilterCallback();
    virtual bool accept(AddRefWrapper<Port> const& port) = 0;
};

} // namespace TAV_marlo_v1
