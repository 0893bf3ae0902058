// A module that writes down what happens to it, built in several ways. PROBE_NAME is its runtime's name.
#include <tav/Host.h>
#include <tav/Runtime.h>
#include <tav/kit/Plugin.h>

#include <cstdio>
#include <cstdlib>

using namespace TAV_marlo_v1;

namespace {

void note(char const* what)
{
    char const* const path = std::getenv("TAV_PROBE_LOG");
    if (std::FILE* const log = path ? std::fopen(path, "ab") : nullptr) {
        std::fprintf(log, "%s %s\n", PROBE_NAME, what);
        std::fclose(log);
    }
}

struct Presence {
    Presence() { note("arrives"); }
    ~Presence() { note("leaves"); }
} s_presence;

} // namespace

#if defined(PROBE_OTHER_INTERFACE)

extern "C" TAV_SYMBOL_EXPORT char const* tavPluginInterface()
{
    return TAV_KIT_PLUGIN_MARK "99";
}

#elif defined(PROBE_ONLY_MARKED)

extern "C" TAV_SYMBOL_EXPORT char const* tavPluginInterface()
{
    return TAV_KIT_PLUGIN_MARK TAV_KIT_PLUGIN_INTERFACE;
}

#else

namespace {

class ProbeRuntime final : public Runtime {
public:
    ProbeRuntime()
        : Runtime(PROBE_NAME)
    {
    }
    ~ProbeRuntime() override { note("ends"); }
};

ProbeRuntime* s_runtime = nullptr;

void registerProbe(PluginRegistrar& registrar, PluginInfo& info)
{
    note("registers");
    info.setText(PROBE_NAME);
    s_runtime = new ProbeRuntime;
    registrar.registerRuntime(info, s_runtime);
}

void unregisterProbe(PluginInfo const& info)
{
    note(info.getText());
#    if !defined(PROBE_KEEPS_RUNTIME) && !defined(PROBE_BRINGS_ITSELF)
    delete s_runtime;
#    endif
}

} // namespace

#    if defined(PROBE_BRINGS_ITSELF)

namespace {

/// Comes and goes with the module, without a loader.
struct Self {
    Self() { selfRegisterPlugin(registerProbe, unregisterProbe); }
    ~Self()
    {
        delete s_runtime; // which gives back its count of the host
        s_runtime = nullptr;
    }
} s_self;

} // namespace

#    else

TAV_KIT_PLUGIN(registerProbe, unregisterProbe)

#    endif
#endif
