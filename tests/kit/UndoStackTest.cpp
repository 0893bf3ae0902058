#include <tav/kit/UndoStack.h>

#include <tav/kit/Document.h>
#include <tav/kit/StandardRuntime.h>
#include <tav/tav.h>

#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

using namespace TAV_marlo_v1;

namespace {

/// Writes down what is done to it; of the shape of the library's commands whose undo answers.
class LoggedCommand {
public:
    LoggedCommand(QStringList& log, char const* name, bool answer = true)
        : m_log(&log)
        , m_name(name)
        , m_answer(answer)
    {
        ++alive;
    }
    LoggedCommand(LoggedCommand&& other) noexcept
        : LoggedCommand(*other.m_log, other.m_name, other.m_answer)
    {
    }
    LoggedCommand(LoggedCommand const&) = delete;
    LoggedCommand& operator=(LoggedCommand const&) = delete;
    ~LoggedCommand() { --alive; }

    bool doit() { return note("do "); }
    bool redo() { return note("redo "); }
    bool undo() { return note("undo "); }

    static int alive;

private:
    bool note(char const* what)
    {
        *m_log << QString(what) + m_name;
        return m_answer;
    }
    QStringList* m_log;
    char const* m_name;
    bool m_answer;
};
int LoggedCommand::alive = 0;

/// Renames the first node of a document; undo() answers nothing.
class RenameCommand {
public:
    RenameCommand(kit::Document& document, char const* name)
        : m_document(&document)
        , m_name(name)
    {
    }
    bool doit()
    {
        m_old = node()->getName();
        node()->setName(m_name.c_str());
        return true;
    }
    bool redo() { return doit(); }
    void undo() { node()->setName(m_old.c_str()); }

private:
    AddRefWrapper<Node> node() const { return m_document->getTopCompound()->nodes()[0u]; }
    kit::Document* m_document;
    std::string m_name;
    std::string m_old;
};

/// Acts when it is told to, before it can be pushed.
class ActingRename {
public:
    bool act(kit::Document& document, char const* name)
    {
        m_rename = std::make_unique<RenameCommand>(document, name);
        return m_rename->doit();
    }
    bool redo() { return m_rename->redo(); }
    bool undo()
    {
        m_rename->undo();
        return true;
    }

private:
    std::unique_ptr<RenameCommand> m_rename;
};

/// Adds a node, and answers that something went wrong.
class FailingCommand {
public:
    explicit FailingCommand(kit::Document& document)
        : m_document(&document)
    {
    }
    bool doit() { return m_document->getTopCompound()->createNewCompound("half done") && false; }
    bool redo() { return doit(); }
    bool undo() { return m_document->getTopCompound()->removeNode("half done") && false; }

private:
    kit::Document* m_document;
};

/// Runs a function at every change of a node.
class Reaction final : public HostEditor {
public:
    std::function<void()> react = [] {};
    int calls = 0;
    void tav_onNodeChange(ENodeChangeType, AddRefWrapper<Compound> const&, AddRefWrapper<Node> const&) override
    {
        ++calls;
        react();
    }
};

} // namespace

// ---- the order of steps

struct UndoStackSteps : testing::Test {
    QStringList log;
    kit::UndoStack stack{nullptr};

    bool push(char const* name, unsigned long long key = 0, bool answer = true)
    {
        return stack.push(LoggedCommand(log, name, answer), name, key);
    }
    QStringList taken()
    {
        QStringList result;
        result.swap(log);
        return result;
    }
};

TEST_F(UndoStackSteps, EachIsDoneOnceUndoneInReverseAndRedoneInOrder)
{
    EXPECT_FALSE(stack.undo());
    EXPECT_TRUE(push("a") && push("b"));
    EXPECT_STREQ(stack.undoText().toChar(), "b");
    EXPECT_TRUE(stack.undo() && stack.undo());
    EXPECT_FALSE(stack.canUndo());
    EXPECT_STREQ(stack.redoText().toChar(), "a");
    EXPECT_TRUE(stack.redo() && stack.redo());
    EXPECT_FALSE(stack.redo());
    EXPECT_TRUE(stack.setIndex(0));
    EXPECT_FALSE(stack.setIndex(3));
    EXPECT_EQ(taken(), QStringList({"do a", "do b", "undo b", "undo a", "redo a", "redo b", "undo b", "undo a"}));
    EXPECT_EQ(stack.index(), 0u);
    EXPECT_EQ(stack.count(), 2u);
    EXPECT_STREQ(stack.text(1).toChar(), "b");
    EXPECT_STREQ(stack.text(2).toChar(), "");
}

