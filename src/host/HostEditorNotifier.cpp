#include <tav/HostEditorNotifier.h>

#include "host/HostEditorNotifierImpl.h"
#include "host/NotifierAccess.h"

#include <new>
#include <utility>

namespace TAV_marlo_v1 {

namespace {

/// Keeps a record while editors are called, who may delete the notifier. Empty without a record.
template <class Record>
class Kept {
public:
    explicit Kept(Record* record) noexcept
        : m_record(record)
    {
        if (m_record)
            m_record->addRef();
    }
    Kept(Kept const&) = delete;
    Kept& operator=(Kept const&) = delete;
    ~Kept()
    {
        if (m_record)
            m_record->release();
    }
    Record* operator->() const noexcept { return m_record; }
    explicit operator bool() const noexcept { return m_record != nullptr; }

private:
    Record* m_record;
};

/// Whoever reports a change is in the middle of it, and often of more than this one: what an editor throws
/// ends there, and the next editor is told.
void tell(HostEditor& editor, PostponedChange const& change) noexcept
{
    try {
        change.execute(&editor);
    } catch (...) { // see above
    }
}

} // namespace

// ---- the record

bool HostEditorNotifier::Record::isHeldBack() const
{
    if (enlisted || scopeIsBracketed() || notifier->postponeNotification())
        return true;
    HostEditorNotifier const* const outer = notifier->enclosingNotifier();
    return outer && outer->m_record && outer->m_record->scopeIsBracketed();
}

void HostEditorNotifier::Record::deliverNow(PostponedChange const& change)
{
    Kept const kept(this);
    editors.tellEach([&change](auto const& recipient) {
        if (HostEditor* const editor = recipient.get())
            tell(*editor, change);
    });
}

void HostEditorNotifier::Record::queue(PostponedChange const& change)
{
    if (!pending.empty() && change.repeats(*pending.back()))
        return;
    // In this order: a change that waits without being enlisted would wait for ever, and keep its node alive.
    enlist();
    pending.push_back(change.keep());
}

void HostEditorNotifier::Record::enlist()
{
    if (enlisted)
        return;
    HostEditorNotifier* const outer = notifier->enclosingNotifier();
    if (!outer || !outer->m_record || !outer->m_record->scopeIsBracketed())
        return;
    outer->m_record->heldBack.push_back(this);
    addRef();
    enlisted = true;
}

void HostEditorNotifier::Record::deliverPending()
{
    if (pending.empty() || !notifier)
        return;
    if (isHeldBack()) {
        try {
            enlist();
        } catch (std::bad_alloc const&) {
            std::vector<std::unique_ptr<PostponedChange>> untold;
            untold.swap(pending);
        }
        return;
    }
    Kept const kept(this);
    // What editors change meanwhile is a matter of its own, delivered at once or queued afresh.
    std::vector<std::unique_ptr<PostponedChange>> batch;
    batch.swap(pending);
    editors.tellEach([&batch](auto const& recipient) {
        for (auto const& change : batch) {
            HostEditor* const editor = recipient.get();
            if (!editor)
                return;
            tell(*editor, *change);
        }
    });
}

void HostEditorNotifier::Record::deliverHeldBack()
{
    Kept const kept(this);
    std::vector<Record*> waiting;
    waiting.swap(heldBack);
    for (Record* const record : waiting) {
        // Only now: until its turn a notifier goes on queueing, so that its editors get all in order.
        record->enlisted = false;
        Kept const turn(record);
        record->release();
        record->deliverPending();
        record->dropIfIdle();
    }
}

void HostEditorNotifier::Record::dropIfIdle()
{
    // Two references: the notifier's and the caller's; nobody is in the middle of a delivery.
    if (!notifier || references != 2 || scope || enlisted || !editors.empty() || !pending.empty() || !heldBack.empty())
        return;
    notifier->m_record = nullptr;
    release();
}

void HostEditorNotifier::Record::shutDown()
{
    Kept const kept(this);
    notifier = nullptr;
    scope = nullptr;
    editors.clear();
    std::vector<std::unique_ptr<PostponedChange>> dropped;
    dropped.swap(pending);
    deliverHeldBack();
}

// ---- inside access

HostEditorNotifier::Record& NotifierAccess::record(HostEditorNotifier& notifier)
{
    if (!notifier.m_record)
        notifier.m_record = new Record(notifier);
    return *notifier.m_record;
}

NotifierAccess::Record* NotifierAccess::recordIfMemory(HostEditorNotifier& notifier) noexcept
{
    try {
        return &record(notifier);
    } catch (std::bad_alloc const&) {
        return nullptr;
    }
}

bool NotifierAccess::isIdle(HostEditorNotifier const& notifier) noexcept
{
    if (notifier.activeChangeBracket())
        return false;
    Record const* const record = notifier.m_record;
    return !record
           || (record->editors.empty() && record->pending.empty() && !record->enlisted && !record->scopeIsBracketed());
}

std::size_t NotifierAccess::pendingCount(HostEditorNotifier const& notifier) noexcept
{
    return notifier.m_record ? notifier.m_record->pending.size() : 0;
}

void NotifierAccess::dropPendingFrom(HostEditorNotifier& notifier, std::size_t mark) noexcept
{
    if (!notifier.m_record)
        return;
    // One by one from the end: the objects released here may queue or drop changes themselves.
    auto& pending = notifier.m_record->pending;
    Kept const kept(notifier.m_record);
    while (pending.size() > mark) {
        std::unique_ptr<PostponedChange> const last = std::move(pending.back());
        pending.pop_back();
    }
}

void NotifierAccess::setScope(HostEditorNotifier& notifier, ChangeBracketClient const* scope)
{
    record(notifier).scope = scope;
}

void NotifierAccess::deliverScope(HostEditorNotifier& notifier)
{
    Kept const kept(&record(notifier));
    kept->deliverPending();
    kept->deliverHeldBack();
}

// ---- the notifier

HostEditorNotifier::~HostEditorNotifier()
{
    if (Record* const record = std::exchange(m_record, nullptr)) {
        record->shutDown();
        record->release();
    }
}

void HostEditorNotifier::executeChange()
{
    if (Kept const kept(m_record); kept) {
        kept->deliverPending();
        kept->dropIfIdle();
    }
}

bool HostEditorNotifier::postponeNotification() const
{
    return activeChangeBracket();
}

HostEditorNotifier* HostEditorNotifier::enclosingNotifier() const
{
    return nullptr;
}

/// Where memory ends a change that had to be kept for later is not told: the change itself is complete, and
/// whoever made it must be able to go on.
void HostEditorNotifier::Record::takeUp(PostponedChange const& change) noexcept
{
    Kept const kept(this);
    try {
        if (isHeldBack())
            queue(change);
        else
            deliverNow(change);
    } catch (std::bad_alloc const&) { // see above
    }
}

/// The road of every notification: the wider scope hears it first, then this notifier's own editors
/// do, or it waits. `tellOuter` may delete this notifier.
template <class Change, class TellOuter, class... Arguments>
void HostEditorNotifier::send(TellOuter tellOuter, Arguments const&... arguments)
{
    HostEditorNotifier* const outer = enclosingNotifier();
    bool const outerHolds = outer && outer->m_record && outer->m_record->scopeIsBracketed();
    if (!outerHolds && NotifierAccess::isIdle(*this) && !postponeNotification()) {
        if (outer)
            tellOuter(*outer);
        return;
    }

    Kept const kept(NotifierAccess::recordIfMemory(*this));
    Change const change(arguments...);
    if (outer)
        tellOuter(*outer);
    if (kept && kept->notifier)
        kept->takeUp(change);
}

void HostEditorNotifier::notifyConnectionChange(ECnxChangeType type, AddRefWrapper<Port> const& port,
                                                AddRefWrapper<Port> const& other)
{
    send<PostponedNodeConnectionChange>(
        [&](HostEditorNotifier& outer) { outer.notifyConnectionChange(type, port, other); }, type, port, other);
}

void HostEditorNotifier::notifyCompoundConnectionChange(ECnxChangeType type, AddRefWrapper<Port> const& port,
                                                        AddRefWrapper<Port> const& other)
{
    send<PostponedCompoundConnectionChange>(
        [&](HostEditorNotifier& outer) { outer.notifyCompoundConnectionChange(type, port, other); }, type, port, other);
}

void HostEditorNotifier::notifyCompoundPortChange(EPortChangeType type, AddRefWrapper<Port> const& port)
{
    send<PostponedCompoundPortChange>([&](HostEditorNotifier& outer) { outer.notifyCompoundPortChange(type, port); },
                                      type, port);
}

void HostEditorNotifier::notifyNodeChange(ENodeChangeType type, AddRefWrapper<Compound> const& compound,
                                          AddRefWrapper<Node> const& node)
{
    send<PostponedNodeChange>([&](HostEditorNotifier& outer) { outer.notifyNodeChange(type, compound, node); }, type,
                              compound, node);
}

void HostEditorNotifier::notifyNodePortChange(EPortChangeType type, AddRefWrapper<Port> const& port)
{
    send<PostponedNodePortChange>([&](HostEditorNotifier& outer) { outer.notifyNodePortChange(type, port); }, type,
                                  port);
}

void HostEditorNotifier::notifyAnnotationChange(EAnnotationChangeType type, AddRefWrapper<Compound> const& compound,
                                                AddRefWrapper<Annotation> const& annotation)
{
    send<PostponedAnnotationChange>(
        [&](HostEditorNotifier& outer) { outer.notifyAnnotationChange(type, compound, annotation); }, type, compound,
        annotation);
}

void HostEditorNotifier::registerEditor(HostEditor* editor)
{
    if (!editor)
        return;
    if (!editor->m_record)
        editor->m_record = new HostEditor::Record(*editor);
    NotifierAccess::record(*this).editors.add(*editor->m_record);
}

void HostEditorNotifier::unregisterEditor(HostEditor* editor)
{
    if (!editor || !editor->m_record || !m_record)
        return;
    Kept const kept(m_record);
    kept->editors.remove(*editor->m_record);
    kept->dropIfIdle();
}

} // namespace TAV_marlo_v1
