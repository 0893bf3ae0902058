// The edits of connections and ports.
#include "EditActions.h"
#include "EditSession.h"
#include "EditTargets.h"

#include <tav/ModifyNodePortCommand.h>
#include <tav/NewConnectCommand.h>
#include <tav/PortDataType.h>
#include <tav/PortList.h>
#include <tav/PortProperties.h>
#include <tav/RecursiveDisconnectAllCommand.h>
#include <tav/Runtime.h>

#include <charconv>

using namespace TAV_marlo_v1;

namespace tool {

namespace {

/// Records one edit of a port and plays it.
template <class Record>
void pushPortEdit(EditSession& session, std::string const& nodePath, Record const& record)
{
    ModifyNodePortCommand command;
    if (!command.setParentNode(&session.document(), nodePath.c_str()) || !record(command))
        throw EditError("the ports of \"" + nodePath + "\" cannot be edited");
    session.push(std::move(command));
}

/// @throws EditError for a name that is no type of the runtime
char const* requireType(EditSession& session, std::string const& name)
{
    Runtime const* const runtime = session.document().getRuntime();
    if (name.empty() || (runtime && runtime->getPortDataType(name.c_str())))
        return name.c_str();
    std::string known;
    for (unsigned i = 0; runtime && i < runtime->getNumberOfPortDataTypes(); ++i)
        known += (i == 0 ? "" : ", ") + std::string(runtime->getPortDataType(i)->getName());
    throw EditError("there is no data type \"" + name + "\"; there are " + known);
}

PortFlags flagOf(std::string const& word)
{
    return word == "exposed" ? eExposed : word == "fan-in" ? eFanIn : eUnconnectable;
}

unsigned numberOf(std::string const& word, char const* what)
{
    unsigned number = 0;
    char const* const end = word.c_str() + word.size();
    auto const [stop, error] = std::from_chars(word.c_str(), end, number);
    if (error != std::errc() || stop != end)
        throw EditError(std::string("expected ") + what + ", found \"" + word + '"');
    return number;
}

} // namespace

// ---- connections

void connect(EditSession& session, Words const& words)
{
    PortPair const pair = pairAt(session.document(), words[0], words[1]);
    NewConnectCommand command;
    command.connect(&session.document(), pair.output, pair.input, /*copyMetaData=*/words.size() > 2);
    session.push(std::move(command));
}

void disconnect(EditSession& session, Words const& words)
{
    PortPair const pair = pairAt(session.document(), words[0], words[1]);
    if (pair.input->connectedTo().findPort(pair.output) == kNotFound)
        throw EditError('"' + words[0] + "\" and \"" + words[1] + "\" are not connected");
    NewConnectCommand command;
    command.disconnect(&session.document(), pair.output, pair.input);
    session.push(std::move(command));
}

void disconnectAll(EditSession& session, Words const& words)
{
    AddRefWrapper<Node> const node = session.document().findNodeFromPath(words[0].c_str());
    AddRefWrapper<Port> const port =
        node ? AddRefWrapper<Port>() : portAt(session.document(), words[0], "node or port").port;
    session.perform(RecursiveDisconnectAllCommand(), [&](RecursiveDisconnectAllCommand& command) {
        return node ? command.disconnectAll(&session.document(), node, /*includeReversePorts=*/false)
                    : command.disconnectAll(&session.document(), port);
    });
}

// ---- ports

void setValue(EditSession& session, Words const& words)
{
    PortPlace const place = portAt(session.document(), words[0]);
    StringArray values;
    Port::unserializePortValuesString(words[1].c_str(), values, place.port->getDataType());
    pushPortEdit(session, place.nodePath, [&](ModifyNodePortCommand& command) {
        return command.setPortValues(place.ioType, place.name.c_str(), values);
    });
}

void resetValue(EditSession& session, Words const& words)
{
    PortPlace const place = portAt(session.document(), words[0]);
    StringArray values;
    if (!place.port->getPortDefaultValues(values))
        throw EditError('"' + words[0] + "\" has no values");
    pushPortEdit(session, place.nodePath, [&](ModifyNodePortCommand& command) {
        return command.resetPortValues(place.ioType, place.name.c_str());
    });
}

void setType(EditSession& session, Words const& words)
{
    PortPlace const place = portAt(session.document(), words[0]);
    pushPortEdit(session, place.nodePath, [&](ModifyNodePortCommand& command) {
        return command.setPortDataType(place.ioType, place.name.c_str(), requireType(session, words[1]));
    });
}

void setFlag(EditSession& session, Words const& words)
{
    PortPlace const place = portAt(session.document(), words[0]);
    pushPortEdit(session, place.nodePath, [&](ModifyNodePortCommand& command) {
        return command.setPortFlag(place.ioType, place.name.c_str(), flagOf(words[1]), words[2] == "on");
    });
}

void createPort(EditSession& session, Words const& words)
{
    AddRefWrapper<Node> const node = nodeAt(session.document(), words[0]);
    PortIOType const ioType = words[1] == "input" ? eInput : eOutput;
    requireName(session.document(), words[2].substr(words[2].rfind('.') + 1));
    pushPortEdit(session, pathOf(*node), [&](ModifyNodePortCommand& command) {
        return command.createPort(ioType, words[2].c_str(), requireType(session, words[3]), PortProperties());
    });
}

void removePort(EditSession& session, Words const& words)
{
    PortPlace const place = portAt(session.document(), words[0]);
    pushPortEdit(session, place.nodePath,
                 [&](ModifyNodePortCommand& command) { return command.deletePort(place.ioType, place.name.c_str()); });
}

void renamePort(EditSession& session, Words const& words)
{
    PortPlace const place = portAt(session.document(), words[0]);
    pushPortEdit(session, place.nodePath, [&](ModifyNodePortCommand& command) {
        return command.renamePort(place.ioType, place.name.c_str(), requireName(session.document(), words[1]).c_str());
    });
    if (words[1] != place.port->getName())
        session.host().note(std::string("renamed to ") + place.port->getFullPathName().getName());
}

void movePort(EditSession& session, Words const& words)
{
    PortPlace const place = portAt(session.document(), words[0]);
    unsigned const to = numberOf(words[1], "the number of a place, the first being 0");
    if (place.port->getParentPort())
        throw EditError('"' + words[0] + "\" is a part of another port and stays in its place");
    // An input IO node shows its ports as outputs: the list is the one that has the port.
    unsigned from = place.node->inputs().findPort(place.port);
    unsigned size = place.node->inputs().size();
    if (from == kNotFound) {
        from = place.node->outputs().findPort(place.port);
        size = place.node->outputs().size();
    }
    if (to >= size)
        throw EditError("expected a place below " + std::to_string(size) + ", found " + words[1]);
    pushPortEdit(session, place.nodePath,
                 [&](ModifyNodePortCommand& command) { return command.movePort(place.ioType, from, to); });
}

} // namespace tool
