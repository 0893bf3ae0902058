#pragma once

#include <tav/PluginRegistrar.h>
#include <tav/StatusStr.h>

namespace TAV_marlo_v1 {

class Runtime;
class RuntimeNotifierClient;

/// The process-wide registry of runtimes and plug-ins. Nothing in it is owned. A runtime that is
/// deleted outside shut-down stays filed until the host shuts down.
class TAV_API Host : public PluginRegistrar {
public:
    ~Host() override;
    StatusStr registerRuntime(PluginInfo const& info, Runtime* runtime) override;

    /// Counts one user more; the one that raises the count from 0 names the host. Always success.
    static StatusStr initialize(char const* name);
    /// Counts one user less. The last one shuts the host down: plug-ins are unregistered in the order of
    /// their registration, then plug-ins and runtimes are forgotten. At count 0 nothing changes.
    static void terminate();
    /// The name that the first initialize gave; "" before. Lives until the next initialize.
    static char const* getName();

    static unsigned getNumberOfRuntimes();
    /// In the order of the names; null past the end.
    static Runtime* getRuntimeAt(unsigned index);
    /// Null when there is none of that name.
    static Runtime* getRuntimeByName(char const* name);

    /// The client, which is not owned, also hears what every registered runtime tells. It stays
    /// registered across shut-downs.
    static void registerNotifierClient(RuntimeNotifierClient* client);
    static void unregisterNotifierClient(RuntimeNotifierClient* client);
};

} // namespace TAV_marlo_v1
