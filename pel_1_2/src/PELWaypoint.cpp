#include <pel_1_2/PELWaypoint.h>

#include <pel_1_2/PELLumConnection.h>
#include <pel_1_2/PELSink.h>
#include <pel_1_2/PELWaypointAttribute.h>

#include <chrono>
#include <cstdio>
#include <ctime>

namespace {

using Constants = std::vector<std::pair<std::string, std::string>>;

void setValue(Constants& values, std::string const& name, std::string const& value)
{
    for (auto& known : values) {
        if (known.first == name) {
            known.second = value;
            return;
        }
    }
    values.emplace_back(name, value);
}

std::string timeNow()
{
    using namespace std::chrono;
    auto const now = system_clock::now();
    auto const sinceEpoch = duration_cast<milliseconds>(now.time_since_epoch()).count();
    std::time_t const seconds = static_cast<std::time_t>(sinceEpoch / 1000);
    std::tm const* const utc = std::gmtime(&seconds);
    if (!utc)
        return std::string();
    char date[32];
    char text[40];
    // Only digits: no part of it depends on the locale.
    std::strftime(date, sizeof date, "%Y-%m-%dT%H:%M:%S", utc);
    std::snprintf(text, sizeof text, "%s.%03dZ", date, static_cast<int>(sinceEpoch % 1000));
    return text;
}

} // namespace

PELWaypoint::PELWaypoint(PELLumConnection& connection, char const* name)
    : m_connection(&connection)
    , m_name(name ? name : "")
{
}

PELWaypoint::~PELWaypoint()
{
    for (PELWaypointAttribute* const attribute : m_attributes)
        attribute->m_waypoint = nullptr;
}

void PELWaypoint::addAttributeConstant(char const* name, char const* value)
{
    setValue(m_constants, name ? name : "", value ? value : "");
}

void PELWaypoint::reached()
{
    PELReport report{m_name, timeNow(), m_constants};
    for (PELWaypointAttribute* const attribute : m_attributes) {
        std::string value;
        if (attribute->valueWhenReached(value))
            setValue(report.attributes, attribute->getName(), value);
    }
    m_connection->send(report);
}