TEST_F(UndoStackSteps, CommandsLiveUntilNothingCanBringThemBack)
{
    {
        kit::UndoStack other(nullptr);
        EXPECT_TRUE(other.setLimit(2));
        for (char const* name : {"a", "b", "c"})
            other.push(LoggedCommand(log, name), name);
        EXPECT_EQ(LoggedCommand::alive, 2) << "the limit";
        EXPECT_FALSE(other.setLimit(3));
        EXPECT_TRUE(other.undo() && other.undo() && !other.undo());
        other.push(LoggedCommand(log, "d"), "d");
        EXPECT_EQ(LoggedCommand::alive, 1) << "what could be redone";
        other.push(LoggedCommand(log, "e", false), "e");
        EXPECT_EQ(LoggedCommand::alive, 1) << "what failed";
        log.clear();
    }
    EXPECT_EQ(LoggedCommand::alive, 0);
    EXPECT_EQ(taken(), QStringList()) << "dying takes nothing back";
}

TEST_F(UndoStackSteps, AFailedPushIsTakenBackAndLeavesWhatCanBeRedone)
{
    push("a");
    stack.undo();
    taken();
    EXPECT_FALSE(push("bad", 0, false));
    EXPECT_EQ(taken(), QStringList({"do bad", "undo bad"}));
    EXPECT_EQ(stack.count(), 1u);
    EXPECT_TRUE(stack.redo());
}

TEST_F(UndoStackSteps, AMacroIsOneStepWhateverFailsOrNestsInIt)
{
    push("before");
    EXPECT_TRUE(stack.beginMacro("outer"));
    push("a");
    EXPECT_TRUE(stack.beginMacro("inner"));
    push("b");
    EXPECT_FALSE(push("bad", 0, false));
    EXPECT_FALSE(stack.undo() || stack.canUndo() || stack.setIndex(0)) << "in the middle of a macro";
    EXPECT_TRUE(stack.endMacro());
    EXPECT_TRUE(stack.beginMacro("empty") && stack.endMacro() && stack.endMacro());
    EXPECT_FALSE(stack.endMacro());
    taken();
    EXPECT_EQ(stack.count(), 2u);
    EXPECT_STREQ(stack.undoText().toChar(), "outer");
    EXPECT_TRUE(stack.undo() && stack.redo());
    EXPECT_EQ(taken(), QStringList({"undo b", "undo a", "redo a", "redo b"}));
    EXPECT_TRUE(stack.undo() && stack.beginMacro("nothing") && stack.endMacro());
    EXPECT_TRUE(stack.canRedo()) << "an empty macro is no step";
}

TEST_F(UndoStackSteps, PushesOfOneKeyInARowAreOneStep)
{
    push("a", 7);
    push("b", 7);
    push("c", 8);
    push("d");
    push("e");
    EXPECT_EQ(stack.count(), 4u) << "ab, c, d, e";
    EXPECT_TRUE(stack.setIndex(0));
    taken();
    EXPECT_TRUE(stack.redo() && stack.undo());
    EXPECT_EQ(taken(), QStringList({"redo a", "redo b", "undo b", "undo a"}));
}

TEST_F(UndoStackSteps, WhatComesBetweenEndsTheMerging)
{
    std::function<void()> const betweens[] = {
        [this] { push("other"), stack.undo(); },
        [this] { stack.setClean(); },
        [this] { stack.beginMacro("m"), stack.endMacro(); },
        [this] { stack.undo(), stack.redo(); },
    };
    for (auto const& between : betweens) {
        stack.clear();
        push("a", 7);
        between();
        push("b", 7);
        EXPECT_EQ(stack.count(), 2u) << &between - betweens;
    }
}

TEST_F(UndoStackSteps, AStepThatAnswersFalseIsPassedAllTheSame)
{
    stack.perform(LoggedCommand(log, "a", false), "a", [](LoggedCommand&) { return true; });
    EXPECT_FALSE(stack.undo());
    EXPECT_EQ(stack.index(), 0u);
    EXPECT_FALSE(stack.redo());
    EXPECT_EQ(stack.index(), 1u);
    EXPECT_EQ(taken(), QStringList({"undo a", "redo a"}));
}

