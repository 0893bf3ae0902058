#include <tav/kit/PluginLoader.h>

#include "TextFile.h"

#include <tav/Host.h>
#include <tav/Runtime.h>
#include <tav/RuntimeNotifierClient.h>
#include <tav/kit/Plugin.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLibrary>

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace TAV_marlo_v1::kit {

namespace {

constexpr char kMark[] = TAV_KIT_PLUGIN_MARK;
constexpr char kInterface[] = TAV_KIT_PLUGIN_INTERFACE;
constexpr qsizetype kLongestInterface = 16;

using RegisterFunction = void (*)();

/// A runtime that a module registered.
struct KnownRuntime {
    Runtime* runtime;
    bool usesHost; // its count of the host was not given back yet
};

struct Module {
    explicit Module(QString const& path)
        : library(path)
        , fullPath(path.toUtf8())
    {
        // What is missing shows now, not when it is called.
        library.setLoadHints(QLibrary::ResolveAllSymbolsHint);
    }

    QLibrary library;
    QByteArray fullPath;
    std::vector<KnownRuntime> runtimes; // those that live
    RegisterFunction registerPlugin = nullptr;
    bool (*isRegistered)() = nullptr;

    bool isOver() const { return runtimes.empty() && !isRegistered(); }

    /// @return what is wrong; empty when all is well
    QByteArray open()
    {
        if (!library.load())
            return library.errorString().toUtf8();
        auto const stated = reinterpret_cast<char const* (*)()>(library.resolve("tavPluginInterface"));
        registerPlugin = reinterpret_cast<RegisterFunction>(library.resolve("tavPluginRegister"));
        isRegistered = reinterpret_cast<bool (*)()>(library.resolve("tavPluginIsRegistered"));
        bool const isWhole = stated && registerPlugin && isRegistered;
        return isWhole && stated() == QByteArray(kMark) + kInterface ? "" : "it does not export the plug-in interface";
    }
};

/// What any loader has loaded, by its full path. That alone does not tell modules apart: where case does not count,
/// one file has many. But two QLibraries of one path can't be told apart when one of them is unloaded.
/// Never destroyed, as a loader may be a static object.
std::map<QByteArray, RegisterFunction>& loadedModules()
{
    static auto* const modules = new std::map<QByteArray, RegisterFunction>;
    return *modules;
}

bool isLoaded(RegisterFunction function)
{
    auto const& modules = loadedModules();
    return std::any_of(modules.begin(), modules.end(), [=](auto const& known) { return known.second == function; });
}

/// The interface that a module states to be for; empty when it states none. Its code does not run.
QByteArray statedInterface(QByteArray const& bytes)
{
    QByteArray stated;
    for (qsizetype at = bytes.indexOf(kMark); at >= 0; at = bytes.indexOf(kMark, at)) {
        at += qsizetype(sizeof kMark - 1);
        QByteArray const rest = bytes.mid(at, kLongestInterface);
        QByteArray const number = rest.left(std::max<qsizetype>(rest.indexOf('\0'), 0));
        if (number == kInterface)
            return number;
        // The mark alone stands in a module that holds this code, too.
        if (!number.isEmpty() && std::all_of(number.begin(), number.end(), [](char c) { return c >= '0' && c <= '9'; }))
            stated = number;
    }
    return stated;
}

StatusStr checkModuleFile(QFileInfo const& info, char const* path)
{
    if (!info.exists())
        return errorIn(path, "cannot be loaded: there is no such file");
    if (!info.isFile())
        return errorIn(path, "cannot be loaded: it is no file");
    QFile file(info.filePath());
    if (!file.open(QIODevice::ReadOnly))
        return errorIn(path, ("cannot be read: " + file.errorString().toUtf8()).constData());
    uchar* const mapped = file.map(0, file.size());
    QByteArray const stated = statedInterface(
        mapped ? QByteArray::fromRawData(reinterpret_cast<char const*>(mapped), file.size()) : file.readAll());
    if (stated.isEmpty())
        return errorIn(path, "is no plug-in: it states no plug-in interface");
    if (stated != kInterface) {
        QByteArray const message = "is a plug-in for interface " + stated + ", expected " + kInterface;
        return errorIn(path, message.constData());
    }
    return StatusStr();
}

} // namespace

struct PluginLoader::Impl final : RuntimeNotifierClient {
    std::vector<std::unique_ptr<Module>> modules; // in the order of loading
    Module* registering = nullptr;
    std::string hostName;
    bool usesHost = false;

    void useHost()
    {
        if (!usesHost)
            (void)Host::initialize(hostName.c_str()); // always success
        usesHost = true;
    }

    Module* find(RegisterFunction function) const
    {
        auto const found = std::find_if(modules.begin(), modules.end(),
                                        [=](auto const& module) { return module->registerPlugin == function; });
        return found == modules.end() ? nullptr : found->get();
    }

    /// For a module that some loader has loaded already: this one minds its own.
    void registerAgain(RegisterFunction function)
    {
        Module* const known = find(function);
        if (known && !known->isRegistered())
            registerModule(*known);
    }

    void registerModule(Module& module)
    {
        useHost();
        // A plug-in may load another.
        Module* const outer = std::exchange(registering, &module);
        module.registerPlugin();
        registering = outer;
    }

    /// Gives back the loader's use of the host and those of the runtimes, which they would never end while
    /// the host waits for them to end.
    void leaveHost()
    {
        unsigned uses = usesHost ? 1 : 0;
        usesHost = false;
        for (auto const& module : modules) {
            for (KnownRuntime& known : module->runtimes)
                uses += std::exchange(known.usesHost, false) ? 1 : 0;
        }
        for (; uses > 0; --uses)
            Host::terminate();
    }

    StatusStr checkGraphsAreClosed() const
    {
        for (auto const& module : modules) {
            for (KnownRuntime const& known : module->runtimes) {
                if (known.runtime->getNumberOfContainers() == 0)
                    continue;
                std::string const message =
                    std::string("a graph of its runtime \"") + known.runtime->getName() + "\" is still open";
                return errorIn(module->fullPath.constData(), message.c_str());
            }
        }
        return StatusStr();
    }

    /// The last first: a module may use those that were there before it.
    StatusStr unloadWhatIsOver()
    {
        std::vector<std::unique_ptr<Module>> staying;
        StatusStr status;
        for (; !modules.empty(); modules.pop_back()) {
            std::unique_ptr<Module>& module = modules.back();
            if (module->isOver()) {
                loadedModules().erase(module->fullPath);
                module->library.unload();
                continue;
            }
            status = errorIn(module->fullPath.constData(), module->isRegistered()
                                                               ? "stays loaded: the host has other users still"
                                                               : "stays loaded: it has not deleted its runtime");
            staying.push_back(std::move(module));
        }
        std::move(staying.rbegin(), staying.rend(), std::back_inserter(modules));
        return status;
    }

    // ---- what the host tells

    void runtimeRegistered(Runtime* runtime) override
    {
        if (!registering)
            return;
        auto& runtimes = registering->runtimes;
        if (std::none_of(runtimes.begin(), runtimes.end(), [&](auto const& known) { return known.runtime == runtime; }))
            runtimes.push_back({runtime, true});
    }

    void aboutToBeDeleted(Runtime* runtime) override
    {
        for (auto const& module : modules) {
            auto& runtimes = module->runtimes;
            runtimes.erase(std::remove_if(runtimes.begin(), runtimes.end(),
                                          [&](auto const& known) { return known.runtime == runtime; }),
                           runtimes.end());
        }
    }
};

PluginLoader::PluginLoader(char const* hostName)
    : m_impl(std::make_unique<Impl>())
{
    m_impl->hostName = hostName ? hostName : "";
    m_impl->useHost();
    Host::registerNotifierClient(m_impl.get());
}

PluginLoader::~PluginLoader()
{
    (void)unloadAll(); // nobody is left to hear why it can't be
}

StatusStr PluginLoader::load(char const* path)
{
    String const given(path);
    QFileInfo const info(QString::fromUtf8(given.toChar()));
    StatusStr const status = checkModuleFile(info, given.toChar());
    if (!status)
        return status;

    QString const fullPath = info.canonicalFilePath();
    auto const loaded = loadedModules().find(fullPath.toUtf8());
    if (loaded != loadedModules().end()) {
        m_impl->registerAgain(loaded->second);
        return StatusStr();
    }
    auto module = std::make_unique<Module>(fullPath);
    QByteArray const fault = module->open();
    // Nothing is unloaded here: code of it has run, and may have registered itself by other ways.
    if (!fault.isEmpty())
        return errorIn(given.toChar(), ("cannot be loaded: " + fault).constData());
    if (isLoaded(module->registerPlugin)) {
        module->library.unload(); // opened twice, it is closed once
        m_impl->registerAgain(module->registerPlugin);
        return StatusStr();
    }
    loadedModules().emplace(module->fullPath, module->registerPlugin);
    m_impl->modules.push_back(std::move(module));
    m_impl->registerModule(*m_impl->modules.back());
    return StatusStr();
}

unsigned PluginLoader::loadFolder(char const* path, StringArray& errors)
{
    QDir const folder(QString::fromUtf8(path));
    if (!path || !folder.exists()) {
        errors.add(errorIn(path, "cannot be read: there is no such folder").getErrorString());
        return 0;
    }
    unsigned loaded = 0;
    for (QString const& name : folder.entryList(QDir::Files, QDir::Name)) {
        if (!QLibrary::isLibrary(name))
            continue;
        StatusStr const status = load(folder.filePath(name).toUtf8().constData());
        if (!status)
            errors.add(status.getErrorString());
        else
            ++loaded;
    }
    return loaded;
}

unsigned PluginLoader::getNumberOfModules() const
{
    return static_cast<unsigned>(m_impl->modules.size());
}

char const* PluginLoader::getModulePath(unsigned index) const
{
    return index < m_impl->modules.size() ? m_impl->modules[index]->fullPath.constData() : "";
}

StatusStr PluginLoader::unloadAll()
{
    StatusStr const status = m_impl->checkGraphsAreClosed();
    if (!status)
        return status;
    m_impl->leaveHost();
    return m_impl->unloadWhatIsOver();
}

} // namespace TAV_marlo_v1::kit
