#include "persistence/ReadAttributes.h"

#include "persistence/GraphVocabulary.h"

#include <tav/Types.h>

#include <charconv>

namespace TAV_marlo_v1 {

using namespace graphtext;

namespace {

/// What is quoted from a text is cut, so that no message grows with it.
constexpr std::size_t kLongestQuote = 60;

void failAtValue(ElementSource& source, std::string_view attribute, std::string_view value, std::string_view expected)
{
    source.fail(quoted(value) + " in attribute " + quoted(attribute), expected);
}

void failForName(ElementSource& source, std::string_view element)
{
    source.fail(quoted(element) + " without attribute \"name\"", "a name");
}

} // namespace

std::string quoted(std::string_view word)
{
    std::size_t const formFeed = word.rfind('\f'); // in front of it stands an XML name space
    if (formFeed != std::string_view::npos)
        word.remove_prefix(formFeed + 1);
    std::string text = "\"";
    if (word.size() <= kLongestQuote) {
        text.append(word);
    } else {
        std::size_t end = kLongestQuote;
        while (end > 0 && (static_cast<unsigned char>(word[end]) & 0xC0) == 0x80)
            --end; // not within a character
        text.append(word.substr(0, end)).append("...");
    }
    return text.append("\"");
}

void failAtElement(ElementSource& source, std::string_view found, std::string_view expected)
{
    source.fail("element " + quoted(found), "element " + quoted(expected));
}

std::string tooDeep(std::string_view what)
{
    return std::string(what).append(" nested too deep");
}

std::string atMost(unsigned levels)
{
    return "at most " + std::to_string(levels) + " levels";
}

std::string noTextFound(std::string_view expectedRoot)
{
    return "line 1, column 1: found no text, expected element " + quoted(expectedRoot);
}

std::string_view requiredName(ElementSource& source, std::string_view element, ElementAttributes const& attributes)
{
    for (auto const& [name, value] : attributes) {
        if (name == kName)
            return value;
    }
    failForName(source, element);
    return "";
}

std::uint32_t readFlags(ElementSource& source, std::string_view value)
{
    std::uint32_t flags = 0;
    auto const [end, error] = std::from_chars(value.data(), value.data() + value.size(), flags);
    if (error != std::errc() || end != value.data() + value.size())
        failAtValue(source, kFlag, value, "an unsigned number of 32 bits");
    return flags;
}

bool readYesNo(ElementSource& source, std::string_view attribute, std::string_view value)
{
    if (value != kYes && value != kNo)
        failAtValue(source, attribute, value, "\"yes\" or \"no\"");
    return value == kYes;
}

ItemAttributes readItemAttributes(ElementSource& source, std::string_view element, ElementAttributes const& attributes)
{
    ItemAttributes item{{}, "", 0};
    for (auto const& [name, value] : attributes) {
        if (name == kName)
            item.name = value;
        else if (name == kType)
            item.type = value;
        else if (name == kFlag)
            item.flags = readFlags(source, value);
    }
    if (!item.name.data())
        failForName(source, element);
    return item;
}

PortAttributes readPortAttributes(ElementSource& source, std::string_view element, ElementAttributes const& attributes)
{
    PortAttributes port;
    port.type = "";
    bool isFanIn = false;
    for (auto const& [name, value] : attributes) {
        switch (name.front()) { // most names differ in their first letter
        case 'n':
            if (name == kName)
                port.name = value;
            break;
        case 't':
            if (name == kType)
                port.type = value;
            break;
        case 'f':
            if (name == kFlag)
                port.flags = readFlags(source, value);
            break;
        case 'i':
            if (name == kIsInput)
                port.isInput = readYesNo(source, name, value);
            else if (name == kIsFanIn)
                isFanIn = readYesNo(source, name, value);
            break;
        case 'o':
            if (name == kOptions)
                port.options = value;
            break;
        case 'd':
            if (name == kDefaultValues)
                port.values = value;
            else if (name == kDefaultInternalValues)
                port.internalValues = value;
            else if (name == kDefaultExternalValues)
                port.externalValues = value;
            break;
        default:
            break;
        }
    }
    if (!port.name.data())
        failForName(source, element);
    if (isFanIn)
        port.flags |= eFanIn;
    return port;
}

} // namespace TAV_marlo_v1
