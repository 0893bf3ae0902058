#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Export.h>
#include <tav/Types.h>

namespace TAV_marlo_v1 {

class Annotation;
class Compound;
class Node;
class Port;

/// The receiver of change notifications that an editor implements; every callback does nothing by
/// default. Register it with any number of notifiers; its destructor leaves them all. Callbacks may
/// change the graph, register, unregister, and delete this editor or the notifier that is calling. What
/// a callback throws ends there: the change is made, and the next editor is told.
class TAV_API HostEditor {
public:
    HostEditor() noexcept = default;
    HostEditor(HostEditor const&) = delete;
    HostEditor& operator=(HostEditor const&) = delete;

    virtual ~HostEditor();
    virtual void tav_onConnectionChange(ECnxChangeType type, AddRefWrapper<Port> const& port,
                                        AddRefWrapper<Port> const& other);
    virtual void tav_onCompoundConnectionChange(ECnxChangeType type, AddRefWrapper<Port> const& port,
                                                AddRefWrapper<Port> const& other);
    virtual void tav_onCompoundPortChange(EPortChangeType type, AddRefWrapper<Port> const& port);
    virtual void tav_onNodeChange(ENodeChangeType type, AddRefWrapper<Compound> const& compound,
                                  AddRefWrapper<Node> const& node);
    virtual void tav_onNodePortChange(EPortChangeType type, AddRefWrapper<Port> const& port);
    virtual void tav_onAnnotationChange(EAnnotationChangeType type, AddRefWrapper<Compound> const& compound,
                                        AddRefWrapper<Annotation> const& annotation);

protected:
    /// The number of notifiers this editor is registered with.
    unsigned peekNotifierRegisteredWithCount() const noexcept;

private:
    friend class HostEditorNotifier;
    struct Record;
    Record* m_record = nullptr; // made on first registration
};

} // namespace TAV_marlo_v1
