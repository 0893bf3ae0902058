#include <tav/AnnotationList.h>

#include "graph/AnnotationListImpl.h"

#include <tav/Compound.h>

namespace TAV_marlo_v1 {

AnnotationList AnnotationList::createNew()
{
    return AnnotationList();
}

AnnotationList::AnnotationList()
    : m_impl(std::make_unique<Impl>())
{
}

AnnotationList::AnnotationList(AnnotationList const& other)
    : AnnotationList()
{
    other.m_impl->annotations.forEach(
        [this](Annotation& annotation) { m_impl->annotations.insert(m_impl->annotations.size(), &annotation); });
}

AnnotationList::AnnotationList(AnnotationList&& other) noexcept
    : AnnotationList()
{
    // A compound's annotations stay with the compound: what moves out of its list is a selection.
    if (other.m_impl->compound)
        *this = other;
    else
        m_impl->annotations.swap(other.m_impl->annotations);
}

AnnotationList::~AnnotationList() = default;

AnnotationList& AnnotationList::operator=(AnnotationList const& other)
{
    if (this == &other || m_impl->compound)
        return *this; // the annotations of a compound come and go one by one, asked and told
    detail::NamedList<Annotation> copies;
    other.m_impl->annotations.forEach([&](Annotation& annotation) { copies.insert(copies.size(), &annotation); });
    m_impl->annotations.swap(copies);
    return *this;
}

unsigned AnnotationList::size() const noexcept
{
    return m_impl->annotations.size();
}

AddRefWrapper<Annotation> AnnotationList::operator[](unsigned index) const
{
    return AddRefWrapper<Annotation>(m_impl->annotations.at(index));
}

AddRefWrapper<Annotation> AnnotationList::operator[](char const* name) const
{
    return AddRefWrapper<Annotation>(name ? m_impl->annotations.find(name) : nullptr);
}

unsigned AnnotationList::findAnnotation(AddRefWrapper<Annotation> const& annotation) const
{
    return annotation ? m_impl->annotations.indexOf(annotation.get()) : kNotFound;
}

Compound* AnnotationList::getParentCompound() const noexcept
{
    return m_impl->compound;
}

void AnnotationList::setParentCompound(Compound* compound) noexcept
{
    m_impl->compound = compound;
    m_impl->annotations.setHearsRenames(compound != nullptr);
}

bool AnnotationList::add(AddRefWrapper<Annotation> const& annotation)
{
    return insert(annotation, size());
}

bool AnnotationList::insert(AddRefWrapper<Annotation> const& annotation, unsigned index)
{
    if (!annotation)
        return false;
    AddRefWrapper<Annotation> const kept(annotation);
    if (!m_impl->compound) {
        m_impl->annotations.insert(index, kept.get());
        return true;
    }
    AddRefWrapper<Compound> const compound(m_impl->compound);
    Compound* const formerParent = kept->getParentCompound();
    if (formerParent && formerParent->annotations().findAnnotation(kept) != kNotFound)
        return false;

    AnnotationAccess::setParent(*kept, compound.get());
    if (!compound->onAnnotationAdd(kept)) {
        AnnotationAccess::setParent(*kept, nullptr);
        kept->setParentCompound(formerParent);
        return false;
    }

    detail::SharedTextRef const formerName(NamedAccess::text(*kept));
    try {
        NamedAccess::setText(*kept, detail::SharedTextRef(m_impl->annotations.freeName(formerName.view())));
        m_impl->annotations.insert(index, kept.get());
    } catch (...) {
        NamedAccess::setText(*kept, formerName);
        AnnotationAccess::setParent(*kept, nullptr);
        throw;
    }

    compound->onAnnotationAdded(kept);
    return true;
}

bool AnnotationList::remove(AddRefWrapper<Annotation> const& annotation)
{
    if (!annotation || !m_impl->annotations.contains(annotation.get()))
        return false;
    AddRefWrapper<Annotation> const kept(annotation); // `annotation` may be the very entry that goes away below
    AddRefWrapper<Compound> const compound(m_impl->compound);

    if (compound && !compound->onAnnotationRemove(kept))
        return false;

    m_impl->annotations.take(kept.get());
    if (!compound)
        return true;
    AnnotationAccess::setParent(*kept, nullptr);
    kept->onThisAnnotationDeleted();

    compound->onAnnotationRemoved(kept);
    return true;
}

AddRefWrapper<Annotation> AnnotationList::createNewAnnotation(Annotation::AnnotationType type, char const* name)
{
    AddRefWrapper<Annotation> const annotation = Annotation::createNew(type, nullptr, name);
    return add(annotation) ? annotation : AddRefWrapper<Annotation>();
}

} // namespace TAV_marlo_v1
