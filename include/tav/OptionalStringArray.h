#pragma once

#include <tav/StringArray.h>

namespace TAV_marlo_v1 {

/// A StringArray that may be unset, which is something else than empty.
class TAV_API OptionalStringArray {
public:
    /// Unset.
    OptionalStringArray();
    OptionalStringArray(StringArray const& values);
    OptionalStringArray(StringArray&& values);

    bool isValid() const noexcept { return m_valid; }
    void setValues(StringArray const& values);
    /// A copy, whether set or not.
    StringArray getValues() const { return m_values; }

    /// Equal only when both are set or both are not, and the arrays are equal (even when unset).
    bool operator==(OptionalStringArray const& other) const noexcept;
    bool operator!=(OptionalStringArray const& other) const noexcept { return !(*this == other); }

private:
    StringArray m_values;
    bool m_valid = false;
};

} // namespace TAV_marlo_v1
