#pragma once

#include "persistence/ElementSink.h"

#include <tav/PortNotification.h>

namespace TAV_marlo_v1 {

class Port;
class PortFilterCallback;
class PortList;

/// Writes ports with what belongs to them, apart from connections. Nested ports cost about 300 bytes
/// of stack a level.
class PortWriter {
public:
    explicit PortWriter(ElementSink& sink) noexcept
        : m_sink(sink)
    {
    }

    /// Element "port". The filter, which may be null, acts on the first level of children.
    void writePort(Port& port, PortFilterCallback* filter);

private:
    class Owner;

    void writePort(Owner const& owner, Port& port, PortFilterCallback* filter);
    void writeValueAttributes(Owner const& owner, Port& port);
    void writeOptions(Owner const& owner, Port& port);
    void writeMetadata(Owner const& owner, Port& port);
    void writeMembers(Owner const& owner, PortList const& members);
    void writeJoined(std::string_view attribute, StringArray const& values);

    ElementSink& m_sink;
};

} // namespace TAV_marlo_v1
