#pragma once

#include <tav/ChangeBracketClient.h>
#include <tav/HostEditorNotifier.h>

#include <cstddef>

namespace TAV_marlo_v1 {

/// What the library itself may ask of a bracket client.
class BracketAccess {
public:
    /// Made on first use.
    static ChangeBracketClient::Record& record(ChangeBracketClient& client);
    /// `hook` runs whenever the outermost bracket on the client closes, before executeChange().
    static void setClosedHook(ChangeBracketClient& client, void (*hook)(void* context), void* context);
};

/// What the library itself may ask of a notifier.
class NotifierAccess {
public:
    using Record = HostEditorNotifier::Record;

    /// Nobody is registered, nothing is pending and no bracket is open on the notifier: unless a
    /// wider scope listens, a notification would be for nothing. A test of two pointers in the usual case.
    static bool isIdle(HostEditorNotifier const& notifier) noexcept;

    /// A mark in the pending list, for dropPendingFrom.
    static std::size_t pendingCount(HostEditorNotifier const& notifier) noexcept;
    /// Takes back what was queued since pendingCount() gave `mark`. Editors that got changes at once
    /// are not told again.
    static void dropPendingFrom(HostEditorNotifier& notifier, std::size_t mark) noexcept;

    /// Made on first use.
    static Record& record(HostEditorNotifier& notifier);
    /// Null where memory ends.
    static Record* recordIfMemory(HostEditorNotifier& notifier) noexcept;
    /// While a bracket is open on `scope`, the notifier and those that name it as their enclosing one
    /// keep their changes. `scope` must outlive the notifier, or be taken away with null.
    static void setScope(HostEditorNotifier& notifier, ChangeBracketClient const* scope);
    /// The end of a bracket on the scope: first the notifier's own editors get their batch, then those
    /// of each notifier that was held back, in the order of their first pending change.
    static void deliverScope(HostEditorNotifier& notifier);
};

} // namespace TAV_marlo_v1
