#include "commands/PortRecords.h"

#include "commands/PortEdits.h"
#include "persistence/DataTypeLookup.h"

#include <tav/Compound.h>
#include <tav/Container.h>
#include <tav/PortList.h>

#include <string_view>

namespace TAV_marlo_v1::detail {

namespace {

/// Where the ports of the node are: an IO node's are the inner ones of the compound around it.
struct PortPlace {
    AddRefWrapper<Node> node; // the one whose ports are made and deleted, maybe a compound's
    AddRefWrapper<PortList> list;
    PortIOType ioType; // of the outside, where there are two sides
};

PortPlace placeFor(Node& node, PortIOType ioType)
{
    AddRefWrapper<PortList> const list(ioType == eInput ? &node.inputs() : &node.outputs());
    bool const showsInnerPorts =
        (ioType == eOutput && node.testFlag(eInputIO)) || (ioType == eInput && node.testFlag(eOutputIO));
    Compound* const parent = node.getParentCompound();
    if (!showsInnerPorts || !parent)
        return {AddRefWrapper<Node>(&node), list, ioType};
    AddRefWrapper<PortList> const inner(ioType == eOutput ? &parent->innerInputs() : &parent->innerOutputs());
    return {parent->getAsNode(), inner, ioType == eOutput ? eInput : eOutput};
}

AddRefWrapper<PortDataType> typeNamed(Node const& node, String const& name)
{
    Container* const container = node.getContainer();
    return DataTypeLookup(container ? container->getRuntime() : nullptr).find(name.toChar());
}

AddRefWrapper<Port> findPort(PortList const& list, String const& name)
{
    unsigned index = kNotFound;
    return list.findPortRecursive(name.toChar(), index);
}

bool create(EditLog& log, PortPlace const& place, PortRecord const& record)
{
    AddRefWrapper<PortDataType> const type = typeNamed(*place.node, record.argument);
    std::string_view const name = record.name.toChar();
    std::size_t const dot = name.rfind('.');
    if (dot == std::string_view::npos) {
        return static_cast<bool>(
            createPort(log, *place.node, place.ioType, record.name.toChar(), type, record.properties));
    }
    AddRefWrapper<Port> const parent = findPort(*place.list, String(name.data(), dot));
    return parent && createChildPort(log, *parent, name.substr(dot + 1).data(), type, record.properties);
}

bool setValues(EditLog& log, Port& port, PortRecord const& record)
{
    AddRefWrapper<Port> side(&port);
    if (record.onInside) {
        AddRefWrapper<Node> const node = port.getParentNode();
        AddRefWrapper<Compound> const compound = node ? node->getAsCompound() : AddRefWrapper<Compound>();
        side = compound ? compound->getReversePort(side) : AddRefWrapper<Port>();
    }
    if (!side)
        return false;
    return record.operation == PortOperation::eSetValues ? setPortValues(log, *side, record.values)
                                                         : resetPortValues(log, *side);
}

bool apply(EditLog& log, PortPlace const& place, PortRecord const& record)
{
    if (record.operation == PortOperation::eCreate)
        return create(log, place, record);
    if (record.operation == PortOperation::eMove)
        return movePort(log, *place.list, record.from, record.to);
    AddRefWrapper<Port> const port = findPort(*place.list, record.name);
    if (!port)
        return false;
    switch (record.operation) {
    case PortOperation::eDelete:
        return deletePort(log, *port);
    case PortOperation::eRename:
        return renamePort(log, *port, record.argument.toChar());
    case PortOperation::eSetDataType:
        return setPortDataType(log, *port, typeNamed(*place.node, record.argument));
    case PortOperation::eSetMetadata:
        return setPortMetadata(log, *port, record.argument.toChar(), record.hasValue ? record.value.toChar() : nullptr);
    case PortOperation::eSetFlag:
        return setPortFlag(log, *port, record.flag, record.on);
    default:
        return setValues(log, *port, record);
    }
}

/// Which flags a user may set, one at a time.
bool isOneSettableFlag(PortFlags flag)
{
    bool const isOne = flag != eNoPortFlags && (flag & static_cast<PortFlags>(flag - 1)) == eNoPortFlags;
    return isOne && flag != eDetached && flag != eReconnecting; // those two are the lists' and the commands' own
}

} // namespace

// ---- recording

bool PortRecords::add(PortRecord record)
{
    if (record.ioType != eInput && record.ioType != eOutput)
        return false;
    m_records.push_back(std::move(record));
    return true;
}

bool PortRecords::createPort(PortIOType ioType, char const* name, char const* typeName,
                             PortProperties const& properties)
{
    PortRecord record{PortOperation::eCreate, ioType, name, typeName};
    record.properties = properties;
    return name && add(std::move(record));
}

bool PortRecords::deletePort(PortIOType ioType, char const* name)
{
    return name && add({PortOperation::eDelete, ioType, name, {}});
}

bool PortRecords::renamePort(PortIOType ioType, char const* name, char const* newName)
{
    return name && newName && add({PortOperation::eRename, ioType, name, newName});
}

bool PortRecords::movePort(PortIOType ioType, unsigned from, unsigned to)
{
    PortRecord record{PortOperation::eMove, ioType, {}, {}};
    record.from = from;
    record.to = to;
    return add(std::move(record));
}

bool PortRecords::setPortDataType(PortIOType ioType, char const* name, char const* typeName)
{
    return name && add({PortOperation::eSetDataType, ioType, name, typeName});
}

bool PortRecords::setPortValues(PortIOType ioType, char const* name, StringArray const& values, bool onInside)
{
    PortRecord record{PortOperation::eSetValues, ioType, name, {}};
    record.values = values;
    record.onInside = onInside;
    return name && add(std::move(record));
}

bool PortRecords::resetPortValues(PortIOType ioType, char const* name, bool onInside)
{
    PortRecord record{PortOperation::eResetValues, ioType, name, {}};
    record.onInside = onInside;
    return name && add(std::move(record));
}

bool PortRecords::setPortMetaDataValue(PortIOType ioType, char const* name, char const* key, char const* value)
{
    PortRecord record{PortOperation::eSetMetadata, ioType, name, key};
    record.value = value;
    record.hasValue = value != nullptr;
    return name && key && add(std::move(record));
}

bool PortRecords::setPortFlag(PortIOType ioType, char const* name, PortFlags flag, bool on)
{
    PortRecord record{PortOperation::eSetFlag, ioType, name, {}};
    record.flag = flag;
    record.on = on;
    return name && isOneSettableFlag(flag) && add(std::move(record));
}

// ---- performing

bool PortRecords::perform(EditLog& log, Node& node) const
{
    AddRefWrapper<Node> const kept(&node);
    bool isWhole = true;
    for (PortRecord const& record : m_records) {
        PortPlace const place = placeFor(node, record.ioType);
        isWhole = place.node && apply(log, place, record) && isWhole;
    }
    return isWhole;
}

// ---- the command

bool PortCommand::doit(bool wantsCompound)
{
    if (records.empty())
        return false;
    log.clear();
    AddRefWrapper<Node> const node = target.findNode();
    if (!node || (wantsCompound && !node->isCompound()))
        return false;
    auto const bracket = target.scope().openBracket();
    return records.perform(log, *node);
}

bool PortCommand::undo(Renamings const* renamings)
{
    auto const bracket = target.scope().openBracket();
    return log.takeBack({target.scope().container(), renamings});
}

} // namespace TAV_marlo_v1::detail
