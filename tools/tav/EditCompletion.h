#pragma once

#include "EditScript.h"

#include <tav/kit/Document.h>

namespace tool {

/// What may be typed where the cursor stands.
struct Completions {
    std::size_t begin = 0; // of the word that they stand for in the line
    Words words;           // as they are typed, with quotes where they need them; in order, each once
    /// What all of them begin with.
    std::string common() const;
    /// A word is whole: the next one may follow. A path to a compound may go on.
    bool isWhole() const;
};

/// @param line up to the cursor
Completions completionsOf(TAV_marlo_v1::kit::Document const& document, std::string_view line);

} // namespace tool
