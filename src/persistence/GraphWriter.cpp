#include "persistence/GraphWriter.h"

#include "graph/AnnotationListImpl.h"
#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PortImpl.h"
#include "persistence/ConnectionWriter.h"
#include "persistence/EmbeddedText.h"
#include "persistence/GraphVocabulary.h"
#include "persistence/MetadataWriter.h"

#include <string>
#include <typeinfo>
#include <unordered_set>

namespace TAV_marlo_v1 {

using namespace graphtext;

namespace {

template <class Class, class Object>
bool isExactly(Object const& object)
{
    return typeid(object) == typeid(Class);
}

/// Whether the text is what the library itself writes for the store.
bool isLibraryText(String const& text, PropertyList const& store)
{
    ElementSink own;
    writeMetadataStore(own, store);
    return own.bytes() == std::string_view(text.toChar(), text.size());
}

template <class Owner>
void writePorts(PortWriter& writer, PortList const& list, Owner const& owner, PortFilterCallback* filter)
{
    PortAccess::impl(list).ports.forEach([&](Port& port) {
        if (owner.portIsPersistable(&port))
            writer.writePort(port, filter);
    });
}

std::vector<Node*> allNodes(Compound const& compound)
{
    std::vector<Node*> nodes;
    nodes.reserve(compound.nodes().size());
    NodeAccess::impl(compound.nodes()).nodes.forEach([&nodes](Node& node) { nodes.push_back(&node); });
    return nodes;
}

/// Those of the names, each once, in the order of the names.
template <class Item>
std::vector<Item*> namedItems(detail::NamedList<Item> const& list, StringArray const& names)
{
    std::vector<Item*> items;
    items.reserve(names.size());
    std::unordered_set<Item const*> known;
    for (char const* const name : names) {
        Item* const item = list.find(name);
        if (item && known.insert(item).second)
            items.push_back(item);
    }
    return items;
}

std::vector<Node*> namedNodes(Compound const& compound, StringArray const& names)
{
    return namedItems(NodeAccess::impl(compound.nodes()).nodes, names);
}

std::vector<Annotation*> allAnnotations(Compound const& compound)
{
    std::vector<Annotation*> annotations;
    AnnotationAccess::impl(compound.annotations()).annotations.forEach([&annotations](Annotation& annotation) {
        annotations.push_back(&annotation);
    });
    return annotations;
}

std::vector<Annotation*> namedAnnotations(Compound const& compound, StringArray const& names)
{
    return namedItems(AnnotationAccess::impl(compound.annotations()).annotations, names);
}

} // namespace

void GraphWriter::writeNode(Node const& node, PortFilterCallback* filter, Root root)
{
    if (root == eAskingHook && writeOwnText<NodeAccess>(node, filter))
        return;
    m_sink.start(kNodeRoot);
    m_sink.attribute(kName, node.getName());
    m_sink.attribute(kType, node.getNodeTypeName());
    m_sink.attribute(kFlag, static_cast<std::uint32_t>(node.getFlags()));
    writeMetadata(node, isExactly<Node>(node));
    m_sink.start(kPorts);
    writePorts(m_ports, node.inputs(), node, filter);
    writePorts(m_ports, node.outputs(), node, filter);
    m_sink.end();
    m_sink.end();
}

void GraphWriter::writeCompound(Compound const& compound, PortFilterCallback* filter, Root root)
{
    if (root == eAskingHook && writeOwnText<CompoundAccess>(compound, filter))
        return;
    beginCompound(compound, filter);
    writeOpenGraphs();
    endCompound();
}

void GraphWriter::writeItems(Compound const& compound, StringArray const& nodeNames, StringArray const& annotationNames,
                             ESaveMode mode)
{
    beginGraph(compound, namedNodes(compound, nodeNames));
    writeOpenGraphs();
    m_sink.end(); // nodes
    std::vector<Node*> const nodes = std::move(m_open.back().nodes);
    m_open.pop_back();

    if (!annotationNames.empty())
        writeAnnotations(namedAnnotations(compound, annotationNames));
    if (mode != eSaveNoConnections)
        ConnectionWriter(m_sink, NodeSelection(nodes)).writeConnections(compound, nodes, mode);
    m_sink.end(); // sub_root
}

void GraphWriter::beginGraph(Compound const& compound, std::vector<Node*> nodes)
{
    m_open.push_back({&compound, std::move(nodes)});
    m_sink.start(kSubRoot);
    m_sink.start(kNodes);
}

/// Writes the nodes of the graph opened last, and of every graph that is opened on the way. Leaves that
/// graph open.
void GraphWriter::writeOpenGraphs()
{
    std::size_t const depth = m_open.size();
    while (true) {
        OpenGraph& graph = m_open.back();
        if (graph.next < graph.nodes.size()) {
            writeItem(*graph.nodes[graph.next++]); // may open another graph
        } else if (m_open.size() == depth) {
            return;
        } else {
            endCompound();
            m_sink.end(); // compound
        }
    }
}

void GraphWriter::writeItem(Node& node)
{
    Compound const* const compound = NodeAccess::impl(node).owned.get();
    m_sink.start(compound ? kCompound : kNode);
    if (!compound) {
        writeNode(node, nullptr, eAskingHook);
    } else if (!writeOwnText<CompoundAccess>(*compound, nullptr)) {
        beginCompound(*compound, nullptr);
        return; // writeOpenGraphs goes on with what is inside
    }
    m_sink.end();
}

/// Writes the compound up to its nodes.
void GraphWriter::beginCompound(Compound const& compound, PortFilterCallback* filter)
{
    Node const* const owner = CompoundAccess::owner(compound);
    m_sink.start(kCompoundRoot);
    m_sink.attribute(kName, compound.getName());
    m_sink.attribute(kType, owner ? owner->getNodeTypeName() : "");
    m_sink.attribute(kFlag, static_cast<std::uint32_t>(compound.getFlags() & ~eDeletingIOPorts));
    writeMetadata(compound, isExactly<Compound>(compound));
    if (owner)
        writeNodeMetadata(*owner);
    m_sink.start(kPorts);
    if (owner) {
        writePorts(m_ports, owner->inputs(), compound, filter);
        writePorts(m_ports, owner->outputs(), compound, filter);
    }
    m_sink.end();
    m_sink.start(kChildGraph);
    beginGraph(compound, allNodes(compound));
}

/// Writes the compound opened last from behind its nodes to its end.
void GraphWriter::endCompound()
{
    OpenGraph const graph = std::move(m_open.back());
    m_open.pop_back();
    Compound const& compound = *graph.compound;
    m_sink.end(); // nodes
    if (!compound.annotations().empty())
        writeAnnotations(allAnnotations(compound));
    ConnectionWriter(m_sink, NodeSelection(compound)).writeConnections(compound, graph.nodes, eSaveAllConnections);
    m_sink.end(); // sub_root
    m_sink.end(); // child_graph
    m_sink.end(); // tavCompound
}

/// Element "backdrops" with the backdrops, be there none; then the sticky notes, if there are any.
void GraphWriter::writeAnnotations(std::vector<Annotation*> const& annotations)
{
    bool hasStickyNotes = false;
    m_sink.start(kBackdrops);
    for (Annotation const* const annotation : annotations) {
        if (annotation->getType() == Annotation::eStickyNote)
            hasStickyNotes = true;
        else
            writeAnnotation(*annotation);
    }
    m_sink.end();
    if (!hasStickyNotes)
        return;
    m_sink.start(kStickyNotes);
    for (Annotation const* const annotation : annotations) {
        if (annotation->getType() == Annotation::eStickyNote)
            writeAnnotation(*annotation);
    }
    m_sink.end();
}

void GraphWriter::writeAnnotation(Annotation const& annotation)
{
    m_sink.start(annotation.getType() == Annotation::eStickyNote ? kStickyNote : kBackdrop);
    m_sink.attribute(kName, annotation.getName());
    writeMetadata(annotation, isExactly<Annotation>(annotation));
    m_sink.end();
}

template <class Access, class Object>
bool GraphWriter::writeOwnText(Object const& object, PortFilterCallback* filter)
{
    if (isExactly<Object>(object))
        return false;
    String text;
    if (!Access::ownText(object, filter, text))
        return false;
    copyEmbeddedText({text.toChar(), static_cast<std::size_t>(text.size())}, m_sink);
    return true;
}

void GraphWriter::writeMetadata(Metadata const& object, bool isLibraryClass)
{
    PropertyList const& store = object.getPropertyList();
    if (isLibraryClass) {
        writeMetadataStore(m_sink, store);
        return;
    }
    String const text = object.saveMetadatasToXML();
    if (isLibraryText(text, store))
        writeMetadataStore(m_sink, store);
    else
        copyEmbeddedText({text.toChar(), static_cast<std::size_t>(text.size())}, m_sink);
}

/// Element "node_metadatas", when the owner node's store holds something or its class says so.
void GraphWriter::writeNodeMetadata(Node const& owner)
{
    PropertyList const& store = owner.getPropertyList();
    bool const isLibraryClass = isExactly<Node>(owner);
    if (store.empty() && (isLibraryClass || isLibraryText(owner.saveMetadatasToXML(), store)))
        return;
    m_sink.start(kNodeMetadatas);
    writeMetadata(owner, isLibraryClass);
    m_sink.end();
}

} // namespace TAV_marlo_v1
