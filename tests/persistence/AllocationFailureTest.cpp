// Memory ends at every single allocation of a reading: the graph stays as it was.

#include "TextData.h"
#include "support/FailingAllocations.h"
#include "support/TestGraph.h"

#include <gtest/gtest.h>

namespace TAV_marlo_v1 {
namespace {

using tav_test::failEachAllocation;

/// Counts what it is told about nodes. Telling comes after the reading and has all memory it wants.
class CountingEditor final : public HostEditor {
public:
    void tav_onNodeChange(ENodeChangeType, AddRefWrapper<Compound> const&, AddRefWrapper<Node> const&) override
    {
        ++calls;
        tav_test::allocationsLeft = -1;
    }
    unsigned calls = 0;
};

struct ReadingWithoutMemory : testing::Test {
    TestGraph graph;
    AddRefWrapper<Compound> const inner = graph.addCompound("c");
    CountingEditor editor;

    void SetUp() override
    {
        inner->createCompoundPort(eOutput, "o", graph.type, {});
        AddRefWrapper<Node> const a = graph.addNode("a", {"x"}, {"y"}, inner.get());
        inner->innerOutputs()[0u]->addConnection(a->outputs()[0u], false);
        inner->createCompoundAnnotation(Annotation::eBackdrop, "b");
        graph.container.getEditorNotifier().registerEditor(&editor);
        m_before = saved();
    }

    std::string saved() const { return graph.top->saveToString(nullptr).toChar(); }

    void expectUnchanged()
    {
        ASSERT_TRUE(saved() == m_before) << saved();
        ASSERT_EQ(problemsOf(*graph.top), std::vector<std::string>());
        ASSERT_EQ(editor.calls, 0u);
    }

private:
    std::string m_before;
};

TEST_F(ReadingWithoutMemory, ItemsAreAddedWholeOrNotAtAll)
{
    char const* const text =
        "<sub_root><nodes><node><tavNode name='in' flag='8'><ports><port name='new' is_input='no' "
        "default_internal_values='1;2' options='k={v}'><metadatas><metadata name='k' value='v'/></metadatas></port>"
        "</ports></tavNode></node><node><tavNode name='a'><metadatas><metadata name='k'><value>v</value></metadata>"
        "</metadatas><ports><port name='x' is_input='yes' is_fan_in='yes'><ports><port name='m'/></ports></port>"
        "<port name='y' is_input='no'/></ports></tavNode></node><compound><tavCompound name='d'/></compound></nodes>"
        "<backdrops><tavBackdrop name='b'/></backdrops><connections>"
        "<connection output_port='a.y' input_port='a.x.m' watchpoint='yes'/>"
        "<connection output_port='a.y' inner_output_port='o'/><connection inner_input_port='new' input_port='a.x'/>"
        "<connection inner_input_port='new' inner_output_port='o' watchpoint='yes'/>"
        "</connections></sub_root>";
    StringArray nodes, annotations, sources;
    bool done = false;
    long const failures =
        failEachAllocation([&] { done = inner->createItemsFromString(text, nodes, annotations, &sources); },
                           [&] {
                               expectUnchanged();
                               ASSERT_TRUE(nodes.empty() && annotations.empty() && sources.empty());
                           });
    EXPECT_TRUE(done);
    EXPECT_GT(failures, 100);
    EXPECT_EQ(textsOf(nodes), (std::vector<std::string>{"in", "a1", "d"}));
    EXPECT_EQ(problemsOf(*graph.top), std::vector<std::string>());
}

TEST_F(ReadingWithoutMemory, ContentsAreReplacedWholeOrNotAtAll)
{
    std::string const text = tav_test::dataText("everything.xml");
    std::string restored;
    failEachAllocation(
        [&] {
            StatusStr const status = inner->restoreFromString(text.c_str());
            tav_test::allocationsLeft =
                -1; // without memory for it, what happened is not told; it happened all the same
            restored = inner->saveToString(nullptr).toChar();
        },
        [&] { expectUnchanged(); });
    EXPECT_EQ(restored, text);
    EXPECT_EQ(problemsOf(*graph.top), std::vector<std::string>());
}

} // namespace
} // namespace TAV_marlo_v1
