#include <tav/PluginInfo.h>

namespace TAV_marlo_v1 {

PluginInfo::PluginInfo() = default;

PluginInfo::PluginInfo(char const* text)
    : m_text(text)
{
}

PluginInfo::PluginInfo(PluginInfo const& other) = default;

PluginInfo& PluginInfo::operator=(PluginInfo const& other) = default;

PluginInfo::~PluginInfo() = default;

} // namespace TAV_marlo_v1
