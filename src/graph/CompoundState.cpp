// What a compound answers about itself.

#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"

#include <tav/Container.h>
#include <tav/Runtime.h>

namespace TAV_marlo_v1 {

bool Compound::isEditable() const
{
    for (Compound const* compound = this; compound;) {
        if (compound->testFlag(eReferenced | eImported))
            return false;
        Node const* const owner = CompoundAccess::owner(*compound);
        compound = owner ? owner->getParentCompound() : nullptr;
    }
    return true;
}

bool Compound::isExplodable() const
{
    return m_impl->owner && m_impl->owner->getParentCompound() && isEditable();
}

bool Compound::isImported() const
{
    return testFlag(eImported);
}

bool Compound::isReferenced() const
{
    return testFlag(eReferenced);
}

void Compound::setIsReferenced(bool referenced)
{
    if (referenced == isReferenced())
        return;
    if (referenced)
        setFlag(eReferenced);
    else
        clearFlag(eReferenced);
    if (AddRefWrapper<Node> const owner = getAsNode())
        NodeAccess::notify(*owner, eNodeStateChanged);
}

bool Compound::canCreateCompound(NodeList const& nodes, AnnotationList const& annotations) const
{
    if ((nodes.empty() && annotations.empty()) || !isEditable())
        return false;
    for (AddRefWrapper<Node> const& node : nodes) {
        if (node->getParentCompound() != this || node->testFlag(eAnyIO))
            return false;
    }
    for (AddRefWrapper<Annotation> const& annotation : annotations) {
        if (annotation->getParentCompound() != this)
            return false;
    }
    return true;
}

bool Compound::canResetLocalCompoundToFactory() const
{
    return false;
}

bool Compound::resetLocalCompoundToFactory()
{
    return false;
}

char const* Compound::getSpecializedCompoundTypeName() const
{
    return "Compound";
}

unsigned Compound::getNumberOfNodesWithMessage(MessageType type) const
{
    MessageCounts const& counts = m_impl->messageCounts;
    return type < counts.size() ? static_cast<unsigned>(counts[type]) : 0u;
}

namespace {

bool publishThroughRuntime(Compound& compound, bool wholeGraph, void* data)
{
    AddRefWrapper<Node> const owner = compound.getAsNode();
    Container* const container = owner ? owner->getContainer() : nullptr;
    Runtime* const runtime = container ? container->getRuntime() : nullptr;
    if (runtime)
        runtime->doPublishCompound(AddRefWrapper<Compound>(&compound), wholeGraph, data);
    return runtime != nullptr;
}

} // namespace

bool Compound::publish(void* data)
{
    return publishThroughRuntime(*this, /*wholeGraph=*/false, data);
}

bool Compound::publishGraph(void* data)
{
    return publishThroughRuntime(*this, /*wholeGraph=*/true, data);
}

bool Compound::saveAs(char const* path)
{
    return path && publishThroughRuntime(*this, /*wholeGraph=*/false, const_cast<char*>(path));
}

AddRefWrapper<Node> Compound::createBareNode(char const* typeName, NodeFlags flags)
{
    AddRefWrapper<Node> const owner = getAsNode();
    Container* const container = owner ? owner->getContainer() : nullptr;
    Runtime* const runtime = container ? container->getRuntime() : nullptr;
    bool const isKnown =
        (flags & eAnyIO) != eNoNodeFlags || (runtime && runtime->getNodeDefinitionFromPresetPath(typeName));
    return isKnown ? Node::createNew(container, nullptr) : AddRefWrapper<Node>();
}

AddRefWrapper<Node> Compound::createBareOwner(char const*)
{
    AddRefWrapper<Node> const owner = getAsNode();
    return Node::createNew(owner ? owner->getContainer() : nullptr, nullptr);
}

AddRefWrapper<Compound> Compound::createBareCompound(AddRefWrapper<Node> const& owner, char const*)
{
    return createNew(owner, nullptr);
}

} // namespace TAV_marlo_v1
