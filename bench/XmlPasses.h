#pragma once

#include <cstdint>
#include <string_view>

namespace bench {

/// What a raw pass over a text found, and how long it took.
struct XmlPass {
    double seconds;
    std::uint64_t elements;
    bool good;
};

/// QXmlStreamReader from the first token to the last, nothing done with them.
XmlPass readerPass(std::string_view text);

/// QXmlStreamWriter with auto-formatting writes the tokens of the text into a QString. The tokens are
/// taken from the text in slices, outside of the time. Good when the bytes came out again.
XmlPass writerPass(std::string_view text);

} // namespace bench
