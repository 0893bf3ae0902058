#include "EditTable.h"

#include "EditActions.h"

#include <algorithm>
#include <numeric>

namespace tool {

namespace {

Words split(std::string const& text, char separator)
{
    Words parts;
    for (std::size_t begin = 0; begin < text.size();) {
        std::size_t const end = std::min(text.find(separator, begin), text.size());
        parts.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

/// "a", "b" or "c"
std::string choiceOf(Words const& words)
{
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i)
        text += (i == 0 ? "\"" : i + 1 == words.size() ? " or \"" : ", \"") + words[i] + '"';
    return text;
}

std::string nameOf(EditSlot const& slot)
{
    return slot.fixed.empty() ? slot.name : choiceOf(slot.fixed);
}

/// The number of letters to put in, leave out or change to make one word of the other.
std::size_t distance(std::string const& a, std::string const& b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < b.size(); ++j) {
            std::size_t const above = row[j + 1];
            row[j + 1] = std::min({above + 1, row[j] + 1, diagonal + (a[i] == b[j] ? 0 : 1)});
            diagonal = above;
        }
    }
    return row.back();
}

std::string guessFor(std::string const& word)
{
    std::string best;
    std::size_t least = std::min<std::size_t>(3, 1 + word.size() / 2); // what differs more is no slip of the finger
    for (Edit const& edit : allEdits()) {
        std::size_t const differs = word.size() < 32 ? distance(word, edit.name()) : least;
        if (differs < least) {
            least = differs;
            best = edit.name();
        }
    }
    return best.empty() ? R"(; "help" lists them all)" : "; did you mean \"" + best + "\"?";
}

/// What follows "port" and "annotation".
Words secondWords(std::string const& first)
{
    Words words;
    for (Edit const& edit : allEdits())
        if (edit.name().compare(0, first.size() + 1, first + ' ') == 0)
            words.push_back(edit.name().substr(first.size() + 1));
    return words;
}

} // namespace

Edit::Edit(char const* name, char const* arguments, char const* help, Action action)
    : m_name(name)
    , m_arguments(arguments)
    , m_help(help)
    , m_action(action)
{
    bool isOptional = false;
    for (std::string word : split(m_arguments, ' ')) {
        isOptional = isOptional || word[0] == '[';
        word.erase(std::remove_if(word.begin(), word.end(), [](char c) { return c == '[' || c == ']'; }), word.end());
        m_repeats = word.size() > 3 && word.compare(word.size() - 3, 3, "...") == 0;
        if (m_repeats)
            word.resize(word.size() - 3);
        bool const isName = word[0] >= 'A' && word[0] <= 'Z';
        m_slots.push_back({word, isName ? Words() : split(word, '|')});
        m_needed += isOptional ? 0 : 1;
    }
}

std::string Edit::usage() const
{
    return m_arguments.empty() ? m_name : m_name + ' ' + m_arguments;
}

EditSlot const* Edit::slotAt(std::size_t word) const
{
    if (word < m_slots.size())
        return &m_slots[word];
    return m_repeats ? &m_slots.back() : nullptr;
}

void Edit::check(Words const& words) const
{
    for (std::size_t i = 0; i < words.size(); ++i) {
        EditSlot const* const slot = slotAt(i);
        if (!slot)
            throw EditError("expected the end of the line, found \"" + words[i] + "\"; " + usage());
        if (!slot->fixed.empty() && std::find(slot->fixed.begin(), slot->fixed.end(), words[i]) == slot->fixed.end())
            throw EditError("expected " + nameOf(*slot) + ", found \"" + words[i] + "\"; " + usage());
    }
    bool const isWhole = words.size() >= m_slots.size() || words.size() == m_needed;
    if (!isWhole)
        throw EditError("expected " + nameOf(m_slots[words.size()]) + ", found the end of the line; " + usage());
}

