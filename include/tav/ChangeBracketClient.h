#pragma once

#include <tav/ChangeBracket.h>
#include <tav/Export.h>

namespace TAV_marlo_v1 {

/// Counts open brackets; executeChange() runs when the outermost one closes.
class TAV_API ChangeBracketClient {
public:
    ChangeBracketClient() noexcept = default;
    /// Brackets belong to one object: a copy starts without any.
    ChangeBracketClient(ChangeBracketClient const&) noexcept {}
    ChangeBracketClient& operator=(ChangeBracketClient const&) noexcept { return *this; }

    virtual ~ChangeBracketClient();

protected:
    virtual void executeChange();

public:
    void beginChange();
    /// Without a matching beginChange the count wraps and stays open for good.
    void endChange();
    bool activeChangeBracket() const noexcept;

    /// Keeps a bracket open on the client's own stack.
    void pushChangeBracket(ChangeBracket&& bracket);
    /// Drops the last pushed bracket, which may close the batch. @return false when there is none
    bool popChangeBracket();

private:
    friend class ChangeBracket;
    friend class BracketAccess;
    struct Record;
    Record* m_record = nullptr; // made on first use; shared with open brackets, which may outlive the client
};

} // namespace TAV_marlo_v1
