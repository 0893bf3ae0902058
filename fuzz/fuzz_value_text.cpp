// Values as a person types them, for no type and for types of every kind; the first byte chooses.

#include "Support.h"

#include <tav/PortDataType.h>

using namespace fuzz;

namespace {

AddRefWrapper<PortDataType> typeFor(std::uint8_t choice)
{
    if (choice % 16 == 15)
        return {};
    AddRefWrapper<PortDataType> const type = PortDataType::createNew("type", "");
    unsigned const dimensions = choice / 16 % 3;
    type->setKind(static_cast<PortDataTypeKind>(choice % 16 | dimensions << 8));
    return type;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    if (size == 0)
        return 0;
    AddRefWrapper<PortDataType> const type = typeFor(data[0]);
    std::string const text = textOf(data + 1, size - 1);
    unsigned const kind = type ? type->getKind() : eUnknownKind;
    bool const isArray = kind == eListKind || (kind & eArrayDimensionsMask) != 0;

    StringArray values("from before");
    require(Port::unserializePortValuesString(text.c_str(), values, type), "every text is a value");
    if (isArray && text.empty())
        require(values.empty(), "no text is no value of a list");
    else if (!isArray && kind != eUnknownKind)
        require(values.size() == 1 && text == values[0], "the whole text is the value of a single-valued type");
    else if (values.size() == 1 && text == values[0])
        return 0; // a text without brackets
    StringArray parsed;
    if (values.size() > 1)
        require(parsed.unserialize(text.c_str(), eUnserializeLenient) && parsed == values,
                "several values had brackets");
    return 0;
}
