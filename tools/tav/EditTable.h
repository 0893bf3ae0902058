#pragma once

#include "EditScript.h"

#include <string>
#include <vector>

namespace tool {

class EditSession;

/// What may stand in one place behind the name of an edit.
struct EditSlot {
    std::string name; // "PORT", or "input|output"
    Words fixed;      // the words to choose from; empty: any word
};

/// One edit: how it is called, what it takes and does. Help, completion and the check of a line all go by it.
class Edit {
public:
    /// @param words the words behind the name, of which there are as many and such as the arguments say
    using Action = void (*)(EditSession& session, Words const& words);

    /// @param arguments "PARENT PRESET [from NODE]": names in capitals, words to choose from, at the end what
    ///        may be left out as a whole, or "..." behind a name that may come several times
    Edit(char const* name, char const* arguments, char const* help, Action action);

    std::string const& name() const { return m_name; }
    /// "create PARENT PRESET [from NODE]"
    std::string usage() const;
    std::string const& help() const { return m_help; }
    /// The place that the word of that number, counted from 0, stands in; null when nothing may stand there.
    EditSlot const* slotAt(std::size_t word) const;
    /// @throws EditError that names what was expected
    void check(Words const& words) const;
    void play(EditSession& session, Words const& words) const { m_action(session, words); }

private:
    std::string m_name;
    std::string m_arguments;
    std::string m_help;
    Action m_action;
    std::vector<EditSlot> m_slots;
    std::size_t m_needed = 0; // slots in front of what may be left out
    bool m_repeats = false;   // the last one
};

std::vector<Edit> const& allEdits();

/// What the edits take and do, a line each.
/// @param name of one edit, or what several begin with ("port"); "" for all
std::string editsAsText(std::string const& name);

/// The edit that the line calls. Takes the words of its name off the front.
/// @throws EditError
Edit const& takeEdit(Words& words);

} // namespace tool
