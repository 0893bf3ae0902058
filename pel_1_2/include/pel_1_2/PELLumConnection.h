#pragma once

#include <pel_1_2/Export.h>

class PELSink;
struct PELReport;

/// The way of the waypoints to a sink, which must outlive the connection.
class PEL_API PELLumConnection {
public:
    explicit PELLumConnection(PELSink& sink);
    PELLumConnection(PELLumConnection const&) = delete;
    PELLumConnection& operator=(PELLumConnection const&) = delete;
    virtual ~PELLumConnection();

    virtual void send(PELReport const& report);

private:
    PELSink* m_sink;
};
