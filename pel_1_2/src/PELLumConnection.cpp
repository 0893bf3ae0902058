#include <pel_1_2/PELLumConnection.h>

#include <pel_1_2/PELSink.h>

PELLumConnection::PELLumConnection(PELSink& sink)
    : m_sink(&sink)
{
}

PELLumConnection::~PELLumConnection() = default;

void PELLumConnection::send(PELReport const& report)
{
    m_sink->write(report);
}
