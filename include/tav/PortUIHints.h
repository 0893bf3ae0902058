#pragma once

#include <tav/Export.h>
#include <tav/String.h>

#include <cstdint>
#include <optional>

namespace TAV_marlo_v1 {

enum EPortUIIconHint : std::uint32_t { eNoIcon = 0, eArrayIcon = 1, eReferenceIcon = 2, eAnimatedIcon = 3 };
enum EPortUIShapeHint : std::uint32_t { eCircleShape = 0, eSquareShape = 1, eDiamondShape = 2, eTriangleShape = 3 };
enum EPortUIDecorationHint : std::uint32_t { eNoDecoration = 0, eDottedDecoration = 1, eOutlineDecoration = 2 };

/// Which hints a caller wants; a mask for requestedHintsFlags.
enum EPortUIHintFlag : std::uint32_t {
    ePortNiceNameHint = 1u << 0,
    ePortResolvedTypeHint = 1u << 1,
    ePortAttributeColorHint = 1u << 2,
    ePortBackgroundColorHint = 1u << 3,
    ePortConnectionColorHint = 1u << 4,
    ePortIconColorHint = 1u << 5,
    ePortIconHint = 1u << 6,
    ePortShapeHint = 1u << 7,
    ePortDecorationHint = 1u << 8,
    ePortShowMembersHint = 1u << 9,
    ePortAllHints = (1u << 10) - 1
};

/// Drawing hints for a port that its owner fills on request. A hint is unset until its setter was
/// called; a getter answers false for an unset hint and otherwise points at the value, which lives
/// until the hint is set again. Colours are texts whose form is the host's, such as "#rrggbb".
class TAV_API PortUIHints {
public:
    explicit PortUIHints(std::uint32_t requestedHintsFlags = ePortAllHints);

    std::uint32_t requestedHintsFlags() const noexcept { return m_requested; }
    void setRequestedHintsFlags(std::uint32_t flags) noexcept { m_requested = flags; }

    void setNiceName(char const* name);
    bool getNiceName(String const*& name) const noexcept;
    void setResolvedDataType(char const* typeName);
    bool getResolvedDataType(String const*& typeName) const noexcept;
    void setAttributeColor(char const* color);
    bool getAttributeColor(String const*& color) const noexcept;
    void setBackgroundColor(char const* color);
    bool getBackgroundColor(String const*& color) const noexcept;
    void setConnectionColor(char const* color);
    bool getConnectionColor(String const*& color) const noexcept;
    void setIconColor(char const* color);
    bool getIconColor(String const*& color) const noexcept;
    void setIcon(EPortUIIconHint icon) noexcept;
    bool getIcon(EPortUIIconHint const*& icon) const noexcept;
    void setShape(EPortUIShapeHint shape) noexcept;
    bool getShape(EPortUIShapeHint const*& shape) const noexcept;
    void setDecoration(EPortUIDecorationHint decoration) noexcept;
    bool getDecoration(EPortUIDecorationHint const*& decoration) const noexcept;
    void setShowMemberHierarchy(bool show) noexcept;
    bool getShowMemberHierarchy(bool const*& show) const noexcept;

    bool operator==(PortUIHints const& other) const noexcept;
    bool operator!=(PortUIHints const& other) const noexcept { return !(*this == other); }

private:
    std::uint32_t m_requested;
    std::optional<String> m_niceName;
    std::optional<String> m_resolvedDataType;
    std::optional<String> m_attributeColor;
    std::optional<String> m_backgroundColor;
    std::optional<String> m_connectionColor;
    std::optional<String> m_iconColor;
    std::optional<EPortUIIconHint> m_icon;
    std::optional<EPortUIShapeHint> m_shape;
    std::optional<EPortUIDecorationHint> m_decoration;
    std::optional<bool> m_showMemberHierarchy;
};

} // namespace TAV_marlo_v1