TEST_F(UndoStackSteps, TheCallbackHearsOfEveryChange)
{
    QStringList heard;
    stack.setChangeCallback([&] { heard << QString::number(stack.index()) + stack.undoText().toChar(); });
    push("a");
    stack.undo();
    stack.redo();
    stack.clear();
    EXPECT_EQ(heard, QStringList({"1a", "0", "1a", "0"}));
}

template <class... Commands>
unsigned keptOf(kit::UndoStack& stack)
{
    return (0u + ... + unsigned(stack.push(Commands(), "")));
}

TEST_F(UndoStackSteps, EveryCommandThatCanBeUndoneFits)
{
    unsigned const kept = keptOf<ConnectNodesCommand, CreateCompoundCommand, ExplodeCompoundCommand, MetadataCommand,
                                 ModifyCompoundAnnotationCommand, ModifyCompoundPortCommand, ModifyNodePortCommand,
                                 NewConnectCommand, NodeCommand, PasteCommand, WatchPointCommand>(stack);
    EXPECT_EQ(kept, 0u) << "empty ones do nothing";
    keptOf<ConnectCommand, RecursiveDisconnectAllCommand>(stack);
    EXPECT_EQ(stack.count(), 2u) << "these act before";
}

// ---- with a document

struct UndoStackDocument : testing::Test {
    kit::StandardRuntime runtime;
    std::unique_ptr<kit::Document> document = std::make_unique<kit::Document>(&runtime);
    std::unique_ptr<kit::UndoStack> stack = std::make_unique<kit::UndoStack>(document.get());
    QTemporaryDir folder;

    void SetUp() override
    {
        StatusStr const status = document->open((std::string(TAV_EXAMPLES_DIR) + "/graphs/nesting.xml").c_str());
        ASSERT_STREQ(status.getErrorString(), "");
    }
    bool rename(char const* name, unsigned long long key = 0)
    {
        return stack->push(RenameCommand(*document, name), name, key);
    }
    void save()
    {
        StatusStr const status = document->saveAs(folder.filePath("saved.xml").toStdString().c_str());
        ASSERT_STREQ(status.getErrorString(), "");
    }
    std::string text() { return document->getTopCompound()->saveToString(nullptr).toChar(); }
    bool unsaved() const { return document->hasUnsavedChanges(); }
};

TEST_F(UndoStackDocument, BackAtTheSavedStateNothingIsUnsaved)
{
    rename("a");
    EXPECT_TRUE(unsaved());
    stack->undo();
    EXPECT_FALSE(unsaved());
    stack->redo();
    save();
    EXPECT_TRUE(!unsaved() && stack->isClean());
    stack->undo();
    EXPECT_TRUE(unsaved());
    rename("b");
    stack->undo();
    EXPECT_TRUE(unsaved()) << "the way to what was saved is gone";
    save();
    EXPECT_FALSE(unsaved());
}

TEST_F(UndoStackDocument, AFailedEditLeavesTheGraphAndTheSavedStateAsTheyWere)
{
    std::string const before = text();
    EXPECT_FALSE(stack->push(FailingCommand(*document), "half"));
    EXPECT_EQ(text(), before);
    EXPECT_FALSE(unsaved());
    EXPECT_EQ(stack->count(), 0u);
}

TEST_F(UndoStackDocument, AChangePastTheStackStaysUnsaved)
{
    rename("a");
    document->getTopCompound()->nodes()[1u]->setName("elsewhere");
    stack->undo();
    EXPECT_TRUE(unsaved());
    save();

    // One that an editor makes because of an edit is no part of the edit.
    Reaction editor;
    editor.react = [this] { document->getTopCompound()->setMetadataValue("note", "seen"); };
    document->getEditorNotifier().registerEditor(&editor);
    rename("b");
    editor.react = [] {};
    stack->undo();
    EXPECT_TRUE(unsaved());
}

TEST_F(UndoStackDocument, ACommandThatActsAtOnceIsPerformedByTheStack)
{
    EXPECT_TRUE(stack->perform(ActingRename(), "acting", [this](ActingRename& c) { return c.act(*document, "a"); }));
    EXPECT_STREQ(document->getTopCompound()->nodes()[0u]->getName(), "a");
    stack->undo();
    EXPECT_FALSE(unsaved());

    ActingRename early;
    early.act(*document, "b");
    EXPECT_TRUE(stack->push(std::move(early), "early"));
    EXPECT_TRUE(stack->undo());
    EXPECT_STREQ(document->getTopCompound()->nodes()[0u]->getName(), "three");
    EXPECT_TRUE(unsaved()) << "it acted past the stack";
}

