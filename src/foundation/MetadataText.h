#pragma once

#include <tav/PropertyList.h>
#include <tav/StatusStr.h>
#include <tav/String.h>

/// The graph text form of a metadata store. The store itself knows nothing of graph text, but can
/// save itself; these two are defined by the writer and the reader, in src/persistence.
namespace TAV_marlo_v1 {

/// The list as a text rooted at "metadatas".
String metadatasToText(PropertyList const& list);

/// Replaces `out` by the list that such a text holds. A null `text` and one that can't be used are
/// errors and leave `out` alone.
StatusStr metadatasFromText(char const* text, PropertyList& out);

} // namespace TAV_marlo_v1
