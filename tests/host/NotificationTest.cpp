// What editors hear of a notifier, in which order, and what happens when somebody leaves meanwhile.

#include "support/RecordingEditor.h"

#include <tav/ChangeBracket.h>
#include <tav/HostEditorNotifier.h>
#include <tav/Port.h>

#include <gtest/gtest.h>

#include <memory>

using namespace TAV_marlo_v1;
using tav_test::Calls;
using tav_test::RecordingEditor;

namespace {

struct Notification : testing::Test {
    AddRefWrapper<Port> const a = Port::createNew("a", eInput);
    AddRefWrapper<Port> const b = Port::createNew("b", eOutput);
    std::unique_ptr<HostEditorNotifier> notifier = std::make_unique<HostEditorNotifier>();
    Calls calls;
    std::unique_ptr<RecordingEditor> first = editor("1 ");
    std::unique_ptr<RecordingEditor> second = editor("2 ");

    std::unique_ptr<RecordingEditor> editor(char const* prefix)
    {
        auto made = std::make_unique<RecordingEditor>(calls, prefix);
        notifier->registerEditor(made.get());
        return made;
    }

    void change(EPortChangeType type) { notifier->notifyNodePortChange(type, a); }
};

TEST_F(Notification, EachKindReachesItsOwnCallbackInTheOrderOfRegistration)
{
    notifier->notifyConnectionChange(eFanInCnxAdded, a, b);
    notifier->notifyCompoundConnectionChange(eCnxRemoved, b, a);
    notifier->notifyCompoundPortChange(ePortMoved, b);
    notifier->notifyNodePortChange(ePortValuesReset, a);
    notifier->notifyNodeChange(eNodeMetadataChanged, {}, {});
    notifier->notifyAnnotationChange(eAnnotationRenamed, {}, {});
    EXPECT_EQ(calls,
              Calls({"1 connection fanInAdded a b", "2 connection fanInAdded a b", "1 compoundConnection removed b a",
                     "2 compoundConnection removed b a", "1 compoundPort moved b", "2 compoundPort moved b",
                     "1 nodePort valuesReset a", "2 nodePort valuesReset a", "1 node metadataChanged - -",
                     "2 node metadataChanged - -", "1 annotation renamed - -", "2 annotation renamed - -"}));
}

TEST_F(Notification, RegisteringTwiceCountsOnceAndStrangersMayLeave)
{
    notifier->registerEditor(first.get());
    notifier->registerEditor(nullptr);
    RecordingEditor stranger;
    notifier->unregisterEditor(&stranger);
    notifier->unregisterEditor(nullptr);
    EXPECT_EQ(first->peekNotifierRegisteredWithCount(), 1u);
    HostEditorNotifier other;
    other.registerEditor(first.get());
    EXPECT_EQ(first->peekNotifierRegisteredWithCount(), 2u);
    notifier->unregisterEditor(first.get());
    EXPECT_EQ(first->peekNotifierRegisteredWithCount(), 1u);
    change(ePortAdded);
    EXPECT_EQ(calls, Calls({"2 nodePort added a"}));
}

TEST_F(Notification, ABatchGoesEditorByEditor)
{
    {
        ChangeBracket const bracket(notifier.get());
        change(ePortMoved);
        change(ePortRenamed);
        EXPECT_TRUE(calls.empty());
    }
    EXPECT_EQ(calls,
              Calls({"1 nodePort moved a", "1 nodePort renamed a", "2 nodePort moved a", "2 nodePort renamed a"}));
}

TEST_F(Notification, OnlyTheSameChangeRightBeforeIsLeftOut)
{
    second.reset();
    {
        ChangeBracket const bracket(notifier.get());
        change(ePortMoved);
        change(ePortMoved);
        notifier->notifyCompoundPortChange(ePortMoved, a);
        notifier->notifyCompoundPortChange(ePortMoved, b);
        notifier->notifyCompoundPortChange(ePortMoved, b);
        change(ePortMoved);
        for (int i = 0; i < 2; ++i)
            notifier->notifyNodeChange(eNodeRenamed, {}, {});
        for (int i = 0; i < 2; ++i)
            notifier->notifyAnnotationChange(eAnnotationAdded, {}, {});
        notifier->notifyAnnotationChange(eAnnotationRemoved, {}, {});
        for (int i = 0; i < 2; ++i)
            notifier->notifyConnectionChange(eCnxAdded, a, b);
        for (int i = 0; i < 2; ++i)
            notifier->notifyCompoundConnectionChange(eCnxAdded, a, b);
    }
    EXPECT_EQ(calls, Calls({"1 nodePort moved a", "1 compoundPort moved a", "1 compoundPort moved b",
                            "1 nodePort moved a", "1 node renamed - -", "1 annotation added - -",
                            "1 annotation removed - -", "1 connection added a b", "1 connection added a b",
                            "1 compoundConnection added a b", "1 compoundConnection added a b"}));
}

TEST_F(Notification, PostponedChangesKeepTheirObjectsAlive)
{
    {
        ChangeBracket const bracket(notifier.get());
        notifier->notifyNodePortChange(ePortRemoved, Port::createNew("gone", eInput));
    }
    EXPECT_EQ(calls, Calls({"1 nodePort removed gone", "2 nodePort removed gone"}));
}

TEST_F(Notification, AChangeMadeWhileABatchIsDeliveredGoesOutAtOnce)
{
    first->reaction = [this](std::string const& call) {
        if (call == "1 nodePort moved a")
            change(ePortRenamed);
    };
    {
        ChangeBracket const bracket(notifier.get());
        change(ePortMoved);
        change(ePortAdded);
    }
    EXPECT_EQ(calls, Calls({"1 nodePort moved a", "1 nodePort renamed a", "2 nodePort renamed a", "1 nodePort added a",
                            "2 nodePort moved a", "2 nodePort added a"}));
}

TEST_F(Notification, WhoRegistersDuringADeliveryWaitsForTheNext)
{
    std::unique_ptr<RecordingEditor> third;
    first->reaction = [&](std::string const&) {
        if (!third)
            third = editor("3 ");
    };
    change(ePortAdded);
    EXPECT_EQ(calls, Calls({"1 nodePort added a", "2 nodePort added a"}));
    calls.clear();
    change(ePortAdded);
    EXPECT_EQ(calls, Calls({"1 nodePort added a", "2 nodePort added a", "3 nodePort added a"}));
}

TEST_F(Notification, WhoLeavesInTheMiddleOfABatchHearsNoMoreOfIt)
{
    auto third = editor("3 ");
    first->reaction = [&](std::string const&) {
        notifier->unregisterEditor(first.get());
        second.reset();
    };
    {
        ChangeBracket const bracket(notifier.get());
        change(ePortMoved);
        change(ePortRenamed);
    }
    EXPECT_EQ(calls, Calls({"1 nodePort moved a", "3 nodePort moved a", "3 nodePort renamed a"}));
}

TEST_F(Notification, AnEditorMayDeleteItselfAndTheNotifierThatCallsIt)
{
    first->reaction = [&](std::string const&) {
        notifier.reset();
        first.reset();
    };
    change(ePortMoved);
    EXPECT_EQ(calls, Calls({"1 nodePort moved a"}));
    EXPECT_EQ(second->peekNotifierRegisteredWithCount(), 0u);
}

TEST_F(Notification, TheNotifierMayDieInTheMiddleOfItsBatchWithTheBracketBeingClosed)
{
    first->reaction = [&](std::string const&) { notifier.reset(); };
    {
        ChangeBracket const bracket(notifier.get());
        change(ePortMoved);
        change(ePortRenamed);
    }
    EXPECT_EQ(calls, Calls({"1 nodePort moved a"}));
}

TEST_F(Notification, ANotifierThatDiesInsideABracketTellsNothing)
{
    {
        ChangeBracket const bracket(notifier.get());
        change(ePortMoved);
        notifier.reset();
    }
    EXPECT_TRUE(calls.empty());
}

TEST_F(Notification, AnEditorThatRegistersInsideABracketGetsTheWholeBatch)
{
    first.reset();
    second.reset();
    {
        ChangeBracket const bracket(notifier.get());
        change(ePortMoved);
        first = editor("1 ");
    }
    EXPECT_EQ(calls, Calls({"1 nodePort moved a"}));
}

TEST_F(Notification, ACopyOfANotifierStartsWithNobody)
{
    HostEditorNotifier copy(*notifier);
    copy.notifyNodePortChange(ePortAdded, a);
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(first->peekNotifierRegisteredWithCount(), 1u);
}

TEST_F(Notification, ManyEditorsOfManyNotifiersComeAndGoInAnyOrder)
{
    // More than a few on both sides, where registrations are looked up in a table.
    first.reset();
    second.reset();
    constexpr std::size_t kMany = 40;
    std::vector<std::unique_ptr<HostEditorNotifier>> notifiers;
    std::vector<std::unique_ptr<RecordingEditor>> editors;
    for (std::size_t i = 0; i < kMany; ++i) {
        notifiers.push_back(std::make_unique<HostEditorNotifier>());
        editors.push_back(std::make_unique<RecordingEditor>(calls, (std::to_string(i) + " ").c_str()));
    }
    for (int round = 0; round < 2; ++round)
        for (auto const& each : notifiers)
            for (auto const& editor : editors)
                each->registerEditor(editor.get());
    for (std::size_t n = 0; n < kMany; ++n)
        for (std::size_t e = 0; e < kMany; ++e)
            if ((n + e) % 4 != 0)
                notifiers[n]->unregisterEditor(editors[(e * 7) % kMany].get());
    editors[0].reset();
    notifiers[1]->notifyNodePortChange(ePortAdded, a);
    Calls expected;
    for (std::size_t e = 1; e < kMany; ++e)
        for (std::size_t from = 0; from < kMany; ++from)
            if ((from * 7) % kMany == e && (1 + from) % 4 == 0)
                expected.push_back(std::to_string(e) + " nodePort added a");
    EXPECT_EQ(calls, expected);
    notifiers.clear();
    for (std::size_t e = 1; e < kMany; ++e)
        EXPECT_EQ(editors[e]->peekNotifierRegisteredWithCount(), 0u);
}

// ---- a notifier inside a wider one

struct InnerNotifier final : HostEditorNotifier {
    HostEditorNotifier* outer = nullptr;
    HostEditorNotifier* enclosingNotifier() const override { return outer; }
};

TEST_F(Notification, TheWiderNotifierHearsFirstAndABracketOnTheInnerOneDoesNotHoldItBack)
{
    second.reset();
    InnerNotifier inner;
    inner.outer = notifier.get();
    RecordingEditor own(calls, "own ");
    inner.registerEditor(&own);
    inner.notifyNodePortChange(ePortAdded, a);
    {
        ChangeBracket const bracket(&inner);
        inner.notifyNodePortChange(ePortMoved, a);
        inner.notifyNodePortChange(ePortRenamed, a);
    }
    EXPECT_EQ(calls, Calls({"1 nodePort added a", "own nodePort added a", "1 nodePort moved a", "1 nodePort renamed a",
                            "own nodePort moved a", "own nodePort renamed a"}));
}

TEST_F(Notification, AnEditorOfTheWiderNotifierMayDeleteTheInnerOne)
{
    auto inner = std::make_unique<InnerNotifier>();
    inner->outer = notifier.get();
    RecordingEditor own;
    for (bool const observed : {false, true}) {
        if (observed)
            inner->registerEditor(&own);
        first->reaction = [&](std::string const&) {
            if (observed)
                inner.reset();
        };
        inner->notifyNodePortChange(ePortAdded, a);
    }
    EXPECT_TRUE(own.take().empty());
    EXPECT_EQ(calls.size(), 4u);
}

} // namespace
