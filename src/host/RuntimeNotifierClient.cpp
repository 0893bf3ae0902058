#include <tav/RuntimeNotifierClient.h>

#include "host/RuntimeImpl.h"

namespace TAV_marlo_v1 {

RuntimeNotifierClient::~RuntimeNotifierClient()
{
    delete m_record;
}

void RuntimeNotifierClient::runtimeRegistered(Runtime*)
{
}

void RuntimeNotifierClient::containerChange(Runtime*, EContainerChangeType, Container*)
{
}

void RuntimeNotifierClient::aboutToBeDeleted(Runtime*)
{
}

} // namespace TAV_marlo_v1
