#include <tav/GraphMemory.h>

#include "foundation/MetadataAccess.h"
#include "foundation/PropertyListAccess.h"
#include "graph/AnnotationListImpl.h"
#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PortImpl.h"

#include <cstdint>
#include <cstring>
#include <unordered_set>
#include <vector>

namespace TAV_marlo_v1 {

namespace {

/// The one block of an array that was not changed since it was made, which holds of nearly all.
unsigned long long bytesOf(StringArray const& values)
{
    unsigned long long bytes = 3 * sizeof(std::uint32_t);
    for (unsigned i = 0; i < values.size(); ++i)
        bytes += std::strlen(values[i]) + 1 + sizeof(std::uint32_t);
    return values.empty() ? 0 : bytes;
}

/// What is inside of what waits in lists, as a graph may be deeper than the call stack.
class MemoryWalk {
public:
    void addCompound(Compound const& compound);
    void addNode(Node const& node);
    GraphMemory finish();

private:
    void addPort(Port const& port);
    void addAnnotation(Annotation const& annotation);
    void addEntries(PropertyList const& list);
    void addText(detail::SharedText const& text) { m_texts.insert(&text); }
    void addName(Namable const& named) { addText(NamedAccess::text(named)); }

    GraphMemory m_memory;
    unsigned long long m_connectionEnds = 0;
    std::unordered_set<detail::SharedText const*> m_texts;
    std::vector<Compound const*> m_compounds;
    std::vector<PortList const*> m_portLists;
    std::vector<PropertyList const*> m_propertyLists;
};

void MemoryWalk::addCompound(Compound const& compound)
{
    Compound::Impl const& record = CompoundAccess::impl(compound);
    detail::NamedList<Node> const& nodes = NodeAccess::impl(record.nodes).nodes;
    detail::NamedList<Annotation> const& annotations = AnnotationAccess::impl(record.annotations).annotations;
    ++m_memory.compounds.count;
    m_memory.compounds.bytes += sizeof(Compound) + sizeof(Compound::Impl) + sizeof(NodeList::Impl)
                                + sizeof(AnnotationList::Impl) + 2 * sizeof(PortList::Impl) + nodes.heapBytes()
                                + annotations.heapBytes() + record.ioNodes.capacity() * sizeof(void*);
    addEntries(MetadataAccess::store(compound));
    m_portLists.insert(m_portLists.end(), {record.innerInputs.get(), record.innerOutputs.get()});
    annotations.forEach([this](Annotation& annotation) { addAnnotation(annotation); });
    nodes.forEach([this](Node& node) { addNode(node); });
}

void MemoryWalk::addNode(Node const& node)
{
    Node::Impl const& record = NodeAccess::impl(node);
    ++m_memory.nodes.count;
    m_memory.nodes.bytes += sizeof(Node) + sizeof(Node::Impl);
    addName(node);
    addText(*record.type);
    addText(*record.typeDisplayName);
    addEntries(MetadataAccess::store(node));
    for (PortList const* list : {&record.inputs(), &record.outputs()}) {
        m_memory.nodes.bytes += PortAccess::ports(*list).heapBytes();
        if (!PortAccess::impl(*list).presented) // an IO node shows what the compound holds
            m_portLists.push_back(list);
    }
    if (record.owned)
        m_compounds.push_back(record.owned.get());
}

void MemoryWalk::addPort(Port const& port)
{
    Port::Impl const& record = PortAccess::impl(port);
    ++m_memory.ports.count;
    m_memory.ports.bytes += sizeof(Port::Impl);
    addName(port);
    if (record.hasValues) {
        ++m_memory.values.count;
        m_memory.values.bytes += bytesOf(record.values);
    }
    if (record.connections) {
        m_connectionEnds += record.connections->ports.size();
        m_memory.connections.bytes += sizeof(PortList::Entries) + record.connections->ports.heapBytes();
    }
    if (!record.extras)
        return;
    m_memory.ports.bytes += sizeof(Port::Impl::Extras);
    addEntries(record.extras->metadata);
    addEntries(record.extras->options);
    if (PortList const* const children = record.extras->children.get()) {
        m_memory.ports.bytes += sizeof(PortList::Impl) + PortAccess::ports(*children).heapBytes();
        m_portLists.push_back(children);
    }
}

void MemoryWalk::addAnnotation(Annotation const& annotation)
{
    ++m_memory.annotations.count;
    m_memory.annotations.bytes += sizeof(Annotation);
    addName(annotation);
    addEntries(MetadataAccess::store(annotation));
}

void MemoryWalk::addEntries(PropertyList const& list)
{
    m_memory.metadata.bytes += PropertyListAccess::heapBytes(list);
    for (unsigned i = 0; i < PropertyListAccess::pairCount(list); ++i) {
        ++m_memory.metadata.count;
        m_memory.metadata.bytes += bytesOf(PropertyListAccess::values(list, i));
        addText(PropertyListAccess::keyText(list, i));
    }
    for (unsigned i = 0; i < PropertyListAccess::childCount(list); ++i) {
        m_memory.metadata.bytes += sizeof(PropertyList);
        addText(PropertyListAccess::childText(list, i));
        m_propertyLists.push_back(&PropertyListAccess::child(list, i));
    }
}

/// The last that waits.
template <class T>
T const& takeLast(std::vector<T const*>& waiting)
{
    T const* const last = waiting.back();
    waiting.pop_back();
    return *last;
}

GraphMemory MemoryWalk::finish()
{
    while (!m_compounds.empty() || !m_portLists.empty() || !m_propertyLists.empty()) {
        if (!m_propertyLists.empty())
            addEntries(takeLast(m_propertyLists));
        else if (!m_portLists.empty())
            PortAccess::ports(takeLast(m_portLists)).forEach([this](Port& port) { addPort(port); });
        else
            addCompound(takeLast(m_compounds));
    }
    m_memory.connections.count = m_connectionEnds / 2;
    m_memory.texts.count = m_texts.size();
    for (detail::SharedText const* text : m_texts)
        m_memory.texts.bytes += text->heapBytes();
    return m_memory;
}

} // namespace

GraphMemory measureMemory(Compound const& compound)
{
    MemoryWalk walk;
    if (Node const* const owner = CompoundAccess::owner(compound))
        walk.addNode(*owner);
    else
        walk.addCompound(compound);
    return walk.finish();
}

} // namespace TAV_marlo_v1
