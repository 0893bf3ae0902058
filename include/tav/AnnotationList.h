#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Annotation.h>
#include <tav/ListIterator.h>

#include <memory>

namespace TAV_marlo_v1 {

/// An ordered list of annotations: those of a compound, or a free selection. Works like NodeList.
class TAV_API AnnotationList {
public:
    struct Impl; // the private record, known inside the library alone

    static AnnotationList createNew();
    AnnotationList();
    AnnotationList(AnnotationList const& other);
    AnnotationList(AnnotationList&& other) noexcept;
    ~AnnotationList();
    AnnotationList& operator=(AnnotationList const& other);

    unsigned size() const noexcept;
    bool empty() const noexcept { return size() == 0; }
    AddRefWrapper<Annotation> operator[](unsigned index) const;
    AddRefWrapper<Annotation> operator[](char const* name) const;
    /// The index of the annotation, compared by identity, or kNotFound.
    unsigned findAnnotation(AddRefWrapper<Annotation> const& annotation) const;

    bool add(AddRefWrapper<Annotation> const& annotation);
    /// As add, at `index`; past the end appends.
    bool insert(AddRefWrapper<Annotation> const& annotation, unsigned index);
    bool remove(AddRefWrapper<Annotation> const& annotation);
    /// Makes an annotation and adds it. @return empty after a veto
    AddRefWrapper<Annotation> createNewAnnotation(Annotation::AnnotationType type, char const* name);

    Compound* getParentCompound() const noexcept;
    /// For compounds: neither asks nor tells; the annotations in the list keep their parent.
    void setParentCompound(Compound* compound) noexcept;

    ListIterator<AnnotationList> begin() const { return {*this, 0}; }
    ListIterator<AnnotationList> end() const { return {*this, size()}; }

private:
    friend class AnnotationAccess;
    std::unique_ptr<Impl> m_impl; // never null
};

} // namespace TAV_marlo_v1
