#pragma once

#include "persistence/ElementSink.h"

#include <string_view>

namespace TAV_marlo_v1 {

/// Copies a text that somebody else wrote into the open element, token by token. Reading ends silently
/// at the first error; what was copied stays, and every element that is still open is closed.
///
/// White space that only lays out is laid out anew. White space alone between two tags of one element is
/// kept as its content, unless the vocabulary gives that element no text.
void copyEmbeddedText(std::string_view text, ElementSink& sink);

} // namespace TAV_marlo_v1
