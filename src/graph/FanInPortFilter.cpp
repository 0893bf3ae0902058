#include <tav/FanInPortFilter.h>

#include <tav/Port.h>

namespace TAV_marlo_v1 {

PortFilterCallback::~PortFilterCallback() = default;

FanInPortFilter::~FanInPortFilter() = default;

bool FanInPortFilter::accept(AddRefWrapper<Port> const& port)
{
    return !port || !port->isMemberFanIn();
}

} // namespace TAV_marlo_v1
