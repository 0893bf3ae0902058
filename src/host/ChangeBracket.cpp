#include <tav/ChangeBracket.h>

#include "host/ChangeBracketClientImpl.h"
#include "host/NotifierAccess.h"

namespace TAV_marlo_v1 {

struct ChangeBracket::Impl {
    explicit Impl(ChangeBracketClient* client)
        : record(client ? &BracketAccess::record(*client) : nullptr)
    {
        if (!record)
            return;
        record->addRef();
        ++record->depth;
    }
    Impl(Impl const&) = delete;
    Impl& operator=(Impl const&) = delete;

    ~Impl()
    {
        if (record) {
            record->close();
            record->release();
        }
        while (!appended.empty())
            appended.pop_back();
    }

    ChangeBracketClient::Record* record; // null for an empty bracket
    std::vector<ChangeBracket> appended;
};

ChangeBracket::ChangeBracket(ChangeBracketClient* client)
    : m_impl(std::make_unique<Impl>(client))
{
}

ChangeBracket::ChangeBracket(ChangeBracket&& other) noexcept = default;

ChangeBracket::~ChangeBracket() = default;

void ChangeBracket::append(ChangeBracket&& other)
{
    if (&other == this || !other.m_impl)
        return;
    if (!m_impl)
        m_impl = std::move(other.m_impl);
    else
        m_impl->appended.push_back(std::move(other));
}

} // namespace TAV_marlo_v1
