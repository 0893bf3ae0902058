#pragma once

#include "commands/WatchPointState.h"

#include <tav/PortDataType.h>
#include <tav/PropertyList.h>
#include <tav/StringArray.h>

#include <optional>
#include <vector>

namespace TAV_marlo_v1::detail {

/// Everything that belongs to one port, with its children, but its place and its connections.
class PortState {
public:
    explicit PortState(Port const& port);

    SharedTextRef const& name() const noexcept { return m_name; }
    /// Makes the port anew and puts it into the list, asking and telling; the name has to be free.
    /// @return empty after a veto
    AddRefWrapper<Port> restoreInto(PortList& list, unsigned index) const;

private:
    AddRefWrapper<Port> build(PortIOType ioType) const;
    void restoreWatchPoints(Port& port) const;

    SharedTextRef m_name;
    AddRefWrapper<PortDataType> m_type;
    PortFlags m_flags;
    std::optional<StringArray> m_values;
    PropertyList m_options;
    PropertyList m_metadata;
    bool m_hasChildList;
    std::vector<PortState> m_children;
    std::optional<WatchPointState> m_watchPoint;
};

} // namespace TAV_marlo_v1::detail
