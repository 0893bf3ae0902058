#include <tav/ChangeBracketClient.h>

#include "host/ChangeBracketClientImpl.h"
#include "host/NotifierAccess.h"

namespace TAV_marlo_v1 {

ChangeBracketClient::Record& BracketAccess::record(ChangeBracketClient& client)
{
    if (!client.m_record)
        client.m_record = new ChangeBracketClient::Record(client);
    return *client.m_record;
}

void BracketAccess::setClosedHook(ChangeBracketClient& client, void (*hook)(void* context), void* context)
{
    ChangeBracketClient::Record& brackets = record(client);
    brackets.onClosed = hook;
    brackets.onClosedContext = context;
}

ChangeBracketClient::~ChangeBracketClient()
{
    if (!m_record)
        return;
    // Brackets on this very client end without effect from here on; those on others take effect.
    m_record->client = nullptr;
    std::vector<ChangeBracket> own;
    own.swap(m_record->stack);
    while (!own.empty())
        own.pop_back();
    m_record->release();
}

void ChangeBracketClient::executeChange()
{
}

void ChangeBracketClient::beginChange()
{
    ++BracketAccess::record(*this).depth;
}

void ChangeBracketClient::endChange()
{
    BracketAccess::record(*this).close();
}

bool ChangeBracketClient::activeChangeBracket() const noexcept
{
    return m_record && m_record->depth != 0;
}

void ChangeBracketClient::pushChangeBracket(ChangeBracket&& bracket)
{
    BracketAccess::record(*this).stack.push_back(std::move(bracket));
}

bool ChangeBracketClient::popChangeBracket()
{
    if (!m_record || m_record->stack.empty())
        return false;
    // The stack is in order again before the bracket ends, which may call anybody.
    ChangeBracket const last(std::move(m_record->stack.back()));
    m_record->stack.pop_back();
    return true;
}

} // namespace TAV_marlo_v1