std::vector<Edit> const& allEdits()
{
    static std::vector<Edit> const edits{
        {"create", "PARENT PRESET [from NODE]", "makes a node from a preset, fed by another if that is named", create},
        {"io", "PARENT input|output", "makes the node that shows a compound's ports inside", createIO},
        {"remove", "PATH...", "removes nodes with their connections", removeNodes},
        {"rename", "PATH NEWNAME", "gives a node another name; a taken one is counted up", renameNode},
        {"connect", "OUTPORT INPORT [metadata]", "connects, in place of what fed the input; may copy metadata",
         connect},
        {"disconnect", "OUTPORT INPORT", "cuts a connection", disconnect},
        {"disconnect-all", "NODE-OR-PORT", "cuts all connections of a node or port", disconnectAll},
        {"chain", "NODE NODE...", "connects each node to the next by their default ports", chain},
        {"set", "PORT VALUE", "sets a port's value; several are written {a,b}", setValue},
        {"reset", "PORT", "takes a port's values away", resetValue},
        {"type", "PORT TYPENAME", "changes a port's data type; \"\" is none", setType},
        {"flag", "PORT exposed|fan-in|unconnectable on|off", "sets or clears a flag of a port", setFlag},
        {"metadata", "ITEM KEY VALUE...", "sets an entry of a node, a port or an annotation", setMetadata},
        {"unset-metadata", "ITEM KEY", "removes such an entry", unsetMetadata},
        {"port create", "NODE input|output NAME TYPENAME", "adds a port; \"port.member\" names a member", createPort},
        {"port remove", "PORT", "removes a port with its connections", removePort},
        {"port rename", "PORT NEWNAME", "gives a port another name", renamePort},
        {"port move", "PORT INDEX", "moves a port within its list; the first is 0", movePort},
        {"group", "PARENT NAME NODE...", "moves nodes and annotations into a new compound", group},
        {"explode", "COMPOUND", "replaces a compound by its contents", explode},
        {"backdrop", "PARENT NAME", "makes a backdrop", makeBackdrop},
        {"note", "PARENT NAME TEXT", "makes a sticky note", makeNote},
        {"annotation remove", "PARENT NAME", "removes a backdrop or note", removeAnnotation},
        {"annotation rename", "PARENT NAME NEWNAME", "gives a backdrop or note another name", renameAnnotation},
        {"watch", "PORT", "sets a watch point on a port", watch},
        {"unwatch", "PORT", "removes a port's watch point", unwatch},
        {"copy", "PARENT NAME...", "keeps nodes and annotations for paste; no edit to undo", copyItems},
        {"paste", "PARENT", "adds what was copied", pasteItems},
        {"undo", "[N]", "takes back the last edit, or the last N", undo},
        {"redo", "[N]", "makes what was taken back again", redo},
        {"begin", "TEXT", "makes one edit of all up to \"end\"", beginGroup},
        {"end", "", "ends what \"begin\" began", endGroup},
        {"list", "[PATH]", "lists what is in a compound", list},
        {"show", "NODE-OR-PORT", "shows a node or a port", show},
        {"dump", "", "lists the whole graph", dump},
        {"save", "[FILE]", "writes the graph as it is now, to its file or another", save},
        {"help", "[EDIT...]", "lists the edits, or explains one", help},
        {"quit", "", "ends the script here", quit},
    };
    return edits;
}

std::string editsAsText(std::string const& name)
{
    std::vector<Edit const*> asked;
    std::size_t width = 0;
    for (Edit const& edit : allEdits()) {
        if (!name.empty() && edit.name() != name && edit.name().rfind(name + ' ', 0) != 0)
            continue;
        asked.push_back(&edit);
        width = std::max(width, edit.usage().size());
    }
    std::string text;
    for (Edit const* edit : asked)
        text += edit->usage() + std::string(width - edit->usage().size() + 2, ' ') + edit->help() + '\n';
    return text;
}

Edit const& takeEdit(Words& words)
{
    for (Edit const& edit : allEdits()) {
        Words const name = split(edit.name(), ' ');
        if (words.size() >= name.size() && std::equal(name.begin(), name.end(), words.begin())) {
            words.erase(words.begin(), words.begin() + static_cast<std::ptrdiff_t>(name.size()));
            return edit;
        }
    }
    Words const seconds = secondWords(words[0]);
    if (seconds.empty())
        throw EditError("there is no edit \"" + words[0] + '"' + guessFor(words[0]));
    throw EditError("expected " + choiceOf(seconds) + " behind \"" + words[0] + "\", found "
                    + (words.size() > 1 ? '"' + words[1] + '"' : std::string("the end of the line")));
}

} // namespace tool
