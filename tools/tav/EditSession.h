#pragma once

#include "EditScript.h"

#include <tav/kit/Document.h>
#include <tav/kit/UndoStack.h>

#include <string>
#include <utility>

namespace tool {

/// What a session needs of whoever runs it.
class EditHost {
public:
    virtual ~EditHost() = default;
    /// What list, show, dump and help say.
    virtual void print(std::string const& text) = 0;
    /// What came of an edit that its line does not tell, such as the name a new node got.
    virtual void note(std::string const& text) = 0;
    /// Writes the graph. @param path empty for the file it came from. @throws EditError
    virtual void save(std::string const& path) = 0;
};

/// Plays edits, a line each, on a document, every one a command on the undo stack.
class EditSession {
public:
    /// Both have to live longer.
    EditSession(TAV_marlo_v1::kit::Document& document, EditHost& host);

    /// @return what is wrong with the line, which then changed nothing; "" when it was played
    std::string play(std::string_view line);
    /// Ends the groups that are still open, as a script ought to. @return what is wrong if there are some
    std::string finish();
    /// Takes back every edit that is not taken back yet. @return whether all could be
    bool undoAll();
    /// Makes again all that is taken back. @return whether all could be
    bool redoAll();
    /// The script asked to end here.
    bool isOver() const noexcept { return m_isOver; }

    // ---- for the edits

    TAV_marlo_v1::kit::Document& document() noexcept { return m_document; }
    EditHost& host() noexcept { return m_host; }
    /// Plays a command and keeps it. @throws EditError, with nothing changed, when the graph refuses it
    template <class Command>
    void push(Command&& command)
    {
        if (!m_stack.push(std::forward<Command>(command), m_line.c_str()))
            throw EditError(kRefused);
    }
    /// As push, for a command that acts while it records: `act` gets it, tells it what to do, answers as it does.
    template <class Command, class Act>
    void perform(Command&& command, Act&& act)
    {
        if (!m_stack.perform(std::forward<Command>(command), m_line.c_str(), std::forward<Act>(act)))
            throw EditError(kRefused);
    }
    void undo(unsigned count);
    void redo(unsigned count);
    void beginGroup(std::string const& text);
    void endGroup();
    void quit() noexcept { m_isOver = true; }

private:
    static constexpr char kRefused[] = "the graph does not allow it";

    unsigned redoCount() const { return m_stack.count() - m_stack.index(); }
    void requireNoGroup() const;

    TAV_marlo_v1::kit::Document& m_document;
    EditHost& m_host;
    TAV_marlo_v1::kit::UndoStack m_stack;
    std::string m_line; // which is being played; names its edit
    unsigned m_openGroups = 0;
    bool m_isOver = false;
};

} // namespace tool
