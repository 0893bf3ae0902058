#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

/// @file
/// Who is registered with whom, kept on both sides, so that either may die first. Shared by editors
/// with notifiers, and by the clients of runtimes, of the host and of node libraries.

namespace TAV_marlo_v1::detail {

template <class Client>
class ClientRegistry;

/// The side of the client: the registries it is in. It lives as long as the client.
template <class Client>
class ClientMemberships {
public:
    explicit ClientMemberships(Client& client) noexcept
        : m_client(&client)
    {
    }
    ClientMemberships(ClientMemberships const&) = delete;
    ClientMemberships& operator=(ClientMemberships const&) = delete;
    ~ClientMemberships() { leaveAll(); }

    std::size_t size() const noexcept { return m_places.size(); }

    void leaveAll()
    {
        while (!m_places.empty())
            m_places.back().registry->removeAt(m_places.back().entry);
    }

private:
    friend class ClientRegistry<Client>;

    struct Place {
        ClientRegistry<Client>* registry;
        std::size_t entry;
    };

    Client* m_client;
    std::vector<Place> m_places;
};

/// The side of the sender: its clients in the order of registration.
///
/// Telling them allocates nothing and stands any change of the registry on the way, including its
/// own death: who leaves is skipped, who comes waits for the next time. A client that leaves only
/// empties its entry; entries are closed up when nobody is being told and most of them are empty.
template <class Client>
class ClientRegistry {
public:
    using Member = ClientMemberships<Client>;

    /// One client of a running delivery; empty as soon as that client or the registry is gone.
    class Recipient;

    ClientRegistry() = default;
    ClientRegistry(ClientRegistry const&) = delete;
    ClientRegistry& operator=(ClientRegistry const&) = delete;

    ~ClientRegistry()
    {
        for (Delivery* delivery = m_delivery; delivery; delivery = delivery->outer)
            delivery->ended = true;
        m_delivery = nullptr;
        clear();
    }

    std::size_t size() const noexcept { return m_live; }
    bool empty() const noexcept { return m_live == 0; }
    bool contains(Member const& member) { return find(member) != kNowhere; }

    /// @return false when it is registered already
    bool add(Member& member)
    {
        if (contains(member))
            return false;
        std::size_t const entry = m_entries.size();
        m_entries.push_back({&member, member.m_places.size()});
        try {
            if (m_index)
                (*m_index)[&member] = entry;
            member.m_places.push_back({this, entry});
        } catch (...) {
            m_entries.pop_back();
            if (m_index)
                m_index->erase(&member);
            throw;
        }
        ++m_live;
        return true;
    }

    /// @return false when it is not registered
    bool remove(Member const& member)
    {
        std::size_t const entry = find(member);
        if (entry == kNowhere)
            return false;
        removeAt(entry);
        return true;
    }

    void clear()
    {
        for (std::size_t entry = m_entries.size(); entry-- > 0 && m_live != 0;)
            if (entry < m_entries.size() && m_entries[entry].member)
                removeAt(entry);
    }

    /// Calls `tell(recipient)` for each client in the order of registration.
    template <class Tell>
    void tellEach(Tell tell)
    {
        Delivery delivery(*this);
        std::size_t const end = m_entries.size();
        for (std::size_t entry = 0; entry < end && !delivery.ended; ++entry)
            tell(Recipient(delivery, entry));
    }

    /// The same in the order of the clients' addresses.
    template <class Tell>
    void tellEachByAddress(Tell tell)
    {
        Delivery delivery(*this);
        std::vector<std::pair<Client*, std::size_t>> order;
        order.reserve(m_live);
        for (std::size_t entry = 0; entry < m_entries.size(); ++entry)
            if (m_entries[entry].member)
                order.emplace_back(m_entries[entry].member->m_client, entry);
        std::sort(order.begin(), order.end(),
                  [](auto const& a, auto const& b) { return std::less<Client*>()(a.first, b.first); });
        for (auto const& client : order)
            tell(Recipient(delivery, client.second));
    }

private:
    friend class ClientMemberships<Client>;

