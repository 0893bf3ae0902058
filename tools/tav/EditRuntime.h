#pragma once

#include <tav/kit/PluginLoader.h>
#include <tav/kit/StandardRuntime.h>

#include <memory>
#include <string>
#include <vector>

namespace tool {

/// The runtime of a graph that is edited. With plug-ins it is the first one's, so that its rules and classes
/// hold, and the presets of the others stand in its library; else it is the tool's own.
class EditRuntime {
public:
    /// Loads what the command line names. The graphs of the runtime have to end before this does.
    /// @return null, after a message, when something cannot be used
    TAV_marlo_v1::kit::StandardRuntime* load(std::vector<std::string> const& plugins,
                                             std::vector<std::string> const& libraryFiles);

private:
    TAV_marlo_v1::kit::PluginLoader m_loader{"tav"};
    std::unique_ptr<TAV_marlo_v1::kit::StandardRuntime> m_own;
};

} // namespace tool
