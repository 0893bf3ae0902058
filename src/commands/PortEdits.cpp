#include "commands/PortEdits.h"

#include "commands/ConnectionEdits.h"
#include "commands/PortMetadataState.h"
#include "commands/PortState.h"
#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PortImpl.h"

#include <optional>

namespace TAV_marlo_v1::detail {

namespace {

PortList& siblingsOf(Port const& port)
{
    return *PortAccess::home(port);
}

/// The port and, of a compound port, its other side.
struct Sides {
    explicit Sides(Port& port)
        : mine(&port)
        , twin(PortAccess::twin(port))
    {
    }
    AddRefWrapper<Port> mine, twin;
};

Compound* compoundOfTopPort(Port const& port)
{
    if (port.getParentPort())
        return nullptr;
    AddRefWrapper<Node> const node = port.getParentNode();
    return node ? node->getAsCompound().get() : nullptr;
}

/// Takes out one port that nothing is connected to, with its other side.
bool removeBothSides(Port& port)
{
    Sides const sides(port);
    if (AddRefWrapper<Compound> const compound = compoundOfTopPort(port); compound && sides.twin)
        return compound->deleteCompoundPort(sides.mine);
    AddRefWrapper<PortList> const list(&siblingsOf(port));
    if (!sides.twin)
        return list->remove(sides.mine);
    AddRefWrapper<PortList> const twins(&siblingsOf(*sides.twin));
    unsigned const index = list->findPort(sides.mine);
    if (!list->remove(sides.mine))
        return false;
    if (twins->remove(sides.twin))
        return true;
    list->insert(sides.mine, index);
    return false;
}

// ---- create

class CreatedPort final : public Edit {
public:
    /// @param index of the port that is about to be made, the last one
    CreatedPort(PortListAddress list, unsigned index, bool makesChildList)
        : m_list(std::move(list))
        , m_index(index)
        , m_makesChildList(makesChildList)
    {
    }

    bool takeBack(Scene const& scene) override
    {
        AddRefWrapper<PortList> const list = m_list.find(scene);
        if (!list)
            return false;
        if (AddRefWrapper<Port> const port = (*list)[m_index]; port && !removeBothSides(*port))
            return false;
        if (AddRefWrapper<Port> const parent = m_list.findParentPort(scene); parent && m_makesChildList) {
            Sides const sides(*parent);
            for (AddRefWrapper<Port> const& side : {sides.mine, sides.twin}) {
                if (side)
                    PortAccess::dropEmptyChildList(*side);
            }
        }
        return true;
    }

private:
    PortListAddress m_list;
    unsigned m_index;
    bool m_makesChildList;
};

} // namespace

AddRefWrapper<Port> createPort(EditLog& log, Node& node, PortIOType ioType, char const* name,
                               AddRefWrapper<PortDataType> const& type, PortProperties const& properties)
{
    AddRefWrapper<Node> const kept(&node);
    PortList& list = ioType == eInput ? node.inputs() : node.outputs();
    unsigned index = kNotFound;
    log.change(std::make_unique<CreatedPort>(PortListAddress(node, ioType), list.size(), false), [&] {
        AddRefWrapper<Compound> const compound = node.getAsCompound();
        index = compound ? compound->createCompoundPort(ioType, name, type, properties)
                         : node.createNodePort(ioType, name, type, properties);
        return index != kNotFound;
    });
    return index == kNotFound ? AddRefWrapper<Port>() : list[index];
}

namespace {

AddRefWrapper<Port> addChild(Port& parent, char const* name, AddRefWrapper<PortDataType> const& type,
                             PortProperties const& properties)
{
    AddRefWrapper<PortList> const children = parent.createChildrenList();
    AddRefWrapper<Port> const child = PortAccess::make(*children, name, type, properties);
    return children->add(child) ? child : AddRefWrapper<Port>();
}

} // namespace

AddRefWrapper<Port> createChildPort(EditLog& log, Port& parent, char const* name,
                                    AddRefWrapper<PortDataType> const& type, PortProperties const& properties)
{
    Sides const sides(parent);
    bool const makesChildList = !parent.children();
    unsigned const size = makesChildList ? 0 : parent.children()->size();
    AddRefWrapper<Port> child;
    log.change(std::make_unique<CreatedPort>(PortListAddress::childrenOf(parent), size, makesChildList), [&] {
        child = addChild(parent, name, type, properties);
        if (!child || !sides.twin || addChild(*sides.twin, child->getName(), type, properties))
            return static_cast<bool>(child);
        parent.children()->remove(child);
        child.reset();
        return false;
    });
    return child;
}

// ---- delete

namespace {

class DeletedPort final : public Edit {
public:
    explicit DeletedPort(Sides const& sides)
        : m_mine(*sides.mine)
    {
        if (sides.twin)
            m_twin.emplace(*sides.twin);
    }

