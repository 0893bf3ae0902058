#include <tav/PortUIHints.h>

#include "foundation/HintAccess.h"

namespace TAV_marlo_v1 {

using detail::readHint;

PortUIHints::PortUIHints(std::uint32_t requestedHintsFlags)
    : m_requested(requestedHintsFlags)
{
}

void PortUIHints::setNiceName(char const* name)
{
    m_niceName = name;
}

bool PortUIHints::getNiceName(String const*& name) const noexcept
{
    return readHint(m_niceName, name);
}

void PortUIHints::setResolvedDataType(char const* typeName)
{
    m_resolvedDataType = typeName;
}

bool PortUIHints::getResolvedDataType(String const*& typeName) const noexcept
{
    return readHint(m_resolvedDataType, typeName);
}

void PortUIHints::setAttributeColor(char const* color)
{
    m_attributeColor = color;
}

bool PortUIHints::getAttributeColor(String const*& color) const noexcept
{
    return readHint(m_attributeColor, color);
}

void PortUIHints::setBackgroundColor(char const* color)
{
    m_backgroundColor = color;
}

bool PortUIHints::getBackgroundColor(String const*& color) const noexcept
{
    return readHint(m_backgroundColor, color);
}

void PortUIHints::setConnectionColor(char const* color)
{
    m_connectionColor = color;
}

bool PortUIHints::getConnectionColor(String const*& color) const noexcept
{
    return readHint(m_connectionColor, color);
}

void PortUIHints::setIconColor(char const* color)
{
    m_iconColor = color;
}

bool PortUIHints::getIconColor(String const*& color) const noexcept
{
    return readHint(m_iconColor, color);
}

void PortUIHints::setIcon(EPortUIIconHint icon) noexcept
{
    m_icon = icon;
}

bool PortUIHints::getIcon(EPortUIIconHint const*& icon) const noexcept
{
    return readHint(m_icon, icon);
}

void PortUIHints::setShape(EPortUIShapeHint shape) noexcept
{
    m_shape = shape;
}

bool PortUIHints::getShape(EPortUIShapeHint const*& shape) const noexcept
{
    return readHint(m_shape, shape);
}

void PortUIHints::setDecoration(EPortUIDecorationHint decoration) noexcept
{
    m_decoration = decoration;
}

bool PortUIHints::getDecoration(EPortUIDecorationHint const*& decoration) const noexcept
{
    return readHint(m_decoration, decoration);
}

void PortUIHints::setShowMemberHierarchy(bool show) noexcept
{
    m_showMemberHierarchy = show;
}

bool PortUIHints::getShowMemberHierarchy(bool const*& show) const noexcept
{
    return readHint(m_showMemberHierarchy, show);
}

bool PortUIHints::operator==(PortUIHints const& other) const noexcept
{
    return m_requested == other.m_requested && m_niceName == other.m_niceName
           && m_resolvedDataType == other.m_resolvedDataType && m_attributeColor == other.m_attributeColor
           && m_backgroundColor == other.m_backgroundColor && m_connectionColor == other.m_connectionColor
           && m_iconColor == other.m_iconColor && m_icon == other.m_icon && m_shape == other.m_shape
           && m_decoration == other.m_decoration && m_showMemberHierarchy == other.m_showMemberHierarchy;
}

} // namespace TAV_marlo_v1
