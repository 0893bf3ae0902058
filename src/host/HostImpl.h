#pragma once

#include <tav/PluginInfo.h>
#include <tav/PluginRegistrar.h>
#include <tav/RuntimeNotifierClient.h>

#include "host/RuntimeImpl.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace TAV_marlo_v1 {

/// The one object behind the static face of Host. It hears every registered runtime and passes on
/// what it hears.
class ImplHost final : public RuntimeNotifierClient {
public:
    struct Plugin {
        PluginInfo info;
        PluginRegisterFunction registerPlugin;
        PluginUnregisterFunction unregisterPlugin;
    };

    static ImplHost& instance();

    void runtimeRegistered(Runtime* runtime) override;
    void containerChange(Runtime* runtime, EContainerChangeType type, Container* container) override;
    void aboutToBeDeleted(Runtime* runtime) override;

    void fileRuntime(Runtime& runtime);
    void shutDown();

    std::string name;
    std::vector<Plugin> plugins;
    std::map<std::string, Runtime*> runtimes;
    RuntimeClients clients;
    std::int32_t count = 0;
    bool isShuttingDown = false;

private:
    ImplHost() = default;
};

} // namespace TAV_marlo_v1
