#include <pel_1_2/PELWaypointAttributeId.h>

PELWaypointAttributeId::PELWaypointAttributeId(PELWaypoint& waypoint, char const* name)
    : PELWaypointAttribute(waypoint, name)
{
}

PELWaypointAttributeId::~PELWaypointAttributeId() = default;

bool PELWaypointAttributeId::valueWhenReached(std::string& value)
{
    if (m_id == 0)
        return false;
    value = std::to_string(m_id);
    return true;
}
