// Ends while much is still alive, in the way that its first argument names; the others are modules.
#include <tav/NodeList.h>
#include <tav/Port.h>
#include <tav/PortList.h>
#include <tav/kit/Document.h>
#include <tav/kit/PluginLoader.h>
#include <tav/kit/StandardRuntime.h>

#include <QtCore/QLibrary>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

using namespace TAV_marlo_v1;

// Seen from everywhere, so that the compiler keeps it and leak detectors find what it points to.
kit::PluginLoader* forgottenLoader = nullptr;

namespace {

/// Adds a line to what the test reads.
void note(std::string const& what)
{
    if (std::FILE* const log = std::fopen(std::getenv("TAV_PROBE_LOG"), "ab")) {
        std::fprintf(log, "%s\n", what.c_str());
        std::fclose(log);
    }
}

/// Looks at what it was given once more when it dies.
struct LastLook {
    AddRefWrapper<Port> port;
    ~LastLook()
    {
        if (port)
            note(std::string("last look at ") + port->getName() + ", " + std::to_string(port->connectedTo().size())
                 + " connections");
    }
};

// In the order in which an application would have them; they die in the reverse one.
LastLook s_lastLook;
std::unique_ptr<kit::PluginLoader> s_loader;
std::unique_ptr<kit::StandardRuntime> s_runtime;
std::unique_ptr<kit::Document> s_document;

bool loadByLoader(kit::PluginLoader& loader, int count, char** paths)
{
    for (int i = 0; i < count; ++i) {
        StatusStr const status = loader.load(paths[i]);
        if (!status)
            return std::fprintf(stderr, "%s\n", status.getErrorString()), false;
    }
    return true;
}

/// As if the program had been linked with them.
bool loadForGood(int count, char** paths)
{
    for (int i = 0; i < count; ++i) {
        QLibrary library(QString::fromUtf8(paths[i]));
        library.setLoadHints(QLibrary::PreventUnloadHint);
        if (!library.load())
            return std::fprintf(stderr, "%s\n", library.errorString().toUtf8().constData()), false;
    }
    return true;
}

void makeGraph()
{
    s_runtime = std::make_unique<kit::StandardRuntime>();
    s_document = std::make_unique<kit::Document>(s_runtime.get());
    AddRefWrapper<Node> const from = Node::createNew(s_document.get(), "from");
    AddRefWrapper<Node> const to = Node::createNew(s_document.get(), "to");
    s_document->getTopCompound()->nodes().add(from);
    s_document->getTopCompound()->nodes().add(to);
    from->outputs().addPort("out", s_runtime->getPortDataType("float"), eNoPortFlags);
    to->inputs().addPort("in", s_runtime->getPortDataType("float"), eNoPortFlags);
    s_lastLook.port = to->inputs()[0u];
    if (!from->outputs()[0u]->addConnection(s_lastLook.port, false))
        note("the connection was refused");
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2)
        return 2;
    std::string const way = argv[1];
    makeGraph();
    if (way == "loader dies") {
        s_loader = std::make_unique<kit::PluginLoader>("exit");
        return loadByLoader(*s_loader, argc - 2, argv + 2) ? 0 : 1;
    }
    if (way == "loader stays") {
        forgottenLoader = new kit::PluginLoader("exit");
        return loadByLoader(*forgottenLoader, argc - 2, argv + 2) ? 0 : 1;
    }
    return loadForGood(argc - 2, argv + 2) ? 0 : 1;
}
