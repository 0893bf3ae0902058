#pragma once

#include <tav/OptionalStringArray.h>
#include <tav/PropertyList.h>
#include <tav/Types.h>

namespace TAV_marlo_v1 {

/// What a new port gets besides its name and type: flags, options and, if set, default values.
class TAV_API PortProperties {
public:
    PortProperties();
    PortProperties(PortFlags flags, PropertyList const& options, OptionalStringArray const& defaultValues);

    PortFlags getFlags() const noexcept { return m_flags; }
    void setFlags(PortFlags flags) noexcept { m_flags = flags; }
    PropertyList const& getOptions() const noexcept { return m_options; }
    void setOptions(PropertyList const& options) { m_options = options; }
    OptionalStringArray const& getDefaultValues() const noexcept { return m_defaultValues; }
    void setDefaultValues(OptionalStringArray const& values) { m_defaultValues = values; }

    bool operator==(PortProperties const& other) const;
    bool operator!=(PortProperties const& other) const { return !(*this == other); }

private:
    PortFlags m_flags = eNoPortFlags;
    PropertyList m_options;
    OptionalStringArray m_defaultValues;
};

} // namespace TAV_marlo_v1
