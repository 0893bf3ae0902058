#include "EditCompletion.h"

#include "EditTable.h"
#include "EditTargets.h"

#include <tav/AnnotationList.h>
#include <tav/NodeLibrary.h>
#include <tav/NodeList.h>
#include <tav/PortDataType.h>
#include <tav/PortList.h>
#include <tav/Runtime.h>

#include <algorithm>

using namespace TAV_marlo_v1;

namespace tool {

namespace {

bool beginsWith(std::string const& text, std::string const& beginning)
{
    return text.compare(0, beginning.size(), beginning) == 0;
}

// ---- what there is to choose from

/// The first words of edits, or the second ones behind "port" and "annotation".
Words editWords(Words const& before)
{
    std::string const front = before.empty() ? std::string() : before[0] + ' ';
    Words words;
    for (Edit const& edit : allEdits()) {
        if (!beginsWith(edit.name(), front))
            continue;
        std::string const rest = edit.name().substr(front.size());
        words.push_back(rest.substr(0, rest.find(' ')));
    }
    return words;
}

void appendPresets(NodeLibrary const& library, std::string const& path, Words& words)
{
    for (AddRefWrapper<NodeDefinition> const& definition : library.nodeDefs())
        words.push_back(path + definition->getName());
    for (AddRefWrapper<NodeLibrary> const& child : library.subLibraries())
        appendPresets(*child, path + child->getName() + '/', words);
}

Words presets(Runtime const& runtime)
{
    Words words;
    if (AddRefWrapper<NodeLibrary> const root = runtime.getNodeLibrary())
        appendPresets(*root, "", words);
    return words;
}

Words typeNames(Runtime const& runtime)
{
    Words words;
    for (unsigned i = 0; i < runtime.getNumberOfPortDataTypes(); ++i)
        words.push_back(runtime.getPortDataType(i)->getName());
    return words;
}

void appendPorts(PortList const& ports, std::string const& path, Words& words)
{
    for (AddRefWrapper<Port> const& port : ports) {
        std::string const portPath = path + '.' + port->getName();
        words.push_back(portPath);
        if (AddRefWrapper<PortList> const children = port->children())
            appendPorts(*children, portPath, words);
    }
}

enum class Wanted { compounds, nodes, ports, nodesAndPorts };

/// Paths of the nodes that stand beside the one that is being typed, and of the ports of the one in question.
Words paths(Container const& graph, std::string const& typed, Wanted wanted)
{
    bool const withPorts = wanted == Wanted::ports || wanted == Wanted::nodesAndPorts;
    std::size_t const slash = typed.rfind('/');
    if (slash == std::string::npos)
        return {"/"};
    std::string const parentPath = slash == 0 ? "/" : typed.substr(0, slash);
    AddRefWrapper<Node> const owner = graph.findNodeFromPath(parentPath.c_str());
    AddRefWrapper<Compound> const compound = owner ? owner->getAsCompound() : AddRefWrapper<Compound>();
    Words words;
    if (!compound)
        return words;
    if (withPorts && beginsWith(typed, "/.")) {
        appendPorts(owner->inputs(), "/", words);
        appendPorts(owner->outputs(), "/", words);
    }
    for (AddRefWrapper<Node> const& node : compound->nodes()) {
        std::string const path = pathOf(*node);
        bool const isAsked = typed == path || beginsWith(typed, path + '.');
        if (wanted == Wanted::ports && !isAsked)
            words.push_back(path + '.'); // a port has to follow
        else if (wanted != Wanted::ports && (wanted != Wanted::compounds || node->isCompound()))
            words.push_back(path);
        if (node->isCompound())
            words.push_back(path + '/');
        if (withPorts && isAsked) {
            appendPorts(node->inputs(), path, words);
            appendPorts(node->outputs(), path, words);
        }
    }
    return words;
}

/// Names of the compound that the line speaks of in its first place.
Words memberNames(Container const& graph, std::string const& parentPath)
{
    AddRefWrapper<Node> const owner = graph.findNodeFromPath(parentPath.c_str());
    AddRefWrapper<Compound> const compound = owner ? owner->getAsCompound() : AddRefWrapper<Compound>();
    Words words;
    if (!compound)
        return words;
    for (AddRefWrapper<Node> const& node : compound->nodes())
        words.push_back(node->getName());
    for (AddRefWrapper<Annotation> const& annotation : compound->annotations())
        words.push_back(annotation->getName());
    return words;
}

/// @param before the words behind the edit's name and in front of the one that is being typed
Words wordsFor(Edit const& edit, kit::Document const& document, Words const& before, std::string const& typed)
{
    EditSlot const* const found = edit.slotAt(before.size());
    if (!found)
        return {};
    EditSlot const& slot = *found;
    Runtime const* const runtime = document.getRuntime();
    bool const isMember = !before.empty() && edit.slotAt(0)->name == "PARENT" && !beginsWith(typed, "/");
    if (!slot.fixed.empty())
        return slot.fixed;
    if (slot.name == "PRESET")
        return runtime ? presets(*runtime) : Words();
    if (slot.name == "TYPENAME")
        return runtime ? typeNames(*runtime) : Words();
    if (slot.name == "EDIT")
        return editWords(before);
    if (isMember && (slot.name == "NODE" || slot.name == "NAME"))
        return memberNames(document, before[0]);
    if (slot.name == "PARENT" || slot.name == "COMPOUND")
        return paths(document, typed, Wanted::compounds);
    if (slot.name == "NODE" || slot.name == "PATH")
        return paths(document, typed, Wanted::nodes);
    if (slot.name == "PORT" || slot.name == "OUTPORT" || slot.name == "INPORT")
        return paths(document, typed, Wanted::ports);
    bool const mayBePort = slot.name == "ITEM" || slot.name == "NODE-OR-PORT";
    return mayBePort ? paths(document, typed, Wanted::nodesAndPorts) : Words();
}

Words candidates(kit::Document const& document, UnfinishedLine const& line)
{
    Words rest = line.words;
    if (rest.empty())
        return editWords({});
    try {
        Edit const& edit = takeEdit(rest);
        return wordsFor(edit, document, rest, line.last);
    } catch (EditError const&) {
        return rest.size() == 1 ? editWords(rest) : Words(); // "port", with its second word to come
    }
}

} // namespace

std::string Completions::common() const
{
    std::string text = words.empty() ? std::string() : words[0];
    for (std::string const& word : words) {
        auto const differ = std::mismatch(text.begin(), text.end(), word.begin(), word.end());
        text.erase(differ.first, text.end());
    }
    return text;
}

bool Completions::isWhole() const
{
    std::size_t const last = words.size() == 1 ? words[0].find_last_not_of('"') : std::string::npos;
    return last != std::string::npos && words[0][last] != '/' && words[0][last] != '.';
}

Completions completionsOf(kit::Document const& document, std::string_view line)
{
    Completions result;
    try {
        UnfinishedLine const unfinished = unfinishedLine(line);
        result.begin = unfinished.begin;
        if (unfinished.isComment)
            return result;
        for (std::string const& word : candidates(document, unfinished)) {
            if (beginsWith(word, unfinished.last))
                result.words.push_back(quoted(word));
        }
    } catch (EditError const&) {
        return result; // nothing fits behind a slip of the quotes
    }
    std::sort(result.words.begin(), result.words.end());
    result.words.erase(std::unique(result.words.begin(), result.words.end()), result.words.end());
    return result;
}

} // namespace tool
