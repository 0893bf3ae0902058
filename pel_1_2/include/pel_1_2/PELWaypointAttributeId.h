#pragma once

#include <pel_1_2/PELWaypointAttribute.h>

#include <cstdint>

/// An identifier that is given to it, so that two waypoints can be matched; 0 is none.
class PEL_API PELWaypointAttributeId : public PELWaypointAttribute {
public:
    PELWaypointAttributeId(PELWaypoint& waypoint, char const* name);
    ~PELWaypointAttributeId() override;

    void setId(std::uint64_t id) noexcept { m_id = id; }
    std::uint64_t getId() const noexcept { return m_id; }

protected:
    bool valueWhenReached(std::string& value) override;

private:
    std::uint64_t m_id = 0;
};
