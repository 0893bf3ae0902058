#pragma once

#include <tav/PortFilterCallback.h>

namespace TAV_marlo_v1 {

/// Leaves out the members of fan-in ports, which are also listed by name and values.
class TAV_API FanInPortFilter final : public PortFilterCallback {
public:
    ~FanInPortFilter() override;
    bool accept(AddRefWrapper<Port> const& port) override;
};

} // namespace TAV_marlo_v1
