#include <tav/Runtime.h>

#include <tav/Compound.h>
#include <tav/Host.h>
#include <tav/NodeDefinition.h>
#include <tav/StringArray.h>

#include "host/ContainerLink.h"
#include "host/RuntimeImpl.h"

#include <cstring>
#include <string_view>

namespace TAV_marlo_v1 {

namespace {

/// The definition at a path whose first step is in this library. Names may hold "/" themselves, so
/// each sub-library whose name the path begins with is tried.
AddRefWrapper<NodeDefinition> definitionAt(NodeLibrary const& library, char const* path)
{
    for (AddRefWrapper<NodeLibrary> const& sub : library.subLibraries()) {
        std::size_t const length = std::strlen(sub->getName());
        if (std::strncmp(path, sub->getName(), length) != 0 || path[length] != '/')
            continue;
        if (AddRefWrapper<NodeDefinition> definition = definitionAt(*sub, path + length + 1))
            return definition;
    }
    return library.findNode(path);
}

AddRefWrapper<NodeDefinition> definitionAnywhere(NodeLibrary const& library, char const* name)
{
    if (AddRefWrapper<NodeDefinition> definition = library.findNode(name))
        return definition;
    for (AddRefWrapper<NodeLibrary> const& sub : library.subLibraries()) {
        if (AddRefWrapper<NodeDefinition> definition = definitionAnywhere(*sub, name))
            return definition;
    }
    return {};
}

} // namespace

Runtime::Runtime(char const* name)
    : Namable(name)
    , m_impl(std::make_unique<Impl>())
{
    Host::initialize("TAVHost");
}

Runtime::~Runtime()
{
    m_impl->clients.tell([this](RuntimeNotifierClient& client) { client.aboutToBeDeleted(this); });
    for (Container* const container : m_impl->containers)
        ContainerAccess::forgetRuntime(*container, *this);
    m_impl.reset();
    Host::terminate();
}

// ---- node libraries

void Runtime::setNodeLibrary(AddRefWrapper<NodeLibrary> const& library)
{
    m_impl->library = library;
}

AddRefWrapper<NodeLibrary> Runtime::getNodeLibrary(AddRefWrapper<Compound> const&) const
{
    return getNodeLibrary();
}

AddRefWrapper<NodeLibrary> Runtime::getNodeLibrary() const
{
    return m_impl->library;
}

AddRefWrapper<NodeLibrary> Runtime::findLibrary(char const* name) const
{
    AddRefWrapper<NodeLibrary> const root = getNodeLibrary();
    return root ? root->findLibrary(name) : AddRefWrapper<NodeLibrary>();
}

AddRefWrapper<NodeDefinition> Runtime::getNodeDefinitionFromPresetPath(char const* path) const
{
    AddRefWrapper<NodeLibrary> const root = getNodeLibrary();
    if (!path || !root)
        return {};
    if (AddRefWrapper<NodeDefinition> definition = definitionAt(*root, path))
        return definition;
    return definitionAnywhere(*root, path);
}

// ---- names and data types

bool Runtime::isLegalName(char const*) const
{
    return true;
}

unsigned Runtime::getNumberOfPortDataTypes() const
{
    return static_cast<unsigned>(m_impl->types.size());
}

AddRefWrapper<PortDataType> Runtime::getPortDataType(char const* name) const
{
    if (!name)
        return {};
    for (AddRefWrapper<PortDataType> const& type : m_impl->types) {
        if (std::strcmp(type->getName(), name) == 0)
            return type;
    }
    return {};
}

AddRefWrapper<PortDataType> Runtime::getPortDataType(unsigned index) const
{
    // A derived class may count types of its own, which it then also hands out itself.
    if (index >= getNumberOfPortDataTypes() || index >= m_impl->types.size())
        return {};
    return m_impl->types[index];
}

AddRefWrapper<PortDataType> Runtime::createPortDataType(char const* name, char const* defaultValue)
{
    if (AddRefWrapper<PortDataType> known = getPortDataType(name))
        return known;
    AddRefWrapper<PortDataType> const type = PortDataType::createNew(name, defaultValue);
    m_impl->types.push_back(type);
    return type;
}

void Runtime::doPublishCompound(AddRefWrapper<Compound> const&, bool, void*)
{
}

// ---- containers

void Runtime::registerContainer(Container* container)
{
    if (!container)
        return;
    auto const added = m_impl->containers.insert(container);
    try {
        if (added.second)
            ContainerAccess::noteRuntime(*container, *this);
    } catch (...) {
        m_impl->containers.erase(added.first);
        throw;
    }
    // Told also when it was there: whoever registers it again wants its arrival known.
    m_impl->clients.tell([this, container](RuntimeNotifierClient& client) {
        client.containerChange(this, eContainerRegistered, container);
    });
}

void Runtime::unregisterContainer(Container* container)
{
    if (!container)
        return;
    if (m_impl->containers.erase(container) != 0)
        ContainerAccess::forgetRuntime(*container, *this);
    m_impl->clients.tell([this, container](RuntimeNotifierClient& client) {
        client.containerChange(this, eContainerUnregistered, container);
    });
}

unsigned Runtime::getNumberOfContainers() const
{
    return static_cast<unsigned>(m_impl->containers.size());
}

Container* Runtime::getContainerAt(unsigned index) const
{
    if (index >= m_impl->containers.size())
        return nullptr;
    return *std::next(m_impl->containers.begin(), static_cast<std::ptrdiff_t>(index));
}

void Runtime::forceRebuildCompounds()
{
    // Rebuilding is the host's code, which may register and delete containers.
    std::vector<Container*> const snapshot(m_impl->containers.begin(), m_impl->containers.end());
    for (Container* const container : snapshot) {
        if (m_impl->containers.count(container) != 0)
            container->rebuildCompounds();
    }
}

// ---- clients

void Runtime::registerNotifierClient(RuntimeNotifierClient* client)
{
    m_impl->clients.add(client);
}

void Runtime::unregisterNotifierClient(RuntimeNotifierClient* client)
{
    m_impl->clients.remove(client);
}

// ---- capabilities

bool Runtime::supports(UIFeatureFlag feature) const
{
    return (m_impl->disabled & feature) == 0;
}

void Runtime::disableCapability(UIFeatureFlag feature)
{
    m_impl->disabled |= feature;
}

void Runtime::disableCapabilities(unsigned long long mask)
{
    m_impl->disabled = mask;
}

void Runtime::registerPortMetaDataToCopy(char const* name)
{
    if (name)
        m_impl->metadataToCopy.insert(name);
}

void Runtime::unregisterPortMetaDataToCopy(char const* name)
{
    if (name)
        m_impl->metadataToCopy.erase(name);
}

void Runtime::getPortMetaDatasToCopy(StringArray& names) const
{
    for (std::string const& name : m_impl->metadataToCopy)
        names.add(name.c_str());
}

} // namespace TAV_marlo_v1
