#include <tav/HostEditor.h>

#include "host/HostEditorNotifierImpl.h"

namespace TAV_marlo_v1 {

HostEditor::~HostEditor()
{
    delete m_record;
}

void HostEditor::tav_onConnectionChange(ECnxChangeType, AddRefWrapper<Port> const&, AddRefWrapper<Port> const&)
{
}

void HostEditor::tav_onCompoundConnectionChange(ECnxChangeType, AddRefWrapper<Port> const&, AddRefWrapper<Port> const&)
{
}

void HostEditor::tav_onCompoundPortChange(EPortChangeType, AddRefWrapper<Port> const&)
{
}

void HostEditor::tav_onNodeChange(ENodeChangeType, AddRefWrapper<Compound> const&, AddRefWrapper<Node> const&)
{
}

void HostEditor::tav_onNodePortChange(EPortChangeType, AddRefWrapper<Port> const&)
{
}

void HostEditor::tav_onAnnotationChange(EAnnotationChangeType, AddRefWrapper<Compound> const&,
                                        AddRefWrapper<Annotation> const&)
{
}

unsigned HostEditor::peekNotifierRegisteredWithCount() const noexcept
{
    return m_record ? static_cast<unsigned>(m_record->size()) : 0;
}

} // namespace TAV_marlo_v1
