#pragma once

#include "persistence/ElementSink.h"

#include <tav/PropertyList.h>

namespace TAV_marlo_v1 {

/// Writes a metadata store as element "metadatas". Depth of child lists costs no stack.
void writeMetadataStore(ElementSink& sink, PropertyList const& store);

} // namespace TAV_marlo_v1
