#include "commands/EditCases.h"
#include "support/PictureKeeper.h"

#include <gtest/gtest.h>

using namespace tav_test;

namespace {

struct ExactUndo : testing::TestWithParam<EditCase> {
    void SetUp() override { Questions::get() = Questions(); }
    void TearDown() override { Questions::get() = Questions(); }

    void expectSound(char const* when) const { EXPECT_EQ(problemsOf(*graph.top), std::vector<std::string>()) << when; }

    EditableGraph graph;
    Edit edit = GetParam().record(graph);
    std::string const before = graph.picture();
};

TEST_P(ExactUndo, BringsBackEverythingAndRedoDoesTheSame)
{
    PictureKeeper keeper;
    keeper.picture.see(*graph.topNode);
    graph.container.getEditorNotifier().registerEditor(&keeper);
    auto const expectPicture = [&](char const* when) {
        Picture seen;
        seen.see(*graph.topNode);
        EXPECT_TRUE(seen.nodes == keeper.picture.nodes) << when;
        EXPECT_TRUE(seen.children == keeper.picture.children) << when;
        EXPECT_TRUE(seen.order == keeper.picture.order) << when;
        EXPECT_TRUE(seen.annotations == keeper.picture.annotations) << when;
        for (auto const& [port, facts] : seen.ports)
            EXPECT_TRUE(keeper.picture.ports[port] == facts) << when << ": " << port->getFullPathName().getName();
    };

    ASSERT_TRUE(edit.doit());
    std::string const after = graph.picture();
    EXPECT_NE(before, after);
    expectSound("done");
    expectPicture("done");
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(edit.undo());
        ASSERT_EQ(graph.picture(), before);
        expectSound("undone");
        expectPicture("undone");
        EXPECT_TRUE(edit.redo());
        ASSERT_EQ(graph.picture(), after);
        expectSound("redone");
        expectPicture("redone");
    }
    graph.container.getEditorNotifier().unregisterEditor(&keeper);
}

TEST_P(ExactUndo, TakesBackWhatWasDoneBeforeAnOwnerRefused)
{
    for (long refused = 0;; ++refused) {
        Questions::get().left = refused;
        edit.doit();
        bool const wasRefused = Questions::get().wasRefused;
        Questions::get() = Questions();
        expectSound("refused");
        edit.undo();
        ASSERT_EQ(graph.picture(), before) << "question " << refused;
        if (!wasRefused)
            break;
    }
    EXPECT_TRUE(edit.redo());
    EXPECT_TRUE(edit.undo());
    EXPECT_EQ(graph.picture(), before);
}

struct CallCounter : HostEditor {
    void tav_onNodeChange(ENodeChangeType, AddRefWrapper<Compound> const&, AddRefWrapper<Node> const&) override
    {
        ++calls;
    }
    void tav_onNodePortChange(EPortChangeType, AddRefWrapper<Port> const&) override { ++calls; }
    void tav_onCompoundPortChange(EPortChangeType, AddRefWrapper<Port> const&) override { ++calls; }
    void tav_onConnectionChange(ECnxChangeType, AddRefWrapper<Port> const&, AddRefWrapper<Port> const&) override
    {
        ++calls;
    }
    void tav_onAnnotationChange(EAnnotationChangeType, AddRefWrapper<Compound> const&,
                                AddRefWrapper<Annotation> const&) override
    {
        ++calls;
    }
    unsigned calls = 0;
};

TEST_P(ExactUndo, EditorsHearNothingWhileTheCommandWorks)
{
    CallCounter ofContainer, ofNode;
    graph.container.getEditorNotifier().registerEditor(&ofContainer);
    graph.topNode->registerEditor(&ofNode);
    unsigned questions = 0, tooEarly = 0;
    unsigned heard = 0;
    Questions::get().onAsked = [&] {
        ++questions;
        tooEarly += ofContainer.calls + ofNode.calls != heard ? 1 : 0;
    };
    for (auto const& step : {edit.doit, edit.undo, edit.redo}) {
        heard = ofContainer.calls + ofNode.calls;
        step();
    }
    EXPECT_EQ(tooEarly, 0u);
    std::set<std::string> const unasked = {"rename", "metadata", "compound metadata", "watch point metadata"};
    bool const isAsked = unasked.count(GetParam().name) == 0;
    EXPECT_EQ(questions > 0, isAsked);
    Questions::get() = Questions();
    graph.topNode->unregisterEditor(&ofNode);
    graph.container.getEditorNotifier().unregisterEditor(&ofContainer);
}

TEST_P(ExactUndo, ACommandWhoseTargetsAreGoneTouchesNothing)
{
    edit.doit();
    while (!graph.top->nodes().empty())
        graph.top->nodes().remove(graph.top->nodes()[0u]);
    while (!graph.top->annotations().empty())
        graph.top->annotations().remove(graph.top->annotations()[0u]);
    std::string const empty = graph.text();
    edit.undo();
    expectSound("undone without targets");
    edit.redo();
    expectSound("redone without targets");
    graph.container.setTopNode({});
    edit.undo();
    EXPECT_EQ(edit.redo(), GetParam().name == "rename"); // renames never count
}

INSTANTIATE_TEST_SUITE_P(EachCommand, ExactUndo, testing::ValuesIn(editCases()),
                         [](auto const& editCase) { return testNameOf(editCase); });

TEST(ClosedDocument, LeavesItsCommandsWithNothingToDo)
{
    for (EditCase const& editCase : editCases()) {
        auto graph = std::make_unique<EditableGraph>();
        Edit const edit = editCase.record(*graph);
        edit.doit();
        graph.reset();
        edit.undo();
        EXPECT_FALSE(edit.redo()) << editCase.name;
        EXPECT_FALSE(edit.doit()) << editCase.name;
    }
}

} // namespace
