#pragma once

#include "persistence/ElementSource.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace TAV_marlo_v1 {

// The words of the reader's errors. What is found and what was expected stands in double quotes when it
// is a word of the text.

std::string quoted(std::string_view word);
void failAtElement(ElementSource& source, std::string_view found, std::string_view expected);
std::string tooDeep(std::string_view what);
std::string atMost(unsigned levels);
/// The whole message for a null text.
std::string noTextFound(std::string_view expectedRoot);

// Attribute values. A wrong one makes the source fail; what is returned then does not matter.

/// Attribute "name", which the element must have; closed by a NUL.
std::string_view requiredName(ElementSource& source, std::string_view element, ElementAttributes const& attributes);
std::uint32_t readFlags(ElementSource& source, std::string_view value);
bool readYesNo(ElementSource& source, std::string_view attribute, std::string_view value);

/// Of a node, compound or annotation. Views are closed by a NUL.
struct ItemAttributes {
    std::string_view name;
    std::string_view type;
    std::uint32_t flags = 0;
};
ItemAttributes readItemAttributes(ElementSource& source, std::string_view element, ElementAttributes const& attributes);

/// Of a port or member.
struct PortAttributes {
    std::string_view name;
    std::string_view type;
    std::uint32_t flags = 0; // eFanIn also when only "is_fan_in" says so
    std::optional<bool> isInput;
    std::optional<std::string_view> options;
    std::optional<std::string_view> values;
    std::optional<std::string_view> internalValues;
    std::optional<std::string_view> externalValues;
};
PortAttributes readPortAttributes(ElementSource& source, std::string_view element, ElementAttributes const& attributes);

} // namespace TAV_marlo_v1
