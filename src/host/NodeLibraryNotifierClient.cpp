#include <tav/NodeLibraryNotifierClient.h>

#include "host/NodeLibraryImpl.h"

namespace TAV_marlo_v1 {

NodeLibraryNotifierClient::~NodeLibraryNotifierClient()
{
    delete m_record;
}

void NodeLibraryNotifierClient::libraryChanged(NodeLibrary&, ENodeLibraryChangeType, unsigned)
{
}

unsigned NodeLibraryNotifierClient::peekNotifierRegisteredWithCount() const noexcept
{
    return m_record ? static_cast<unsigned>(m_record->size()) : 0;
}

void NodeLibraryNotifierClient::unregisterFromAll()
{
    if (m_record)
        m_record->leaveAll();
}

} // namespace TAV_marlo_v1
