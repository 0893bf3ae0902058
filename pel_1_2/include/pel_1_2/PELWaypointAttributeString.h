#pragma once

#include <pel_1_2/PELWaypointAttribute.h>

/// A text, kept as a constant of the waypoint.
class PEL_API PELWaypointAttributeString : public PELWaypointAttribute {
public:
    PELWaypointAttributeString(PELWaypoint& waypoint, char const* name);
    ~PELWaypointAttributeString() override;

    void setValue(char const* text);
};
