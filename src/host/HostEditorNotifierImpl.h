#pragma once

#include <tav/HostEditor.h>
#include <tav/HostEditorNotifier.h>

#include "foundation/SmallBlocks.h"
#include "host/ClientRegistry.h"
#include "host/PostponedChange.h"

#include <memory>
#include <vector>

namespace TAV_marlo_v1 {

struct HostEditor::Record : detail::ClientMemberships<HostEditor> {
    using ClientMemberships::ClientMemberships;
};

/// Held by its notifier, by every delivery under way, and by the enclosing notifier while that one
/// holds it back.
struct HostEditorNotifier::Record : detail::InSmallBlock {
    explicit Record(HostEditorNotifier& owner) noexcept
        : notifier(&owner)
    {
    }

    void addRef() noexcept { ++references; }
    void release()
    {
        if (--references == 0)
            delete this;
    }

    /// Whether changes wait: the notifier says so, or its scope does, or an earlier change still waits
    /// for a scope that the notifier has left meanwhile.
    bool isHeldBack() const;
    bool scopeIsBracketed() const noexcept { return scope && scope->activeChangeBracket(); }

    void deliverNow(PostponedChange const& change);
    void queue(PostponedChange const& change);
    /// Delivers the change or keeps it for later.
    void takeUp(PostponedChange const& change) noexcept;
    /// Enters this record into the enclosing notifier's list if that one's scope is what holds it back.
    void enlist();
    /// Hands the batch over unless it is held back. The notifier may die in the course of it.
    void deliverPending();
    void deliverHeldBack();
    /// Gives the record up when there is nothing left in it. The caller holds a reference.
    void dropIfIdle();
    /// The notifier dies: nobody is registered any more, and nothing is kept.
    void shutDown();

    HostEditorNotifier* notifier; // null once it died
    unsigned references = 1;
    bool enlisted = false; // in the list `heldBack` of an enclosing notifier
    ChangeBracketClient const* scope = nullptr;
    detail::ClientRegistry<HostEditor> editors;
    std::vector<std::unique_ptr<PostponedChange>> pending;
    std::vector<Record*> heldBack; // one reference each, in the order of their first pending change
};

} // namespace TAV_marlo_v1
