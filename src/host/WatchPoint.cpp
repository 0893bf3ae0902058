#include <tav/WatchPoint.h>

#include <tav/AddRefWrapper.h>

namespace TAV_marlo_v1 {

AddRefWrapper<WatchPoint> WatchPoint::createNew()
{
    return AddRefWrapper<WatchPoint>(new WatchPoint);
}

WatchPoint::WatchPoint() = default;

WatchPoint::~WatchPoint() = default;

void WatchPoint::enable(bool)
{
}

bool WatchPoint::enabled() const
{
    return false;
}

bool WatchPoint::getAvailableParameters(StringArray&) const
{
    return false;
}

bool WatchPoint::getParameterAcceptableValues(char const*, StringArray&) const
{
    return false;
}

bool WatchPoint::getParameterDescription(char const*, String&) const
{
    return false;
}

bool WatchPoint::getParameterValue(char const*, String&) const
{
    return false;
}

bool WatchPoint::getParameterValueDescription(char const*, char const*, String&) const
{
    return false;
}

bool WatchPoint::getRecordedParameters(StringArray&) const
{
    return false;
}

bool WatchPoint::getRecordedValues(char const*, StringArray&) const
{
    return false;
}

bool WatchPoint::setParameterValue(char const*, char const*)
{
    return false;
}

void WatchPoint::executeChange()
{
}

} // namespace TAV_marlo_v1
