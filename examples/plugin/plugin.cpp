// The entry of the plug-in. docs/plugin-guide.md walks through this folder.
#include "ArithmeticRuntime.h"

#include <tav/kit/Plugin.h>

using namespace TAV_marlo_v1;

namespace {

arithmetic::ArithmeticRuntime* s_runtime = nullptr;

void registerArithmetic(PluginRegistrar& registrar, PluginInfo& info)
{
    info.setText("arithmetic");
    s_runtime = new arithmetic::ArithmeticRuntime;
    registrar.registerRuntime(info, s_runtime);
}

void unregisterArithmetic(PluginInfo const&)
{
    delete s_runtime;
    s_runtime = nullptr;
}

} // namespace

TAV_KIT_PLUGIN(registerArithmetic, unregisterArithmetic)
