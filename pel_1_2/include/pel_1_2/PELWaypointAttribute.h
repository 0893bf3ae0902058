#pragma once

#include <pel_1_2/Export.h>

#include <string>

class PELWaypoint;

/// A named value of a waypoint. It must not outlive the waypoint's use through getWaypoint().
class PEL_API PELWaypointAttribute {
public:
    PELWaypointAttribute(PELWaypoint& waypoint, char const* name);
    PELWaypointAttribute(PELWaypointAttribute const&) = delete;
    PELWaypointAttribute& operator=(PELWaypointAttribute const&) = delete;
    virtual ~PELWaypointAttribute();

    char const* getName() const noexcept { return m_name.c_str(); }
    PELWaypoint& getWaypoint() const noexcept { return *m_waypoint; }

protected:
    /// Asked when the waypoint is reached. @return false for nothing to report beside the constants
    virtual bool valueWhenReached(std::string& value);

private:
    friend class PELWaypoint;

    PELWaypoint* m_waypoint; // null once the waypoint died
    std::string m_name;
};
