#pragma once

#include <tav/PortDataType.h>
#include <tav/StringArray.h>

#include <string_view>

namespace TAV_marlo_v1 {

/// How many values a text for that type stands for.
enum class ValueArity {
    One, ///< the whole text is one value
    Any, ///< no type, or one of unknown kind: one value unless the text holds several
    List ///< any number, none for the empty text
};

/// `type` may be null.
ValueArity valueArity(PortDataType const* type) noexcept;

/// What stands between the values of a port in graph text.
constexpr char kValueSeparator = ';';

/// The values of a port attribute of graph text: split at ";" as the type wants it, empty parts dropped.
StringArray splitPortValues(std::string_view text, PortDataType const* type);

} // namespace TAV_marlo_v1
