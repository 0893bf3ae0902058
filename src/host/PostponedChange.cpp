#include "host/PostponedChange.h"

namespace TAV_marlo_v1 {

PostponedChange::~PostponedChange() = default;

} // namespace TAV_marlo_v1
