#include "commands/Address.h"

#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PortImpl.h"

#include <tav/Container.h>

#include <algorithm>

namespace TAV_marlo_v1::detail {

// ---- nodes

NodeAddress::NodeAddress(Node const& node)
{
    Node const* step = &node;
    while (step && step->getParentCompound()) {
        m_names.emplace_back(NamedAccess::text(*step));
        step = CompoundAccess::owner(*step->getParentCompound());
    }
    std::reverse(m_names.begin(), m_names.end());
    m_isValid = step != nullptr;
}

NodeAddress::NodeAddress(Compound const& compound)
{
    if (Node const* const owner = CompoundAccess::owner(compound))
        *this = NodeAddress(*owner);
}

NodeAddress NodeAddress::child(SharedTextRef const& name) const
{
    NodeAddress address = *this;
    address.m_names.push_back(name);
    return address;
}

AddRefWrapper<Node> NodeAddress::find(Scene const& scene) const
{
    if (!m_isValid || !scene.container)
        return {};
    bool const isRenamed = scene.renamings && !scene.renamings->empty();
    AddRefWrapper<Node> node = scene.container->getTopNode();
    for (std::size_t depth = 0; node && depth < m_names.size(); ++depth) {
        SharedTextRef const& name = isRenamed ? scene.renamings->present(*this, depth) : m_names[depth];
        Compound* const compound = NodeAccess::impl(*node).owned.get();
        node = compound ? NodeAccess::impl(compound->nodes()).nodes.find(name.view()) : nullptr;
    }
    return node;
}

AddRefWrapper<Compound> NodeAddress::findCompound(Scene const& scene) const
{
    AddRefWrapper<Node> const node = find(scene);
    return node ? node->getAsCompound() : AddRefWrapper<Compound>();
}

// ---- ports

PortListAddress::PortListAddress(Port const& port)
    : m_ioType(port.getPortIOType())
{
    Port const* top = &port;
    for (; PortAccess::impl(*top).parentPort; top = PortAccess::impl(*top).parentPort)
        m_parents.emplace_back(NamedAccess::text(*PortAccess::impl(*top).parentPort));
    std::reverse(m_parents.begin(), m_parents.end());
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
    address.m_parents.emplace_back(NamedAccess::text(parent));
    return address;
}

AddRefWrapper<PortList> PortListAddress::findTop(Scene const& scene) const
{
    AddRefWrapper<Node> const node = m_node.find(scene);
    if (!node)
        return {};
    if (!m_isInner)
        return AddRefWrapper<PortList>(m_ioType == eInput ? &node->inputs() : &node->outputs());
    AddRefWrapper<Compound> const compound = node->getAsCompound();
    if (!compound)
        return {};
    return AddRefWrapper<PortList>(m_ioType == eInput ? &compound->innerOutputs() : &compound->innerInputs());
}

AddRefWrapper<Port> PortListAddress::findParentPort(Scene const& scene) const
{
    AddRefWrapper<PortList> list = findTop(scene);
    AddRefWrapper<Port> port;
    for (SharedTextRef const& name : m_parents) {
        port = list ? (*list)[name.chars()] : AddRefWrapper<Port>();
        list = port ? port->children() : AddRefWrapper<PortList>();
    }
    return port;
}

AddRefWrapper<PortList> PortListAddress::find(Scene const& scene) const
{
    if (m_parents.empty())
        return findTop(scene);
    AddRefWrapper<Port> const parent = findParentPort(scene);
    return parent ? parent->createChildrenList() : AddRefWrapper<PortList>();
}

PortAddress::PortAddress(Port const& port)
    : m_list(port)
    , m_name(NamedAccess::text(port))
{
}

AddRefWrapper<Port> PortAddress::find(Scene const& scene) const
{
    if (m_list.m_parents.empty()) {
        AddRefWrapper<PortList> const list = m_list.findTop(scene);
        return list ? (*list)[m_name.chars()] : AddRefWrapper<Port>();
    }
    AddRefWrapper<Port> const parent = m_list.findParentPort(scene);
    AddRefWrapper<PortList> const list = parent ? parent->children() : AddRefWrapper<PortList>();
    return list ? (*list)[m_name.chars()] : AddRefWrapper<Port>();
}

// ---- renamings

std::string Renamings::keyOf(NodeAddress const& address, std::size_t depth, SharedText const& name)
{
    std::string key;
    for (std::size_t i = 0; i < depth; ++i)
        key.append(address.m_names[i].view()).push_back('\0');
    return key.append(name.view());
}

void Renamings::add(NodeAddress const& compound, SharedTextRef const& former, SharedTextRef const& present)
{
    std::size_t const depth = compound.m_names.size();
    std::string const from = keyOf(compound, depth, *former);
    auto const earlier = m_noted.find(from);
    std::string const noted = earlier == m_noted.end() ? from : earlier->second;
    if (earlier != m_noted.end())
        m_noted.erase(earlier);
    m_noted[keyOf(compound, depth, *present)] = noted;
    m_present[noted] = present;
}

void Renamings::replace(NodeAddress const& compound, SharedTextRef const& noted, SharedTextRef const& present)
{
    if (m_present.empty() && noted == present)
        return;
    m_present[keyOf(compound, compound.m_names.size(), *noted)] = present;
}

SharedTextRef const& Renamings::present(NodeAddress const& node, std::size_t depth) const
{
    auto const found = m_present.find(keyOf(node, depth, *node.m_names[depth]));
    return found == m_present.end() ? node.m_names[depth] : found->second;
}

} // namespace TAV_marlo_v1::detail
