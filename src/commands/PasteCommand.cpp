#include <tav/PasteCommand.h>

#include "commands/CommandScope.h"
#include "commands/NodeEdits.h"

#include <tav/AnnotationList.h>
#include <tav/NodeList.h>
#include <tav/PortList.h>

namespace TAV_marlo_v1 {

struct PasteCommand::Impl {
    bool paste();
    void duplicateConnections(Compound& compound, StringArray const& sourceNames) const;

    detail::CommandTarget target;
    StringArray createdNodeNames;
    StringArray createdAnnotationNames;
    String text;
    bool duplicatesInputConnections = false;
    detail::CompoundPortNames portsBefore; // a pasted IO node brings compound ports along
};

PasteCommand::PasteCommand()
    : m_impl(std::make_unique<Impl>())
{
}

PasteCommand::PasteCommand(AddRefWrapper<Compound> const& compound)
    : PasteCommand()
{
    if (AddRefWrapper<Node> const owner = compound ? compound->getAsNode() : AddRefWrapper<Node>())
        setParentCompound(owner->getContainer(), owner->getFullPathName().getName());
}

PasteCommand::PasteCommand(PasteCommand&& other) noexcept = default;

PasteCommand::~PasteCommand() = default;

bool PasteCommand::setParentCompound(Container* container, char const* path)
{
    return m_impl && m_impl->target.setCompound(container, path);
}

void PasteCommand::duplicateSourceInputConnections(bool on)
{
    if (m_impl)
        m_impl->duplicatesInputConnections = on;
}

bool PasteCommand::doit()
{
    if (!m_impl)
        return false;
    m_impl->text = getClipboardData();
    if (m_impl->paste())
        return true;
    m_impl->text = "";
    return false;
}

bool PasteCommand::redo()
{
    return m_impl && m_impl->paste();
}

bool PasteCommand::Impl::paste()
{
    AddRefWrapper<Compound> const compound = target.findCompound();
    if (!compound)
        return false;
    auto const bracket = target.scope().openBracket();
    createdNodeNames.clear();
    createdAnnotationNames.clear();
    portsBefore = detail::CompoundPortNames(*compound);
    StringArray sourceNames;
    if (!compound->createItemsFromString(text.toChar(), createdNodeNames, createdAnnotationNames, &sourceNames))
        return false;
    if (duplicatesInputConnections)
        duplicateConnections(*compound, sourceNames);
    return true;
}

namespace {

/// Connects each unconnected port to the first port that its namesake is connected with.
void duplicate(PortList const& sources, PortList const& targets)
{
    for (AddRefWrapper<Port> const& source : sources) {
        AddRefWrapper<Port> const target = targets[source->getName()];
        if (!target)
            continue;
        if (source->isConnected() && !target->isConnected())
            target->addConnection(source->connectedTo()[0u], /*copyMetadata=*/false);
        AddRefWrapper<PortList> const sourceChildren = source->children();
        AddRefWrapper<PortList> const targetChildren = target->children();
        if (sourceChildren && targetChildren)
            duplicate(*sourceChildren, *targetChildren);
    }
}

} // namespace

void PasteCommand::Impl::duplicateConnections(Compound& compound, StringArray const& sourceNames) const
{
    for (unsigned i = 0; i < sourceNames.size() && i < createdNodeNames.size(); ++i) {
        AddRefWrapper<Node> const source = compound.nodes()[sourceNames[i]];
        AddRefWrapper<Node> const created = compound.nodes()[createdNodeNames[i]];
        if (source && created)
            duplicate(source->inputs(), created->inputs());
    }
}

bool PasteCommand::undo()
{
    AddRefWrapper<Compound> const compound = m_impl ? m_impl->target.findCompound() : AddRefWrapper<Compound>();
    if (!compound)
        return false;
    auto const bracket = m_impl->target.scope().openBracket();
    for (unsigned i = m_impl->createdNodeNames.size(); i-- > 0;)
        detail::removeCreatedNode(*compound, compound->nodes()[m_impl->createdNodeNames[i]], m_impl->portsBefore);
    for (unsigned i = m_impl->createdAnnotationNames.size(); i-- > 0;)
        compound->annotations().remove(compound->annotations()[m_impl->createdAnnotationNames[i]]);
    m_impl->createdNodeNames.clear();
    m_impl->createdAnnotationNames.clear();
    return true;
}

} // namespace TAV_marlo_v1
