#pragma once

#include <tav/Export.h>
#include <tav/Types.h>

namespace TAV_marlo_v1 {

class Container;
class Runtime;

/// Hears about runtimes: register it with a runtime, or with the host for all of them. Its
/// destructor leaves everything it is registered with.
class TAV_API RuntimeNotifierClient {
public:
    RuntimeNotifierClient() noexcept = default;
    RuntimeNotifierClient(RuntimeNotifierClient const&) = delete;
    RuntimeNotifierClient& operator=(RuntimeNotifierClient const&) = delete;

    virtual ~RuntimeNotifierClient();
    virtual void runtimeRegistered(Runtime* runtime);
    virtual void containerChange(Runtime* runtime, EContainerChangeType type, Container* container);
    virtual void aboutToBeDeleted(Runtime* runtime);

private:
    friend class RuntimeClientAccess;
    struct Record;
    Record* m_record = nullptr; // made on first registration
};

} // namespace TAV_marlo_v1
