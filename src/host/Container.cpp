#include <tav/Container.h>

#include <tav/Instrumentable.h>
#include <tav/Runtime.h>

#include "host/ContainerImpl.h"
#include "host/NotifierAccess.h"
#include "host/RuntimeImpl.h"

#include <pel_1_2/PELWaypoint.h>
#include <pel_1_2/PELWaypointAttributeString.h>

#include <algorithm>
#include <map>
#include <utility>

namespace TAV_marlo_v1 {

namespace {

using UuidRegistry = std::map<std::string, Container*>;

/// Never destroyed: a container that is a static object of some module may die after this library's own.
UuidRegistry& uuidRegistry()
{
    static UuidRegistry* const registry = new UuidRegistry;
    return *registry;
}

/// Made at load, so that no later order of static objects matters.
[[maybe_unused]] UuidRegistry& s_registryAtLoad = uuidRegistry();

void reportGraphCreated(Container& container, char const* uuid)
{
    Runtime* const runtime = container.getRuntime();
    if (!runtime || !runtime->getLUMConnection())
        return;
    PELWaypointAttributeString& id = runtime->graphCreateWaypoint_id();
    id.getWaypoint().addAttributeConstant(id.getName(), uuid);
    runtime->graphCreateWaypoint().reached();
}

} // namespace

// ---- inside access

detail::ContainerLink* ContainerAccess::link(Container* container)
{
    if (!container)
        return nullptr;
    Container::Impl& impl = *container->m_impl;
    if (!impl.link)
        impl.link = new detail::ContainerLink(*container);
    return impl.link;
}

Node* ContainerAccess::topNode(Container const& container) noexcept
{
    return container.m_impl->topNode.get();
}

HostEditorNotifier* ContainerAccess::activeNotifier(Container const& container) noexcept
{
    HostEditorNotifier& notifier = container.m_impl->notifier;
    return NotifierAccess::isIdle(notifier) ? nullptr : &notifier;
}

bool ContainerAccess::isBracketed(Container const& container) noexcept
{
    return container.activeChangeBracket();
}

void ContainerAccess::noteRuntime(Container& container, Runtime& runtime)
{
    container.m_impl->runtimes.push_back(&runtime);
}

void ContainerAccess::forgetRuntime(Container& container, Runtime& runtime) noexcept
{
    std::vector<Runtime*>& runtimes = container.m_impl->runtimes;
    runtimes.erase(std::remove(runtimes.begin(), runtimes.end(), &runtime), runtimes.end());
}

// ---- life

Container::Container()
    : m_impl(std::make_unique<Impl>())
{
    HostEditorNotifier& notifier = m_impl->notifier;
    NotifierAccess::setScope(notifier, this);
    BracketAccess::setClosedHook(
        *this, [](void* context) { NotifierAccess::deliverScope(*static_cast<HostEditorNotifier*>(context)); },
        &notifier);
}

Container::~Container()
{
    BracketAccess::setClosedHook(*this, nullptr, nullptr);
    NotifierAccess::setScope(m_impl->notifier, nullptr);
    if (detail::ContainerLink* const link = std::exchange(m_impl->link, nullptr))
        link->cut();
    for (std::string const& uuid : m_impl->uuids)
        uuidRegistry().erase(uuid);
    for (Runtime* const runtime : m_impl->runtimes)
        runtime->m_impl->containers.erase(this);
}

void Container::executeChange()
{
    // What the library has to deliver goes out before this is called, whoever overrides it.
}

// ---- answers of the base class

ClientConnectionStatus Container::canConnectWithClient(char const*, char const*, char const*, char const*, String&)
{
    return eNotHandled;
}

ChangeBracket Container::createChangeBracket(ChangeBracketClient* client)
{
    ChangeBracket bracket(client);
    bracket.append(ChangeBracket(this));
    return bracket;
}

// ---- the graph

void Container::setTopNode(AddRefWrapper<Node> const& node)
{
    // The old graph goes only when the new one is in its place: its end may ask this container.
    AddRefWrapper<Node> old(node);
    old.swap(m_impl->topNode);
}

AddRefWrapper<Node> Container::getTopNode() const
{
    return m_impl->topNode;
}

HostEditorNotifier& Container::getEditorNotifier() noexcept
{
    return m_impl->notifier;
}

void Container::openChangeBracket()
{
    beginChange();
}

void Container::closeChangeBracket()
{
    endChange();
}

// ---- registry by UUID

void Container::registerWithUUID(char const* uuid, Container* container)
{
    if (!uuid || !container)
        return;
    unregisterWithUUID(uuid);
    auto const filed = uuidRegistry().emplace(uuid, container).first;
    try {
        container->m_impl->uuids.insert(uuid);
    } catch (...) {
        uuidRegistry().erase(filed); // or it would outlive the container
        throw;
    }
    reportGraphCreated(*container, uuid);
}

void Container::unregisterWithUUID(char const* uuid)
{
    if (!uuid)
        return;
    auto const found = uuidRegistry().find(uuid);
    if (found == uuidRegistry().end())
        return;
    found->second->m_impl->uuids.erase(found->first);
    uuidRegistry().erase(found);
}

Container* Container::getFromUUID(char const* uuid)
{
    if (!uuid)
        return nullptr;
    auto const found = uuidRegistry().find(uuid);
    return found == uuidRegistry().end() ? nullptr : found->second;
}

bool Container::getUUIDFromContainer(Container const* container, String& uuid)
{
    for (auto const& entry : uuidRegistry()) {
        if (entry.second == container) {
            uuid = entry.first.c_str();
            return true;
        }
    }
    return false;
}

} // namespace TAV_marlo_v1
