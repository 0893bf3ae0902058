#include "persistence/PortValueText.h"

#include <tav/Port.h>

#include <string>

namespace TAV_marlo_v1 {

ValueArity valueArity(PortDataType const* type) noexcept
{
    PortDataTypeKind const kind = type ? type->getKind() : eUnknownKind;
    if (kind == eListKind || (kind & eArrayDimensionsMask) != 0)
        return ValueArity::List;
    return kind == eUnknownKind ? ValueArity::Any : ValueArity::One;
}

StringArray splitPortValues(std::string_view text, PortDataType const* type)
{
    ValueArity const arity = valueArity(type);
    StringArray values;
    if (arity == ValueArity::One || (arity == ValueArity::Any && text.empty())) {
        values.add(String(text.data(), text.size()));
        return values;
    }
    std::string value;
    while (!text.empty()) {
        std::string_view const part = text.substr(0, text.find(kValueSeparator));
        if (!part.empty())
            values.add(value.assign(part).c_str());
        text.remove_prefix(part.size() < text.size() ? part.size() + 1 : part.size());
    }
    return values;
}

bool Port::unserializePortValuesString(char const* text, StringArray& values, AddRefWrapper<PortDataType> const& type)
{
    if (!text)
        return false;
    ValueArity const arity = valueArity(type.get());
    StringArray read;
    bool const isEmptyList = arity == ValueArity::List && !*text;
    if (arity == ValueArity::One || (!isEmptyList && !read.unserialize(text, eUnserializeLenient)))
        read = StringArray(text);
    values = std::move(read);
    return true;
}

} // namespace TAV_marlo_v1
