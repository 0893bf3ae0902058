// Paths in a small graph whose names come from the input: each line names the next thing in it, and the whole
// input is looked up as a path too.

#include "Support.h"

#include <tav/AnnotationList.h>
#include <tav/PortProperties.h>

#include <algorithm>

using namespace fuzz;

namespace {

class Names {
public:
    explicit Names(std::string const& text)
        : m_text(text)
    {
    }
    /// The next line; "" behind the last one.
    std::string next()
    {
        std::size_t const end = std::min(m_text.find('\n', m_at), m_text.size());
        std::string const line = m_text.substr(m_at, end - m_at);
        m_at = std::min(end + 1, m_text.size());
        return line;
    }
    bool atEnd() const { return m_at >= m_text.size(); }

private:
    std::string const m_text;
    std::size_t m_at = 0;
};

void addPorts(Names& names, Node& node, PortIOType ioType)
{
    PortList& list = ioType == eInput ? node.inputs() : node.outputs();
    list.addPort(names.next().c_str(), {}, eNoPortFlags);
    AddRefWrapper<Port> const parent = list.addPort(names.next().c_str(), {}, eNoPortFlags);
    parent->createChildrenList()->setPortIOType(ioType);
    parent->children()->addPort(names.next().c_str(), {}, eNoPortFlags);
    parent->children()->addPort(names.next().c_str(), {}, eNoPortFlags);
}

void fill(Names& names, SmallDocument& document, Compound& compound, unsigned depth)
{
    for (unsigned i = 0; i < 2 && !names.atEnd(); ++i) {
        AddRefWrapper<Node> const node = Node::createNew(&document, names.next().c_str());
        compound.nodes().add(node);
        addPorts(names, *node, eInput);
        addPorts(names, *node, eOutput);
    }
    compound.createCompoundAnnotation(Annotation::eStickyNote, names.next().c_str());
    for (unsigned i = 0; i < 2 && depth > 0 && !names.atEnd(); ++i) {
        AddRefWrapper<Compound> const inner = compound.createNewCompound(names.next().c_str());
        inner->createCompoundPort(eInput, names.next().c_str(), {}, PortProperties());
        inner->createCompoundPort(eOutput, names.next().c_str(), {}, PortProperties());
        fill(names, document, *inner, depth - 1);
    }
}

void requireFound(SmallDocument const& document, Port const& port, Container::ESearchMode mode)
{
    Namable const path = port.getFullPathName();
    auto const ioType = port.getPortIOType() == eInput ? Container::eSearchInput : Container::eSearchOutput;
    AddRefWrapper<Port> const found = document.findPortFromPath(path.getName(), ioType, mode);
    require(found && found->getFullPathName() == path, "a port's path leads to a port that has it", path.getName());
    require(found->getPortIOType() == port.getPortIOType(), "the port has the wanted direction", path.getName());
}

void requireFound(SmallDocument const& document, PortList const& list, Container::ESearchMode mode)
{
    for (AddRefWrapper<Port> const port : list) {
        requireFound(document, *port, mode);
        if (AddRefWrapper<PortList> const children = port->children())
            requireFound(document, *children, mode);
    }
}

void requireFound(SmallDocument const& document, Compound const& compound)
{
    requireFound(document, compound.innerInputs(), Container::eSearchAllPorts);
    requireFound(document, compound.innerOutputs(), Container::eSearchAllPorts);
    for (AddRefWrapper<Node> const node : compound.nodes()) {
        Namable const path = node->getFullPathName();
        AddRefWrapper<Node> const found = document.findNodeFromPath(path.getName());
        require(found && found->getFullPathName() == path, "a node's path leads to a node that has it", path.getName());
        requireFound(document, node->inputs(), Container::eSearchChildPorts);
        requireFound(document, node->outputs(), Container::eSearchChildPorts);
        if (AddRefWrapper<Compound> const inner = node->getAsCompound())
            requireFound(document, *inner);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string const text = textOf(data, size);
    Names names(text);
    SmallDocument document(SmallDocument::eEmpty);
    fill(names, document, document.top(), /*depth=*/2);
    requireConsistent(document);
    requireFound(document, document.top());

    // Any text is a fair question.
    for (auto const mode : {Container::eSearchOwnPorts, Container::eSearchChildPorts, Container::eSearchAllPorts})
        document.findPortFromPath(text.c_str(), Container::eSearchAnyIO, mode);
    document.findNodeFromPath(text.c_str());
    document.findAnnotationFromPath(text.c_str());
    AddRefWrapper<Port> output, input;
    if (!document.findPortsForConnection(text.c_str(), text.c_str(), output, input))
        require(!output && !input, "a miss is empty handles");
    return 0;
}
