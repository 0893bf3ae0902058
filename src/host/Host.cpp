#include <tav/Host.h>

#include <tav/Runtime.h>

#include "host/HostImpl.h"

namespace TAV_marlo_v1 {

// ---- the object behind it

/// Never destroyed: runtimes that are static objects of plug-ins may die after this library's own.
ImplHost& ImplHost::instance()
{
    static ImplHost* const host = new ImplHost;
    return *host;
}

namespace {
[[maybe_unused]] ImplHost& s_hostAtLoad = ImplHost::instance();
} // namespace

void ImplHost::runtimeRegistered(Runtime* runtime)
{
    clients.tell([runtime](RuntimeNotifierClient& client) { client.runtimeRegistered(runtime); });
}

void ImplHost::containerChange(Runtime* runtime, EContainerChangeType type, Container* container)
{
    clients.tell([&](RuntimeNotifierClient& client) { client.containerChange(runtime, type, container); });
}

void ImplHost::aboutToBeDeleted(Runtime* runtime)
{
    clients.tell([runtime](RuntimeNotifierClient& client) { client.aboutToBeDeleted(runtime); });
}

void ImplHost::fileRuntime(Runtime& runtime)
{
    runtimes[runtime.getName()] = &runtime;
    // First: a client that hears of the runtime may delete it.
    runtime.registerNotifierClient(this);
    runtimeRegistered(&runtime);
}

void ImplHost::shutDown()
{
    isShuttingDown = true;
    // By index: an unregistration function is the plug-in's code and may bring another plug-in.
    for (std::size_t i = 0; i < plugins.size(); ++i) {
        Plugin const plugin = plugins[i];
        if (plugin.unregisterPlugin)
            plugin.unregisterPlugin(plugin.info);
    }
    plugins.clear();
    runtimes.clear();
    isShuttingDown = false;
}

// ---- the static face

Host::~Host() = default;

StatusStr Host::registerRuntime(PluginInfo const& info, Runtime* runtime)
{
    return PluginRegistrar::registerRuntime(info, runtime);
}

StatusStr Host::initialize(char const* name)
{
    ImplHost& host = ImplHost::instance();
    if (++host.count == 1)
        host.name = name ? name : "";
    return StatusStr();
}

void Host::terminate()
{
    ImplHost& host = ImplHost::instance();
    // Runtimes that the plug-ins delete while they are unregistered end here too.
    if (host.isShuttingDown || host.count == 0)
        return;
    if (--host.count == 0)
        host.shutDown();
}

char const* Host::getName()
{
    return ImplHost::instance().name.c_str();
}

unsigned Host::getNumberOfRuntimes()
{
    return static_cast<unsigned>(ImplHost::instance().runtimes.size());
}

Runtime* Host::getRuntimeAt(unsigned index)
{
    auto const& runtimes = ImplHost::instance().runtimes;
    if (index >= runtimes.size())
        return nullptr;
    return std::next(runtimes.begin(), static_cast<std::ptrdiff_t>(index))->second;
}

Runtime* Host::getRuntimeByName(char const* name)
{
    if (!name)
        return nullptr;
    auto const& runtimes = ImplHost::instance().runtimes;
    auto const found = runtimes.find(name);
    return found == runtimes.end() ? nullptr : found->second;
}

void Host::registerNotifierClient(RuntimeNotifierClient* client)
{
    ImplHost::instance().clients.add(client);
}

void Host::unregisterNotifierClient(RuntimeNotifierClient* client)
{
    ImplHost::instance().clients.remove(client);
}

} // namespace TAV_marlo_v1
