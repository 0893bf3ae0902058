#pragma once

#include "graph/NamedList.h"

#include <tav/AnnotationList.h>

namespace TAV_marlo_v1 {

struct AnnotationList::Impl {
    detail::NamedList<Annotation> annotations;
    Compound* compound = nullptr;
};

/// The library's way to the record of an annotation list.
class AnnotationAccess {
public:
    static AnnotationList::Impl& impl(AnnotationList& list) noexcept { return *list.m_impl; }
    static AnnotationList::Impl const& impl(AnnotationList const& list) noexcept { return *list.m_impl; }

    /// For an annotation that stands in the compound's list or is about to.
    static void setParent(Annotation& annotation, Compound* compound) noexcept;
};

} // namespace TAV_marlo_v1
