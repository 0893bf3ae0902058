#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/PortDataType.h>

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace TAV_marlo_v1 {

class Runtime;

/// Port data types by name, as the runtime knows them. A name it does not know gets a type of that name
/// that is not registered, so that a text comes back as it was; all who name it share one object.
class DataTypeLookup {
public:
    /// The runtime may be null.
    explicit DataTypeLookup(Runtime const* runtime) noexcept
        : m_runtime(runtime)
    {
    }

    /// Empty for the empty name. The name must be closed by a NUL.
    AddRefWrapper<PortDataType> const& find(std::string_view name);

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const noexcept { return std::hash<std::string_view>()(text); }
    };

    Runtime const* m_runtime;
    std::unordered_map<std::string, AddRefWrapper<PortDataType>, Hash, std::equal_to<>> m_types;
    // The ports of a node often have one type.
    std::string_view m_lastName;
    AddRefWrapper<PortDataType> const* m_lastType = nullptr;
};

} // namespace TAV_marlo_v1
