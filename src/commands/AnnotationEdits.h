#pragma once

#include "commands/EditLog.h"

#include <tav/Annotation.h>

namespace TAV_marlo_v1::detail {

/// @return empty after a veto
AddRefWrapper<Annotation> createAnnotation(EditLog& log, Compound& compound, Annotation::AnnotationType type,
                                           char const* name);
AddRefWrapper<Annotation> createStickyNote(EditLog& log, Compound& compound, Annotation& backdrop);
bool removeAnnotation(EditLog& log, Annotation& annotation);
bool renameAnnotation(EditLog& log, Annotation& annotation, char const* name);
/// No values remove the entry.
bool setAnnotationMetadata(EditLog& log, Annotation& annotation, char const* key, StringArray const& values);
/// Moves the annotation to the end of another compound's, as it is.
bool moveAnnotation(EditLog& log, Annotation& annotation, Compound& target);

} // namespace TAV_marlo_v1::detail
