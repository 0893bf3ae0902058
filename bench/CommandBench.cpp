// The editing commands: one for each of many items, or one for all. Undo and redo are rows of their own.

#include "Row.h"
#include "SampleGraph.h"

#include <tav/CopyCommand.h>
#include <tav/CreateCompoundCommand.h>
#include <tav/ExplodeCompoundCommand.h>
#include <tav/NewConnectCommand.h>
#include <tav/NodeCommand.h>
#include <tav/PasteCommand.h>

#include <algorithm>

namespace bench {

namespace {

using namespace TAV_marlo_v1;

enum class Phase { Do, Undo, Redo };

/// Times one phase of many commands, and brings them to where it begins.
template <class Command>
unsigned timePhase(Row& row, std::vector<Command>& commands, Phase phase)
{
    unsigned done = 0;
    auto const forward = [&] {
        for (Command& command : commands)
            done += command.doit() ? 1 : 0;
    };
    auto const back = [&] {
        for (auto command = commands.rbegin(); command != commands.rend(); ++command)
            done += command->undo() ? 1 : 0;
    };
    if (phase != Phase::Do)
        forward();
    if (phase == Phase::Redo)
        back();
    done = 0;
    row.time(commands.size(), [&] { phase == Phase::Undo ? back() : forward(); });
    return done;
}

/// A list builds its index when it is first asked for a name. That is the graph's cost, once, and not the
/// command's.
void wakeIndex(SampleDocument const& document)
{
    static_cast<void>(document.top().nodes()["node0"]);
}

unsigned someOf(unsigned size)
{
    return std::min(size / 2, 10000u);
}

void remove(Row& row, Phase phase)
{
    std::vector<unsigned> const order = shuffled(row.size());
    while (row.next()) {
        SampleDocument document;
        fillSample(document, row.size());
        std::vector<std::string> const names = sampleNames(row.size());
        std::vector<NodeCommand> commands(someOf(row.size()));
        for (unsigned i = 0; i < commands.size(); ++i)
            commands[i].removeNode(AddRefWrapper<Compound>(&document.top()), names[order[i]].c_str());
        unsigned const done = timePhase(row, commands, phase);
        bool const isThere = phase == Phase::Undo;
        row.require(done == commands.size(), "every command succeeds");
        row.require(document.top().nodes().size() == row.size() - (isThere ? 0 : done), "the nodes are gone or back");
        row.require(!isThere || countConnections(document.top()) == SampleWiring::connections(row.size()),
                    "the connections are back");
    }
}

void cutHub(Row& row, Phase phase)
{
    std::vector<unsigned> const order = shuffled(row.size());
    while (row.next()) {
        SampleDocument document;
        addSampleNodes(document, document.top(), sampleNames(row.size() + 1));
        SamplePorts ports(document.top());
        for (unsigned i = 1; i <= row.size(); ++i)
            ports.out[0]->addConnection(ports.a[i], /*copyMetadata=*/false);
        wakeIndex(document);
        std::vector<NewConnectCommand> commands(someOf(row.size()));
        for (unsigned i = 0; i < commands.size(); ++i)
            commands[i].disconnect(&document, ports.out[0], ports.a[order[i] + 1]);
        unsigned const done = timePhase(row, commands, phase);
        row.require(done == commands.size(), "every command succeeds");
        row.require(ports.out[0]->connectedTo().size() == row.size() - (phase == Phase::Undo ? 0 : done),
                    "the connections are cut or back");
    }
}

void paste(Row& row, Phase phase)
{
    CopyPasteCommandBase::setUseLocalClipboard(true);
    while (row.next()) {
        SampleDocument document;
        fillSample(document, row.size());
        AddRefWrapper<Compound> const top(&document.top());
        CopyCommand copy(top);
        for (AddRefWrapper<Node> const& node : top->nodes())
            copy.addSourceNode(node->getName());
        copy.doit();
        PasteCommand command(top);
        if (phase != Phase::Do)
            row.require(command.doit(), "the copy is pasted");
        bool done = false;
        row.time(row.size(), [&] { done = phase == Phase::Undo ? command.undo() : command.doit(); });
        row.require(done && top->nodes().size() == row.size() * (phase == Phase::Undo ? 1 : 2), "all is there");
    }
}

/// So many nodes in a row.
void addMiddle(CreateCompoundCommand& command, unsigned size, unsigned count)
{
    std::vector<std::string> const names = sampleNames(size / 4 + count);
    for (unsigned i = size / 4; i < names.size(); ++i)
        command.addNode(names[i].c_str());
}

void group(Row& row, Phase phase)
{
    while (row.next()) {
        SampleDocument document;
        fillSample(document, row.size());
        wakeIndex(document);
        unsigned const count = someOf(row.size());
        CreateCompoundCommand command;
        command.setParentCompound(&document, "/");
        addMiddle(command, row.size(), count);
        bool done = phase == Phase::Do || command.doit();
        row.time(count, [&] { done = done && (phase == Phase::Undo ? command.undo() : command.doit()); });
        row.require(done, "the nodes are grouped");
        unsigned const left = phase == Phase::Undo ? row.size() : row.size() - count + 1;
        row.require(document.top().nodes().size() == left, "the nodes moved");
        row.require(phase != Phase::Undo || countConnections(document.top()) == SampleWiring::connections(row.size()),
                    "the connections are back");
    }
}

void explode(Row& row)
{
    while (row.next()) {
        SampleDocument document;
        fillSample(document, row.size());
        wakeIndex(document);
        unsigned const count = someOf(row.size());
        CreateCompoundCommand grouping;
        grouping.setParentCompound(&document, "/");
        addMiddle(grouping, row.size(), count);
        row.require(grouping.doit(), "the nodes are grouped");
        ExplodeCompoundCommand command;
        command.setParentCompound(&document, "/");
        command.addCompound(grouping.getCreatedCompoundName());
        bool done = false;
        row.time(count, [&] { done = command.doit(); });
        row.require(done && document.top().nodes().size() == row.size(), "the nodes are back");
        row.require(countConnections(document.top()) == SampleWiring::connections(row.size()),
                    "they are connected as before");
    }
}

RowEntry const removeEntry("command: remove", [](Row& row) { remove(row, Phase::Do); });
RowEntry const removeUndoEntry("command: remove, undo", [](Row& row) { remove(row, Phase::Undo); });
RowEntry const removeRedoEntry("command: remove, redo", [](Row& row) { remove(row, Phase::Redo); });
RowEntry const hubEntry("command: cut a hub", [](Row& row) { cutHub(row, Phase::Do); });
RowEntry const hubUndoEntry("command: cut a hub, undo", [](Row& row) { cutHub(row, Phase::Undo); });
RowEntry const pasteEntry("command: paste", [](Row& row) { paste(row, Phase::Do); });
RowEntry const pasteUndoEntry("command: paste, undo", [](Row& row) { paste(row, Phase::Undo); });
RowEntry const groupEntry("command: group", [](Row& row) { group(row, Phase::Do); });
RowEntry const groupUndoEntry("command: group, undo", [](Row& row) { group(row, Phase::Undo); });
RowEntry const explodeEntry("command: explode", explode);

} // namespace

} // namespace bench
