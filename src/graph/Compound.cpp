#include <tav/Compound.h>

#include "foundation/MetadataAccess.h"
#include "graph/AnnotationListImpl.h"
#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PortImpl.h"

#include <tav/Container.h>

#include <algorithm>

namespace TAV_marlo_v1 {

namespace {

AddRefWrapper<PortList> innerListOf(Compound& compound, PortIOType ioType)
{
    AddRefWrapper<PortList> const list = PortList::createNew();
    PortList::Impl& record = PortAccess::impl(*list);
    record.owner = &compound;
    record.isOwnersOwn = true;
    record.ioType = ioType;
    record.ports.setHearsRenames(true);
    return list;
}

} // namespace

Compound::Impl::Impl(Compound& compound)
    : nodes(NodeAccess::listOf(compound))
    , innerInputs(innerListOf(compound, eOutput)) // seen from inside, an input gives
    , innerOutputs(innerListOf(compound, eInput))
{
    annotations.setParentCompound(&compound);
}

AddRefWrapper<Compound> Compound::createNew(AddRefWrapper<Node> const& owner, char const* name)
{
    AddRefWrapper<Compound> const compound(new Compound(owner, name));
    if (owner)
        owner->setOwnedCompound(compound);
    return compound;
}

Compound::Compound(AddRefWrapper<Node> const& owner, char const* name)
{
    m_kind = Kind::eCompound;
    m_impl = std::make_unique<Impl>(*this);
    m_impl->owner = owner.get();
    if (name)
        Compound::setName(name);
}

Compound::~Compound()
{
    PortAccess::orphan(*m_impl->innerInputs);
    PortAccess::orphan(*m_impl->innerOutputs);
    AnnotationAccess::impl(m_impl->annotations).annotations.forEach([](Annotation& annotation) {
        AnnotationAccess::setParent(annotation, nullptr);
    });
    if (std::unique_ptr<StrayItems> const strays = std::move(m_impl->strays)) {
        for (Node* node : strays->nodes) {
            NodeAccess::impl(*node).isStray = false;
            NodeAccess::impl(*node).parent = nullptr;
        }
        m_impl->strays = std::make_unique<StrayItems>();
        for (Annotation* annotation : strays->annotations)
            AnnotationAccess::setParent(*annotation, nullptr);
    }
    // Nodes that outlive the compound must find neither it nor its list.
    NodeAccess::impl(m_impl->nodes).nodes.forEach([](Node& node) {
        NodeAccess::impl(node).home = nullptr;
        NodeAccess::impl(node).parent = nullptr;
    });
}

void CompoundAccess::own(Compound& compound, Node& owner) noexcept
{
    Node* const former = impl(compound).owner;
    if (former && former != &owner && NodeAccess::impl(*former).owned.get() == &compound)
        NodeAccess::impl(*former).owned.reset();
    impl(compound).owner = &owner;
}

void CompoundAccess::disown(Compound& compound) noexcept
{
    if (Node const* const owner = impl(compound).owner)
        NamedAccess::setText(compound, detail::SharedTextRef(NamedAccess::text(*owner)));
    impl(compound).owner = nullptr;
}

// ---- structure

AddRefWrapper<Node> Compound::getAsNode() const
{
    return AddRefWrapper<Node>(m_impl->owner);
}

char const* Compound::getName() const
{
    return m_impl->owner ? m_impl->owner->getName() : Namable::getName();
}

void Compound::setName(char const* name)
{
    if (m_impl->owner)
        m_impl->owner->setName(name);
    else
        Namable::setName(name);
}

NodeList& Compound::nodes() noexcept
{
    return m_impl->nodes;
}

NodeList const& Compound::nodes() const noexcept
{
    return m_impl->nodes;
}

PortList& Compound::innerInputs() noexcept
{
    return *m_impl->innerInputs;
}

PortList const& Compound::innerInputs() const noexcept
{
    return *m_impl->innerInputs;
}

PortList& Compound::innerOutputs() noexcept
{
    return *m_impl->innerOutputs;
}

PortList const& Compound::innerOutputs() const noexcept
{
    return *m_impl->innerOutputs;
}

AnnotationList& Compound::annotations() noexcept
{
    return m_impl->annotations;
}

AnnotationList const& Compound::annotations() const noexcept
{
    return m_impl->annotations;
}

void Compound::recurse_parent_first(Node::NodeCallback callback, void* data)
{
    if (AddRefWrapper<Node> const owner = getAsNode())
        owner->recurse_parent_first(callback, data);
}

// ---- nodes

AddRefWrapper<Node> Compound::createIONode(NodeFlags)
{
    return {};
}

AddRefWrapper<Compound> Compound::createNewCompound(char const*)
{
    return {};
}

AddRefWrapper<Node> Compound::createNodeFromPreset(char const*)
{
    return {};
}

AddRefWrapper<Node> Compound::removeNode(char const* name)
{
    AddRefWrapper<Node> const node = nodes()[name];
    return nodes().remove(node) ? node : AddRefWrapper<Node>();
}

void CompoundAccess::takeOut(Compound& compound, Node& node) noexcept
{
    Node::Impl& record = NodeAccess::impl(node);
    AddRefWrapper<Node> const taken = NodeAccess::impl(compound.nodes()).nodes.take(&node);
    if (!taken)
        return;
    addMessageCounts(&compound, NodeAccess::messageCounts(node), -1);
    record.home = nullptr;
    record.parent = nullptr;
    if (std::erase(impl(compound).ioNodes, &node) != 0)
        handOverPresentation(compound, node);
}

void CompoundAccess::addMessageCounts(Compound* compound, MessageCounts const& counts, int sign) noexcept
{
    if (counts == MessageCounts{})
        return;
    while (compound) {
        for (std::size_t kind = 0; kind < counts.size(); ++kind)
            impl(*compound).messageCounts[kind] += sign * counts[kind];
        Node* const owner = impl(*compound).owner;
        compound = owner && NodeAccess::impl(*owner).home ? owner->getParentCompound() : nullptr;
    }
}

// ---- annotations

AddRefWrapper<Annotation> Compound::createCompoundAnnotation(Annotation::AnnotationType type, char const* name)
{
    return annotations().createNewAnnotation(type, name);
}

bool Compound::removeAnnotation(char const* name)
{
    return annotations().remove(annotations()[name]);
}

bool Compound::removeAnnotation(AddRefWrapper<Annotation> const& annotation)
{
    return annotations().remove(annotation);
}

AddRefWrapper<Annotation> Compound::createStickyNoteFromBackdrop(AddRefWrapper<Annotation> const& backdrop)
{
    if (!backdrop)
        return {};
    std::string const name = std::string("sticky_note_") + backdrop->getName();
    AddRefWrapper<Annotation> const note = createCompoundAnnotation(Annotation::eStickyNote, name.c_str());
    if (!note)
        return {};
    for (char const* key : {"text", "coords", "color"}) {
        StringArray values;
        backdrop->getMetadata(key, values);
        for (char const* value : values)
            note->addMetadata(key, value);
    }
    note->setMetadataValue("format", "txt");
    return note;
}

void CompoundAccess::takeOut(Compound& compound, Annotation& annotation) noexcept
{
    if (AnnotationAccess::impl(compound.annotations()).annotations.take(&annotation))
        AnnotationAccess::setParent(annotation, nullptr);
}

// ---- exchange of contents

namespace {

void adoptContents(Compound& compound)
{
    NodeList::Impl& list = NodeAccess::impl(compound.nodes());
    list.nodes.forEach([&](Node& node) {
        NodeAccess::impl(node).home = &list;
        NodeAccess::impl(node).parent = &compound;
    });
    AnnotationAccess::impl(compound.annotations()).annotations.forEach([&](Annotation& annotation) {
        AnnotationAccess::setParent(annotation, &compound);
    });
}

} // namespace

void CompoundAccess::swapContents(Compound& a, Compound& b) noexcept
{
    Compound::Impl& ofA = impl(a);
    Compound::Impl& ofB = impl(b);
    MessageCounts const countsOfA = ofA.messageCounts;
    MessageCounts const countsOfB = ofB.messageCounts;
    addMessageCounts(&a, countsOfA, -1);
    addMessageCounts(&b, countsOfB, -1);

    std::swap(static_cast<Flaggable<CompoundFlags>&>(a), static_cast<Flaggable<CompoundFlags>&>(b));
    MetadataAccess::store(a).swap(MetadataAccess::store(b));
    MetadataAccess::store(*ofA.owner).swap(MetadataAccess::store(*ofB.owner));
    for (PortIOType const type : {eInput, eOutput}) {
        PortAccess::swapPorts(innerList(a, type), innerList(b, type));
        PortAccess::swapPorts(outerList(*ofA.owner, type), outerList(*ofB.owner, type));
    }
    NodeAccess::impl(ofA.nodes).nodes.swap(NodeAccess::impl(ofB.nodes).nodes);
    AnnotationAccess::impl(ofA.annotations).annotations.swap(AnnotationAccess::impl(ofB.annotations).annotations);
    ofA.ioNodes.swap(ofB.ioNodes);
    adoptContents(a);
    adoptContents(b);

    addMessageCounts(&a, countsOfB, +1);
    addMessageCounts(&b, countsOfA, +1);
}

} // namespace TAV_marlo_v1
