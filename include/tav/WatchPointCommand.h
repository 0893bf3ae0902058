#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Export.h>

#include <memory>

namespace TAV_marlo_v1 {

class Container;
class Port;

/// Sets, removes, enables and disables watch points, in the order of recording. Ports are kept by path,
/// direction and side. A watch point that undo() sets again is enabled as it was and has the metadata
/// and parameter values it had. See NodeCommand for what holds for every command.
class TAV_API WatchPointCommand {
public:
    WatchPointCommand();
    WatchPointCommand(WatchPointCommand&& other) noexcept;
    WatchPointCommand(WatchPointCommand const&) = delete;
    WatchPointCommand& operator=(WatchPointCommand const&) = delete;
    ~WatchPointCommand();

    /// @return false, with nothing recorded: no container, or no port
    bool setWatchPoint(Container* container, AddRefWrapper<Port> const& port);
    bool removeWatchPoint(Container* container, AddRefWrapper<Port> const& port);
    bool enableWatchPoint(Container* container, AddRefWrapper<Port> const& port, bool on);

    bool doit();
    bool redo();
    void undo();

private:
    friend class CommandAccess;
    struct Impl;
    std::unique_ptr<Impl> m_impl; // null once moved from
};

} // namespace TAV_marlo_v1
