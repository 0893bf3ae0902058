#include "persistence/TextWatchPoint.h"

namespace TAV_marlo_v1 {

TextWatchPoint::~TextWatchPoint() = default;

void ensureWatchPoint(Port& port, bool enabled)
{
    AddRefWrapper<Port> const kept(&port);
    if (!port.getWatchPoint() && !port.setWatchPoint())
        port.setWatchPoint(AddRefWrapper<WatchPoint>(new TextWatchPoint));
    if (AddRefWrapper<WatchPoint> const watchPoint = port.getWatchPoint())
        watchPoint->enable(enabled);
}

} // namespace TAV_marlo_v1
