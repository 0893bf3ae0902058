#pragma once

#include "commands/WatchPointState.h"

#include <tav/PortDataType.h>
#include <tav/PropertyList.h>
#include <tav/StringArray.h>

#include <optional>
#include <vector>

namespace TAV_marlo_v1::detail {

/// The default values as the owner answers them, null for none; `storage` may be used to hold them. An owner
/// of the library's own classes answers what is kept with the port, so it need not be asked for a copy.
StringArray const* defaultValues(Port const& port, std::optional<StringArray>& storage);

/// Everything that belongs to one port, with its children, but its place and its connections.
class PortState {
public:
    explicit PortState(Port const& port);

    SharedTextRef const& name() const noexcept { return m_name; }
    /// Makes the port anew and puts it into the list, asking and telling; the name has to be free.
    /// @return empty after a veto
    AddRefWrapper<Port> restoreInto(PortList& list, unsigned index) const;
    /// Makes the port anew, but for its watch point, at the end of the list of a node that is still being
    /// made: nobody is asked or told. A taken name becomes the next free one.
    void appendTo(PortList& list) const;

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
