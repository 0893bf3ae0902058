#include <tav/OptionalStringArray.h>

#include <utility>

namespace TAV_marlo_v1 {

OptionalStringArray::OptionalStringArray() = default;

OptionalStringArray::OptionalStringArray(StringArray const& values)
    : m_values(values)
    , m_valid(true)
{
}

OptionalStringArray::OptionalStringArray(StringArray&& values)
    : m_values(std::move(values))
    , m_valid(true)
{
}

void OptionalStringArray::setValues(StringArray const& values)
{
    m_values = values;
    m_valid = true;
}

bool OptionalStringArray::operator==(OptionalStringArray const& other) const noexcept
{
    return m_valid == other.m_valid && m_values == other.m_values;
}

} // namespace TAV_marlo_v1
