// The text of an array of texts in every mode; the first byte of the input chooses its marks.

#include "Support.h"

#include <tav/StringArray.h>

#include <iterator>

using namespace fuzz;

namespace {

struct TagChoice {
    SerializationTags tags;
    bool comesBack; // marks that are quotes themselves cannot be told from the items; reading them only has to end
};

constexpr TagChoice kChoices[] = {
    {{"{", "}", ","}, true}, {{"", "", ";"}, true},   {{"[", "]", "::"}, true},    {{"<<", ">>", "<"}, true},
    {{"", "", ""}, true},    {{" ", " ", " "}, true}, {{"\"", "\"", "\\"}, false},
};

void roundTrip(StringArray const& array, TagChoice const& choice)
{
    String const written = array.serialize(eSerializeLossless, choice.tags);
    StringArray again;
    bool const read = again.unserialize(written.toChar(), eUnserializeStrict, choice.tags);
    if (choice.comesBack)
        require(read && again == array, "lossless text comes back equal", written.toChar());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    if (size == 0)
        return 0;
    TagChoice const& choice = kChoices[data[0] % std::size(kChoices)];
    std::string const text = textOf(data + 1, size - 1);
    StringArray original;
    original.add("kept");
    for (UnserializeMode const mode : {eUnserializeStrict, eUnserializeLenient}) {
        StringArray array(original);
        bool const read = array.unserialize(text.c_str(), mode, choice.tags);
        require(read || array == original, "damaged text changes nothing");
        array.serialize(eSerializePlain, choice.tags);
        roundTrip(array, choice);
    }
    // The same bytes as items, one a line.
    StringArray lines;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find('\n', start)) != std::string::npos; start = end + 1)
        lines.add(text.substr(start, end - start).c_str());
    lines.add(text.substr(start).c_str());
    roundTrip(lines, choice);
    return 0;
}
