#include <tav/tav.h>

#include <cstdio>
#include <cstring>

using namespace TAV_marlo_v1;

// Uses something of each kind: a template, an exported class, an exported function.
int main()
{
    AddRefWrapper<Port> const output = Port::createNew("out", eOutput);
    AddRefWrapper<Port> const input = Port::createNew("in", eInput);
    bool const connected = output->addConnection(input, /*copyMetadata=*/false);
    String const next = incrementNameDigits("node007", "_###", 1);

    std::printf("%s %s %s\n", output->getName(), connected ? "->" : "-", input->getName());
    std::printf("%s\n", next.toChar());
    output->removeAllConnections();
    return connected && std::strcmp(next.toChar(), "node008") == 0 ? 0 : 1;
}
