// Item text, as pasted, into a graph that has items already.

#include "Support.h"

using namespace fuzz;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string const text = textOf(data, size);
    SmallDocument const document(SmallDocument::eFilled);
    Compound& top = document.top();
    String const before = top.saveToString(nullptr);
    unsigned const nodesBefore = top.nodes().size();

    StringArray nodes, annotations, sources;
    String errors;
    bool const created = top.createItemsFromString(text.c_str(), nodes, annotations, &sources, &errors);
    requireConsistent(document);
    if (!created) {
        require(!errors.empty(), "a failure has a message");
        require(top.saveToString(nullptr) == before, "text that can't be used changes nothing");
        require(nodes.empty() && annotations.empty() && sources.empty(), "nothing is listed as created");
        return 0;
    }
    require(nodes.size() == sources.size(), "each created node has a source name");
    require(top.nodes().size() == nodesBefore + nodes.size(), "each created node is listed");
    for (char const* const name : nodes)
        require(bool(top.nodes()[name]), "a created node is found under its name", name);
    requireStableText(document);
    return 0;
}
