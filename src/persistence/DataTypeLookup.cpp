#include "persistence/DataTypeLookup.h"

#include <tav/Runtime.h>

namespace TAV_marlo_v1 {

namespace {

/// The types that no runtime knows, as long as somebody uses them. Never deleted, so that it does not
/// matter which module goes down first.
class UnknownTypes {
public:
    AddRefWrapper<PortDataType> find(std::string_view name)
    {
        std::string key(name);
        auto const known = m_types.find(key);
        if (known != m_types.end())
            return known->second;
        if (m_types.size() >= m_sweepAt)
            sweep();
        AddRefWrapper<PortDataType> type = PortDataType::createNew(key.c_str(), "");
        m_types.emplace(std::move(key), type);
        return type;
    }

private:
    /// Lets go of the types that nobody else holds.
    void sweep()
    {
        for (auto type = m_types.begin(); type != m_types.end();)
            type = type->second->refCount() == 1 ? m_types.erase(type) : std::next(type);
        m_sweepAt = 2 * m_types.size() + kFirstSweep;
    }

    static constexpr std::size_t kFirstSweep = 64;

    std::unordered_map<std::string, AddRefWrapper<PortDataType>> m_types;
    std::size_t m_sweepAt = kFirstSweep;
};

AddRefWrapper<PortDataType> unknownType(std::string_view name)
{
    static auto* const types = new UnknownTypes;
    return types->find(name);
}

} // namespace

AddRefWrapper<PortDataType> const& DataTypeLookup::find(std::string_view name)
{
    static AddRefWrapper<PortDataType> const none;
    if (name.empty())
        return none;
    if (m_lastType && name == m_lastName)
        return *m_lastType;
    auto entry = m_types.find(name);
    if (entry == m_types.end()) {
        AddRefWrapper<PortDataType> type;
        if (m_runtime)
            type = m_runtime->getPortDataType(name.data());
        if (!type)
            type = unknownType(name);
        entry = m_types.emplace(name, std::move(type)).first;
    }
    m_lastName = entry->first;
    m_lastType = &entry->second;
    return *m_lastType;
}

} // namespace TAV_marlo_v1
