#pragma once

#include <pel_1_2/PELWaypointAttribute.h>

#include <cstdint>

/// An identifier made from the time at which the waypoint is reached: microseconds since 1970, and
/// never the same one twice in a process.
class PEL_API PELWaypointAttributeNowId : public PELWaypointAttribute {
public:
    PELWaypointAttributeNowId(PELWaypoint& waypoint, char const* name);
    ~PELWaypointAttributeNowId() override;

    /// The last one made, to be handed on to a PELWaypointAttributeId; 0 before the first.
    std::uint64_t getId() const noexcept { return m_id; }

protected:
    bool valueWhenReached(std::string& value) override;

private:
    std::uint64_t m_id = 0;
};
