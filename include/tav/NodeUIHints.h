#pragma once

#include <tav/Export.h>
#include <tav/String.h>

#include <cstdint>
#include <optional>

namespace TAV_marlo_v1 {

enum ENodeUIShapeHint : std::uint32_t { eBoxShape = 0, eRoundedShape = 1, ePillShape = 2, eDotShape = 3 };

/// Which hints a caller wants; a mask for requestedHintsFlags.
enum ENodeUIHintFlag : std::uint32_t {
    eNodeNiceNameHint = 1u << 0,
    eNodeBackgroundColorHint = 1u << 1,
    eNodeTitleColorHint = 1u << 2,
    eNodeIconHint = 1u << 3,
    eNodeToolTipHint = 1u << 4,
    eNodeShapeHint = 1u << 5,
    eNodeAllHints = (1u << 6) - 1
};

/// Drawing hints for a node that the node fills on request; used like PortUIHints.
class TAV_API NodeUIHints {
public:
    explicit NodeUIHints(std::uint32_t requestedHintsFlags = eNodeAllHints);

    std::uint32_t requestedHintsFlags() const noexcept { return m_requested; }
    void setRequestedHintsFlags(std::uint32_t flags) noexcept { m_requested = flags; }

    void setNiceName(char const* name);
    bool getNiceName(String const*& name) const noexcept;
    void setBackgroundColor(char const* color);
    bool getBackgroundColor(String const*& color) const noexcept;
    void setTitleColor(char const* color);
    bool getTitleColor(String const*& color) const noexcept;
    /// A path or resource name whose meaning is the host's.
    void setIcon(char const* icon);
    bool getIcon(String const*& icon) const noexcept;
    void setToolTip(char const* text);
    bool getToolTip(String const*& text) const noexcept;
    void setShape(ENodeUIShapeHint shape) noexcept;
    bool getShape(ENodeUIShapeHint const*& shape) const noexcept;

    bool operator==(NodeUIHints const& other) const noexcept;
    bool operator!=(NodeUIHints const& other) const noexcept { return !(*this == other); }

private:
    std::uint32_t m_requested;
    std::optional<String> m_niceName;
    std::optional<String> m_backgroundColor;
    std::optional<String> m_titleColor;
    std::optional<String> m_icon;
    std::optional<String> m_toolTip;
    std::optional<ENodeUIShapeHint> m_shape;
};

} // namespace TAV_marlo_v1
