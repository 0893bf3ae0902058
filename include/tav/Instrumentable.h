#pragma once

#include <tav/Export.h>

#include <cstdint>
#include <memory>

class PELLumConnection;
class PELWaypoint;
class PELWaypointAttributeHashString;
class PELWaypointAttributeId;
class PELWaypointAttributeNowId;
class PELWaypointAttributeString;
class PELWaypointAttributeTimer;

namespace TAV_marlo_v1 {

/// Carries the usage-analytics objects of one runtime, each made on first access. Nothing is
/// recorded unless a derived class supplies a connection; without one the accessors must not be used.
class TAV_API Instrumentable {
public:
    enum Waypoints : std::uint32_t {
        eEditorCreateWaypoint = 0,
        eEditorDestroyWaypoint = 1,
        eGraphCreateWaypoint = 2,
        eNodeCreateWaypoint = 3,
        eContentBrowserWaypoint = 4
    };

    enum WaypointAttributes : std::uint32_t {
        eEditorCreateId = 0,
        eEditorDestroyId = 1,
        eEditorDestroyDuration = 2,
        eGraphCreateId = 3,
        eNodeCreateGraphId = 4,
        eNodeCreateType = 5,
        eNodeCreateMethod = 6,
        eContentBrowserTemplate = 7,
        eContentBrowserCategory = 8
    };

    Instrumentable();
    Instrumentable(Instrumentable const&) = delete;
    Instrumentable& operator=(Instrumentable const&) = delete;

    virtual ~Instrumentable();
    /// The connection to report through; null (the default) for no reporting. Not owned.
    virtual PELLumConnection* getLUMConnection() const;
    /// Null for a value that is no waypoint.
    virtual char const* waypointName(Waypoints waypoint) const;
    /// Only the values above may be passed.
    virtual char const* waypointAttributeName(WaypointAttributes attribute) const;

    PELWaypoint& editorCreateWaypoint() const;
    PELWaypoint& editorDestroyWaypoint() const;
    PELWaypoint& graphCreateWaypoint() const;
    PELWaypoint& nodeCreateWaypoint() const;
    PELWaypoint& contentBrowserWaypoint() const;

    PELWaypointAttributeNowId& editorCreateWaypoint_id() const;
    PELWaypointAttributeId& editorDestroyWaypoint_id() const;
    PELWaypointAttributeTimer& editorDestroyWaypoint_duration() const;
    PELWaypointAttributeString& graphCreateWaypoint_id() const;
    PELWaypointAttributeString& nodeCreateWaypoint_graphId() const;
    PELWaypointAttributeHashString& nodeCreateWaypoint_type() const;
    PELWaypointAttributeString& nodeCreateWaypoint_method() const;
    PELWaypointAttributeHashString& contentBrowserWaypoint_template() const;
    PELWaypointAttributeHashString& contentBrowserWaypoint_category() const;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl; // never null
};

} // namespace TAV_marlo_v1
