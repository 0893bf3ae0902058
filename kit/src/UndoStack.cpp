#include <tav/kit/UndoStack.h>

#include "DocumentImpl.h"

#include <tav/QtText.h>

#include <QtGui/QUndoCommand>
#include <QtGui/QUndoStack>

#include <algorithm>
#include <optional>
#include <vector>

namespace TAV_marlo_v1::kit {

namespace {

constexpr int kNeverMerged = -1;

String toText(QString const& text)
{
    return String(text.toUtf8().constData());
}

/// One entry of Qt's stack: a step, and those that were merged into it.
class Entry final : public QUndoCommand {
public:
    /// @param allDone is cleared when a step answers false
    Entry(std::unique_ptr<UndoStep> step, QString const& text, int group, bool& allDone)
        : QUndoCommand(text)
        , m_group(group)
        , m_allDone(&allDone)
    {
        m_steps.push_back(std::move(step));
    }

    int id() const override { return m_group; }

    bool mergeWith(QUndoCommand const* other) override
    {
        // Of the same id, and so of this class. Qt's stack deletes it afterwards.
        auto& steps = static_cast<Entry const*>(other)->m_steps;
        std::move(steps.begin(), steps.end(), std::back_inserter(m_steps));
        return true;
    }

    void undo() override
    {
        for (auto step = m_steps.rbegin(); step != m_steps.rend(); ++step)
            *m_allDone = (*step)->undo() && *m_allDone;
    }

    void redo() override
    {
        // Qt's stack runs what it is given; here the first run is over by then.
        if (std::exchange(m_isNew, false))
            return;
        for (std::unique_ptr<UndoStep> const& step : m_steps)
            *m_allDone = step->redo() && *m_allDone;
    }

private:
    mutable std::vector<std::unique_ptr<UndoStep>> m_steps; // in the order of their runs; handed on in merging
    int m_group;
    bool* m_allDone;
    bool m_isNew = true;
};

} // namespace

struct UndoStack::Impl final : DocumentHistory {
    Document* document = nullptr;
    Document::Impl* documentRecord = nullptr; // both null once the document died
    QUndoStack stack;
    std::function<void()> changeCallback;

    // Macros are begun in Qt's stack when something is kept in them.
    std::vector<QString> macrosToBegin;
    unsigned begunMacros = 0;
    bool isCleanInsideMacro = false; // saved in the middle of a macro, and nothing was kept since

    unsigned long long mergeKey = 0; // of the last push; 0 once it is over
    int mergeGroup = 0;

    bool isBusy = false;
    bool isInStep = false; // commands are running, and Qt's stack may be in the middle of a call
    bool clearsAfterStep = false;
    bool allDone = true;

    bool isInMacro() const { return begunMacros > 0 || !macrosToBegin.empty(); }

    void tellChange()
    {
        // A copy: the call may end the stack or set another.
        if (std::function<void()> const callback = changeCallback)
            callback();
    }

    void beginMacros()
    {
        for (QString const& text : macrosToBegin) {
            stack.beginMacro(text);
            ++begunMacros;
        }
        macrosToBegin.clear();
    }

    void keepEntry(std::unique_ptr<UndoStep> step, QString const& text, unsigned long long key)
    {
        if (key != mergeKey || key == 0)
            mergeGroup = (mergeGroup + 1) & 0xfffffff;
        mergeKey = key;
        beginMacros();
        isCleanInsideMacro = false;
        stack.push(new Entry(std::move(step), text, key == 0 ? kNeverMerged : mergeGroup, allDone));
    }

    /// @return false when that has to wait for the end of the step
    bool forgetSteps()
    {
        clearsAfterStep = isInStep;
        if (isInStep)
            return false;
        mergeKey = 0;
        macrosToBegin.clear();
        begunMacros = 0;
        isCleanInsideMacro = false;
        stack.clear();
        return true;
    }

    void clear()
    {
        // Without steps the stack cannot say any more what is unsaved.
        bool const isUnsaved = !isAtSavedState();
        if (forgetSteps() && isUnsaved && documentRecord)
            documentRecord->watch.changed = true;
        if (!isBusy)
            tellChange();
    }

    // ---- what the document tells

    void onSaved() override
    {
        mergeKey = 0;
        if (isInStep || begunMacros > 0) {
            // No index leads back here, but the end of a macro in which nothing more is kept.
            stack.resetClean();
            isCleanInsideMacro = !isInStep;
        } else {
            stack.setClean();
        }
        if (!isBusy)
            tellChange();
    }

    void onReplaced() override
    {
        forgetSteps();
        if (!isBusy)
            tellChange();
    }

    void onDocumentDied() override
    {
        document = nullptr;
        documentRecord = nullptr;
        clear();
    }

    bool isAtSavedState() const noexcept override { return isCleanInsideMacro || stack.isClean(); }

    // ---- the time in which the stack acts

    /// From the first change to the moment when every editor has heard.
    class Run {
    public:
        explicit Run(std::shared_ptr<Impl> impl)
            : m_impl(std::move(impl))
        {
            if (m_impl->document)
                m_bracket.emplace(m_impl->document->createChangeBracket(nullptr));
            setActing(true);
            m_impl->isBusy = true;
            m_impl->isInStep = true;
            m_impl->allDone = true;
        }
        Run(Run const&) = delete;
        Run& operator=(Run const&) = delete;

