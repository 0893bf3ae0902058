#include <tav/kit/Plugin.h>
#include <tav/kit/StandardRuntime.h>

using namespace TAV_marlo_v1;

namespace {

kit::StandardRuntime* s_runtime = nullptr;

void registerPlugin(PluginRegistrar& registrar, PluginInfo& info)
{
    s_runtime = new kit::StandardRuntime("consumer");
    registrar.registerRuntime(info, s_runtime);
}

void unregisterPlugin(PluginInfo const&)
{
    delete s_runtime;
}

} // namespace

TAV_KIT_PLUGIN(registerPlugin, unregisterPlugin)
