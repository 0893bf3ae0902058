#pragma once

#include <tav/kit/Export.h>

#include <tav/StatusStr.h>
#include <tav/StringArray.h>

#include <memory>

namespace TAV_marlo_v1::kit {

/// Loads plug-ins from modules: shared libraries with TAV_KIT_PLUGIN (<tav/kit/Plugin.h>) in them.
///
/// The loader is a user of the host and, as their runtimes are users too, ends for its modules what these
/// began: unloadAll(), or the loader's end, is their shut-down. If no other user of the host is left then,
/// the host calls the unregistration functions in the order of loading, and the code goes afterwards.
/// Otherwise the modules stay loaded until the process ends. Paths are UTF-8.
class TAV_KIT_API PluginLoader {
public:
    /// @param hostName as for Host::initialize
    explicit PluginLoader(char const* hostName);
    /// As unloadAll. Where that fails, everything stays loaded and registered.
    ~PluginLoader();

    /// Loads the module and lets it register. One that is loaded already, under whatever path, is left alone.
    /// A module for another interface, or for none, is refused before any code of it runs.
    /// @return the error, with path and reason, and nothing registered
    [[nodiscard]] StatusStr load(char const* path);
    /// Loads every file in that folder that bears a shared library's name, in the order of the names, and
    /// goes on past what can't be loaded. @param errors gets a text for each of those
    /// @return how many plug-ins of the folder are loaded now
    unsigned loadFolder(char const* path, StringArray& errors);

    unsigned getNumberOfModules() const;
    /// The full path; "" past the end. Lives until the module is unloaded.
    char const* getModulePath(unsigned index) const;

    /// All graphs of the modules' runtimes have to be closed, and nothing made by a module may be held.
    /// @return the error: nothing has happened, as a graph is open still, or modules that stay loaded
    [[nodiscard]] StatusStr unloadAll();

private:
    PluginLoader(PluginLoader const&) = delete;
    PluginLoader& operator=(PluginLoader const&) = delete;

    struct Impl;
    std::unique_ptr<Impl> m_impl; // never null
};

} // namespace TAV_marlo_v1::kit
