#pragma once

#include <pel_1_2/PELWaypointAttribute.h>

#include <string>

/// A text of which only a hash is reported, so that it can be counted without being told.
class PEL_API PELWaypointAttributeHashString : public PELWaypointAttribute {
public:
    PELWaypointAttributeHashString(PELWaypoint& waypoint, char const* name);
    ~PELWaypointAttributeHashString() override;

    void setValue(char const* text);

    /// FNV-1a, 64 bits, of the bytes of the text, as 16 lower-case hexadecimal digits.
    static std::string hash(char const* text);
};
