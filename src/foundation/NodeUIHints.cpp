#include <tav/NodeUIHints.h>

#include "foundation/HintAccess.h"

namespace TAV_marlo_v1 {

using detail::readHint;

NodeUIHints::NodeUIHints(std::uint32_t requestedHintsFlags)
    : m_requested(requestedHintsFlags)
{
}

void NodeUIHints::setNiceName(char const* name)
{
    m_niceName = name;
}

bool NodeUIHints::getNiceName(String const*& name) const noexcept
{
    return readHint(m_niceName, name);
}

void NodeUIHints::setBackgroundColor(char const* color)
{
    m_backgroundColor = color;
}

bool NodeUIHints::getBackgroundColor(String const*& color) const noexcept
{
    return readHint(m_backgroundColor, color);
}

void NodeUIHints::setTitleColor(char const* color)
{
    m_titleColor = color;
}

bool NodeUIHints::getTitleColor(String const*& color) const noexcept
{
    return readHint(m_titleColor, color);
}

void NodeUIHints::setIcon(char const* icon)
{
    m_icon = icon;
}

bool NodeUIHints::getIcon(String const*& icon) const noexcept
{
    return readHint(m_icon, icon);
}

void NodeUIHints::setToolTip(char const* text)
{
    m_toolTip = text;
}

bool NodeUIHints::getToolTip(String const*& text) const noexcept
{
    return readHint(m_toolTip, text);
}

void NodeUIHints::setShape(ENodeUIShapeHint shape) noexcept
{
    m_shape = shape;
}

bool NodeUIHints::getShape(ENodeUIShapeHint const*& shape) const noexcept
{
    return readHint(m_shape, shape);
}

bool NodeUIHints::operator==(NodeUIHints const& other) const noexcept
{
    return m_requested == other.m_requested && m_niceName == other.m_niceName
           && m_backgroundColor == other.m_backgroundColor && m_titleColor == other.m_titleColor
           && m_icon == other.m_icon && m_toolTip == other.m_toolTip && m_shape == other.m_shape;
}

} // namespace TAV_marlo_v1
