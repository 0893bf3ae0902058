#include "EditRuntime.h"

#include "GraphInput.h"
#include "Terminal.h"

#include <tav/Host.h>
#include <tav/NodeLibrary.h>

using namespace TAV_marlo_v1;

namespace tool {

namespace {

/// The first of the kit's kind in the host, which makes nodes from presets; null when there is none.
kit::StandardRuntime* firstOfPlugins()
{
    kit::StandardRuntime* first = nullptr;
    for (unsigned i = 0; i < Host::getNumberOfRuntimes(); ++i) {
        auto* const runtime = dynamic_cast<kit::StandardRuntime*>(Host::getRuntimeAt(i));
        if (!first || !runtime) {
            first = first ? first : runtime;
            continue;
        }
        for (AddRefWrapper<NodeLibrary> const& library : runtime->getNodeLibrary()->subLibraries())
            first->getNodeLibrary()->addSubLibrary(library);
    }
    return first;
}

} // namespace

kit::StandardRuntime* EditRuntime::load(std::vector<std::string> const& plugins,
                                        std::vector<std::string> const& libraryFiles)
{
    for (std::string const& path : plugins) {
        StatusStr const status = m_loader.load(path.c_str());
        if (!status) {
            writeError(QString::fromUtf8(status.getErrorString()));
            return nullptr;
        }
    }
    kit::StandardRuntime* used = firstOfPlugins();
    if (!used && !plugins.empty()) {
        writeError(QString("tav: %1 brings no runtime that makes nodes from presets").arg(plugins[0].c_str()));
        return nullptr;
    }
    if (!used) {
        m_own = std::make_unique<kit::StandardRuntime>();
        used = m_own.get();
    }
    return addLibraries(*used, libraryFiles) ? used : nullptr;
}

} // namespace tool
