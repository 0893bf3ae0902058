#include <tav/Instrumentable.h>

#include <pel_1_2/PELWaypoint.h>
#include <pel_1_2/PELWaypointAttributeHashString.h>
#include <pel_1_2/PELWaypointAttributeId.h>
#include <pel_1_2/PELWaypointAttributeNowId.h>
#include <pel_1_2/PELWaypointAttributeString.h>
#include <pel_1_2/PELWaypointAttributeTimer.h>

namespace TAV_marlo_v1 {

// The attributes stand below the waypoints that they hang on, so that they go first.
struct Instrumentable::Impl {
    std::unique_ptr<PELWaypoint> editorCreate;
    std::unique_ptr<PELWaypoint> editorDestroy;
    std::unique_ptr<PELWaypoint> graphCreate;
    std::unique_ptr<PELWaypoint> nodeCreate;
    std::unique_ptr<PELWaypoint> contentBrowser;

    std::unique_ptr<PELWaypointAttributeNowId> editorCreateId;
    std::unique_ptr<PELWaypointAttributeId> editorDestroyId;
    std::unique_ptr<PELWaypointAttributeTimer> editorDestroyDuration;
    std::unique_ptr<PELWaypointAttributeString> graphCreateId;
    std::unique_ptr<PELWaypointAttributeString> nodeCreateGraphId;
    std::unique_ptr<PELWaypointAttributeHashString> nodeCreateType;
    std::unique_ptr<PELWaypointAttributeString> nodeCreateMethod;
    std::unique_ptr<PELWaypointAttributeHashString> contentBrowserTemplate;
    std::unique_ptr<PELWaypointAttributeHashString> contentBrowserCategory;
};

namespace {

PELWaypoint& made(std::unique_ptr<PELWaypoint>& waypoint, Instrumentable const& owner, Instrumentable::Waypoints which)
{
    if (!waypoint)
        waypoint = std::make_unique<PELWaypoint>(*owner.getLUMConnection(), owner.waypointName(which));
    return *waypoint;
}

template <class Attribute>
Attribute& made(std::unique_ptr<Attribute>& attribute, PELWaypoint& waypoint, Instrumentable const& owner,
                Instrumentable::WaypointAttributes which)
{
    if (!attribute)
        attribute = std::make_unique<Attribute>(waypoint, owner.waypointAttributeName(which));
    return *attribute;
}

} // namespace

Instrumentable::Instrumentable()
    : m_impl(std::make_unique<Impl>())
{
}

Instrumentable::~Instrumentable() = default;

PELLumConnection* Instrumentable::getLUMConnection() const
{
    return nullptr;
}

char const* Instrumentable::waypointName(Waypoints waypoint) const
{
    switch (waypoint) {
    case eEditorCreateWaypoint:
        return "TAV.EDITOR.CREATE";
    case eEditorDestroyWaypoint:
        return "TAV.EDITOR.DESTROY";
    case eGraphCreateWaypoint:
        return "TAV.GRAPH.CREATION";
    case eNodeCreateWaypoint:
        return "TAV.GRAPH.NODE.CREATION";
    case eContentBrowserWaypoint:
        return "TAV.GRAPH.BROWSER";
    }
    return nullptr;
}

char const* Instrumentable::waypointAttributeName(WaypointAttributes attribute) const
{
    switch (attribute) {
    case eEditorCreateId:
    case eEditorDestroyId:
        return "TAV.EDITOR.ID"; // one name, so that the two can be matched
    case eEditorDestroyDuration:
        return "TAV.EDITOR.USED_DURATION";
    case eGraphCreateId:
        return "TAV.GRAPH.CREATION.ID";
    case eNodeCreateGraphId:
        return "TAV.GRAPH.ID";
    case eNodeCreateType:
        return "TAV.GRAPH.NODE.CREATION.TYPE";
    case eNodeCreateMethod:
        return "TAV.GRAPH.NODE.CREATION.METHOD";
    case eContentBrowserTemplate:
        return "TAV.GRAPH.BROWSER.SELECTED_TEMPLATE";
    case eContentBrowserCategory:
        return "TAV.GRAPH.BROWSER.CATEGORY";
    }
    return nullptr;
}

// ---- waypoints

PELWaypoint& Instrumentable::editorCreateWaypoint() const
{
    return made(m_impl->editorCreate, *this, eEditorCreateWaypoint);
}

PELWaypoint& Instrumentable::editorDestroyWaypoint() const
{
    return made(m_impl->editorDestroy, *this, eEditorDestroyWaypoint);
}

PELWaypoint& Instrumentable::graphCreateWaypoint() const
{
    return made(m_impl->graphCreate, *this, eGraphCreateWaypoint);
}

PELWaypoint& Instrumentable::nodeCreateWaypoint() const
{
    return made(m_impl->nodeCreate, *this, eNodeCreateWaypoint);
}

PELWaypoint& Instrumentable::contentBrowserWaypoint() const
{
    return made(m_impl->contentBrowser, *this, eContentBrowserWaypoint);
}

// ---- attributes

PELWaypointAttributeNowId& Instrumentable::editorCreateWaypoint_id() const
{
    return made(m_impl->editorCreateId, editorCreateWaypoint(), *this, eEditorCreateId);
}

PELWaypointAttributeId& Instrumentable::editorDestroyWaypoint_id() const
{
    return made(m_impl->editorDestroyId, editorDestroyWaypoint(), *this, eEditorDestroyId);
}

PELWaypointAttributeTimer& Instrumentable::editorDestroyWaypoint_duration() const
{
    return made(m_impl->editorDestroyDuration, editorDestroyWaypoint(), *this, eEditorDestroyDuration);
}

PELWaypointAttributeString& Instrumentable::graphCreateWaypoint_id() const
{
    return made(m_impl->graphCreateId, graphCreateWaypoint(), *this, eGraphCreateId);
}

PELWaypointAttributeString& Instrumentable::nodeCreateWaypoint_graphId() const
{
    return made(m_impl->nodeCreateGraphId, nodeCreateWaypoint(), *this, eNodeCreateGraphId);
}

PELWaypointAttributeHashString& Instrumentable::nodeCreateWaypoint_type() const
{
    return made(m_impl->nodeCreateType, nodeCreateWaypoint(), *this, eNodeCreateType);
}

PELWaypointAttributeString& Instrumentable::nodeCreateWaypoint_method() const
{
    return made(m_impl->nodeCreateMethod, nodeCreateWaypoint(), *this, eNodeCreateMethod);
}

PELWaypointAttributeHashString& Instrumentable::contentBrowserWaypoint_template() const
{
    return made(m_impl->contentBrowserTemplate, contentBrowserWaypoint(), *this, eContentBrowserTemplate);
}

PELWaypointAttributeHashString& Instrumentable::contentBrowserWaypoint_category() const
{
    return made(m_impl->contentBrowserCategory, contentBrowserWaypoint(), *this, eContentBrowserCategory);
}

} // namespace TAV_marlo_v1
