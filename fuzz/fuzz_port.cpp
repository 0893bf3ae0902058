// The text of one port, for a port of a node, a fan-in port, and a compound's port on either side.

#include "Support.h"

using namespace fuzz;

namespace {

void restore(Port& port, char const* text, SmallDocument const& document)
{
    String const before = document.top().saveToString(nullptr);
    StatusStr const status = port.restoreFromString(text);
    requireConsistent(document);
    if (!status) {
        require(document.top().saveToString(nullptr) == before, "text that can't be used changes nothing");
        return;
    }
    String const saved = port.saveToString(nullptr);
    StatusStr const again = port.restoreFromString(saved.toChar());
    require(!*again.getErrorString(), "a port takes its own text", again.getErrorString());
    require(port.saveToString(nullptr) == saved, "its own text changes nothing",
            (std::string(saved.toChar()) + "\n---- then\n" + port.saveToString(nullptr).toChar()).c_str());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string const text = textOf(data, size);
    SmallDocument const document(SmallDocument::eFilled);
    AddRefWrapper<Node> const node = document.top().nodes()["n1"];
    AddRefWrapper<Node> const inner = document.top().nodes()["c"];
    for (AddRefWrapper<Port> const& port : {node->inputs()["a"], node->inputs()["b"], node->outputs()["out"],
                                            inner->inputs()["p"], inner->getAsCompound()->innerOutputs()["p"]})
        restore(*port, text.c_str(), document);
    requireStableText(document);
    return 0;
}
