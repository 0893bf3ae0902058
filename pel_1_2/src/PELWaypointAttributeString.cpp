#include <pel_1_2/PELWaypointAttributeString.h>

#include <pel_1_2/PELWaypoint.h>

PELWaypointAttributeString::PELWaypointAttributeString(PELWaypoint& waypoint, char const* name)
    : PELWaypointAttribute(waypoint, name)
{
}

PELWaypointAttributeString::~PELWaypointAttributeString() = default;

void PELWaypointAttributeString::setValue(char const* text)
{
    getWaypoint().addAttributeConstant(getName(), text);
}
