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
    /// There is one, and the next word may follow: it is no path that has to go on.
    bool isWhole() const;
};

/// @param line up to the cursor
Completions completionsOf(TAV_marlo_v1::kit::Document const& document, std::string_view line);

} // namespace tool
