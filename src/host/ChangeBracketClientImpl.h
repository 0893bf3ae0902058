#pragma once

#include <tav/ChangeBracketClient.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace TAV_marlo_v1 {

/// Held by its client and by each open bracket, so that either may go first.
struct ChangeBracketClient::Record {
    using ClosedHook = void (*)(void* context);

    explicit Record(ChangeBracketClient& owner) noexcept
        : client(&owner)
    {
    }

    void addRef() noexcept { ++references; }
    void release()
    {
        if (--references == 0)
            delete this;
    }

    /// A reference while others are called.
    class Kept {
    public:
        explicit Kept(Record& record) noexcept
            : m_record(record)
        {
            m_record.addRef();
        }
        Kept(Kept const&) = delete;
        Kept& operator=(Kept const&) = delete;
        ~Kept() { m_record.release(); }

    private:
        Record& m_record;
    };

    /// The one place where a batch ends. The client may die in the course of it.
    void close()
    {
        if (--depth != 0 || !client)
            return;
        Kept const kept(*this);
        if (onClosed)
            onClosed(onClosedContext);
        if (client)
            client->executeChange();
    }

    ChangeBracketClient* client; // null once it died
    unsigned references = 1;
    std::uint32_t depth = 0;
    std::vector<ChangeBracket> stack;
    /// The library's own work at the end of a batch, done before the virtual executeChange(), which
    /// whoever overrides it need not pass on.
    ClosedHook onClosed = nullptr;
    void* onClosedContext = nullptr;
};

} // namespace TAV_marlo_v1
