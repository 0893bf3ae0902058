#include <tav/NiceNamable.h>

namespace TAV_marlo_v1 {

NiceNamable::NiceNamable() = default;

NiceNamable::NiceNamable(char const* name, char const* niceName)
    : m_name(name)
    , m_niceName(niceName)
{
}

NiceNamable::NiceNamable(NiceNamable const& other) = default;
NiceNamable& NiceNamable::operator=(NiceNamable const& other) = default;
NiceNamable::~NiceNamable() = default;

char const* NiceNamable::getName() const
{
    return m_name.getName();
}

void NiceNamable::setName(char const* name)
{
    m_name.setName(name);
}

char const* NiceNamable::getNiceName() const
{
    char const* const niceName = m_niceName.getName();
    return *niceName ? niceName : getName();
}

void NiceNamable::setNiceName(char const* niceName)
{
    m_niceName.setName(niceName);
}

bool NiceNamable::operator==(NiceNamable const& other) const noexcept
{
    return m_name == other.m_name && m_niceName == other.m_niceName;
}

} // namespace TAV_marlo_v1
