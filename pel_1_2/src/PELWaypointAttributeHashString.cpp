#include <pel_1_2/PELWaypointAttributeHashString.h>

#include <pel_1_2/PELWaypoint.h>

#include <cstdint>

PELWaypointAttributeHashString::PELWaypointAttributeHashString(PELWaypoint& waypoint, char const* name)
    : PELWaypointAttribute(waypoint, name)
{
}

PELWaypointAttributeHashString::~PELWaypointAttributeHashString() = default;

void PELWaypointAttributeHashString::setValue(char const* text)
{
    getWaypoint().addAttributeConstant(getName(), hash(text).c_str());
}

std::string PELWaypointAttributeHashString::hash(char const* text)
{
    std::uint64_t value = 0xcbf29ce484222325u;
    for (char const* byte = text ? text : ""; *byte; ++byte) {
        value ^= static_cast<unsigned char>(*byte);
        value *= 0x100000001b3u;
    }
    std::string digits(16, '0');
    for (std::size_t i = digits.size(); i-- > 0; value >>= 4)
        digits[i] = "0123456789abcdef"[value & 0xF];
    return digits;
}
