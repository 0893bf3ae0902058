#include "commands/WatchPointState.h"

#include "persistence/TextWatchPoint.h"

#include <tav/Port.h>
#include <tav/WatchPoint.h>

namespace TAV_marlo_v1::detail {

std::optional<WatchPointState> WatchPointState::of(Port const& port)
{
    AddRefWrapper<WatchPoint> const watchPoint = port.getWatchPoint();
    if (!watchPoint)
        return std::nullopt;
    WatchPointState state;
    state.m_enabled = watchPoint->enabled();
    state.m_metadata = watchPoint->getPropertyList();
    StringArray names;
    watchPoint->getAvailableParameters(names);
    for (char const* const name : names) {
        String value;
        if (watchPoint->getParameterValue(name, value))
            state.m_parameters.emplace_back(name, value);
    }
    return state;
}

void WatchPointState::restore(Port& port) const
{
    if (port.getWatchPoint()) {
        port.getWatchPoint()->enable(m_enabled);
    } else {
        ensureWatchPoint(port, m_enabled);
    }
    AddRefWrapper<WatchPoint> const watchPoint = port.getWatchPoint();
    if (!watchPoint)
        return;
    if (watchPoint->getPropertyList() != m_metadata)
        watchPoint->setFromPropertyList(m_metadata);
    for (auto const& [name, value] : m_parameters) {
        String present;
        if (!watchPoint->getParameterValue(name.toChar(), present) || present != value)
            watchPoint->setParameterValue(name.toChar(), value.toChar());
    }
}

namespace {

class WatchPointEdit final : public Edit {
public:
    explicit WatchPointEdit(Port& port)
        : m_port(port)
        , m_state(WatchPointState::of(port))
    {
    }

    bool takeBack(Scene const& scene) override
    {
        AddRefWrapper<Port> const port = m_port.find(scene);
        if (!port)
            return false;
        if (!m_state)
            return !port->getWatchPoint() || port->removeWatchPoint();
        m_state->restore(*port);
        return true;
    }

private:
    PortAddress m_port;
    std::optional<WatchPointState> m_state;
};

} // namespace

bool setWatchPoint(EditLog& log, Port& port)
{
    return port.getWatchPoint()
           || log.change(std::make_unique<WatchPointEdit>(port), [&port] { return port.setWatchPoint(); });
}

bool removeWatchPoint(EditLog& log, Port& port)
{
    return port.getWatchPoint()
           && log.change(std::make_unique<WatchPointEdit>(port), [&port] { return port.removeWatchPoint(); });
}

bool enableWatchPoint(EditLog& log, Port& port, bool on)
{
    AddRefWrapper<WatchPoint> const watchPoint = port.getWatchPoint();
    return watchPoint && log.change(std::make_unique<WatchPointEdit>(port), [&] {
        watchPoint->enable(on);
        return true;
    });
}

} // namespace TAV_marlo_v1::detail