        ~Run()
        {
            m_impl->isInStep = false;
            if (m_impl->clearsAfterStep)
                m_impl->clear();
            m_bracket.reset(); // the editors hear now
            setActing(false);
            m_impl->isBusy = false;
            m_impl->tellChange();
        }

    private:
        void setActing(bool on)
        {
            if (m_impl->documentRecord)
                m_impl->documentRecord->watch.stackIsActing = on;
        }

        std::shared_ptr<Impl> m_impl;
        std::optional<ChangeBracket> m_bracket;
    };

    /// @return whether every command of the steps answered true
    template <class Move>
    static bool move(std::shared_ptr<Impl> const& impl, Move moveStack)
    {
        Run const run(impl);
        impl->mergeKey = 0;
        moveStack(impl->stack);
        // What was left out can't be known: no index stands for the saved state then.
        if (!impl->allDone && impl->documentRecord)
            impl->documentRecord->watch.changed = true;
        return impl->allDone;
    }
};

UndoStack::UndoStack(Document* document)
    : m_impl(std::make_shared<Impl>())
{
    if (!document)
        return;
    m_impl->document = document;
    m_impl->documentRecord = document->m_impl.get();
    m_impl->documentRecord->histories.push_back(m_impl.get());
}

UndoStack::~UndoStack()
{
    m_impl->changeCallback = nullptr;
    Document::Impl* const record = m_impl->documentRecord;
    m_impl->clear();
    if (!record)
        return;
    std::vector<DocumentHistory*>& histories = record->histories;
    histories.erase(std::remove(histories.begin(), histories.end(), m_impl.get()), histories.end());
    record->watch.stackIsActing = false; // what a run has still to tell belongs to no step any more
    m_impl->document = nullptr;
    m_impl->documentRecord = nullptr;
}

bool UndoStack::pushStep(std::unique_ptr<UndoStep> step, char const* text, std::function<bool()> const& run,
                         unsigned long long mergeKey)
{
    std::shared_ptr<Impl> const impl = m_impl;
    if (impl->isBusy) {
        if (!run)
            step->undo();
        return false;
    }
    Impl::Run const acting(impl);
    if (run && !run()) {
        // Its answer says nothing: it may count what doit() has left out.
        step->undo();
        return false;
    }
    impl->keepEntry(std::move(step), toQString(text), mergeKey);
    return true;
}

bool UndoStack::undo()
{
    return canUndo() && Impl::move(m_impl, [](QUndoStack& stack) { stack.undo(); });
}

bool UndoStack::redo()
{
    return canRedo() && Impl::move(m_impl, [](QUndoStack& stack) { stack.redo(); });
}

bool UndoStack::setIndex(unsigned index)
{
    if (m_impl->isBusy || m_impl->isInMacro() || index > count())
        return false;
    return Impl::move(m_impl, [index](QUndoStack& stack) { stack.setIndex(static_cast<int>(index)); });
}

bool UndoStack::canUndo() const
{
    return !m_impl->isBusy && !m_impl->isInMacro() && m_impl->stack.canUndo();
}

bool UndoStack::canRedo() const
{
    return !m_impl->isBusy && !m_impl->isInMacro() && m_impl->stack.canRedo();
}

String UndoStack::undoText() const
{
    return toText(m_impl->stack.undoText());
}

String UndoStack::redoText() const
{
    return toText(m_impl->stack.redoText());
}

String UndoStack::text(unsigned index) const
{
    return index < count() ? toText(m_impl->stack.text(static_cast<int>(index))) : String();
}

bool UndoStack::beginMacro(char const* text)
{
    if (m_impl->isBusy)
        return false;
    m_impl->mergeKey = 0;
    m_impl->macrosToBegin.push_back(toQString(text));
    m_impl->tellChange();
    return true;
}

bool UndoStack::endMacro()
{
    if (m_impl->isBusy || !m_impl->isInMacro())
        return false;
    m_impl->mergeKey = 0;
    if (!m_impl->macrosToBegin.empty()) {
        m_impl->macrosToBegin.pop_back();
    } else {
        m_impl->stack.endMacro();
        if (--m_impl->begunMacros == 0 && std::exchange(m_impl->isCleanInsideMacro, false))
            m_impl->stack.setClean();
    }
    m_impl->tellChange();
    return true;
}

unsigned UndoStack::count() const
{
    return static_cast<unsigned>(m_impl->stack.count());
}

unsigned UndoStack::index() const
{
    return static_cast<unsigned>(m_impl->stack.index());
}

bool UndoStack::setLimit(unsigned limit)
{
    if (m_impl->isBusy || m_impl->isInMacro() || count() > 0)
        return false;
    m_impl->stack.setUndoLimit(static_cast<int>(limit));
    return true;
}

unsigned UndoStack::limit() const
{
    return static_cast<unsigned>(m_impl->stack.undoLimit());
}

void UndoStack::clear()
{
    m_impl->clear();
}

bool UndoStack::isClean() const
{
    return m_impl->isAtSavedState();
}

void UndoStack::setClean()
{
    m_impl->onSaved();
}

void UndoStack::setChangeCallback(std::function<void()> callback)
{
    m_impl->changeCallback = std::move(callback);
}

} // namespace TAV_marlo_v1::kit
