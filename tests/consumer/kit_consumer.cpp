#include <tav/kit/kit.h>
#include <tav/tav.h>

#include <cstdio>

using namespace TAV_marlo_v1;

int main()
{
    kit::StandardRuntime runtime;
    kit::Document document(&runtime);
    AddRefWrapper<Compound> const top = document.getTopCompound();

    // Two nodes of your own, one feeding the other.
    AddRefWrapper<Node> const source = Node::createNew(&document, "source");
    AddRefWrapper<Node> const blur = Node::createNew(&document, "blur");
    source->outputs().addPort("out", runtime.getPortDataType("color"), eNoPortFlags);
    blur->inputs().addPort("in", runtime.getPortDataType("color"), eNoPortFlags);
    top->nodes().add(source);
    top->nodes().add(blur);

    StatusStr status = top->makeConnection(source, "out", blur, "in");
    if (!status)
        return std::printf("%s\n", status.getErrorString()), 1;

    std::printf("%s\n", top->saveToString(nullptr).toChar()); // graph text, which Document::open takes
    return 0;
}
