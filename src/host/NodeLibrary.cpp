#include <tav/NodeLibrary.h>

#include "host/NodeLibraryImpl.h"

#include <algorithm>
#include <cstring>

namespace TAV_marlo_v1 {

namespace {

bool isCalled(NodeLibrary const& library, char const* name)
{
    return std::strcmp(library.getName(), name) == 0;
}

/// Whether `part` is `whole` or somewhere inside it.
bool contains(NodeLibrary const& whole, NodeLibrary const& part)
{
    if (&whole == &part)
        return true;
    for (AddRefWrapper<NodeLibrary> const& sub : whole.subLibraries()) {
        if (contains(*sub, part))
            return true;
    }
    return false;
}

} // namespace

NodeLibrary::Impl::NameIndex& NodeLibrary::Impl::index()
{
    if (namesAsOf != detail::definitionRenames()) {
        names.clear();
        for (AddRefWrapper<NodeDefinition> const& definition : definitions)
            names.emplace(definition->getName(), definition.get()); // the first of a name stays
        namesAsOf = detail::definitionRenames();
    }
    return names;
}

AddRefWrapper<NodeLibrary> NodeLibrary::createNew(char const* name, char const* niceName)
{
    return AddRefWrapper<NodeLibrary>(new NodeLibrary(name, niceName));
}

NodeLibrary::NodeLibrary(char const* name, char const* niceName)
    : NiceNamable(name, niceName)
    , m_impl(std::make_unique<Impl>(*this))
{
}

NodeLibrary::~NodeLibrary() = default;

// ---- definitions

void NodeLibrary::addNode(AddRefWrapper<NodeDefinition> const& definition)
{
    if (!definition || findNode(definition->getName()))
        return;
    AddRefWrapper<NodeDefinition> const kept(definition);
    m_impl->definitions.push_back(kept);
    m_impl->index().emplace(kept->getName(), kept.get());
    NodeLibraryAccess::markFiled(*kept);
    kept->setParent(this);
    tell(eDefinitionAdded, getNumberOfNodes() - 1);
}

AddRefWrapper<NodeDefinition> NodeLibrary::addNode(char const* name, char const* niceName)
{
    AddRefWrapper<NodeDefinition> const definition = NodeDefinition::createNew(name, niceName);
    // Before it is told of, and also when the name is taken: the caller gets a definition of this library.
    definition->setParent(this);
    addNode(definition);
    return definition;
}

AddRefWrapper<NodeDefinition> NodeLibrary::findNode(char const* name) const
{
    if (!name)
        return {};
    Impl::NameIndex const& index = m_impl->index();
    auto const found = index.find(std::string_view(name));
    return found == index.end() ? AddRefWrapper<NodeDefinition>() : AddRefWrapper<NodeDefinition>(found->second);
}

unsigned NodeLibrary::getNumberOfNodes() const
{
    return static_cast<unsigned>(m_impl->definitions.size());
}

AddRefWrapper<NodeDefinition> NodeLibrary::getNodeAt(unsigned index) const
{
    return index < m_impl->definitions.size() ? m_impl->definitions[index] : AddRefWrapper<NodeDefinition>();
}

void NodeLibrary::sort()
{
    auto& definitions = m_impl->definitions;
    std::sort(definitions.begin(), definitions.end(),
              [](AddRefWrapper<NodeDefinition> const& a, AddRefWrapper<NodeDefinition> const& b) {
                  return std::strcmp(a->getName(), b->getName()) < 0;
              });
    m_impl->namesAsOf = 0; // of two of one name, which renaming makes, the other may be the first now
    tell(eDefinitionsSorted, 0);
}

// ---- sub-libraries

void NodeLibrary::addSubLibrary(AddRefWrapper<NodeLibrary> const& library)
{
    // A library inside itself would keep itself alive and be searched for ever.
    if (!library || contains(*library, *this))
        return;
    m_impl->subLibraries.push_back(library);
    library->m_impl->parent = detail::BackLinkRef<NodeLibrary>(m_impl->link);
    tell(eSubLibraryAdded, getNumberOfSubLibraries() - 1);
}

void NodeLibrary::removeSubLibraryAt(unsigned index)
{
    auto& subLibraries = m_impl->subLibraries;
    if (index >= subLibraries.size())
        return;
    AddRefWrapper<NodeLibrary> const removed = subLibraries[index];
    subLibraries.erase(subLibraries.begin() + static_cast<std::ptrdiff_t>(index));
    bool const isStillThere = std::find(subLibraries.begin(), subLibraries.end(), removed) != subLibraries.end();
    if (removed->parent() == this && !isStillThere)
        removed->m_impl->parent = detail::BackLinkRef<NodeLibrary>();
    tell(eSubLibraryRemoved, index);
}

unsigned NodeLibrary::getNumberOfSubLibraries() const
{
    return static_cast<unsigned>(m_impl->subLibraries.size());
}

AddRefWrapper<NodeLibrary> NodeLibrary::getSubLibraryAt(unsigned index) const
{
    return index < m_impl->subLibraries.size() ? m_impl->subLibraries[index] : AddRefWrapper<NodeLibrary>();
}

NodeLibrary* NodeLibrary::parent() const noexcept
{
    return m_impl->parent.get();
}

AddRefWrapper<NodeLibrary> NodeLibrary::findLibrary(char const* name) const
{
    if (!name)
        return {};
    if (isCalled(*this, name) || std::strcmp(getNiceName(), name) == 0)
        return AddRefWrapper<NodeLibrary>(const_cast<NodeLibrary*>(this));
    for (AddRefWrapper<NodeLibrary> const& sub : m_impl->subLibraries) {
        if (isCalled(*sub, name))
            return sub;
    }
    for (AddRefWrapper<NodeLibrary> const& sub : m_impl->subLibraries) {
        if (AddRefWrapper<NodeLibrary> found = sub->findLibrary(name))
            return found;
    }
    return {};
}

// ---- clients

void NodeLibrary::tell(ENodeLibraryChangeType type, unsigned index)
{
    m_impl->clients.tellEach([&](auto const& recipient) {
        if (NodeLibraryNotifierClient* const client = recipient.get())
            client->libraryChanged(*this, type, index);
    });
}

void NodeLibrary::registerNotifierClient(NodeLibraryNotifierClient* client)
{
    if (!client)
        return;
    if (!client->m_record)
        client->m_record = new NodeLibraryNotifierClient::Record(*client);
    m_impl->clients.add(*client->m_record);
}

void NodeLibrary::unregisterNotifierClient(NodeLibraryNotifierClient* client)
{
    if (client && client->m_record)
        m_impl->clients.remove(*client->m_record);
}

unsigned NodeLibrary::peekNotifierClientCount() const
{
    return static_cast<unsigned>(m_impl->clients.size());
}

} // namespace TAV_marlo_v1
