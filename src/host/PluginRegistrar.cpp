#include <tav/PluginRegistrar.h>

#include <tav/Host.h>
#include <tav/Runtime.h>

#include "host/HostImpl.h"

namespace TAV_marlo_v1 {

PluginRegistrar::~PluginRegistrar() = default;

StatusStr PluginRegistrar::registerRuntime(PluginInfo const&, Runtime* runtime)
{
    if (runtime)
        ImplHost::instance().fileRuntime(*runtime);
    return StatusStr();
}

void selfRegisterPlugin(PluginRegisterFunction registerPlugin, PluginUnregisterFunction unregisterPlugin)
{
    PluginInfo info;
    Host registrar;
    if (registerPlugin)
        registerPlugin(registrar, info);
    ImplHost::instance().plugins.push_back({info, registerPlugin, unregisterPlugin});
}

} // namespace TAV_marlo_v1
