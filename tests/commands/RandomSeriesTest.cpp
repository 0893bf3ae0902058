#include "EditSession.h"
#include "support/EditWriter.h"
#include "support/PictureKeeper.h"

#include <tav/kit/StandardRuntime.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <random>

using namespace tav_test;

namespace {

using Script = std::vector<std::string>;

/// Makes watch points, and refuses the names by which two things would have one path.
class SeriesRuntime final : public kit::StandardRuntime {
public:
    SeriesRuntime()
        : StandardRuntime("series")
    {
        static_cast<void>(addLibraryFile(TAV_EXAMPLES_DIR "/library/arithmetic.library.xml"));
    }
    bool isLegalName(char const* name) const override { return *name != '\0' && !std::strpbrk(name, "/."); }

    AddRefWrapper<Node> makeNode(Container* container, char const*) override
    {
        return AddRefWrapper<Node>(new WatchedNode(container));
    }

private:
    class WatchedNode final : public Node {
    public:
        using Node::Node;
        bool onPortCreateWatchPoint(AddRefWrapper<Port> const&, AddRefWrapper<WatchPoint>& watchPoint) override
        {
            watchPoint = WatchPoint::createNew();
            return true;
        }
    };
};

class SilentHost final : public tool::EditHost {
public:
    void print(std::string const&) override {}
    void note(std::string const&) override {}
    void save(std::string const&) override {}
};

/// One document that edits are played on, each looked at from all sides.
class Series {
public:
    explicit Series(std::string const& graph)
    {
        CopyPasteCommandBase::setUseLocalClipboard(true);
        CopyPasteCommandBase::setClipboardData("");
        static_cast<void>(document.open(graph.c_str()));
        m_start = text();
        m_keeper.picture.see(*document.getTopNode());
        document.getEditorNotifier().registerEditor(&m_keeper);
    }
    ~Series() { document.getEditorNotifier().unregisterEditor(&m_keeper); }
    Series(Series const&) = delete;
    Series& operator=(Series const&) = delete;

    /// Plays the edit, takes it back, and plays it again. @return what is wrong, "" if nothing
    std::string play(std::string const& line)
    {
        std::string const before = text();
        if (!m_session.play(line).empty())
            return lookAt("refused", before);
        ++accepted;
        std::string const after = text();
        std::string wrong = lookAt("done", after);
        if (line.rfind("copy", 0) == 0)
            return wrong;
        for (auto const& [step, expected] : {std::pair("undo", &before), std::pair("redo", &after)}) {
            if (wrong.empty() && !m_session.play(step).empty())
                wrong = std::string(step) + " is refused";
            if (wrong.empty())
                wrong = lookAt(step, *expected);
        }
        return wrong;
    }

    /// Takes all back and makes all again.
    std::string playBackAndForth()
    {
        std::string const end = text();
        if (!m_session.undoAll())
            return "not everything can be taken back";
        std::string const wrong = lookAt("all taken back", m_start);
        if (!wrong.empty())
            return wrong;
        return m_session.redoAll() ? lookAt("all made again", end) : "not everything can be made again";
    }

    unsigned size() const { return sizeOf(*document.getTopCompound()); }

private:
    std::string text() const { return document.getTopCompound()->saveToString(nullptr).toChar(); }

    static unsigned sizeOf(Compound const& compound)
    {
        unsigned count = compound.nodes().size();
        for (AddRefWrapper<Node> const& node : compound.nodes())
            count += node->isCompound() ? sizeOf(*node->getAsCompound()) : 0;
        return count;
    }

