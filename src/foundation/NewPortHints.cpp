#include <tav/NewPortHints.h>

#include "foundation/HintAccess.h"

namespace TAV_marlo_v1 {

using detail::readHint;

NewPortHints::NewPortHints() = default;

void NewPortHints::setNameHint(char const* name)
{
    m_name = name;
}

bool NewPortHints::getNameHint(String const*& name) const noexcept
{
    return readHint(m_name, name);
}

void NewPortHints::setTypeHint(char const* typeName)
{
    m_type = typeName;
}

bool NewPortHints::getTypeHint(String const*& typeName) const noexcept
{
    return readHint(m_type, typeName);
}

void NewPortHints::setPropertiesHint(PortProperties const& properties)
{
    m_properties = properties;
}

bool NewPortHints::getPropertiesHint(PortProperties const*& properties) const noexcept
{
    return readHint(m_properties, properties);
}

bool NewPortHints::operator==(NewPortHints const& other) const
{
    return m_name == other.m_name && m_type == other.m_type && m_properties == other.m_properties;
}

} // namespace TAV_marlo_v1