    bool takeBack(Scene const& scene) override
    {
        AddRefWrapper<Port> const port = m_mine.restore(scene);
        if (!port || !m_twin || m_twin->restore(scene))
            return static_cast<bool>(port);
        siblingsOf(*port).remove(port); // both sides or none
        return false;
    }

private:
    struct Side {
        explicit Side(Port& port)
            : list(port)
            , index(siblingsOf(port).findPort(AddRefWrapper<Port>(&port)))
            , state(port)
        {
        }
        AddRefWrapper<Port> restore(Scene const& scene) const
        {
            AddRefWrapper<PortList> const ports = list.find(scene);
            if (!ports)
                return {};
            if (AddRefWrapper<Port> const present = (*ports)[state.name().chars()])
                return present; // it never went
            return state.restoreInto(*ports, index);
        }
        PortListAddress list;
        unsigned index;
        PortState state;
    };

    Side m_mine;
    std::optional<Side> m_twin;
};

} // namespace

bool deletePort(EditLog& log, Port& port)
{
    if (!PortAccess::home(port))
        return false;
    Sides const sides(port);
    if (!cutConnectionsBelow(log, port) || (sides.twin && !cutConnectionsBelow(log, *sides.twin)))
        return false;
    return log.change(std::make_unique<DeletedPort>(sides), [&port] { return removeBothSides(port); });
}

// ---- name and place

namespace {

class RenamedPort final : public Edit {
public:
    explicit RenamedPort(Port& port)
        : m_list(port)
        , m_index(siblingsOf(port).findPort(AddRefWrapper<Port>(&port)))
        , m_name(NamedAccess::text(port))
    {
    }

    bool takeBack(Scene const& scene) override
    {
        AddRefWrapper<PortList> const list = m_list.find(scene);
        AddRefWrapper<Port> const port = list ? (*list)[m_index] : AddRefWrapper<Port>();
        if (!port)
            return false;
        port->setName(m_name.chars());
        return NamedAccess::text(*port).view() == m_name.view();
    }

private:
    PortListAddress m_list;
    unsigned m_index;
    SharedTextRef m_name;
};

class MovedPort final : public Edit {
public:
    MovedPort(Port& port, unsigned from)
        : m_port(port)
        , m_from(from)
    {
    }

