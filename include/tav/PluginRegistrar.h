#pragma once

#include <tav/Export.h>
#include <tav/PluginInfo.h>
#include <tav/StatusStr.h>

namespace TAV_marlo_v1 {

class Runtime;

/// What a plug-in's registration function registers its runtime with.
class TAV_API PluginRegistrar {
public:
    virtual ~PluginRegistrar();
    /// Files the runtime, which is not owned, under its name, in place of one of the same name.
    /// A null runtime changes nothing. Always success.
    virtual StatusStr registerRuntime(PluginInfo const& info, Runtime* runtime);
};

using PluginRegisterFunction = void (*)(PluginRegistrar& registrar, PluginInfo& info);
using PluginUnregisterFunction = void (*)(PluginInfo const& info);

/// Called once by a plug-in's own start-up code. The registration function runs at once; the
/// unregistration function, which may be null, when the host shuts down.
TAV_API void selfRegisterPlugin(PluginRegisterFunction registerPlugin, PluginUnregisterFunction unregisterPlugin);

} // namespace TAV_marlo_v1
