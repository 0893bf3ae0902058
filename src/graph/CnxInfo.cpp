#include <tav/CnxInfo.h>

#include <tav/Port.h>

#include <utility>

namespace TAV_marlo_v1 {

namespace {

Port* retained(Port* port) noexcept
{
    if (port)
        port->addRef();
    return port;
}

void released(Port* port)
{
    if (port)
        port->release();
}

} // namespace

CnxInfo::CnxInfo() = default;

CnxInfo::CnxInfo(AddRefWrapper<Port> const& output, AddRefWrapper<Port> const& input)
    : m_output(retained(output.get()))
    , m_input(retained(input.get()))
{
}

CnxInfo::CnxInfo(CnxInfo const& other)
    : m_output(retained(other.m_output))
    , m_input(retained(other.m_input))
{
}

CnxInfo& CnxInfo::operator=(CnxInfo const& other)
{
    CnxInfo copy(other);
    std::swap(m_output, copy.m_output);
    std::swap(m_input, copy.m_input);
    return *this;
}

CnxInfo::~CnxInfo()
{
    released(m_output);
    released(m_input);
}

AddRefWrapper<Port> CnxInfo::getOutputPort() const
{
    return AddRefWrapper<Port>(m_output);
}

AddRefWrapper<Port> CnxInfo::getInputPort() const
{
    return AddRefWrapper<Port>(m_input);
}

void CnxInfo::swapOutputInput()
{
    std::swap(m_output, m_input);
}

bool CnxInfo::operator==(CnxInfo const& other) const noexcept
{
    return m_output == other.m_output && m_input == other.m_input;
}

} // namespace TAV_marlo_v1
