#include <tav/NodeDefinition.h>

#include "host/NodeLibraryImpl.h"

#include <utility>

namespace TAV_marlo_v1 {

unsigned long long& detail::definitionRenames() noexcept
{
    static unsigned long long count = 1;
    return count;
}

AddRefWrapper<NodeDefinition> NodeDefinition::createNew(char const* name, char const* niceName)
{
    return AddRefWrapper<NodeDefinition>(new NodeDefinition(name, niceName));
}

NodeDefinition::NodeDefinition(char const* name, char const* niceName)
    : NiceNamable(name, niceName)
{
}

NodeDefinition::~NodeDefinition()
{
    setParent(nullptr);
}

void NodeDefinition::setName(char const* name)
{
    if (m_isFiled)
        ++detail::definitionRenames();
    NiceNamable::setName(name);
}

NodeLibrary* NodeDefinition::parent() const noexcept
{
    return m_parent ? m_parent->owner : nullptr;
}

void NodeDefinition::setParent(NodeLibrary* library) noexcept
{
    detail::BackLink<NodeLibrary>* const link = NodeLibraryAccess::link(library);
    if (link)
        link->addRef();
    if (detail::BackLink<NodeLibrary>* const old = std::exchange(m_parent, link))
        old->release();
}

} // namespace TAV_marlo_v1
