#pragma once

#include <pel_1_2/Export.h>

#include <string>
#include <utility>
#include <vector>

class PELLumConnection;
class PELWaypointAttribute;

/// A point in the use of a program that is worth reporting. The connection must outlive it.
class PEL_API PELWaypoint {
public:
    /// A null name counts as empty; so for all texts.
    PELWaypoint(PELLumConnection& connection, char const* name);
    PELWaypoint(PELWaypoint const&) = delete;
    PELWaypoint& operator=(PELWaypoint const&) = delete;
    ~PELWaypoint();

    char const* getName() const noexcept { return m_name.c_str(); }
    /// The value goes out with every report from now on, in place of an earlier one of that name.
    void addAttributeConstant(char const* name, char const* value);
    /// Sends one report: the constants, then what the attributes have to say.
    void reached();

private:
    friend class PELWaypointAttribute;

    PELLumConnection* m_connection;
    std::string m_name;
    std::vector<std::pair<std::string, std::string>> m_constants;
    std::vector<PELWaypointAttribute*> m_attributes; // not owned; in the order in which they were made
};
