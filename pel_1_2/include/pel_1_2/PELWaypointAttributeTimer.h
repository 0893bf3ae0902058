#pragma once

#include <pel_1_2/PELWaypointAttribute.h>

#include <chrono>

/// The seconds from its construction, or from the last start(), until the waypoint is reached.
class PEL_API PELWaypointAttributeTimer : public PELWaypointAttribute {
public:
    PELWaypointAttributeTimer(PELWaypoint& waypoint, char const* name);
    ~PELWaypointAttributeTimer() override;

    void start() noexcept;

protected:
    bool valueWhenReached(std::string& value) override;

private:
    std::chrono::steady_clock::time_point m_start;
};
