#include "commands/NodeEdits.h"

#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PortImpl.h"

#include <unordered_set>

namespace TAV_marlo_v1::detail {

// ---- a removed node

RemovedNode::RemovedNode(Node const& node)
    : m_compound(*node.getParentCompound())
    , m_index(node.getParentCompound()->nodes().findNode(AddRefWrapper<Node>(const_cast<Node*>(&node))))
    , m_isSavedAsCompound(node.isCompound() && !node.getAsCompound()->isReferenced())
    , m_extras(node)
    , m_connections(node)
{
    if (NodeState::suffices(node))
        m_state.emplace(node);
    else if (m_isSavedAsCompound)
        m_text = node.getAsCompound()->saveToString(nullptr);
    else
        m_text = node.saveToString(nullptr);
    if (node.testFlag(eAnyIO))
        noteShownPorts(node);
}

void RemovedNode::noteShownPorts(Node const& node)
{
    m_shownType = node.testFlag(eInputIO) ? eInput : eOutput;
    PortList const& shown = m_shownType == eInput ? node.outputs() : node.inputs();
    m_isShowing = PortAccess::impl(shown).presented != nullptr;
    if (!m_isShowing)
        return;
    PortAccess::impl(shown).ports.forEach([this](Port const& inside) {
        if (Port const* const outside = PortAccess::twin(inside))
            m_shown.push_back({PortState(*outside), PortState(inside)});
    });
}

/// Before the IO node is read: it then finds its ports, and the places and both sides are as they were.
void RemovedNode::restoreShownPorts(Compound& compound) const
{
    AddRefWrapper<Node> const owner = compound.getAsNode();
    if (!owner)
        return;
    PortList& outer = CompoundAccess::outerList(*owner, m_shownType);
    PortList& inner = CompoundAccess::innerList(compound, m_shownType);
    for (unsigned i = 0; i < m_shown.size(); ++i) {
        PortPair const& pair = m_shown[i];
        if (outer[pair.outside.name().chars()])
            continue; // its deletion had been refused
        AddRefWrapper<Port> const outside = pair.outside.restoreInto(outer, i);
        if (outside && !pair.inside.restoreInto(inner, i))
            outer.remove(outside); // both sides or none
    }
}

void RemovedNode::restorePorts(Scene const& scene) const
{
    if (AddRefWrapper<Compound> const compound = m_compound.findCompound(scene))
        restoreShownPorts(*compound);
}

AddRefWrapper<Node> RemovedNode::restore(Scene const& scene) const
{
    AddRefWrapper<Compound> const compound = m_compound.findCompound(scene);
    if (!compound)
        return {};
    restoreShownPorts(*compound);
    AddRefWrapper<Node> const node = add(*compound);
    if (!node)
        return {};
    NodeAccess::place(compound->nodes(), *node, m_index);
    if (m_isShowing)
        CompoundAccess::takeOverPresentation(*compound, *node);
    m_extras.restore(*node);
    return node;
}

AddRefWrapper<Node> RemovedNode::add(Compound& compound) const
{
    if (m_state)
        return m_state->restoreInto(compound);
    String errors;
    if (!m_isSavedAsCompound)
        return compound.createNodeFromString(m_text->toChar(), errors);
    AddRefWrapper<Compound> const inside = compound.createNewCompoundFromString(m_text->toChar(), errors);
    return inside ? inside->getAsNode() : AddRefWrapper<Node>();
}

// ---- a created node

namespace {

std::vector<SharedTextRef> namesOf(PortList const& list)
{
    std::vector<SharedTextRef> names;
    PortAccess::impl(list).ports.forEach([&names](Port const& port) { names.emplace_back(NamedAccess::text(port)); });
    return names;
}

void deleteOthersOf(Compound& compound, PortList& outer, std::vector<SharedTextRef> const& known)
{
    if (outer.size() == known.size())
        return;
    std::unordered_set<SharedText const*> names; // equal names are one text
    for (SharedTextRef const& name : known)
        names.insert(name.get());
    for (unsigned i = outer.size(); i-- > 0;) {
        AddRefWrapper<Port> const port = outer[i];
        if (names.count(&NamedAccess::text(*port)) == 0)
            compound.deleteCompoundPort(port);
    }
}

} // namespace

CompoundPortNames::CompoundPortNames(Compound const& compound)
{
    if (AddRefWrapper<Node> const owner = compound.getAsNode()) {
        m_inputs = namesOf(owner->inputs());
        m_outputs = namesOf(owner->outputs());
    }
}

void CompoundPortNames::deleteOthers(Compound& compound) const
{
    AddRefWrapper<Node> const owner = compound.getAsNode();
    if (!owner)
        return;
    deleteOthersOf(compound, owner->inputs(), m_inputs);
    deleteOthersOf(compound, owner->outputs(), m_outputs);
}

bool removeCreatedNode(Compound& compound, AddRefWrapper<Node> const& node, CompoundPortNames const& before)
{
    if (!node)
        return false;
    bool const wasShowing = CompoundAccess::stopShowing(*node);
    if (!compound.nodes().remove(node)) {
        if (wasShowing)
            CompoundAccess::takeOverPresentation(compound, *node);
        return false;
    }
    if (node->testFlag(eAnyIO))
        before.deleteOthers(compound);
    return true;
}

// ---- edits

namespace {

class RemoveNodeEdit final : public Edit {
public:
    explicit RemoveNodeEdit(Node const& node)
        : m_compound(*node.getParentCompound())
        , m_name(NamedAccess::text(node))
        , m_removed(node)
    {
    }
    bool takeBack(Scene const& scene) override
    {
        AddRefWrapper<Compound> const compound = m_compound.findCompound(scene);
        if (!compound)
            return false;
        bool const isThere = compound->nodes()[m_name.chars()] || m_removed.restore(scene);
        m_removed.restoreConnections(scene);
        return isThere;
    }

private:
    NodeAddress m_compound;
    SharedTextRef m_name;
    RemovedNode m_removed;
};

class MoveNodeEdit final : public Edit {
public:
    MoveNodeEdit(Node const& node, NodeAddress arrived)
        : m_source(*node.getParentCompound())
        , m_index(node.getParentCompound()->nodes().findNode(AddRefWrapper<Node>(const_cast<Node*>(&node))))
        , m_name(NamedAccess::text(node))
        , m_arrived(std::move(arrived))
    {
    }
    bool takeBack(Scene const& scene) override
    {
        AddRefWrapper<Compound> const source = m_source.findCompound(scene);
        AddRefWrapper<Node> const node = m_arrived.find(scene);
        if (source && source->nodes()[m_name.chars()])
            return true; // it never went
        return source && node && CompoundAccess::moveNode(*node, *source, m_index, m_name);
    }

private:
    NodeAddress m_source;
    unsigned m_index;
    SharedTextRef m_name;
    NodeAddress m_arrived;
};

class CreateCompoundEdit final : public Edit {
public:
    explicit CreateCompoundEdit(Compound const& parent)
        : m_parent(parent)
        , m_index(parent.nodes().size())
    {
    }
    bool takeBack(Scene const& scene) override
    {
        AddRefWrapper<Compound> const parent = m_parent.findCompound(scene);
        if (!parent)
            return false;
        AddRefWrapper<Node> const node = parent->nodes()[m_index];
        return !node || parent->nodes().remove(node);
    }

private:
    NodeAddress m_parent;
    unsigned m_index;
};

} // namespace

bool removeNode(EditLog& log, Node& node)
{
    AddRefWrapper<Node> const kept(&node);
    AddRefWrapper<Compound> const compound(node.getParentCompound());
    if (!compound)
        return false;
    return log.change(std::make_unique<RemoveNodeEdit>(node), [&] { return compound->nodes().remove(kept); });
}

bool moveNode(EditLog& log, Node& node, Compound& target)
{
    AddRefWrapper<Node> const kept(&node);
    SharedTextRef const name(NamedAccess::text(node));
    // Where it will be: noted before it goes, so that nothing can fail in between.
    SharedTextRef const free(NodeAccess::impl(target.nodes()).nodes.freeName(name.view()));
    return log.change(std::make_unique<MoveNodeEdit>(node, NodeAddress(target).child(free)),
                      [&] { return CompoundAccess::moveNode(node, target, kNotFound, name); });
}

AddRefWrapper<Compound> createCompound(EditLog& log, Compound& parent, char const* name)
{
    AddRefWrapper<Compound> compound;
    log.change(std::make_unique<CreateCompoundEdit>(parent), [&] {
        compound = parent.createNewCompound(name);
        return static_cast<bool>(compound);
    });
    return compound;
}

} // namespace TAV_marlo_v1::detail
