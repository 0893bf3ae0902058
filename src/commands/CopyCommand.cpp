#include <tav/CopyCommand.h>

#include "commands/CommandScope.h"

#include <tav/AnnotationList.h>
#include <tav/NodeList.h>

namespace TAV_marlo_v1 {

struct CopyCommand::Impl {
    detail::CommandTarget target;
    StringArray nodeNames;
    StringArray annotationNames;
};

CopyCommand::CopyCommand()
    : m_impl(std::make_unique<Impl>())
{
}

CopyCommand::CopyCommand(AddRefWrapper<Compound> const& compound)
    : CopyCommand()
{
    if (AddRefWrapper<Node> const owner = compound ? compound->getAsNode() : AddRefWrapper<Node>())
        setParentCompound(owner->getContainer(), owner->getFullPathName().getName());
}

CopyCommand::CopyCommand(CopyCommand&& other) noexcept = default;

CopyCommand::~CopyCommand() = default;

bool CopyCommand::setParentCompound(Container* container, char const* path)
{
    return m_impl && m_impl->target.setCompound(container, path);
}

bool CopyCommand::addSourceNode(char const* name)
{
    AddRefWrapper<Compound> const compound = m_impl ? m_impl->target.findCompound() : AddRefWrapper<Compound>();
    if (!compound || !compound->nodes()[name])
        return false;
    m_impl->nodeNames.add(name);
    return true;
}

bool CopyCommand::addSourceAnnotation(char const* name)
{
    AddRefWrapper<Compound> const compound = m_impl ? m_impl->target.findCompound() : AddRefWrapper<Compound>();
    if (!compound || !compound->annotations()[name])
        return false;
    m_impl->annotationNames.add(name);
    return true;
}

bool CopyCommand::doit()
{
    AddRefWrapper<Compound> const compound = m_impl ? m_impl->target.findCompound() : AddRefWrapper<Compound>();
    if (!compound)
        return false;
    setClipboardData(
        compound->saveItemsToString(m_impl->nodeNames, m_impl->annotationNames, eSaveInnerConnections).toChar());
    return true;
}

} // namespace TAV_marlo_v1