TEST_F(UndoStackDocument, WhatIsForgottenStaysUnsaved)
{
    rename("a");
    stack->clear();
    EXPECT_TRUE(unsaved());
    save();
    rename("b");
    stack.reset();
    EXPECT_TRUE(unsaved());
}

TEST_F(UndoStackDocument, SavingInsideAMacroCountsWhereTheMacroEndsUnchanged)
{
    stack->beginMacro("m");
    rename("a");
    save();
    EXPECT_FALSE(unsaved());
    stack->endMacro();
    EXPECT_FALSE(unsaved());
    stack->undo();
    EXPECT_TRUE(unsaved());
    stack->redo();
    EXPECT_FALSE(unsaved());

    stack->beginMacro("n");
    rename("b");
    save();
    rename("c");
    EXPECT_TRUE(unsaved());
    stack->endMacro();
    stack->undo();
    EXPECT_TRUE(unsaved()) << "the state inside the macro comes never back";
}

TEST_F(UndoStackDocument, AMergedStepEndsWhereItWasSaved)
{
    rename("a", 1);
    rename("b", 1);
    save();
    rename("c", 1);
    EXPECT_EQ(stack->count(), 2u);
    stack->undo();
    EXPECT_FALSE(unsaved());
    EXPECT_STREQ(document->getTopCompound()->nodes()[0u]->getName(), "b");
}

TEST_F(UndoStackDocument, EditorsHearAMacroUndoneInOneBatch)
{
    stack->beginMacro("m");
    for (char const* name : {"a", "b", "c"})
        rename(name);
    stack->endMacro();
    Reaction editor;
    editor.react = [this] { EXPECT_STREQ(document->getTopCompound()->nodes()[0u]->getName(), "three"); };
    document->getEditorNotifier().registerEditor(&editor);
    EXPECT_TRUE(stack->undo());
    EXPECT_GT(editor.calls, 0);
}

TEST_F(UndoStackDocument, CallsFromInsideANotificationAreRefused)
{
    rename("a");
    Reaction editor;
    editor.react = [this] {
        EXPECT_FALSE(stack->undo() || stack->redo() || stack->setIndex(0) || stack->beginMacro("m"));
        EXPECT_FALSE(rename("inside"));
    };
    document->getEditorNotifier().registerEditor(&editor);
    EXPECT_TRUE(rename("b") && stack->undo());
    EXPECT_GT(editor.calls, 1);
    EXPECT_EQ(stack->count(), 2u);
    EXPECT_STREQ(document->getTopCompound()->nodes()[0u]->getName(), "a");
}

TEST_F(UndoStackDocument, AnEditorMaySaveClearOrEndThingsFromInsideANotification)
{
    Reaction editor;
    document->getEditorNotifier().registerEditor(&editor);
    editor.react = [this] { save(); };
    rename("a");
    EXPECT_FALSE(unsaved());
    stack->undo();
    EXPECT_FALSE(unsaved()) << "saved again";

    editor.react = [this] { stack->clear(); };
    rename("b");
    EXPECT_EQ(stack->count(), 0u);
    EXPECT_TRUE(unsaved());

    editor.react = [this] { stack.reset(); };
    EXPECT_TRUE(rename("c"));
    EXPECT_TRUE(!stack && unsaved());

    stack = std::make_unique<kit::UndoStack>(document.get());
    editor.react = [this] { document.reset(); };
    EXPECT_TRUE(rename("d"));
    EXPECT_EQ(stack->count(), 0u);
}

TEST_F(UndoStackDocument, AnotherGraphOrNoneClearsTheStack)
{
    rename("a");
    document->newDocument();
    EXPECT_EQ(stack->count(), 0u);
    EXPECT_FALSE(unsaved());
    EXPECT_FALSE(stack->undo());

    SetUp();
    rename("b");
    document.reset();
    EXPECT_EQ(stack->count(), 0u);
    EXPECT_FALSE(stack->undo());
}

// ---- the library's own commands

