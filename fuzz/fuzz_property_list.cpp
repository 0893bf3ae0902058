// The text of a property list, read strictly and leniently.

#include "Support.h"

#include <tav/PropertyList.h>

using namespace fuzz;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string const text = textOf(data, size);
    PropertyList original;
    original.addStringPair("key", "value");
    for (SerializeMode const mode : {eSerializeLossless, eSerializePlain}) {
        PropertyList list(original);
        if (!list.unserialize(text.c_str(), mode)) {
            require(list == original, "damaged text changes nothing");
            continue;
        }
        String const written = list.serialize(eSerializeLossless);
        PropertyList again;
        require(again.unserialize(written.toChar(), eSerializeLossless), "lossless text can be read", written.toChar());
        require(again == list, "lossless text comes back equal", written.toChar());
        require(again.serialize(eSerializeLossless) == written, "equal lists have equal texts", written.toChar());
        require(!list.serialize(eSerializePlain).empty() || list.empty(), "a list that holds something has a text");
    }
    return 0;
}
