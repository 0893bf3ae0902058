#include "commands/Address.h"

#include "foundation/PathText.h"
#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PortImpl.h"
#include "host/ContainerLink.h"

#include <tav/Container.h>

namespace TAV_marlo_v1::detail {

// ---- names

NameChain::NameChain(std::vector<SharedText const*> const& upwards)
{
    std::string names;
    for (auto name = upwards.rbegin(); name != upwards.rend(); ++name)
        names.append((*name)->view()).push_back('\0');
    m_names = SharedTextRef(std::string_view(names));
}

NameChain NameChain::with(SharedText const& name) const
{
    std::string names(text());
    names.append(name.view()).push_back('\0');
    NameChain chain;
    chain.m_names = SharedTextRef(std::string_view(names));
    return chain;
}

// ---- nodes

NodeAddress::NodeAddress(Node const& node)
{
    Compound const* const compound = node.getParentCompound();
    if (!compound) {
        m_kind = Kind::Top;
        return;
    }
    std::vector<SharedText const*> around;
    Node const* step = CompoundAccess::owner(*compound);
    for (; step && step->getParentCompound(); step = CompoundAccess::owner(*step->getParentCompound()))
        around.push_back(&NamedAccess::text(*step));
    if (!step)
        return;
    if (!around.empty())
        m_around = NameChain(around);
    m_name = SharedTextRef(NamedAccess::text(node));
    m_kind = Kind::Inside;
}

NodeAddress::NodeAddress(Compound const& compound)
{
    if (Node const* const owner = CompoundAccess::owner(compound))
        *this = NodeAddress(*owner);
}

NameChain NodeAddress::namesDown() const
{
    return m_kind == Kind::Inside ? m_around.with(*m_name) : NameChain();
}

NodeAddress NodeAddress::child(SharedTextRef const& name) const
{
    NodeAddress address;
    if (m_kind == Kind::Nowhere)
        return address;
    address.m_around = namesDown();
    address.m_name = name;
    address.m_kind = Kind::Inside;
    return address;
}

Node* NodeAddress::lookUp(Scene const& scene) const
{
    if (m_kind == Kind::Nowhere || !scene.container)
        return nullptr;
    Renamings const* const renamings = scene.renamings && !scene.renamings->empty() ? scene.renamings : nullptr;
    Node* node = ContainerAccess::topNode(*scene.container);
    auto const goDown = [&](std::string_view name, std::string_view around) {
        Compound* const compound = node ? NodeAccess::impl(*node).owned.get() : nullptr;
        std::string_view const present = renamings ? renamings->present(around, name) : name;
        node = compound ? NodeAccess::impl(compound->nodes()).nodes.find(present) : nullptr;
        return node != nullptr;
    };
    bool const isFound = m_kind == Kind::Top || (m_around.walk(goDown) && goDown(m_name.view(), m_around.text()));
    return isFound ? node : nullptr;
}

AddRefWrapper<Node> NodeAddress::find(Scene const& scene) const
{
    return AddRefWrapper<Node>(lookUp(scene));
}

void NodeAddress::appendPath(std::string& path) const
{
    auto const append = [&path](std::string_view name, std::string_view) {
        path.append("/").append(name);
        return true;
    };
    if (m_kind == Kind::Top)
        path.append("/");
    else if (m_around.walk(append))
        append(m_name.view(), {});
}

AddRefWrapper<Compound> NodeAddress::findCompound(Scene const& scene) const
{
    Node const* const node = lookUp(scene);
    return node ? node->getAsCompound() : AddRefWrapper<Compound>();
}

// ---- ports

namespace {

Port* portNamed(PortList const* list, std::string_view name)
{
    return list ? PortAccess::ports(*list).find(name) : nullptr;
}

} // namespace

PortListAddress::PortListAddress(Port const& port)
    : m_ioType(port.getPortIOType())
{
    std::vector<SharedText const*> parents;
    Port const* top = &port;
    while (Port const* const parent = PortAccess::impl(*top).parentPort) {
        parents.push_back(&NamedAccess::text(*parent));
        top = parent;
    }
    if (!parents.empty())
        m_parents = NameChain(parents);
    PortList::Impl const* const home = PortAccess::home(*top);
    if (!home)
        return;
    if (Node const* const node = PortAccess::asNode(home->owner)) {
        m_node = NodeAddress(*node);
    } else if (Compound const* const compound = PortAccess::asCompound(home->owner)) {
        m_node = NodeAddress(*compound);
        m_isInner = true;
    }
}

PortListAddress::PortListAddress(Node const& node, PortIOType ioType)
    : m_node(node)
    , m_ioType(ioType)
{
}

PortListAddress PortListAddress::childrenOf(Port const& parent)
{
    PortListAddress address(parent);
    address.m_parents = address.m_parents.with(NamedAccess::text(parent));
    return address;
}

PortList* PortListAddress::lookUpTop(Scene const& scene) const
{
    Node* const node = m_node.lookUp(scene);
    if (!node)
        return nullptr;
    if (!m_isInner)
        return m_ioType == eInput ? &node->inputs() : &node->outputs();
    Compound* const compound = NodeAccess::impl(*node).owned.get();
    if (!compound)
        return nullptr;
    return m_ioType == eInput ? &compound->innerOutputs() : &compound->innerInputs();
}

Port* PortListAddress::lookUpParentPort(Scene const& scene) const
{
    PortList const* list = lookUpTop(scene);
    Port* port = nullptr;
    m_parents.walk([&](std::string_view name, std::string_view) {
        port = portNamed(list, name);
        list = port ? PortAccess::children(*port) : nullptr;
        return port != nullptr;
    });
    return port;
}

PortList* PortListAddress::lookUp(Scene const& scene) const
{
    if (m_parents.empty())
        return lookUpTop(scene);
    Port const* const parent = lookUpParentPort(scene);
    return parent ? PortAccess::children(*parent) : nullptr;
}

AddRefWrapper<PortList> PortListAddress::find(Scene const& scene) const
{
    Port* const parent = m_parents.empty() ? nullptr : lookUpParentPort(scene);
    return parent ? parent->createChildrenList() : AddRefWrapper<PortList>(lookUp(scene));
}

AddRefWrapper<Port> PortListAddress::findParentPort(Scene const& scene) const
{
    return AddRefWrapper<Port>(lookUpParentPort(scene));
}

PortAddress::PortAddress(Port const& port)
    : m_list(port)
    , m_name(NamedAccess::text(port))
{
}

AddRefWrapper<Port> PortAddress::find(Scene const& scene) const
{
    return AddRefWrapper<Port>(portNamed(m_list.lookUp(scene), m_name.view()));
}

std::string PortAddress::path() const
{
    std::string path;
    if (m_list.m_node.m_kind == NodeAddress::Kind::Nowhere)
        return path;
    std::string ownName;
    m_list.m_parents.walk([&ownName](std::string_view name, std::string_view) {
        appendToPath(ownName, '.', name);
        return true;
    });
    appendToPath(ownName, '.', m_name.view());
    m_list.m_node.appendPath(path);
    appendToPath(path, '.', ownName);
    return path;
}

// ---- renamings

namespace {

std::string keyOf(std::string_view around, std::string_view name)
{
    return std::string(around).append(name);
}

} // namespace

void Renamings::add(NodeAddress const& compound, SharedTextRef const& former, SharedTextRef const& present)
{
    NameChain const around = compound.namesDown();
    std::string const from = keyOf(around.text(), former.view());
    auto const earlier = m_noted.find(from);
    std::string const noted = earlier == m_noted.end() ? from : earlier->second;
    if (earlier != m_noted.end())
        m_noted.erase(earlier);
    m_noted[keyOf(around.text(), present.view())] = noted;
    m_present[noted] = present;
}

void Renamings::replace(NodeAddress const& compound, SharedTextRef const& noted, SharedTextRef const& present)
{
    if (m_present.empty() && noted == present)
        return;
    m_present[keyOf(compound.namesDown().text(), noted.view())] = present;
}

std::string_view Renamings::present(std::string_view around, std::string_view name) const
{
    auto const found = m_present.find(keyOf(around, name));
    return found == m_present.end() ? name : found->second.view();
}

} // namespace TAV_marlo_v1::detail
