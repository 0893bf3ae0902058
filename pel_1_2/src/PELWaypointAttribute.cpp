#include <pel_1_2/PELWaypointAttribute.h>

#include <pel_1_2/PELWaypoint.h>

#include <algorithm>

PELWaypointAttribute::PELWaypointAttribute(PELWaypoint& waypoint, char const* name)
    : m_waypoint(&waypoint)
    , m_name(name ? name : "")
{
    waypoint.m_attributes.push_back(this);
}

PELWaypointAttribute::~PELWaypointAttribute()
{
    if (!m_waypoint)
        return;
    auto& attributes = m_waypoint->m_attributes;
    attributes.erase(std::remove(attributes.begin(), attributes.end(), this), attributes.end());
}

bool PELWaypointAttribute::valueWhenReached(std::string&)
{
    return false;
}
