#include <pel_1_2/PELWaypointAttributeTimer.h>

#include <charconv>

PELWaypointAttributeTimer::PELWaypointAttributeTimer(PELWaypoint& waypoint, char const* name)
    : PELWaypointAttribute(waypoint, name)
    , m_start(std::chrono::steady_clock::now())
{
}

PELWaypointAttributeTimer::~PELWaypointAttributeTimer() = default;

void PELWaypointAttributeTimer::start() noexcept
{
    m_start = std::chrono::steady_clock::now();
}

bool PELWaypointAttributeTimer::valueWhenReached(std::string& value)
{
    std::chrono::duration<double> const elapsed = std::chrono::steady_clock::now() - m_start;
    char text[64];
    auto const end = std::to_chars(text, text + sizeof text, elapsed.count(), std::chars_format::fixed, 3);
    value.assign(text, end.ptr);
    return true;
}
