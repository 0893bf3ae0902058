#include "persistence/GraphReader.h"

#include "foundation/MetadataAccess.h"
#include "graph/AnnotationListImpl.h"
#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PortImpl.h"
#include "persistence/GraphVocabulary.h"
#include "persistence/HandOver.h"

#include <tav/Container.h>

#include <algorithm>

namespace TAV_marlo_v1 {

using namespace graphtext;

namespace {

Container* containerOf(Compound const& compound)
{
    Node const* const owner = CompoundAccess::owner(compound);
    return owner ? owner->getContainer() : nullptr;
}

Runtime* runtimeOf(Container const* container)
{
    return container ? container->getRuntime() : nullptr;
}

/// The role of an IO node; one that bears both marks counts as the input's.
NodeFlags ioKind(Node const& node)
{
    return node.testFlag(eInputIO) ? eInputIO : node.getFlags() & eOutputIO;
}

void warnOfType(Node& node, std::string_view type, char const* what)
{
    std::string const text = "The type " + quoted(type) + " is not known here; " + what;
    node.addMessage(node.getName(), text.c_str(), eWarning);
}

template <class Flags>
void replaceFlags(Flaggable<Flags>& object, Flags flags)
{
    // not by the virtual operations: nobody is told of objects that are still being made
    object.Flaggable<Flags>::clearFlag(static_cast<Flags>(~0u));
    object.Flaggable<Flags>::setFlag(flags);
}

/// Puts an annotation into a compound that is still being made, under the next free name.
void join(Compound& compound, Annotation& annotation)
{
    detail::NamedList<Annotation>& list = AnnotationAccess::impl(compound.annotations()).annotations;
    NamedAccess::setText(annotation, detail::SharedTextRef(list.freeName(annotation.getName())));
    list.insert(list.size(), &annotation);
    AnnotationAccess::setParent(annotation, &compound);
}

} // namespace

GraphReader::GraphReader(Compound& target)
    : m_target(target)
    , m_container(containerOf(target))
    , m_types(runtimeOf(m_container))
{
}

bool GraphReader::readNode(char const* text, StagedItems& items)
{
    return read(text, kNodeRoot, items);
}

bool GraphReader::readCompound(char const* text, StagedItems& items)
{
    return read(text, kCompoundRoot, items);
}

bool GraphReader::readItems(char const* text, StagedItems& items)
{
    return read(text, kSubRoot, items);
}

bool GraphReader::read(char const* text, std::string_view root, StagedItems& items)
{
    if (!text) {
        m_error = noTextFound(root);
        return false;
    }
    m_items = &items;
    m_root = root;
    startOver();
    if (!m_source.parse(text)) {
        m_error = m_source.error();
        return false;
    }
    return true;
}

void GraphReader::startOver()
{
    m_ports.abandon();
    m_metadata.abandon();
    m_states.clear();
    m_skipDepth = 0;
    m_graphs.clear();
    m_owners.clear();
    m_node.reset();
    m_role = IONode::No;
    m_annotation.reset();
    *m_items = StagedItems();

    m_items->standInOwner = Node::createNew(m_container, m_target.getName());
    m_items->standIn = Compound::createNew(m_items->standInOwner, nullptr);
    replaceFlags<CompoundFlags>(*m_items->standIn, m_target.getFlags());
    m_graphs.push_back(std::make_unique<OpenGraph>(*m_items->standIn));
    graph().connections.standIn(m_items->innerWarnings);
    m_states.push_back(State::Document);
}

// ---- elements

void GraphReader::startElement(std::string_view name, ElementAttributes const& attributes)
{
    if (m_ports.isActive())
        m_ports.startElement(name, attributes);
    else if (m_metadata.isActive())
        m_metadata.startElement(name, attributes);
    else if (m_skipDepth > 0 || !enter(m_states.back(), name, attributes))
        ++m_skipDepth;
}

void GraphReader::characters(std::string_view part)
{
    m_metadata.characters(part); // the only one that asks for text
}

void GraphReader::endElement()
{
    if (m_ports.isActive()) {
        m_ports.endElement();
    } else if (m_metadata.isActive()) {
        m_metadata.endElement();
    } else if (m_skipDepth > 0) {
        --m_skipDepth;
    } else {
        State const state = m_states.back();
        m_states.pop_back();
        leave(state);
    }
}

/// @return whether the element is one that may stand here
bool GraphReader::enter(State state, std::string_view name, ElementAttributes const& attributes)
{
    auto const enterIf = [&](std::string_view wanted, State entered) {
        if (name == wanted)
            m_states.push_back(entered);
        return name == wanted;
    };
    switch (state) {
    case State::Document:
        return enterRoot(name, attributes);
    case State::Node:
        return enterPartOfNode(name);
    case State::NodePorts:
        return name == kPort && enterNodePort(attributes);
    case State::Compound:
        return enterPartOfCompound(name);
    case State::OwnerMetadata:
        if (name == kMetadatas)
            enterMetadata(*m_owners.back());
        return name == kMetadatas;
    case State::CompoundPorts:
        if (name == kPort)
            enterCompoundPort(attributes);
        return name == kPort;
    case State::ChildGraph:
        if (name == kSubRoot)
            enterSubRoot();
        return name == kSubRoot;
    case State::SubRoot:
        return enterPartOfSubRoot(name);
    case State::Nodes:
        return enterIf(kNode, State::NodeItem) || enterIf(kCompound, State::CompoundItem);
    case State::NodeItem:
        return enterItem(name, kNodeRoot, attributes);
    case State::CompoundItem:
        return enterItem(name, kCompoundRoot, attributes);
    case State::Backdrops:
        if (name == kBackdrop)
            enterAnnotation(Annotation::eBackdrop, name, attributes);
        return name == kBackdrop;
    case State::StickyNotes:
        if (name == kStickyNote)
            enterAnnotation(Annotation::eStickyNote, name, attributes);
        return name == kStickyNote;
    case State::Annotation:
        if (name == kMetadatas)
            enterMetadata(*m_annotation);
        return name == kMetadatas;
    case State::Connections:
        if (name == kConnection)
            enterConnection(attributes);
        return name == kConnection;
    case State::FilledItem:
    case State::Connection:
        break;
    }
    return false;
}

void GraphReader::leave(State state)
{
    switch (state) {
    case State::Node:
        leaveNode();
        break;
    case State::Compound:
        leaveCompound();
        break;
    case State::SubRoot:
        leaveGraph();
        break;
    case State::NodeItem:
        m_source.fail("an empty element \"node\"", "element \"tavNode\" in it");
        break;
    case State::CompoundItem:
        m_source.fail("an empty element \"compound\"", "element \"tavCompound\" in it");
        break;
    case State::Annotation:
        leaveAnnotation();
        break;
    default:
        break;
    }
}

bool GraphReader::enterRoot(std::string_view name, ElementAttributes const& attributes)
{
    if (name != m_root)
        failAtElement(m_source, name, m_root);
    else if (name == kNodeRoot)
        enterNode(attributes);
    else if (name == kCompoundRoot)
        enterCompound(attributes);
    else
        m_states.push_back(State::SubRoot);
    return true;
}

bool GraphReader::enterPartOfNode(std::string_view name)
{
    if (name == kMetadatas)
        enterMetadata(*m_node);
    else if (name == kPorts)
        m_states.push_back(State::NodePorts);
    else
        return false;
    return true;
}

bool GraphReader::enterPartOfCompound(std::string_view name)
{
    if (name == kMetadatas)
        enterMetadata(*NodeAccess::impl(*m_owners.back()).owned);
    else if (name == kNodeMetadatas)
        m_states.push_back(State::OwnerMetadata);
    else if (name == kPorts)
        m_states.push_back(State::CompoundPorts);
    else if (name == kChildGraph)
        m_states.push_back(State::ChildGraph);
    else
        return false;
    return true;
}

bool GraphReader::enterPartOfSubRoot(std::string_view name)
{
    if (name == kNodes)
        m_states.push_back(State::Nodes);
    else if (name == kBackdrops)
        m_states.push_back(State::Backdrops);
    else if (name == kStickyNotes)
        m_states.push_back(State::StickyNotes);
    else if (name == kConnections)
        m_states.push_back(State::Connections);
    else
        return false;
    return true;
}

/// The one element that makes a "node" or "compound" what it is.
bool GraphReader::enterItem(std::string_view name, std::string_view wanted, ElementAttributes const& attributes)
{
    if (name != wanted)
        return false;
    m_states.back() = State::FilledItem;
    if (wanted == kNodeRoot)
        enterNode(attributes);
    else
        enterCompound(attributes);
    return true;
}

// ---- nodes

void GraphReader::enterNode(ElementAttributes const& attributes)
{
    ItemAttributes const item = readItemAttributes(m_source, kNodeRoot, attributes);
    if (m_source.failed())
        return;
    m_node = makeNode(item);
    m_role = roleOf(*m_node);
    m_states.push_back(State::Node);
}

AddRefWrapper<Node> GraphReader::makeNode(ItemAttributes const& item)
{
    auto const flags = static_cast<NodeFlags>(item.flags);
    AddRefWrapper<Node> node = maker().createBareNode(item.type.data(), flags);
    bool const isKnown = node && !NodeAccess::impl(*node).home;
    if (!isKnown)
        node = Node::createNew(m_container, nullptr);
    NamedAccess::setText(*node, detail::SharedTextRef(item.name));
    NodeAccess::impl(*node).type = detail::SharedTextRef(item.type);
    replaceFlags<NodeFlags>(*node, flags);
    if (!isKnown && !item.type.empty()) // a node need not have a type
        warnOfType(*node, item.type, "the node is kept as it was saved.");
    return node;
}

GraphReader::IONode GraphReader::roleOf(Node const& node) const
{
    NodeFlags const kind = ioKind(node);
    OpenGraph const& graph = *m_graphs.back();
    if (kind == eNoNodeFlags || graph.compound->testFlag(eNoIOPortFill))
        return IONode::No;
    bool isSecond = (graph.ioNodes & kind) != eNoNodeFlags;
    if (isStaging()) {
        for (Node const* const other : CompoundAccess::impl(m_target).ioNodes)
            isSecond = isSecond || ioKind(*other) == kind;
    }
    return isSecond ? IONode::IsSecond : IONode::Shows;
}

PortAttributes GraphReader::readDirectedPort(ElementAttributes const& attributes)
{
    PortAttributes const port = readPortAttributes(m_source, kPort, attributes);
    if (!port.isInput)
        m_source.fail("\"port\" without attribute \"is_input\"", "\"yes\" or \"no\"");
    return port;
}

/// @return false when the port is to be skipped
bool GraphReader::enterNodePort(ElementAttributes const& attributes)
{
    PortAttributes const port = readDirectedPort(attributes);
    if (m_source.failed())
        return true;
    PortIOType const outsideType = m_node->testFlag(eInputIO) ? eInput : eOutput;
    bool const isShown = m_role != IONode::No && *port.isInput == (outsideType == eOutput);
    if (!isShown) {
        m_ports.beginNodePort(*port.isInput ? m_node->inputs() : m_node->outputs(), port);
        return true;
    }
    if (m_role == IONode::IsSecond)
        return false;
    Compound& compound = *graph().compound;
    PortList const& inner = CompoundAccess::innerList(compound, outsideType);
    if (Port* const known = PortAccess::impl(inner).ports.find(port.name))
        m_ports.beginKnownPort(*known, port);
    else
        m_ports.beginCompoundPort(compound, outsideType, port, /*textIsInner=*/true);
    return true;
}

void GraphReader::leaveNode()
{
    graph().ioNodes = graph().ioNodes | ioKind(*m_node);
    handOver(*m_node);
    place(m_node);
    m_node.reset();
}

/// Puts a node that is complete to where it belongs.
void GraphReader::place(AddRefWrapper<Node> const& node)
{
    // Joining a graph may change the name. Who holds it then, this node or the one that it gave way to,
    // keeps the text alive.
    detail::SharedText const& name = NamedAccess::text(*node);
    bool const isNew = graph().connections.addNode(name, *node);
    if (isStaging()) {
        m_items->nodes.push_back(node);
        m_items->sourceNames.add(name.chars());
        return;
    }
    Compound& compound = *graph().compound;
    NodeList::Impl& list = NodeAccess::impl(compound.nodes());
    // As long as every node has the name that it has in the text, a new one is free.
    NodeAccess::join(list, *node, list.nodes.size(), isNew && graph().joinedAsNamed == list.nodes.size());
    if (&NamedAccess::text(*node) == &name)
        ++graph().joinedAsNamed;
    if (node->testFlag(eAnyIO) && !compound.testFlag(eNoIOPortFill))
        CompoundAccess::fillIONode(compound, *node);
}

// ---- compounds

void GraphReader::enterCompound(ElementAttributes const& attributes)
{
    ItemAttributes const item = readItemAttributes(m_source, kCompoundRoot, attributes);
    if (m_owners.size() >= kMaxCompoundDepth)
        m_source.fail(tooDeep("compounds"), atMost(kMaxCompoundDepth));
    if (m_source.failed())
        return;
    AddRefWrapper<Node> owner = maker().createBareOwner(item.type.data());
    if (!owner || NodeAccess::impl(*owner).home || owner->isCompound())
        owner = Node::createNew(m_container, nullptr);
    makeCompound(owner, item);
    m_owners.push_back(owner);
    m_states.push_back(State::Compound);
}

AddRefWrapper<Compound> GraphReader::makeCompound(AddRefWrapper<Node> const& owner, ItemAttributes const& item)
{
    AddRefWrapper<Compound> compound = maker().createBareCompound(owner, item.type.data());
    bool const isKnown = static_cast<bool>(compound);
    if (!isKnown)
        compound = Compound::createNew(owner, nullptr);
    else if (CompoundAccess::owner(*compound) != owner.get() || NodeAccess::impl(*owner).owned != compound)
        owner->setOwnedCompound(compound);
    NamedAccess::setText(*owner, detail::SharedTextRef(item.name));
    NodeAccess::impl(*owner).type = detail::SharedTextRef(item.type);
    replaceFlags<CompoundFlags>(*compound, static_cast<CompoundFlags>(item.flags) & ~eDeletingIOPorts);
    if (!isKnown)
        warnOfType(*owner, item.type, "the compound is kept as it was saved.");
    return compound;
}

void GraphReader::enterCompoundPort(ElementAttributes const& attributes)
{
    PortAttributes const port = readDirectedPort(attributes);
    if (m_source.failed())
        return;
    Compound& compound = *NodeAccess::impl(*m_owners.back()).owned;
    m_ports.beginCompoundPort(compound, *port.isInput ? eInput : eOutput, port, /*textIsInner=*/false);
}

void GraphReader::enterSubRoot()
{
    m_graphs.push_back(std::make_unique<OpenGraph>(*NodeAccess::impl(*m_owners.back()).owned));
    m_states.push_back(State::SubRoot);
}

void GraphReader::leaveGraph()
{
    graph().connections.finish();
    if (!isStaging())
        m_graphs.pop_back();
}

void GraphReader::leaveCompound()
{
    AddRefWrapper<Node> const owner = m_owners.back();
    m_owners.pop_back();
    handOver(*owner);
    handOver(*NodeAccess::impl(*owner).owned);
    place(owner);
}

// ---- annotations, connections, metadata

void GraphReader::enterAnnotation(Annotation::AnnotationType type, std::string_view name,
                                  ElementAttributes const& attributes)
{
    std::string_view const title = requiredName(m_source, name, attributes);
    if (m_source.failed())
        return;
    m_annotation = Annotation::createNew(type, nullptr, title.data());
    m_states.push_back(State::Annotation);
}

void GraphReader::leaveAnnotation()
{
    if (isStaging())
        m_items->annotations.push_back(m_annotation);
    else
        join(*graph().compound, *m_annotation);
    m_annotation.reset();
}

void GraphReader::enterConnection(ElementAttributes const& attributes)
{
    m_states.push_back(State::Connection);
    graph().connections.read(m_source, attributes);
}

void GraphReader::enterMetadata(Metadata& object)
{
    PropertyList& store = MetadataAccess::store(object);
    store.removeAll(); // what its class may have put in
    m_metadata.begin(store);
}

} // namespace TAV_marlo_v1
