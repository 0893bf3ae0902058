#pragma once

#include "persistence/ConnectionReader.h"
#include "persistence/DataTypeLookup.h"
#include "persistence/ElementSource.h"
#include "persistence/MetadataReader.h"
#include "persistence/PortReader.h"

#include <tav/Annotation.h>
#include <tav/Compound.h>
#include <tav/Node.h>
#include <tav/StringArray.h>

#include <memory>
#include <string>
#include <vector>

namespace TAV_marlo_v1 {

/// What was read for a compound, outside of any graph: nodes that are complete with their ports, contents
/// and the connections among them, and annotations.
struct StagedItems {
    std::vector<AddRefWrapper<Node>> nodes;
    std::vector<AddRefWrapper<Annotation>> annotations;
    StringArray sourceNames; // of the nodes, as in the text

    // The compound that stands in for the one that the items are read for. Its inner ports are those
    // that IO nodes in the text show, both sides of each, and those that connections name, without an
    // outside; they hold these connections.
    AddRefWrapper<Node> standInOwner;
    AddRefWrapper<Compound> standIn;
    std::vector<ConnectionReader::InnerWarning> innerWarnings;
};

/// Reads graph text in one pass into objects that are in no graph. Nothing that exists is changed, and
/// apart from the hooks that make bare objects nobody is asked or told. Depth of the text costs no stack.
class GraphReader final : private ElementHandler {
public:
    /// `target` is the compound that the items are for; its hooks make them.
    explicit GraphReader(Compound& target);

    /// Each takes a text with that root. @return false for a text that can't be used; error() says why
    bool readNode(char const* text, StagedItems& items);
    bool readCompound(char const* text, StagedItems& items);
    bool readItems(char const* text, StagedItems& items);
    std::string const& error() const noexcept { return m_error; }

private:
    /// The innermost element that is open. "Filled" is an item that has got its content.
    enum class State : unsigned char {
        Document,
        Node,
        NodePorts,
        Compound,
        OwnerMetadata,
        CompoundPorts,
        ChildGraph,
        SubRoot,
        Nodes,
        NodeItem,
        CompoundItem,
        FilledItem,
        Backdrops,
        StickyNotes,
        Annotation,
        Connections,
        Connection
    };

    /// A "sub_root" that is being read, or the place of a single node.
    struct OpenGraph {
        explicit OpenGraph(Compound& into)
            : compound(&into)
            , connections(into)
        {
        }
        Compound* compound;
        ConnectionReader connections;
        NodeFlags ioNodes = eNoNodeFlags; // the kinds that were read
        unsigned joinedAsNamed = 0;       // nodes in the compound under the names that they have in the text
    };

    /// What the ports of the open "tavNode" are.
    enum class IONode : unsigned char {
        No,      ///< all its own
        Shows,   ///< on one side the compound's inner ports
        IsSecond ///< none on that side: another IO node shows them
    };

    bool read(char const* text, std::string_view root, StagedItems& items);

    void startElement(std::string_view name, ElementAttributes const& attributes) override;
    void characters(std::string_view part) override;
    void endElement() override;
    void startOver() override;

    bool enter(State state, std::string_view name, ElementAttributes const& attributes);
    bool enterRoot(std::string_view name, ElementAttributes const& attributes);
    bool enterPartOfNode(std::string_view name);
    bool enterPartOfCompound(std::string_view name);
    bool enterPartOfSubRoot(std::string_view name);
    bool enterItem(std::string_view name, std::string_view wanted, ElementAttributes const& attributes);
    void enterNode(ElementAttributes const& attributes);
    void enterCompound(ElementAttributes const& attributes);
    void enterSubRoot();
    bool enterNodePort(ElementAttributes const& attributes);
    void enterCompoundPort(ElementAttributes const& attributes);
    void enterAnnotation(Annotation::AnnotationType type, std::string_view name, ElementAttributes const& attributes);
    void enterConnection(ElementAttributes const& attributes);
    void enterMetadata(Metadata& object);
    void leave(State state);
    void leaveNode();
    void leaveCompound();
    void leaveAnnotation();

    AddRefWrapper<Node> makeNode(ItemAttributes const& item);
    AddRefWrapper<Compound> makeCompound(AddRefWrapper<Node> const& owner, ItemAttributes const& item);
    PortAttributes readDirectedPort(ElementAttributes const& attributes);
    IONode roleOf(Node const& node) const;
    void place(AddRefWrapper<Node> const& node);
    OpenGraph& graph() noexcept { return *m_graphs.back(); }
    /// The items of the graph opened first are not put into its compound.
    bool isStaging() const noexcept { return m_graphs.size() == 1; }
    Compound& maker() noexcept { return isStaging() ? m_target : *graph().compound; }
    void leaveGraph();

    Compound& m_target;
    Container* m_container = nullptr;
    StagedItems* m_items = nullptr;
    std::string_view m_root;
    std::string m_error;

    ElementSource m_source{*this};
    DataTypeLookup m_types;
    MetadataReader m_metadata{m_source};
    PortReader m_ports{m_source, m_types};

    std::vector<State> m_states;
    unsigned m_skipDepth = 0; // within an element that is not known
    std::vector<std::unique_ptr<OpenGraph>> m_graphs;
    std::vector<AddRefWrapper<Node>> m_owners; // of the open compounds
    AddRefWrapper<Node> m_node;                // the open "tavNode"
    IONode m_role = IONode::No;
    AddRefWrapper<Annotation> m_annotation;
};

} // namespace TAV_marlo_v1
