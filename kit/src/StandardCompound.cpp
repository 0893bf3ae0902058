#include <tav/kit/StandardCompound.h>

#include <tav/Container.h>
#include <tav/NodeList.h>
#include <tav/Runtime.h>
#include <tav/kit/StandardRuntime.h>

#include <cstring>

namespace TAV_marlo_v1::kit {

namespace {

Container* containerOf(Compound const& compound)
{
    AddRefWrapper<Node> const owner = compound.getAsNode();
    return owner ? owner->getContainer() : nullptr;
}

/// Null where the compound is in no graph, or one of another kind of runtime.
StandardRuntime* standardRuntimeOf(Container const* container)
{
    return dynamic_cast<StandardRuntime*>(container ? container->getRuntime() : nullptr);
}

bool isCompoundText(char const* text)
{
    static constexpr char root[] = "<tavCompound";
    return std::strncmp(text, root, sizeof root - 1) == 0;
}

} // namespace

AddRefWrapper<StandardCompound> StandardCompound::createNew(AddRefWrapper<Node> const& owner, char const* name)
{
    AddRefWrapper<StandardCompound> const compound(new StandardCompound(owner, name));
    owner->setOwnedCompound(compound);
    return compound;
}

StandardCompound::StandardCompound(AddRefWrapper<Node> const& owner, char const* name)
    : Compound(owner, name)
{
}

StandardCompound::~StandardCompound() = default;

AddRefWrapper<Node> StandardCompound::createIONode(NodeFlags flags)
{
    if (flags != eInputIO && flags != eOutputIO)
        return {};
    AddRefWrapper<Node> const node = Node::createNew(containerOf(*this), flags == eInputIO ? "input" : "output");
    node->setNodeTypeName("io");
    node->setFlag(flags);
    return nodes().add(node) ? node : AddRefWrapper<Node>();
}

AddRefWrapper<Compound> StandardCompound::createNewCompound(char const* name)
{
    AddRefWrapper<Node> const owner = createBareOwner("compound");
    owner->setName(name && *name != '\0' ? name : "compound");
    if (*owner->getName() == '\0')
        return {}; // the runtime refuses the name
    owner->setNodeTypeName("compound");
    AddRefWrapper<Compound> const compound = createBareCompound(owner, "compound");
    return compound && nodes().add(owner) ? compound : AddRefWrapper<Compound>();
}

AddRefWrapper<Node> StandardCompound::createNodeFromPreset(char const* path)
{
    Container* const container = containerOf(*this);
    Runtime* const runtime = container ? container->getRuntime() : nullptr;
    AddRefWrapper<NodeDefinition> const definition =
        runtime ? runtime->getNodeDefinitionFromPresetPath(path) : AddRefWrapper<NodeDefinition>();
    if (!definition)
        return {};

    String const text = StandardRuntime::getPresetText(definition);
    if (text.empty()) {
        AddRefWrapper<Node> node = createBareNode(definition->getName(), eNoNodeFlags);
        if (!node)
            node = Node::createNew(container, nullptr);
        node->setName(definition->getName());
        node->setNodeTypeName(definition->getName(), definition->getNiceName());
        return nodes().add(node) ? node : AddRefWrapper<Node>();
    }
    // The text was read once already, when its library was added: what is left to refuse is a veto.
    String errors;
    if (!isCompoundText(text.toChar()))
        return createNodeFromString(text.toChar(), errors);
    AddRefWrapper<Compound> const compound = createNewCompoundFromString(text.toChar(), errors);
    return compound ? compound->getAsNode() : AddRefWrapper<Node>();
}

AddRefWrapper<Node> StandardCompound::createBareNode(char const* typeName, NodeFlags flags)
{
    Container* const container = containerOf(*this);
    StandardRuntime* const runtime = standardRuntimeOf(container);
    if (runtime && runtime->knowsNodeType(typeName))
        return runtime->makeNode(container, typeName);
    return Compound::createBareNode(typeName, flags);
}

AddRefWrapper<Node> StandardCompound::createBareOwner(char const* typeName)
{
    Container* const container = containerOf(*this);
    StandardRuntime* const runtime = standardRuntimeOf(container);
    return runtime ? runtime->makeNode(container, typeName) : Compound::createBareOwner(typeName);
}

AddRefWrapper<Compound> StandardCompound::createBareCompound(AddRefWrapper<Node> const& owner, char const* typeName)
{
    if (StandardRuntime* const runtime = standardRuntimeOf(owner->getContainer()))
        return runtime->makeCompound(owner, typeName);
    return createNew(owner, nullptr);
}

} // namespace TAV_marlo_v1::kit
