#include <tav/MetadataCallBack.h>

namespace TAV_marlo_v1 {

MetadataCallBack::~MetadataCallBack() = default;

void MetadataCallBack::execute(Metadata&, char const*)
{
}

} // namespace TAV_marlo_v1
