#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Export.h>

#include <memory>

namespace TAV_marlo_v1 {

class Container;
class Port;

/// As ConnectCommand, but records one operation, which doit() carries out. Recording again replaces it.
class TAV_API NewConnectCommand {
public:
    NewConnectCommand();
    NewConnectCommand(NewConnectCommand&& other) noexcept;
    NewConnectCommand(NewConnectCommand const&) = delete;
    NewConnectCommand& operator=(NewConnectCommand const&) = delete;
    ~NewConnectCommand();

    bool connect(Container* container, AddRefWrapper<Port> const& a, AddRefWrapper<Port> const& b, bool copyMetaData);
    bool disconnect(Container* container, AddRefWrapper<Port> const& a, AddRefWrapper<Port> const& b);
    bool disconnectAll(Container* container, AddRefWrapper<Port> const& port);

    bool doit();
    bool redo();
    bool undo();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl; // null once moved from
};

} // namespace TAV_marlo_v1
