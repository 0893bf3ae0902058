#pragma once

#include <tav/Container.h>
#include <tav/NodeLibrary.h>
#include <tav/PortDataType.h>
#include <tav/Runtime.h>
#include <tav/RuntimeNotifierClient.h>

#include "host/ClientRegistry.h"

#include <cstdint>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

namespace TAV_marlo_v1 {

struct RuntimeNotifierClient::Record : detail::ClientMemberships<RuntimeNotifierClient> {
    using ClientMemberships::ClientMemberships;
};

class RuntimeClientAccess {
public:
    /// Made on first use.
    static RuntimeNotifierClient::Record& record(RuntimeNotifierClient& client)
    {
        if (!client.m_record)
            client.m_record = new RuntimeNotifierClient::Record(client);
        return *client.m_record;
    }
};

/// The clients of a runtime or of the host.
class RuntimeClients {
public:
    /// A null client changes nothing; so for remove.
    void add(RuntimeNotifierClient* client)
    {
        if (client)
            m_clients.add(RuntimeClientAccess::record(*client));
    }
    void remove(RuntimeNotifierClient* client)
    {
        if (client)
            m_clients.remove(RuntimeClientAccess::record(*client));
    }

    /// Calls `call(client)` for each, in the order of their addresses.
    template <class Call>
    void tell(Call call)
    {
        m_clients.tellEachByAddress([&call](auto const& recipient) {
            if (RuntimeNotifierClient* const client = recipient.get())
                call(*client);
        });
    }

private:
    detail::ClientRegistry<RuntimeNotifierClient> m_clients;
};

struct Runtime::Impl {
    AddRefWrapper<NodeLibrary> library;
    std::set<Container*> containers;
    RuntimeClients clients;
    std::vector<AddRefWrapper<PortDataType>> types;
    std::unordered_set<std::string> metadataToCopy{"UIWidget", "UIWidgetProp"};
    std::uint64_t disabled = 0;
};

} // namespace TAV_marlo_v1
