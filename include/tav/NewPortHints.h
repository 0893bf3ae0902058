#pragma once

#include <tav/PortProperties.h>
#include <tav/String.h>

#include <optional>

namespace TAV_marlo_v1 {

/// What an owner proposes for a port that a user is about to add. A getter answers false for an
/// unset hint and otherwise points at the value, which lives until the hint is set again.
class TAV_API NewPortHints {
public:
    NewPortHints();

    void setNameHint(char const* name);
    bool getNameHint(String const*& name) const noexcept;
    /// The name of a data type.
    void setTypeHint(char const* typeName);
    bool getTypeHint(String const*& typeName) const noexcept;
    void setPropertiesHint(PortProperties const& properties);
    bool getPropertiesHint(PortProperties const*& properties) const noexcept;

    bool operator==(NewPortHints const& other) const;
    bool operator!=(NewPortHints const& other) const { return !(*this == other); }

private:
    std::optional<String> m_name;
    std::optional<String> m_type;
    std::optional<PortProperties> m_properties;
};

} // namespace TAV_marlo_v1
