#include <tav/Annotation.h>

#include "graph/AnnotationListImpl.h"
#include "graph/CompoundImpl.h"
#include "graph/PathNames.h"

#include <tav/Compound.h>

namespace TAV_marlo_v1 {

AddRefWrapper<Annotation> Annotation::createNew(AnnotationType type, Compound* compound, char const* name)
{
    return AddRefWrapper<Annotation>(new Annotation(type, compound, name));
}

Annotation::Annotation(AnnotationType type, Compound* compound, char const* name)
    : Namable(name)
    , m_type(type)
{
    setParentCompound(compound);
}

Annotation::~Annotation()
{
    AnnotationAccess::setParent(*this, nullptr);
}

void Annotation::setParentCompound(Compound* compound)
{
    AnnotationAccess::setParent(*this, compound);
    if (compound && !AnnotationAccess::impl(compound->annotations()).annotations.contains(this)) {
        m_compound = nullptr;
        CompoundAccess::strays(*compound).annotations.insert(this);
        m_compound = compound;
        m_isStray = true;
    }
}

void AnnotationAccess::setParent(Annotation& annotation, Compound* compound) noexcept
{
    if (annotation.m_isStray)
        CompoundAccess::strays(*annotation.m_compound).annotations.erase(&annotation);
    annotation.m_isStray = false;
    annotation.m_compound = compound;
}

void Annotation::setType(AnnotationType type)
{
    if (type == m_type)
        return;
    m_type = type;
    onMetadataChanged();
}

void Annotation::setName(char const* name)
{
    if (!name || NamedAccess::text(*this).view() == name)
        return;
    AddRefWrapper<Annotation> const self(this);
    AddRefWrapper<Compound> const compound(m_compound);
    if (!compound) {
        Namable::setName(name);
        return;
    }
    AddRefWrapper<Node> const owner = compound->getAsNode();
    if (!detail::isLegalName(owner ? owner->getContainer() : nullptr, name))
        return;
    detail::NamedList<Annotation>& siblings = AnnotationAccess::impl(compound->annotations()).annotations;
    detail::SharedTextRef const free(siblings.freeName(name, this));
    if (free.get() == &NamedAccess::text(*this) || !compound->onAnnotationSetName(self, free.chars()))
        return;
    if (siblings.contains(this))
        siblings.rename(*this, free);
    else
        NamedAccess::setText(*this, free);
    compound->onAnnotationNameChanged(self, free.chars());
}

String Annotation::getAnnotationMetaDataValue(char const* key) const
{
    StringArray values;
    getMetadata(key, values);
    return values.empty() ? String() : String(values[0]);
}

bool Annotation::setAnnotationMetaDataValue(char const* key, char const* value)
{
    return setMetadataValue(key, value);
}

void Annotation::onThisAnnotationDeleted()
{
}

void Annotation::onMetadataChanged()
{
    AddRefWrapper<Compound> const compound(m_compound);
    if (compound)
        compound->onAnnotationStateChanged(AddRefWrapper<Annotation>(this));
}

} // namespace TAV_marlo_v1
