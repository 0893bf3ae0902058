#include "EditTargets.h"

#include <tav/AnnotationList.h>
#include <tav/NodeList.h>
#include <tav/PortList.h>
#include <tav/Runtime.h>

using namespace TAV_marlo_v1;

namespace tool {

namespace {

AddRefWrapper<Port> findPort(Container const& graph, std::string const& path, Container::ESearchIOType ioType,
                             Container::ESearchMode mode)
{
    AddRefWrapper<Port> const port = graph.findPortFromPath(path.c_str(), ioType, mode);
    // The library writes the top compound's ports ".p", people "/.p".
    return !port && path.compare(0, 2, "/.") == 0 ? graph.findPortFromPath(path.c_str() + 1, ioType, mode) : port;
}

AddRefWrapper<Port> findAnyPort(Container const& graph, std::string const& path)
{
    return findPort(graph, path, Container::eSearchAnyIO, Container::eSearchChildPorts);
}

/// "/a/b" leads to no node: there is no "/a"
[[noreturn]] void failToFind(Container const& graph, std::string const& path, char const* what)
{
    std::string text = '"' + path + "\" leads to no " + what;
    if (path.empty() || (path[0] != '/' && path[0] != '.'))
        throw EditError(text + ": a path begins with \"/\"");
    std::size_t const slash = path.rfind('/');
    std::string const parent = slash == std::string::npos ? std::string() : path.substr(0, slash);
    if (!parent.empty() && !graph.findNodeFromPath(parent.c_str()))
        text += ": there is no \"" + parent + '"';
    throw EditError(text);
}

/// The IO node that shows an inner port or one of its children.
AddRefWrapper<Node> nodeShowing(Port& port)
{
    if (!port.isCompoundInternalPort())
        return port.getParentNode();
    Port* top = &port;
    while (top->getParentPort())
        top = top->getParentPort();
    return port.getParentCompound()->getAssociatedIONode(AddRefWrapper<Port>(top));
}

/// Of the ports at the path the one of that direction, on whichever side of a compound.
void requireDirection(Container const& graph, std::string const& path, Container::ESearchIOType ioType,
                      char const* what = "port")
{
    if (findPort(graph, path, ioType, Container::eSearchAllPorts))
        return;
    bool const wantsInput = ioType == Container::eSearchInput;
    if (findPort(graph, path, Container::eSearchAnyIO, Container::eSearchAllPorts))
        throw EditError('"' + path
                        + (wantsInput ? "\" is an output, expected an input" : "\" is an input, expected an output"));
    if (graph.findNodeFromPath(path.c_str()))
        throw EditError('"' + path + "\" is a node, expected one of its ports, as in \"" + path + ".port\"");
    failToFind(graph, path, what);
}

bool findPair(Container const& graph, std::string const& outputPath, std::string const& inputPath, PortPair& pair)
{
    auto const asLibrary = [](std::string const& path) {
        return path.c_str() + (path.compare(0, 2, "/.") == 0 ? 1 : 0);
    };
    return graph.findPortsForConnection(outputPath.c_str(), inputPath.c_str(), pair.output, pair.input)
           || graph.findPortsForConnection(asLibrary(outputPath), asLibrary(inputPath), pair.output, pair.input);
}

} // namespace

AddRefWrapper<Node> nodeAt(Container const& graph, std::string const& path)
{
    AddRefWrapper<Node> node = graph.findNodeFromPath(path.c_str());
    if (!node && path.size() > 1 && path.back() == '/') // as completion leaves it in front of what is inside
        node = graph.findNodeFromPath(path.substr(0, path.size() - 1).c_str());
    if (!node && findAnyPort(graph, path))
        throw EditError('"' + path + "\" is a port, expected a node");
    if (!node)
        failToFind(graph, path, "node");
    return node;
}

AddRefWrapper<Compound> compoundAt(Container const& graph, std::string const& path)
{
    AddRefWrapper<Compound> const compound = nodeAt(graph, path)->getAsCompound();
    if (!compound)
        throw EditError('"' + path + "\" is a node without a graph inside");
    return compound;
}

AddRefWrapper<Compound> parentOf(Node const& node, std::string const& path)
{
    AddRefWrapper<Compound> const parent(node.getParentCompound());
    if (!parent)
        throw EditError('"' + path + "\" is the whole graph, expected a node in it");
    return parent;
}

PortPlace portAt(Container const& graph, std::string const& path, char const* what)
{
    PortPlace place{findAnyPort(graph, path), {}, {}, {}, eInput};
    if (!place.port)
        requireDirection(graph, path, Container::eSearchAnyIO, what);
    place.node = place.port ? nodeShowing(*place.port) : AddRefWrapper<Node>();
    if (!place.node)
        failToFind(graph, path, "port of a node");
    place.nodePath = pathOf(*place.node);
    place.name = place.port->getFullName().getName();
    place.ioType = place.port->getPortIOType();
    return place;
}

PortPair pairAt(Container const& graph, std::string const& outputPath, std::string const& inputPath)
{
    PortPair pair;
    if (findPair(graph, outputPath, inputPath, pair))
        return pair;
    requireDirection(graph, outputPath, Container::eSearchOutput);
    requireDirection(graph, inputPath, Container::eSearchInput);
    throw EditError("\"" + outputPath + "\" and \"" + inputPath + "\" are not in one graph");
}

std::string memberName(Compound const& compound, std::string const& word)
{
    if (compound.nodes()[word.c_str()] || compound.annotations()[word.c_str()])
        return word;
    AddRefWrapper<Node> const owner = compound.getAsNode();
    std::string const parent = pathOf(*owner);
    if (Container* const graph = owner->getContainer(); graph && !word.empty() && word[0] == '/') {
        AddRefWrapper<Node> const node = graph->findNodeFromPath(word.c_str());
        if (node && node->getParentCompound() == &compound)
            return node->getName();
        AddRefWrapper<Annotation> const annotation = graph->findAnnotationFromPath(word.c_str());
        if (annotation && annotation->getParentCompound() == &compound)
            return annotation->getName();
    }
    throw EditError("there is no \"" + word + "\" in \"" + parent + '"');
}

std::string pathOf(Node const& node)
{
    return node.getFullPathName().getName();
}

std::string const& requireName(Container const& graph, std::string const& word)
{
    Runtime const* const runtime = graph.getRuntime();
    if (word.empty())
        throw EditError("expected a name, found \"\"");
    if (runtime && !runtime->isLegalName(word.c_str()))
        throw EditError("the runtime allows no name \"" + word + '"');
    return word;
}

} // namespace tool
