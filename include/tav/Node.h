#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/ErrorState.h>
#include <tav/Flaggable.h>
#include <tav/HostEditorNotifier.h>
#include <tav/Metadata.h>
#include <tav/Namable.h>
#include <tav/NodeStateFlags.h>
#include <tav/PortNotification.h>
#include <tav/ReferenceCounted.h>
#include <tav/String.h>
#include <tav/Types.h>

namespace TAV_marlo_v1 {

class CnxInfoArray;
class Compound;
class Container;
class NewPortHints;
class NodeUIHints;
class PortDataType;
class PortFilterCallback;
class PortList;
class PortProperties;

/// One vertex of a graph: a named object with ordered inputs and outputs, a type name, states,
/// messages and metadata. Always held by AddRefWrapper<Node>.
///
/// A node lives in the NodeList of one compound, or stands at the top of a container. It owns its
/// ports and, if it contains a sub-graph, its compound; the parent compound and the container are
/// plain pointers. It is also the notifier of its own changes. Runtimes derive from it.
class TAV_API Node : public ReferenceCounted,
                     public Namable,
                     public Flaggable<NodeFlags>,
                     public PortNotification,
                     public HostEditorNotifier,
                     public Metadata {
public:
    struct Impl; // the private record, known inside the library alone

    /// A null `name` leaves the name empty; a null container is a node without host.
    static AddRefWrapper<Node> createNew(Container* container, char const* name);
    explicit Node(Container* container);

protected:
    ~Node() override;

public:
    // ---- name and type

    /// A taken name becomes the next free one among the nodes of the compound; a name that the runtime
    /// refuses, a null and the present name change nothing. The node's compound is renamed with it.
    void setName(char const* name) override;

    /// The name of the definition the node was made from; "" when it has none.
    char const* getNodeTypeName() const noexcept;
    /// The type as shown to people: the type name unless one was given.
    char const* getNodeTypeDisplayName() const noexcept;
    /// Reported as eNodeMetadataChanged. A null `type` changes nothing.
    void setNodeTypeName(char const* type);
    void setNodeTypeName(char const* type, char const* displayName);
    /// The node as shown to people: its name, unless a derived class knows better.
    virtual String getNodeDisplayName() const;

    /// "/" for a node without parent compound; otherwise the names of the enclosing compounds below
    /// the top one and the own name, each behind a "/". Built anew.
    virtual Namable getFullPathName() const;

    // ---- place in the graph

    /// Not owned; null once the container died.
    Container* getContainer() const noexcept;
    /// Not owned; null outside a compound.
    Compound* getParentCompound() const noexcept;
    /// For the lists of the library and for runtimes that keep nodes elsewhere: neither asks nor tells.
    void setParentCompound(Compound* compound);
    bool isCompound() const noexcept;
    AddRefWrapper<Compound> getAsCompound() const;
    /// Makes this the owner node of the compound; an earlier compound loses its owner.
    void setOwnedCompound(AddRefWrapper<Compound> const& compound);

    using NodeCallback = void (*)(AddRefWrapper<Node> const& node, void* data);
    /// Calls back for the outermost enclosing node first and for this node last.
    void recurse_parent_first(NodeCallback callback, void* data);

    // ---- ports

    /// The ports of the list live as long as they are in it; the list lives as long as the node.
    PortList& inputs() noexcept;
    PortList const& inputs() const noexcept;
    PortList& outputs() noexcept;
    PortList const& outputs() const noexcept;
    /// Adds a port; a taken name becomes the next free one of that list.
    /// @return its index in that list, kNotFound after a veto
    unsigned createNodePort(PortIOType ioType, char const* name, AddRefWrapper<PortDataType> const& type,
                            PortProperties const& properties);
    AddRefWrapper<Port> getDefaultPort(PortIOType ioType, DefaultPortFilter filter) const;
    /// eAllCnx: those of the inputs, then those of the outputs; eInputCnx, eOutputCnx; empty otherwise.
    CnxInfoArray connections(CnxType type) const;

    // ---- messages and states

    /// Empty until the first message.
    AddRefWrapper<ErrorState> getErrorState();
    AddRefWrapper<ErrorState const> getErrorState() const;
    /// Adds a message, making the error state on first use.
    void addMessage(char const* subject, char const* text, MessageType type);
    bool hasMessage(MessageType type) const;
    /// As ErrorState::getMessagesAsString.
    String getMessagesByType(MessageType type) const;
    NodeStateFlags& stateFlags() noexcept;
    NodeStateFlags const& stateFlags() const noexcept;

    // ---- what derived classes answer

    virtual void getUIHints(NodeUIHints& hints) const;
    virtual void getNewPortHints(NewPortHints& hints, PortIOType ioType, AddRefWrapper<Port> const& neighbour) const;
    virtual bool isFanInSupported(AddRefWrapper<Port> const& port) const;
    /// An editor begins or ends an interaction with the node, such as a drag.
    virtual void setInteractionMode(bool on);
    /// Whether the port is part of the node's text.
    virtual bool portIsPersistable(AddRefWrapper<Port> const& port) const;

    // ---- text

    /// Graph text rooted at "tavNode". The filter acts on the first level of each port's children.
    String saveToString(PortFilterCallback* filter) const;

    // ---- notification

    void executeChange() override;
    Namable onGetParentFullPathName() const override;

    bool onPortAddConnection(AddRefWrapper<Port> const& port, AddRefWrapper<Port> const& other) override;
    void onPortConnectionAdded(AddRefWrapper<Port> const& port, AddRefWrapper<Port> const& other) override;
    void onPortConnectionRemoved(AddRefWrapper<Port> const& port, AddRefWrapper<Port> const& other) override;
    void onPortDataTypeChanged(AddRefWrapper<Port> const& port, AddRefWrapper<PortDataType> const& type) override;
    void onPortListPortAdded(PortList const& list, AddRefWrapper<Port> const& port) override;
    void onPortListPortRemoved(PortList const& list, AddRefWrapper<Port> const& port) override;
    void onPortListPortMoved(PortList const& list, unsigned from, unsigned to) override;
    void onPortValuesChanged(AddRefWrapper<Port> const& port, StringArray const& values) override;
    void onPortValuesReset(AddRefWrapper<Port> const& port) override;
    void onPortNameChanged(AddRefWrapper<Port> const& port, char const* name) override;
    void onPortExposureChanged(AddRefWrapper<Port> const& port, bool exposed) override;
    void onPortFanInStateChanged(AddRefWrapper<Port> const& port, bool fanIn) override;
    bool onPortSetMetaDataValue(AddRefWrapper<Port> const& port, char const* key, char const* value) override;
    void onPortSetFlag(AddRefWrapper<Port> const& port, PortFlags flag) override;
    void onPortClearFlag(AddRefWrapper<Port> const& port, PortFlags flag) override;

    /// Called when the node leaves its graph: cuts it off from everything it is connected to, together
    /// with what its compound holds, and reports eNodeDeleted.
    virtual void onThisNodeDeleted();

protected:
    /// Told after a state was set or taken away. Reports eNodeStateChanged.
    virtual void onStateFlagChanged(NodeStateFlag flag);
    /// Replaces the whole text of this node within any text the library writes. The base class says
    /// false: the library writes the text itself.
    /// @param text a complete "tavNode" document
    virtual bool onSaveToString(PortFilterCallback* filter, String& text) const;
    /// The text that the library writes by itself, for an override of onSaveToString to build upon.
    String saveWithoutHook(PortFilterCallback* filter) const;

    void onMetadataChanged() override;
    bool postponeNotification() const override;
    HostEditorNotifier* enclosingNotifier() const override;
    void deleteThis() override;

private:
    Node(Node const&) = delete;
    Node& operator=(Node const&) = delete;

    friend class NodeAccess;
    friend class NodeStateFlags;
    Impl* m_impl; // never null; src/graph/NodeImpl.h
};

} // namespace TAV_marlo_v1
