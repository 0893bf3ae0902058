// The text of a whole document, opened over another one.

#include "Support.h"

using namespace fuzz;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string const text = textOf(data, size);
    SmallDocument const document(SmallDocument::eFilled);
    String const before = document.top().saveToString(nullptr);

    StatusStr const status = document.top().restoreFromString(text.c_str());
    requireConsistent(document);
    if (!status)
        require(document.top().saveToString(nullptr) == before, "text that can't be used changes nothing");
    else
        requireStableText(document);
    return 0;
}
