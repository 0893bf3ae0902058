#pragma once

#include <tav/Export.h>
#include <tav/PluginRegistrar.h>

/// @file
/// What makes a module a plug-in that PluginLoader loads: one TAV_KIT_PLUGIN in one of its sources.

/// What a module was built for. The loader looks for this text in the file, before any code of it runs. The
/// number changes with whatever makes older modules unfit.
#define TAV_KIT_PLUGIN_MARK "tav plug-in interface "
#define TAV_KIT_PLUGIN_INTERFACE "1"

/// Makes the module a plug-in: once it is loaded, selfRegisterPlugin is called with the two functions.
///
/// The registration function makes the module's runtimes, which the module owns, and registers them. The
/// unregistration function has to delete them: the module is unloaded afterwards. No object of the
/// module's classes may live on then, be it in a graph or a static one of somebody else. What the macro
/// defines is each module's own: the loader asks the one module for it.
/// @param registerPlugin a PluginRegisterFunction
/// @param unregisterPlugin a PluginUnregisterFunction
#define TAV_KIT_PLUGIN(registerPlugin, unregisterPlugin)                                                               \
    static bool s_tavPluginIsRegistered = false;                                                                       \
    extern "C" TAV_SYMBOL_EXPORT char const* tavPluginInterface()                                                      \
    {                                                                                                                  \
        return TAV_KIT_PLUGIN_MARK TAV_KIT_PLUGIN_INTERFACE;                                                           \
    }                                                                                                                  \
    extern "C" TAV_SYMBOL_EXPORT bool tavPluginIsRegistered()                                                          \
    {                                                                                                                  \
        return s_tavPluginIsRegistered;                                                                                \
    }                                                                                                                  \
    extern "C" TAV_SYMBOL_EXPORT void tavPluginRegister()                                                              \
    {                                                                                                                  \
        s_tavPluginIsRegistered = true;                                                                                \
        TAV_marlo_v1::selfRegisterPlugin(registerPlugin, [](TAV_marlo_v1::PluginInfo const& info) {                    \
            unregisterPlugin(info);                                                                                    \
            s_tavPluginIsRegistered = false;                                                                           \
        });                                                                                                            \
    }