    bool takeBack(Scene const& scene) override
    {
        AddRefWrapper<Port> const port = m_port.find(scene);
        if (!port)
            return false;
        AddRefWrapper<PortList> const list(&siblingsOf(*port));
        return list->movePort(list->findPort(port), m_from);
    }

private:
    PortAddress m_port;
    unsigned m_from;
};

} // namespace

bool renamePort(EditLog& log, Port& port, char const* name)
{
    if (!PortAccess::home(port) || !name)
        return false;
    AddRefWrapper<Port> const self(&port);
    SharedTextRef const former(NamedAccess::text(port));
    if (former.view() == name)
        return true;
    return log.change(std::make_unique<RenamedPort>(port), [&] {
        port.setName(name);
        return NamedAccess::text(port).view() != former.view();
    });
}

bool movePort(EditLog& log, PortList& list, unsigned from, unsigned to)
{
    AddRefWrapper<PortList> const kept(&list);
    AddRefWrapper<Port> const port = list[from];
    if (!port || !PortAccess::home(*port))
        return false;
    return log.change(std::make_unique<MovedPort>(*port, from), [&] { return list.movePort(from, to); });
}

// ---- contents

namespace {

class DataTypeEdit final : public Edit {
public:
    explicit DataTypeEdit(Port& port)
        : m_port(port)
        , m_type(port.getDataType())
    {
    }
    bool takeBack(Scene const& scene) override
    {
        AddRefWrapper<Port> const port = m_port.find(scene);
        return port && port->setDataType(m_type);
    }

private:
    PortAddress m_port;
    AddRefWrapper<PortDataType> m_type;
};

class ValuesEdit final : public Edit {
public:
    explicit ValuesEdit(Port& port)
        : m_port(port)
    {
        if (StringArray values; port.getPortDefaultValues(values))
            m_values = std::move(values);
    }
    bool takeBack(Scene const& scene) override
    {
        AddRefWrapper<Port> const port = m_port.find(scene);
        if (!port)
            return false;
        return m_values ? port->setPortDefaultValues(*m_values) : port->resetPortDefaultValues();
    }

private:
    PortAddress m_port;
    std::optional<StringArray> m_values;
};

class PortMetadataEdit final : public Edit {
public:
    explicit PortMetadataEdit(Port& port)
        : m_port(port)
        , m_metadata(port)
    {
    }
    bool takeBack(Scene const& scene) override
    {
        AddRefWrapper<Port> const port = m_port.find(scene);
        return port && m_metadata.restore(*port);
    }

private:
    PortAddress m_port;
    PortMetadataState m_metadata;
};

class FlagEdit final : public Edit {
public:
    FlagEdit(Port& port, PortFlags flag)
        : m_port(port)
        , m_flag(flag)
        , m_wasOn(PortAccess::hasFlag(port, flag))
        , m_hadChildList(port.children())
    {
    }
    bool takeBack(Scene const& scene) override
    {
        AddRefWrapper<Port> const port = m_port.find(scene);
        if (!port)
            return false;
        if (m_wasOn)
            port->setFlag(m_flag);
        else if (m_flag == eFanIn && m_hadChildList)
            PortAccess::endFanInKeepingChildren(*port);
        else
            port->clearFlag(m_flag);
        return PortAccess::hasFlag(*port, m_flag) == m_wasOn;
    }

private:
    PortAddress m_port;
    PortFlags m_flag;
    bool m_wasOn;
    bool m_hadChildList;
};

} // namespace

bool setPortDataType(EditLog& log, Port& port, AddRefWrapper<PortDataType> const& type)
{
    return log.change(std::make_unique<DataTypeEdit>(port), [&] { return port.setDataType(type); });
}

bool setPortValues(EditLog& log, Port& port, StringArray const& values)
{
    return log.change(std::make_unique<ValuesEdit>(port), [&] { return port.setPortDefaultValues(values); });
}

bool resetPortValues(EditLog& log, Port& port)
{
    return log.change(std::make_unique<ValuesEdit>(port), [&] { return port.resetPortDefaultValues(); });
}

bool setPortMetadata(EditLog& log, Port& port, char const* key, char const* value)
{
    return log.change(std::make_unique<PortMetadataEdit>(port), [&] { return port.setPortMetaDataValue(key, value); });
}

bool setPortFlag(EditLog& log, Port& port, PortFlags flag, bool on)
{
    AddRefWrapper<Port> const self(&port);
    if (PortAccess::hasFlag(port, flag) == on)
        return true;
    if (flag == eFanIn && !on && !port.canClearFlag(eFanIn))
        return false;
    if (AddRefWrapper<PortList> const members = port.children(); members && flag == eFanIn && !on) {
        for (unsigned i = members->size(); i-- > 0;) {
            if (!deletePort(log, *(*members)[i]))
                return false;
        }
    }
    return log.change(std::make_unique<FlagEdit>(port, flag), [&] {
        if (on)
            port.setFlag(flag);
        else
            port.clearFlag(flag);
        return PortAccess::hasFlag(port, flag) == on;
    });
}

} // namespace TAV_marlo_v1::detail