/// Each changes the example so that it is unsaved, and saved again when it is undone.
TEST_F(UndoStackDocument, EveryCommandOfTheLibraryIsTakenBackToTheSavedState)
{
    AddRefWrapper<Compound> const graph = document->getTopCompound();
    auto const input = [this](char const* path) {
        return document->findPortFromPath(path, Container::eSearchInput, Container::eSearchOwnPorts);
    };
    auto const output = [this](char const* path) {
        return document->findPortFromPath(path, Container::eSearchOutput, Container::eSearchOwnPorts);
    };
    auto const pushNode = [&](auto record) {
        NodeCommand command;
        record(command);
        return stack->push(std::move(command), "node");
    };
    auto const pushAt = [&](auto command, bool (std::decay_t<decltype(command)>::*setTarget)(Container*, char const*),
                            char const* path, auto record) {
        (command.*setTarget)(document.get(), path);
        record(command);
        return stack->push(std::move(command), "at a target");
    };
    CopyPasteCommandBase::setUseLocalClipboard(true);
    CopyCommand copy(graph);
    ASSERT_TRUE(copy.addSourceNode("scaled") && copy.doit());

    struct Row {
        char const* what;
        std::function<bool()> push;
    };
    Row const rows[] = {
        {"remove", [&] { return pushNode([&](NodeCommand& c) { c.removeNode(graph, "scaled"); }); }},
        {"rename", [&] { return pushNode([&](NodeCommand& c) { c.renameNode(graph, "three", "four"); }); }},
        {"make IO", [&] { return pushNode([&](NodeCommand& c) { c.createIONode(graph, eInputIO, nullptr); }); }},
        {"connect",
         [&] {
             NewConnectCommand c;
             c.connect(document.get(), output("/three.out"), input("/total.a"), true);
             return stack->push(std::move(c), "connect");
         }},
        {"connect at once",
         [&] {
             return stack->perform(ConnectCommand(), "", [&](ConnectCommand& c) {
                 return c.connect(document.get(), output("/three.out"), input("/total.b"), false);
             });
         }},
        {"disconnect at once",
         [&] {
             return stack->perform(RecursiveDisconnectAllCommand(), "", [&](RecursiveDisconnectAllCommand& c) {
                 return c.disconnectAll(document.get(), graph->nodes()["scaled"], true);
             });
         }},
        {"connect nodes",
         [&] {
             ConnectNodesCommand c;
             c.connect(graph->nodes()["three"], graph->nodes()["total"]);
             return stack->push(std::move(c), "");
         }},
        {"metadata",
         [&] {
             return pushAt(MetadataCommand(), &MetadataCommand::setParentNode, "/three",
                           [](MetadataCommand& c) { c.setMetadataValue("key", "value"); });
         }},
        {"annotation",
         [&] {
             using C = ModifyCompoundAnnotationCommand;
             return pushAt(C(), &C::setParentCompound, "/",
                           [](C& c) { c.createAnnotation(Annotation::eStickyNote, "note"); });
         }},
        {"compound port",
         [&] {
             using C = ModifyCompoundPortCommand;
             return pushAt(C(), &C::setParentCompound, "/scaled", [](C& c) { c.deletePort(eInput, "factor"); });
         }},
        {"node port",
         [&] {
             using C = ModifyNodePortCommand;
             return pushAt(C(), &C::setParentNode, "/total", [](C& c) {
                 c.setPortValues(eInput, "b", StringArray("7"));
                 c.renamePort(eInput, "a", "left");
             });
         }},
        {"group",
         [&] {
             using C = CreateCompoundCommand;
             return pushAt(C(), &C::setParentCompound, "/", [](C& c) { c.addNode("three"), c.addNode("scaled"); });
         }},
        {"explode",
         [&] {
             using C = ExplodeCompoundCommand;
             return pushAt(C(), &C::setParentCompound, "/", [](C& c) { c.addCompound("scaled"); });
         }},
        {"paste", [&] { return stack->push(PasteCommand(graph), "paste"); }},
    };
    std::string const before = text();
    for (Row const& row : rows) {
        EXPECT_TRUE(row.push()) << row.what;
        EXPECT_TRUE(unsaved()) << row.what;
        std::string const after = text();
        EXPECT_TRUE(stack->undo() && !unsaved()) << row.what;
        EXPECT_EQ(text(), before) << row.what;
        EXPECT_TRUE(stack->redo() && unsaved()) << row.what;
        EXPECT_EQ(text(), after) << row.what;
        stack->undo();
        EXPECT_FALSE(unsaved()) << row.what;
    }
    CopyPasteCommandBase::setUseLocalClipboard(false);
}
