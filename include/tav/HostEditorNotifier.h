#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/ChangeBracketClient.h>
#include <tav/Types.h>

namespace TAV_marlo_v1 {

class Annotation;
class Compound;
class HostEditor;
class Node;
class Port;

/// The sender of change notifications. While a bracket is open on it, changes are kept and handed
/// over when the outermost bracket closes, editor by editor in the order of registration; otherwise
/// they are delivered at once. A change equal to the one before it is kept once, except connections.
/// Where memory ends, a change that would have to be kept is not told.
class TAV_API HostEditorNotifier : public ChangeBracketClient {
public:
    HostEditorNotifier() noexcept = default;
    /// Registrations belong to one object: a copy starts without any.
    HostEditorNotifier(HostEditorNotifier const&) noexcept
        : ChangeBracketClient()
    {
    }
    HostEditorNotifier& operator=(HostEditorNotifier const&) noexcept { return *this; }

    ~HostEditorNotifier() override;
    /// Delivers what was kept, unless something still holds it back.
    void executeChange() override;
    virtual void notifyCompoundConnectionChange(ECnxChangeType type, AddRefWrapper<Port> const& port,
                                                AddRefWrapper<Port> const& other);
    virtual void notifyCompoundPortChange(EPortChangeType type, AddRefWrapper<Port> const& port);
    virtual void notifyNodeChange(ENodeChangeType type, AddRefWrapper<Compound> const& compound,
                                  AddRefWrapper<Node> const& node);
    virtual void notifyNodePortChange(EPortChangeType type, AddRefWrapper<Port> const& port);
    virtual void notifyAnnotationChange(EAnnotationChangeType type, AddRefWrapper<Compound> const& compound,
                                        AddRefWrapper<Annotation> const& annotation);

protected:
    /// Whether changes are kept for later: a bracket is open on this notifier.
    virtual bool postponeNotification() const;
    /// A notifier of a wider scope that hears every change of this one before this one's own editors
    /// do; null for none.
    virtual HostEditorNotifier* enclosingNotifier() const;

public:
    void notifyConnectionChange(ECnxChangeType type, AddRefWrapper<Port> const& port, AddRefWrapper<Port> const& other);

    /// The editor is not owned; registering it again changes nothing.
    void registerEditor(HostEditor* editor);
    void unregisterEditor(HostEditor* editor);

private:
    friend class HostEditor;
    friend class NotifierAccess;
    // Defined where it is used, in the notifier's own source.
    template <class Change, class TellOuter, class... Arguments>
    void send(TellOuter tellOuter, Arguments const&... arguments);

    struct Record;
    Record* m_record = nullptr; // made on first use; outlives the notifier while it delivers
};

} // namespace TAV_marlo_v1
