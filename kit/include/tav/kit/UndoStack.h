#pragma once

#include <tav/kit/Export.h>

#include <tav/String.h>

#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace TAV_marlo_v1::kit {

class Document;

/// A command as an undo stack keeps it, whatever its class. Made where the command is pushed, and deleted
/// through its table by that module's code: clear the stack before a module goes that has pushed a command.
class UndoStep {
public:
    virtual ~UndoStep() = default;
    virtual bool undo() = 0;
    virtual bool redo() = 0;
};

/// The step that keeps a command of the library. Its destruction takes nothing back.
template <class Command>
class CommandStep final : public UndoStep {
public:
    explicit CommandStep(Command&& command)
        : m_command(std::move(command))
    {
    }
    Command& command() noexcept { return m_command; }

    bool undo() override
    {
        if constexpr (std::is_void_v<decltype(m_command.undo())>) {
            m_command.undo();
            return true;
        } else {
            return m_command.undo();
        }
    }
    bool redo() override { return m_command.redo(); }

private:
    Command m_command;
};

/// Whether a command records first and acts in doit(); the others act while they record.
template <class Command, class = void>
struct HasDoit : std::false_type {
};
template <class Command>
struct HasDoit<Command, std::void_t<decltype(std::declval<Command&>().doit())>> : std::true_type {
};

/// Carries commands out and keeps them, to undo and redo them in their order.
///
/// What fails is not kept: a command that answers false is undone at once, so that a failed edit leaves
/// the graph as it was, and what can be redone stays so. Whatever one call changes reaches the editors
/// as one batch, after it is done. Until the last of them has heard, the stack is busy: a call from inside
/// a hook or notification changes nothing and answers false.
///
/// With a document, back at the state that was saved there are no unsaved changes; a change past the stack
/// stays unsaved whatever is undone. A change that a bracket of the caller's own holds back counts as one
/// past the stack: use a macro instead. Opening another graph clears the stack. The stack may outlive the
/// document, which clears it too.
class TAV_KIT_API UndoStack {
public:
    /// The document, which may be null, is not owned.
    explicit UndoStack(Document* document);
    ~UndoStack();

    /// Runs doit() and keeps the command, which is moved in. A command without doit() has acted already,
    /// past the stack, and is only kept; perform() is its better way in.
    /// @param text what undo and redo menus show; null is ""
    /// @param mergeKey pushes that follow each other with the same key, if it is not 0, are one step. An
    ///        undo, redo, save or macro in between ends it.
    /// @return false, with the graph as it was: doit() answered that, or the stack is busy
    template <class Command>
    bool push(Command&& command, char const* text, unsigned long long mergeKey = 0)
    {
        auto step = keep(std::forward<Command>(command));
        auto& kept = step->command();
        if constexpr (HasDoit<std::decay_t<Command>>::value)
            return pushStep(
                std::move(step), text, [&kept] { return kept.doit(); }, mergeKey);
        else
            return pushStep(std::move(step), text, nullptr, mergeKey);
    }

    /// As push, for a command that acts while it records: `act` gets the command and answers as it does.
    template <class Command, class Act>
    bool perform(Command&& command, char const* text, Act&& act, unsigned long long mergeKey = 0)
    {
        auto step = keep(std::forward<Command>(command));
        auto& kept = step->command();
        return pushStep(
            std::move(step), text, [&kept, &act] { return act(kept); }, mergeKey);
    }

    /// The step counts as undone or redone also when a command of it answered false.
    /// @return whether there was a step and every command of it answered true
    bool undo();
    bool redo();
    /// Undoes or redoes to where so many steps are done. @return false, with nothing done, past the end
    bool setIndex(unsigned index);
    bool canUndo() const;
    bool canRedo() const;
    /// "" when there is none.
    String undoText() const;
    String redoText() const;
    String text(unsigned index) const;

    /// What is pushed until the matching endMacro is one step; macros nest. Until then nothing is undone
    /// or redone. A macro in which nothing was kept leaves no step.
    bool beginMacro(char const* text);
    /// @return false when there is none
    bool endMacro();

    /// The number of steps, those that can be redone among them.
    unsigned count() const;
    /// How many of them are done.
    unsigned index() const;
    /// At most so many steps, the oldest go first; 0, as at first, is any number.
    /// @return false, with nothing changed, unless the stack is empty
    bool setLimit(unsigned limit);
    unsigned limit() const;
    /// Forgets all steps and changes nothing else; a clear while busy waits for the end.
    void clear();

    /// Whether the stack is where it was when the document was saved, or setClean() called, last.
    bool isClean() const;
    /// For a stack without document: the present state is a saved one.
    void setClean();

    /// Called after every change of what the queries answer, never in the middle of one. The callback is
    /// deleted by the code of the module that made it: set another before that module goes.
    void setChangeCallback(std::function<void()> callback);

private:
    template <class Command>
    static auto keep(Command&& command)
    {
        static_assert(!std::is_lvalue_reference_v<Command>, "commands are moved in: push(std::move(command), ...)");
        return std::make_unique<CommandStep<Command>>(std::forward<Command>(command));
    }
    /// @param run the first run; empty when the step has acted already
    bool pushStep(std::unique_ptr<UndoStep> step, char const* text, std::function<bool()> const& run,
                  unsigned long long mergeKey);

    UndoStack(UndoStack const&) = delete;
    UndoStack& operator=(UndoStack const&) = delete;

    struct Impl;
    std::shared_ptr<Impl> m_impl; // never null; a run keeps it, as an editor may end the stack meanwhile
};

} // namespace TAV_marlo_v1::kit
