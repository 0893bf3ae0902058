#include <tav/ReferenceCounted.h>

namespace TAV_marlo_v1 {

ReferenceCounted::~ReferenceCounted() = default;

void ReferenceCounted::deleteThis()
{
    delete this;
}

} // namespace TAV_marlo_v1
