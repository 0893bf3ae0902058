// Opens a graph, tells what is in it, changes it, saves it beside and shows that saving is exact.
#include <tav/NodeList.h>
#include <tav/Port.h>
#include <tav/PortList.h>
#include <tav/kit/kit.h>

#include <cstdio>
#include <cstring>
#include <string>

using namespace TAV_marlo_v1;

namespace {

bool complain(StatusStr const& status)
{
    if (!status)
        std::fprintf(stderr, "%s\n", status.getErrorString());
    return !status;
}

void printFacts(Compound const& graph)
{
    std::printf("%s: %u nodes\n", graph.getName(), graph.nodes().size());
    for (AddRefWrapper<Node> const& node : graph.nodes())
        std::printf("  %s (%s): %u inputs, %u outputs\n", node->getFullPathName().getName(), node->getNodeTypeName(),
                    node->inputs().size(), node->outputs().size());
}

/// Adds a node from a preset, feeds it from the first output of the graph and sets its other input.
bool change(Compound& graph)
{
    AddRefWrapper<Node> const source = graph.nodes()[0u];
    AddRefWrapper<Node> const product = graph.createNodeFromPreset("arithmetic/basic/multiply");
    if (!source || !product || source->outputs().empty())
        return false;
    product->setName("product_of_demo");
    if (complain(graph.makeConnection(source, source->outputs()[0u]->getName(), product, "a")))
        return false;
    return product->inputs()["b"]->setPortDefaultValues(StringArray("2.5"));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::fprintf(stderr, "usage: tav_demo GRAPH LIBRARY OUTPUT\n");
        return 2;
    }
    kit::StandardRuntime runtime;
    kit::Document document(&runtime);
    if (complain(runtime.addLibraryFile(argv[2])) || complain(document.open(argv[1])))
        return 1;
    AddRefWrapper<Compound> const graph = document.getTopCompound();
    printFacts(*graph);

    if (!change(*graph)) {
        std::fprintf(stderr, "the graph cannot be changed as the demonstration wants it\n");
        return 1;
    }
    std::printf("changed: %s\n", document.hasUnsavedChanges() ? "yes" : "no");
    if (complain(document.saveAs(argv[3])))
        return 1;
    String const saved = graph->saveToString(nullptr);

    kit::Document again(&runtime);
    if (complain(again.open(argv[3])))
        return 1;
    printFacts(*again.getTopCompound());
    bool const same = again.getTopCompound()->saveToString(nullptr) == saved;
    std::printf("saved again: %s\n", same ? "the same bytes" : "other bytes");
    return same ? 0 : 1;
}