    static constexpr std::size_t kNowhere = ~std::size_t(0);
    /// Up to here a walk over one side is as quick as a look-up in a table.
    static constexpr std::size_t kFew = 8;

    using Index = std::unordered_map<Member const*, std::size_t>;

    struct Entry {
        Member* member;    // null once that client left
        std::size_t place; // where in member->m_places this entry is listed
    };

    /// A running delivery, on the stack; the registry knows the innermost one.
    struct Delivery {
        explicit Delivery(ClientRegistry& owner) noexcept
            : registry(owner)
            , outer(owner.m_delivery)
        {
            owner.m_delivery = this;
        }
        Delivery(Delivery const&) = delete;
        Delivery& operator=(Delivery const&) = delete;
        ~Delivery()
        {
            if (ended)
                return;
            registry.m_delivery = outer;
            registry.closeUp();
        }

        ClientRegistry& registry;
        Delivery* outer;
        bool ended = false; // the registry died
    };

public:
    class Recipient {
    public:
        /// Null once gone: ask again before each call.
        Client* get() const noexcept
        {
            if (m_delivery.ended)
                return nullptr;
            Member const* const member = m_delivery.registry.m_entries[m_entry].member;
            return member ? member->m_client : nullptr;
        }

    private:
        friend class ClientRegistry;
        Recipient(Delivery const& delivery, std::size_t entry) noexcept
            : m_delivery(delivery)
            , m_entry(entry)
        {
        }

        Delivery const& m_delivery;
        std::size_t m_entry;
    };

private:
    /// Walks whichever side is short; when both are long, a table is made once and kept.
    std::size_t find(Member const& member)
    {
        if (m_live == 0 || member.m_places.empty())
            return kNowhere;
        if (member.m_places.size() <= kFew) {
            for (auto const& place : member.m_places)
                if (place.registry == this)
                    return place.entry;
            return kNowhere;
        }
        if (m_entries.size() <= 2 * kFew) {
            for (std::size_t entry = 0; entry < m_entries.size(); ++entry)
                if (m_entries[entry].member == &member)
                    return entry;
            return kNowhere;
        }
        if (!m_index)
            makeIndex();
        auto const found = m_index->find(&member);
        return found == m_index->end() ? kNowhere : found->second;
    }

    void makeIndex()
    {
        auto index = std::make_unique<Index>();
        for (std::size_t entry = 0; entry < m_entries.size(); ++entry)
            if (m_entries[entry].member)
                (*index)[m_entries[entry].member] = entry;
        m_index = std::move(index);
    }

    void removeAt(std::size_t entry)
    {
        Member& member = *m_entries[entry].member;
        std::size_t const place = m_entries[entry].place;
        if (m_index)
            m_index->erase(&member);

        // The client's last place moves into the gap.
        auto const last = member.m_places.back();
        member.m_places[place] = last;
        last.registry->m_entries[last.entry].place = place;
        member.m_places.pop_back();

        m_entries[entry].member = nullptr;
        --m_live;
        closeUp();
    }

    void closeUp()
    {
        if (m_delivery || m_entries.size() <= 2 * m_live)
            return;
        std::size_t next = 0;
        for (Entry const& entry : m_entries) {
            if (!entry.member)
                continue;
            entry.member->m_places[entry.place].entry = next;
            m_entries[next++] = entry;
        }
        m_entries.resize(next);
        if (m_live == 0)
            m_index.reset();
        else if (m_index)
            makeIndex();
    }

    std::vector<Entry> m_entries;
    std::unique_ptr<Index> m_index; // null until both sides have grown long
    std::size_t m_live = 0;
    Delivery* m_delivery = nullptr;
};

} // namespace TAV_marlo_v1::detail
