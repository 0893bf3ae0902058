#pragma once

#include "commands/EditLog.h"

#include <tav/PropertyList.h>

#include <optional>
#include <vector>

namespace TAV_marlo_v1::detail {

/// What a watch point is set to: what it recorded is not kept.
class WatchPointState {
public:
    /// Nothing for a port without watch point.
    static std::optional<WatchPointState> of(Port const& port);

    /// Gives the port a watch point, if it has none, and sets it. Where the owner makes none, one that
    /// is only kept stands in, as for one that text speaks of.
    void restore(Port& port) const;

private:
    bool m_enabled = false;
    PropertyList m_metadata;
    std::vector<std::pair<String, String>> m_parameters;
};

/// Port::setWatchPoint; true, with nothing changed, for a port that has one.
bool setWatchPoint(EditLog& log, Port& port);
/// Port::removeWatchPoint.
bool removeWatchPoint(EditLog& log, Port& port);
/// @return false for a port without watch point
bool enableWatchPoint(EditLog& log, Port& port, bool on);

} // namespace TAV_marlo_v1::detail
