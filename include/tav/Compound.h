#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Annotation.h>
#include <tav/ChangeBracketClient.h>
#include <tav/CnxInfoArray.h>
#include <tav/Flaggable.h>
#include <tav/Metadata.h>
#include <tav/Namable.h>
#include <tav/Node.h>
#include <tav/PortNotification.h>
#include <tav/ReferenceCounted.h>
#include <tav/StatusStr.h>
#include <tav/String.h>
#include <tav/StringArray.h>
#include <tav/Types.h>

#include <memory>

namespace TAV_marlo_v1 {

class AnnotationList;
class NodeList;

/// A sub-graph: nodes, the compound's own ports seen from inside, the connections between them,
/// and annotations. Always held by AddRefWrapper<Compound>.
///
/// A compound belongs to one owner node, which holds it; the way back is a plain pointer, null once
/// the node died. The owner node's ports are the compound's outside ports; each has a twin inside of
/// the opposite direction. The two are separate ports with their own connections and values whose
/// name, type, options, metadata and place are kept in step.
///
/// Runtimes derive from it and override the factory hooks, which here make nothing.
class TAV_API Compound : public ReferenceCounted,
                         public Namable,
                         public Flaggable<CompoundFlags>,
                         public PortNotification,
                         public ChangeBracketClient,
                         public Metadata {
public:
    struct Impl; // the private record, known inside the library alone

    /// Makes the compound of the owner node and sets the name, if one is given, on both.
    static AddRefWrapper<Compound> createNew(AddRefWrapper<Node> const& owner, char const* name);

protected:
    /// For derived classes; whoever constructs one puts it into a handle and calls owner->setOwnedCompound.
    Compound(AddRefWrapper<Node> const& owner, char const* name);
    ~Compound() override;

public:
    // ---- structure

    AddRefWrapper<Node> getAsNode() const;
    /// A compound and its owner node always bear the same name.
    char const* getName() const override;
    void setName(char const* name) override;

    /// The lists live as long as the compound.
    NodeList& nodes() noexcept;
    NodeList const& nodes() const noexcept;
    PortList& innerInputs() noexcept;
    PortList const& innerInputs() const noexcept;
    PortList& innerOutputs() noexcept;
    PortList const& innerOutputs() const noexcept;
    AnnotationList& annotations() noexcept;
    AnnotationList const& annotations() const noexcept;

    /// Calls back for the outermost enclosing node first and for the owner node last.
    void recurse_parent_first(Node::NodeCallback callback, void* data);

    // ---- compound ports

    /// Makes the outside port and its twin, or neither. A taken name becomes the next free one.
    /// @return the index of the outside port, kNotFound after a veto of either side
    unsigned createCompoundPort(PortIOType ioType, char const* name, AddRefWrapper<PortDataType> const& type,
                                PortProperties const& properties);
    /// Cuts the connections of both sides of the port, telling as any removal does, and removes both.
    /// Either side may be given. @return false, with both ports in place, for a stranger or after a veto
    bool deleteCompoundPort(AddRefWrapper<Port> const& port);
    /// Makes a compound port of the same direction, type, options, values and metadata as a port of a
    /// node in here, and connects its inside with that port. A null `name` takes the port's name.
    /// @return the outside port, empty for a stranger or after a veto
    AddRefWrapper<Port> createLinkedPort(AddRefWrapper<Port> const& port, char const* name = nullptr);
    /// The other side of a port, or of a child of a port, of this compound; empty for any other port.
    AddRefWrapper<Port> getReversePort(AddRefWrapper<Port> const& port) const;
    /// The IO node that shows this inner port; empty when none does.
    AddRefWrapper<Node> getAssociatedIONode(AddRefWrapper<Port> const& port) const;
    virtual void getNewPortHints(NewPortHints& hints, PortIOType ioType, AddRefWrapper<Port> const& neighbour) const;
    /// Whether the ports are given by a definition and not the user's to change. Here: no.
    virtual bool hasPresetPortList() const;
    /// The kinds of input that a user may add, one child list each. Here: none.
    virtual bool getCustomNewInputPorts(PropertyList& ports) const;

    // ---- nodes

    /// The factory hooks make the object and add it to this compound; here they answer empty.
    virtual AddRefWrapper<Node> createIONode(NodeFlags flags);
    virtual AddRefWrapper<Compound> createNewCompound(char const* name);
    virtual AddRefWrapper<Node> createNodeFromPreset(char const* path);
    /// @return the removed node; empty when there is none of that name, or after a veto
    AddRefWrapper<Node> removeNode(char const* name);

    // ---- connections

    /// Connects by port names; the owner node stands for the compound's own ports seen from inside.
    /// Success says that both ports exist, whatever addConnection answered.
    StatusStr makeConnection(AddRefWrapper<Node> const& fromNode, char const* outputName,
                             AddRefWrapper<Node> const& toNode, char const* inputName);
    /// The connections of the named nodes that the type selects, each once, in the order of the names:
    /// of a node those at the inputs, then those at the outputs. eThroughCnx needs no names.
    CnxInfoArray searchConnections(CnxType type, StringArray const& nodeNames) const;

    // ---- annotations

    AddRefWrapper<Annotation> createCompoundAnnotation(Annotation::AnnotationType type, char const* name);
    bool removeAnnotation(char const* name);
    bool removeAnnotation(AddRefWrapper<Annotation> const& annotation);
    /// A sticky note "sticky_note_<name>" with the backdrop's text, place and colour.
    AddRefWrapper<Annotation> createStickyNoteFromBackdrop(AddRefWrapper<Annotation> const& backdrop);

    // ---- state

    /// Whether a user may change what is inside: not of a referenced or imported compound, nor inside one.
    virtual bool isEditable() const;
    /// Whether the compound may be replaced by its contents: it is editable and inside another compound.
    virtual bool isExplodable() const;
    bool isImported() const;
    bool isReferenced() const;
    void setIsReferenced(bool referenced);
    /// Whether these can be grouped: at least one item, all of this compound, no IO node, editable.
    virtual bool canCreateCompound(NodeList const& nodes, AnnotationList const& annotations) const;
    virtual bool canResetLocalCompoundToFactory() const;
    virtual bool resetLocalCompoundToFactory();
    virtual char const* getSpecializedCompoundTypeName() const;
    /// The number of nodes in here, at any depth, that carry such a message. Constant time.
    unsigned getNumberOfNodesWithMessage(MessageType type) const;
    /// Hands this compound (publishGraph: as the whole graph) to Runtime::doPublishCompound.
    /// @return false when there is no runtime
    bool publish(void* data = nullptr);
    bool publishGraph(void* data = nullptr);
    /// As publish, with the path of the file to write, UTF-8, as the data.
    bool saveAs(char const* path);
    /// Appends the debug dump, one line an entry.
    void debug(StringArray& lines) const;
    /// Walks everything in the compound and appends, by path, what does not agree.
    /// @return whether nothing is wrong
    bool checkConsistency(StringArray& problems) const;
    /// Delivers what was held back by a bracket on this compound.
    void executeChange() override;

    // ---- text

    /// Whether the outside port is part of the compound's text.
    virtual bool portIsPersistable(AddRefWrapper<Port> const& port) const;
    /// Graph text rooted at "tavCompound", with everything inside.
    String saveToString(PortFilterCallback* filter) const;
    /// Graph text rooted at "sub_root" with the named items and the connections that `mode` selects.
    String saveItemsToString(StringArray const& nodeNames, StringArray const& annotationNames, ESaveMode mode) const;

    // Readers are all or nothing: text that can't be used, or an item that is refused, leaves the graph
    // as it was and gives one message with line and column, what was found and what was expected.

    /// Adds the node of a "tavNode" text. @return empty on failure
    AddRefWrapper<Node> createNodeFromString(char const* text, String& errors);
    /// Adds the compound of a "tavCompound" text. @return empty on failure
    AddRefWrapper<Compound> createNewCompoundFromString(char const* text, String& errors);
    /// Adds the items of a "sub_root" text. Appends the names that they got, and the names that the
    /// nodes had in the text, index by index.
    bool createItemsFromString(char const* text, StringArray& createdNodeNames, StringArray& createdAnnotationNames,
                               StringArray* sourceNodeNames = nullptr, String* errors = nullptr);
    /// Replaces name, type, flags, metadata, ports and contents by those of a "tavCompound" text.
    /// Editors are told of what goes and of what comes; nodes that go are not asked about.
    StatusStr restoreFromString(char const* text);

    // Objects that text is read into are made by these hooks, outside of any graph and without ports;
    // they join the graph once the whole text is known to be good.

    /// A node for text of that type. @return empty when the type is unknown: then a plain node with a
    /// warning stands in. Here: a plain Node if the runtime has a definition of that name.
    virtual AddRefWrapper<Node> createBareNode(char const* typeName, NodeFlags flags);
    /// The owner node for a compound of that type, which createBareCompound gets next. Here: a plain Node.
    virtual AddRefWrapper<Node> createBareOwner(char const* typeName);
    /// The compound object of `owner`, already set as its owned compound. Here: a plain Compound.
    virtual AddRefWrapper<Compound> createBareCompound(AddRefWrapper<Node> const& owner, char const* typeName);

    // ---- hooks: asked by and told from the lists

    virtual bool onNodeAdd(AddRefWrapper<Node> const& node);
    /// Gives a first IO node the inner ports, and reports eNodeAdded.
    virtual void onNodeAdded(AddRefWrapper<Node> const& node);
    /// Removing an IO node deletes the compound ports it shows.
    virtual bool onNodeRemove(AddRefWrapper<Node> const& node);
    virtual void onNodeRemoved(AddRefWrapper<Node> const& node);
    virtual bool onAnnotationAdd(AddRefWrapper<Annotation> const& annotation);
    virtual void onAnnotationAdded(AddRefWrapper<Annotation> const& annotation);
    virtual bool onAnnotationRemove(AddRefWrapper<Annotation> const& annotation);
    virtual void onAnnotationRemoved(AddRefWrapper<Annotation> const& annotation);
    virtual bool onAnnotationSetName(AddRefWrapper<Annotation> const& annotation, char const* name);
    /// `name` is the new name.
    virtual void onAnnotationNameChanged(AddRefWrapper<Annotation> const& annotation, char const* name);
    virtual void onAnnotationStateChanged(AddRefWrapper<Annotation> const& annotation);

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

protected:
    /// Replaces the whole text of this compound, as Node::onSaveToString does for a node.
    /// @param text a complete "tavCompound" document
    virtual bool onSaveToString(PortFilterCallback* filter, String& text) const;
    String saveWithoutHook(PortFilterCallback* filter) const;

    void onMetadataChanged() override;

private:
    Compound(Compound const&) = delete;
    Compound& operator=(Compound const&) = delete;

    friend class CompoundAccess;
    friend class Node;
    std::unique_ptr<Impl> m_impl; // never null; src/graph/CompoundImpl.h
};

} // namespace TAV_marlo_v1