    std::string lookAt(char const* moment, std::string const& expected)
    {
        std::string const when = std::string(" (") + moment + ")";
        StringArray problems;
        if (!document.getTopCompound()->checkConsistency(problems))
            return problems[0] + when;
        if (text() != expected)
            return "the text differs" + when + "\n---- expected\n" + expected + "\n---- found\n" + text();
        Picture seen;
        seen.see(*document.getTopNode());
        Picture const& kept = m_keeper.picture;
        if (seen.nodes != kept.nodes || seen.children != kept.children || seen.order != kept.order
            || seen.annotations != kept.annotations)
            return "an editor has another picture of the nodes" + when;
        for (auto const& [port, facts] : seen.ports) {
            auto const found = kept.ports.find(port);
            if (found == kept.ports.end() || !(found->second == facts))
                return "an editor has another picture of " + std::string(port->getFullPathName().getName()) + when;
        }
        return {};
    }

    SeriesRuntime m_runtime;

public:
    kit::Document document{&m_runtime};
    unsigned accepted = 0; // edits that were not refused

private:
    SilentHost m_host;
    tool::EditSession m_session{document, m_host};
    PictureKeeper m_keeper;
    std::string m_start;
};

std::string play(std::string const& graph, Script const& script)
{
    Series series(graph);
    for (std::string const& line : script) {
        if (std::string const wrong = series.play(line); !wrong.empty())
            return line + ": " + wrong;
    }
    return series.playBackAndForth();
}

/// Leaves out of a failing script what it fails without.
Script shortened(std::string const& graph, Script script)
{
    for (std::size_t piece = script.size() / 2; piece > 0; piece /= 2) {
        for (std::size_t at = 0; at + piece <= script.size();) {
            Script rest(script.begin(), script.begin() + static_cast<std::ptrdiff_t>(at));
            rest.insert(rest.end(), script.begin() + static_cast<std::ptrdiff_t>(at + piece), script.end());
            if (play(graph, rest).empty())
                at += piece;
            else
                script = std::move(rest);
        }
    }
    return script;
}

std::vector<tool::Edit> changingEdits()
{
    std::vector<tool::Edit> edits;
    for (tool::Edit const& edit : tool::allEdits()) {
        std::string const& name = edit.name();
        if (name == "undo")
            break; // from there on none is a command
        edits.push_back(edit);
    }
    return edits;
}

struct RandomSeries : testing::TestWithParam<char const*> {};

/// TAV_TEST_SERIES asks for more series than those that are always played.
TEST_P(RandomSeries, OfEditsAreTakenBackExactly)
{
    std::string const graph = std::string(TAV_EXAMPLES_DIR "/graphs/") + GetParam();
    std::vector<tool::Edit> const edits = changingEdits();
    char const* const wanted = std::getenv("TAV_TEST_SERIES");
    unsigned const count = wanted ? static_cast<unsigned>(std::strtoul(wanted, nullptr, 10)) : 3;
    unsigned played = 0, accepted = 0;
    for (unsigned seed = 1; seed <= count; ++seed) {
        std::mt19937 random(seed);
        Script script;
        std::string wrong;
        {
            Series series(graph);
            EditWriter writer(series.document, [&random](std::size_t below) { return random() % below; });
            while (wrong.empty() && script.size() < 300 && series.size() < 200) {
                script.push_back(writer.next(edits));
                wrong = series.play(script.back());
            }
            if (wrong.empty())
                wrong = series.playBackAndForth();
            accepted += series.accepted;
        }
        played += static_cast<unsigned>(script.size());
        if (wrong.empty())
            continue;
        std::string lines;
        script = shortened(graph, script);
        for (std::string const& line : script)
            lines.append(line).append("\n");
        FAIL() << "seed " << seed << " fails: " << play(graph, script) << "\n---- tav edit " << graph << " -s\n"
               << lines;
    }
    RecordProperty("edits", static_cast<int>(played));
    RecordProperty("accepted", static_cast<int>(accepted));
    EXPECT_GT(accepted, played / 4) << "most were refused, which proves little";
}

INSTANTIATE_TEST_SUITE_P(OnEachGraph, RandomSeries,
                         testing::Values("nesting.xml", "fan_in.xml", "annotations.xml", "property_lists.xml",
                                         "watch_points.xml"),
                         [](auto const& graph) {
                             std::string const file = graph.param;
                             return file.substr(0, file.find('.'));
                         });

} // namespace
