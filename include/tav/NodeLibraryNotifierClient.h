#pragma once

#include <tav/Export.h>
#include <tav/Types.h>

namespace TAV_marlo_v1 {

class NodeLibrary;

/// Hears about changes of the node libraries it is registered with; its destructor leaves them all.
class TAV_API NodeLibraryNotifierClient {
public:
    NodeLibraryNotifierClient() noexcept = default;
    NodeLibraryNotifierClient(NodeLibraryNotifierClient const&) = delete;
    NodeLibraryNotifierClient& operator=(NodeLibraryNotifierClient const&) = delete;

    virtual ~NodeLibraryNotifierClient();
    virtual void libraryChanged(NodeLibrary& library, ENodeLibraryChangeType type, unsigned index);

    unsigned peekNotifierRegisteredWithCount() const noexcept;
    void unregisterFromAll();

private:
    friend class NodeLibrary;
    struct Record;
    Record* m_record = nullptr; // made on first registration
};

} // namespace TAV_marlo_v1
