#pragma once

#include <pel_1_2/Export.h>

#include <string>
#include <utility>
#include <vector>

/// One reached waypoint: what a sink is given.
struct PELReport {
    std::string waypoint;
    /// "2024-05-31T12:00:00.000Z", UTC.
    std::string time;
    /// Names and values, constants first, each name once. UTF-8.
    std::vector<std::pair<std::string, std::string>> attributes;
};

/// Where the reports of a connection go.
class PEL_API PELSink {
public:
    virtual ~PELSink();
    virtual void write(PELReport const& report) = 0;
};
