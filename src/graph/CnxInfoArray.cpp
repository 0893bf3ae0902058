#include <tav/CnxInfoArray.h>

#include <vector>

namespace TAV_marlo_v1 {

struct CnxInfoArray::Impl {
    std::vector<CnxInfo> connections;
};

CnxInfoArray::CnxInfoArray() = default;

CnxInfoArray::CnxInfoArray(CnxInfoArray const& other)
    : m_impl(other.m_impl ? std::make_unique<Impl>(*other.m_impl) : nullptr)
{
}

CnxInfoArray::CnxInfoArray(CnxInfoArray&& other) noexcept = default;

CnxInfoArray::~CnxInfoArray() = default;

CnxInfoArray& CnxInfoArray::operator=(CnxInfoArray const& other)
{
    CnxInfoArray copy(other);
    m_impl.swap(copy.m_impl);
    return *this;
}

CnxInfoArray& CnxInfoArray::operator=(CnxInfoArray&& other) noexcept = default;

unsigned CnxInfoArray::size() const noexcept
{
    return m_impl ? static_cast<unsigned>(m_impl->connections.size()) : 0u;
}

CnxInfo CnxInfoArray::operator[](unsigned index) const
{
    return index < size() ? m_impl->connections[index] : CnxInfo();
}

void CnxInfoArray::add(CnxInfo const& connection)
{
    if (!m_impl)
        m_impl = std::make_unique<Impl>();
    m_impl->connections.push_back(connection);
}

void CnxInfoArray::clear()
{
    m_impl.reset();
}

} // namespace TAV_marlo_v1
