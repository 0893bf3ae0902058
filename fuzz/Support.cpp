#include "Support.h"

#include <tav/NodeLibrary.h>
#include <tav/PortProperties.h>
#include <tav/kit/StandardCompound.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace fuzz {

namespace {

kit::StandardRuntime& sharedRuntime()
{
    // Never destroyed: the host that it is registered with may go first.
    static kit::StandardRuntime* const runtime = [] {
        auto* const made = new kit::StandardRuntime("fuzz");
        made->getNodeLibrary()->addNode("mix", "Mix");
        return made;
    }();
    return *runtime;
}

AddRefWrapper<Node> addMixNode(Container& container, Compound& compound, char const* name)
{
    AddRefWrapper<PortDataType> const type = sharedRuntime().getPortDataType("float");
    AddRefWrapper<Node> const node = Node::createNew(&container, name);
    node->setNodeTypeName("mix");
    node->inputs().addPort("a", type, eNoPortFlags);
    node->inputs().addPort("b", type, eFanIn);
    node->inputs()["b"]->createChildrenList()->addPort("first", type, eNoPortFlags);
    node->outputs().addPort("out", type, eNoPortFlags);
    node->setMetadataValue("uiPosition", "1 2");
    compound.nodes().add(node);
    return node;
}

void fill(Container& container, Compound& top)
{
    AddRefWrapper<PortDataType> const type = sharedRuntime().getPortDataType("float");
    AddRefWrapper<Node> const first = addMixNode(container, top, "n1");
    AddRefWrapper<Node> const second = addMixNode(container, top, "n2");
    AddRefWrapper<Compound> const inner = top.createNewCompound("c");
    inner->createCompoundPort(eInput, "p", type, PortProperties());
    inner->createCompoundPort(eOutput, "p", type, PortProperties());
    AddRefWrapper<Node> const inside = addMixNode(container, *inner, "n1");
    top.makeConnection(first, "out", second, "a");
    top.makeConnection(first, "out", inner->getAsNode(), "p");
    inner->makeConnection(inner->getAsNode(), "p", inside, "b.first");
    inner->makeConnection(inside, "out", inner->getAsNode(), "p");
    top.createCompoundAnnotation(Annotation::eBackdrop, "note");
}

} // namespace

void require(bool holds, char const* promise, char const* detail)
{
    if (holds)
        return;
    std::fprintf(stderr, "did not hold: %s\n%s\n", promise, detail);
    std::abort();
}

std::string textOf(std::uint8_t const* data, std::size_t size)
{
    char const* const text = reinterpret_cast<char const*>(data);
    void const* const end = size == 0 ? nullptr : std::memchr(text, 0, size);
    return std::string(text, end ? static_cast<char const*>(end) - text : size);
}

SmallDocument::SmallDocument(Contents contents)
{
    AddRefWrapper<Node> const owner = Node::createNew(this, "fuzz");
    owner->setNodeTypeName("compound");
    m_top = kit::StandardCompound::createNew(owner, nullptr);
    setTopNode(owner);
    if (contents == eFilled)
        fill(*this, *m_top);
}

Runtime* SmallDocument::getRuntime() const
{
    return &sharedRuntime();
}

void requireConsistent(SmallDocument const& document)
{
    StringArray problems;
    require(document.top().checkConsistency(problems), "the graph is consistent",
            problems.serialize(eSerializePlain).toChar());
}

void requireStableText(SmallDocument const& document)
{
    String const text = document.top().saveToString(nullptr);
    SmallDocument copy(SmallDocument::eEmpty);
    StatusStr const status = copy.top().restoreFromString(text.toChar());
    require(!*status.getErrorString(), "saved text can be loaded", status.getErrorString());
    requireConsistent(copy);
    String const again = copy.top().saveToString(nullptr);
    require(again == text, "loaded text is saved as the same bytes",
            (std::string(text.toChar()) + "\n---- then\n" + again.toChar()).c_str());
}

} // namespace fuzz
