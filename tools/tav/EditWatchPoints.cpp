// The edits of watch points.
#include "EditActions.h"
#include "EditSession.h"
#include "EditTargets.h"

#include <tav/PortList.h>
#include <tav/WatchPoint.h>
#include <tav/WatchPointCommand.h>

using namespace TAV_marlo_v1;

namespace tool {

namespace {

/// Records nothing, but is there and saved.
class SavedWatchPoint final : public WatchPoint {
public:
    void enable(bool on) override { m_enabled = on; }
    bool enabled() const override { return m_enabled; }

private:
    bool m_enabled = true;
};

/// Sets a watch point also where no back end makes one, as the reader does: the tool has none for most graphs.
class WatchEdit {
public:
    WatchEdit(Container& graph, PortPlace const& place)
        : m_graph(graph)
        , m_place(place)
    {
        m_command.setWatchPoint(&graph, place.port);
        m_place.port.reset(); // found by its name from now on
        m_place.node.reset();
    }

    bool doit()
    {
        m_isByCommand = m_command.doit();
        if (m_isByCommand)
            return true;
        AddRefWrapper<Port> const port = find();
        if (!port || port->getWatchPoint())
            return false;
        port->setWatchPoint(AddRefWrapper<WatchPoint>(new SavedWatchPoint));
        port->notifyChange(eWatchPointSet);
        m_isPlaced = true;
        return true;
    }

    bool redo() { return doit(); }

    bool undo()
    {
        if (m_isByCommand)
            m_command.undo();
        AddRefWrapper<Port> const port = m_isPlaced ? find() : AddRefWrapper<Port>();
        bool const isDone = !m_isPlaced || (port && port->removeWatchPoint());
        m_isPlaced = false;
        return isDone;
    }

private:
    AddRefWrapper<Port> find() const
    {
        AddRefWrapper<Node> const node = m_graph.findNodeFromPath(m_place.nodePath.c_str());
        unsigned index = kNotFound;
        if (!node)
            return {};
        return (m_place.ioType == eInput ? node->inputs() : node->outputs())
            .findPortRecursive(m_place.name.c_str(), index);
    }

    Container& m_graph;
    PortPlace m_place;
    WatchPointCommand m_command;
    bool m_isByCommand = false;
    bool m_isPlaced = false;
};

} // namespace

void watch(EditSession& session, Words const& words)
{
    PortPlace const place = portAt(session.document(), words[0]);
    if (place.port->getWatchPoint())
        throw EditError('"' + words[0] + "\" has a watch point already");
    session.push(WatchEdit(session.document(), place));
}

void unwatch(EditSession& session, Words const& words)
{
    PortPlace const place = portAt(session.document(), words[0]);
    if (!place.port->getWatchPoint())
        throw EditError('"' + words[0] + "\" has no watch point");
    WatchPointCommand command;
    command.removeWatchPoint(&session.document(), place.port);
    session.push(std::move(command));
}

} // namespace tool
