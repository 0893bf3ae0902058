// A host without a screen: it loads a plug-in, opens a graph of that plug-in's nodes, edits it with undo,
// evaluates it, and saves it. What it prints is compared by the tests.
#include <tav/Host.h>
#include <tav/HostEditor.h>
#include <tav/ModifyNodePortCommand.h>
#include <tav/NewConnectCommand.h>
#include <tav/NodeCommand.h>
#include <tav/NodeList.h>
#include <tav/PropertyList.h>
#include <tav/kit/kit.h>

#include <cstdio>

using namespace TAV_marlo_v1;

namespace {

/// Prints what it hears: an editor with a screen would draw it.
class Printer final : public HostEditor {
public:
    void tav_onConnectionChange(ECnxChangeType type, AddRefWrapper<Port> const& port,
                                AddRefWrapper<Port> const& other) override
    {
        std::printf("    %s %s and %s\n", type == eCnxRemoved ? "cut" : "connected", port->getFullPathName().getName(),
                    other->getFullPathName().getName());
    }
    void tav_onNodeChange(ENodeChangeType type, AddRefWrapper<Compound> const&,
                          AddRefWrapper<Node> const& node) override
    {
        if (type == eNodeAdded || type == eNodeRemoved)
            std::printf("    %s %s\n", type == eNodeAdded ? "added" : "removed", node->getName());
    }
    void tav_onNodePortChange(EPortChangeType type, AddRefWrapper<Port> const& port) override
    {
        if (type == ePortValuesChanged)
            std::printf("    new value of %s\n", port->getFullPathName().getName());
    }
};

bool complain(StatusStr const& status)
{
    if (!status)
        std::fprintf(stderr, "%s\n", status.getErrorString());
    return !status;
}

/// The plug-in's runtime fills the list: what nothing takes any further, with its value.
void evaluate(Compound& graph)
{
    PropertyList results;
    graph.publishGraph(&results);
    String path;
    String value;
    for (unsigned i = 0; results.getStringPairAt(i, path, value); ++i)
        std::printf("%s = %s\n", path.toChar(), value.toChar());
}

/// A new node between the graph's last node and a value of its own: three commands, one step.
bool addScale(kit::Document& document, kit::UndoStack& stack)
{
    stack.beginMacro("Scale the result");
    NodeCommand create;
    create.createNode(document.getTopCompound(), "arithmetic/multiply", nullptr);
    bool done = stack.push(std::move(create), "Create a node");

    NewConnectCommand connect;
    connect.connect(
        &document, document.findPortFromPath("/length.out", Container::eSearchOutput, Container::eSearchOwnPorts),
        document.findPortFromPath("/multiply.a", Container::eSearchInput, Container::eSearchOwnPorts), false);
    done = stack.push(std::move(connect), "Connect") && done;

    ModifyNodePortCommand value;
    value.setParentNode(&document, "/multiply");
    value.setPortValues(eInput, "b", StringArray("10"));
    done = stack.push(std::move(value), "Set a value") && done;
    stack.endMacro();
    return done;
}

/// The plug-in refuses this one, and nothing is left of it.
bool connectInACircle(kit::Document& document, kit::UndoStack& stack)
{
    NewConnectCommand circle;
    circle.connect(&document,
                   document.findPortFromPath("/multiply.out", Container::eSearchOutput, Container::eSearchOwnPorts),
                   document.findPortFromPath("/squares.x", Container::eSearchInput, Container::eSearchOwnPorts), false);
    return stack.push(std::move(circle), "Connect in a circle");
}

bool run(char const* graphPath, char const* outputPath)
{
    // The graph ends with this function, before the plug-in's code goes.
    kit::Document document(Host::getRuntimeByName("arithmetic"));
    kit::UndoStack stack(&document);
    if (complain(document.open(graphPath)))
        return false;
    Compound& graph = *document.getTopCompound();
    evaluate(graph);

    Printer printer;
    document.getEditorNotifier().registerEditor(&printer);
    if (!addScale(document, stack))
        return false;
    evaluate(graph);
    std::printf("a circle: %s\n", connectInACircle(document, stack) ? "made" : "refused");

    std::printf("undo \"%s\"\n", stack.undoText().toChar());
    stack.undo();
    evaluate(graph);
    std::printf("unsaved: %s\n", document.hasUnsavedChanges() ? "yes" : "no");
    std::printf("redo \"%s\"\n", stack.redoText().toChar());
    stack.redo();
    evaluate(graph);
    return !complain(document.saveAs(outputPath)) && !document.hasUnsavedChanges();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::fprintf(stderr, "usage: tav_example_host PLUGIN GRAPH OUTPUT\n");
        return 2;
    }
    kit::PluginLoader loader("example host");
    if (complain(loader.load(argv[1])))
        return 1;
    bool const done = run(argv[2], argv[3]);
    return complain(loader.unloadAll()) || !done ? 1 : 0;
}
