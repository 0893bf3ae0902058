#include <tav/PortProperties.h>

namespace TAV_marlo_v1 {

PortProperties::PortProperties() = default;

PortProperties::PortProperties(PortFlags flags, PropertyList const& options, OptionalStringArray const& defaultValues)
    : m_flags(flags)
    , m_options(options)
    , m_defaultValues(defaultValues)
{
}

bool PortProperties::operator==(PortProperties const& other) const
{
    return m_flags == other.m_flags && m_options == other.m_options && m_defaultValues == other.m_defaultValues;
}

} // namespace TAV_marlo_v1
