#include <pel_1_2/PELWaypointAttributeNowId.h>

#include <algorithm>
#include <chrono>

namespace {

std::uint64_t nextId()
{
    static std::uint64_t last = 0;
    using namespace std::chrono;
    auto const now = duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
    last = std::max(last + 1, static_cast<std::uint64_t>(now));
    return last;
}

} // namespace

PELWaypointAttributeNowId::PELWaypointAttributeNowId(PELWaypoint& waypoint, char const* name)
    : PELWaypointAttribute(waypoint, name)
{
}

PELWaypointAttributeNowId::~PELWaypointAttributeNowId() = default;

bool PELWaypointAttributeNowId::valueWhenReached(std::string& value)
{
    m_id = nextId();
    value = std::to_string(m_id);
    return true;
}
