#pragma once

#include <tav/String.h>

namespace TAV_marlo_v1 {

/// Describes a plug-in by one text that its registration function fills in; the library only copies it.
class TAV_API PluginInfo {
public:
    PluginInfo();
    explicit PluginInfo(char const* text);
    PluginInfo(PluginInfo const& other);
    PluginInfo& operator=(PluginInfo const& other);
    virtual ~PluginInfo();

    char const* getText() const noexcept { return m_text.toChar(); }
    void setText(char const* text) { m_text = text; }

private:
    String m_text;
};

} // namespace TAV_marlo_v1
