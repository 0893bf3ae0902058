// The edits of whole nodes.
#include "EditActions.h"
#include "EditSession.h"
#include "EditTargets.h"

#include <tav/AnnotationList.h>
#include <tav/ConnectNodesCommand.h>
#include <tav/CopyCommand.h>
#include <tav/CreateCompoundCommand.h>
#include <tav/ExplodeCompoundCommand.h>
#include <tav/NodeCommand.h>
#include <tav/NodeList.h>
#include <tav/PasteCommand.h>
#include <tav/Runtime.h>

#include <set>

using namespace TAV_marlo_v1;

namespace tool {

namespace {

/// The nodes that a command made stand at the end of the list.
void noteNewNodes(EditSession& session, Compound const& compound, unsigned sizeBefore)
{
    for (unsigned i = sizeBefore; i < compound.nodes().size(); ++i)
        session.host().note("made " + pathOf(*compound.nodes()[i]));
}

/// Records the words from `first` on, each as a node or else as an annotation of the compound.
template <class Command>
void addItems(Compound const& compound, Words const& words, std::size_t first, Command const& command)
{
    std::set<std::string> known;
    for (std::size_t i = first; i < words.size(); ++i) {
        std::string const name = memberName(compound, words[i]);
        if (!known.insert(name).second)
            throw EditError('"' + words[i] + "\" is named twice");
        bool const isNode = static_cast<bool>(compound.nodes()[name.c_str()]);
        if (!command(name.c_str(), isNode))
            throw EditError('"' + words[i] + "\" cannot be taken");
    }
}

} // namespace

void create(EditSession& session, Words const& words)
{
    AddRefWrapper<Compound> const parent = compoundAt(session.document(), words[0]);
    std::string const from = words.size() > 3 ? memberName(*parent, words[3]) : std::string();
    if (!from.empty() && !parent->nodes()[from.c_str()])
        throw EditError('"' + from + "\" is an annotation, expected a node");
    Runtime const* const runtime = session.document().getRuntime();
    if (!runtime || !runtime->getNodeDefinitionFromPresetPath(words[1].c_str()))
        throw EditError("no library has a preset \"" + words[1] + '"');
    unsigned const size = parent->nodes().size();
    NodeCommand command;
    command.createNode(parent, words[1].c_str(), from.c_str());
    session.push(std::move(command));
    noteNewNodes(session, *parent, size);
}

void createIO(EditSession& session, Words const& words)
{
    AddRefWrapper<Compound> const parent = compoundAt(session.document(), words[0]);
    unsigned const size = parent->nodes().size();
    NodeCommand command;
    command.createIONode(parent, words[1] == "input" ? eInputIO : eOutputIO, nullptr);
    session.push(std::move(command));
    noteNewNodes(session, *parent, size);
}

void removeNodes(EditSession& session, Words const& words)
{
    NodeCommand command;
    std::set<AddRefWrapper<Node>> known;
    for (std::string const& path : words) {
        AddRefWrapper<Node> const node = nodeAt(session.document(), path);
        if (!known.insert(node).second)
            throw EditError('"' + path + "\" is named twice");
        command.removeNode(parentOf(*node, path), node);
    }
    session.push(std::move(command));
}

void renameNode(EditSession& session, Words const& words)
{
    AddRefWrapper<Node> const node = nodeAt(session.document(), words[0]);
    AddRefWrapper<Compound> const parent = parentOf(*node, words[0]);
    NodeCommand command;
    command.renameNode(parent, node->getName(), requireName(session.document(), words[1]).c_str());
    session.push(std::move(command));
    if (words[1] != node->getName())
        session.host().note("renamed to " + pathOf(*node));
}

void chain(EditSession& session, Words const& words)
{
    ConnectNodesCommand command;
    for (std::size_t i = 0; i + 1 < words.size(); ++i) {
        AddRefWrapper<Node> const from = nodeAt(session.document(), words[i]);
        AddRefWrapper<Node> const to = nodeAt(session.document(), words[i + 1]);
        if (!command.connect(from, to))
            throw EditError('"' + words[i] + "\" cannot be connected with \"" + words[i + 1] + '"');
    }
    session.push(std::move(command));
}

void group(EditSession& session, Words const& words)
{
    AddRefWrapper<Compound> const parent = compoundAt(session.document(), words[0]);
    CreateCompoundCommand command;
    command.setParentCompound(&session.document(), pathOf(*parent->getAsNode()).c_str());
    command.setCompoundName(requireName(session.document(), words[1]).c_str());
    addItems(*parent, words, 2, [&command](char const* name, bool isNode) {
        return isNode ? command.addNode(name) : command.addAnnotation(name);
    });
    session.push(std::move(command));
}

void explode(EditSession& session, Words const& words)
{
    AddRefWrapper<Compound> const compound = compoundAt(session.document(), words[0]);
    AddRefWrapper<Compound> const parent = parentOf(*compound->getAsNode(), words[0]);
    ExplodeCompoundCommand command;
    command.setParentCompound(&session.document(), pathOf(*parent->getAsNode()).c_str());
    command.addCompound(compound->getName());
    session.push(std::move(command));
}

void copyItems(EditSession& session, Words const& words)
{
    AddRefWrapper<Compound> const parent = compoundAt(session.document(), words[0]);
    CopyCommand command(parent);
    addItems(*parent, words, 1, [&command](char const* name, bool isNode) {
        return isNode ? command.addSourceNode(name) : command.addSourceAnnotation(name);
    });
    if (!command.doit())
        throw EditError("nothing can be copied there");
}

void pasteItems(EditSession& session, Words const& words)
{
    AddRefWrapper<Compound> const parent = compoundAt(session.document(), words[0]);
    if (CopyPasteCommandBase::getClipboardData().empty())
        throw EditError("nothing was copied yet");
    unsigned const size = parent->nodes().size();
    session.push(PasteCommand(parent));
    noteNewNodes(session, *parent, size);
}

} // namespace tool
