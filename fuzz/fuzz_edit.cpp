// Scripts of edits on a small graph. After each the graph is consistent, one that is refused changes nothing, and
// when everything is taken back the graph has the bytes it had; so again after everything was made once more.
//
// An input is a script, or behind a "!" bytes that choose, edit by edit, from what the graph allows just then.

#include "EditSession.h"
#include "Support.h"
#include "support/EditWriter.h"

#include <tav/AnnotationList.h>
#include <tav/CopyPasteCommandBase.h>
#include <tav/PortProperties.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

using namespace fuzz;

namespace {

constexpr unsigned kMostNodes = 150; // pasting doubles

constexpr char kLibrary[] =
    "<tavCompound name='lib' type='library' flag='0'><metadatas/><ports/><child_graph><sub_root><nodes>"
    "<node><tavNode name='mix' type='mix' flag='0'><metadatas><metadata "
    "name='k'><value>v</value></metadata></metadatas>"
    "<ports><port name='a' type='float' flag='0' is_input='yes' default_values='1'/>"
    "<port name='b' type='color' flag='2' is_input='yes' is_fan_in='yes'><ports><port name='m' type='color' flag='0' "
    "is_input='yes'/></ports><members><member name='m'/></members></port>"
    "<port name='out' type='float' flag='0' is_input='no'/></ports></tavNode></node>"
    "<compound><tavCompound name='pair' type='pair' flag='0'><metadatas/><ports><port name='p' type='float' flag='0' "
    "is_input='yes'/></ports><child_graph><sub_root><nodes><node><tavNode name='input' type='io' flag='8'><metadatas/>"
    "<ports><port name='p' type='float' flag='0' is_input='no'/></ports></tavNode></node></nodes><connections/>"
    "</sub_root></child_graph></tavCompound></compound>"
    "</nodes><connections/></sub_root></child_graph></tavCompound>";

/// Names with separators make two things of one path, of which a command may find the other.
class PlainNames final : public kit::StandardRuntime {
public:
    bool isLegalName(char const* name) const override { return name && *name && !std::strpbrk(name, "/."); }
};

kit::StandardRuntime& runtime()
{
    // Never destroyed: the host that it is registered with may go first.
    static kit::StandardRuntime* const made = [] {
        auto* const standard = new PlainNames;
        StatusStr const status = standard->addLibraryFromText(kLibrary, "library");
        require(!*status.getErrorString(), "the library can be read", status.getErrorString());
        return standard;
    }();
    return *made;
}

/// To what other targets use comes what only edits meet: IO nodes, ports of the whole graph, values on both sides.
std::string startText()
{
    SmallDocument small(SmallDocument::eFilled);
    Compound& top = small.top();
    AddRefWrapper<PortDataType> const type = runtime().getPortDataType("float");
    AddRefWrapper<Compound> const inner = top.nodes()["c"]->getAsCompound();
    inner->createIONode(eInputIO);
    inner->createIONode(eOutputIO);
    inner->getAsNode()->inputs()["p"]->setPortDefaultValues(StringArray("2"));
    inner->innerInputs()[0u]->setPortDefaultValues(StringArray("3"));
    inner->setMetadataValue("key", "value");
    top.createCompoundPort(eInput, "t", type, PortProperties());
    top.createCompoundPort(eOutput, "u", type, PortProperties());
    top.makeConnection(top.getAsNode(), "t", top.nodes()["n1"], "a");
    top.makeConnection(top.getAsNode(), "t", top.getAsNode(), "u");
    top.nodes()["n2"]->inputs()["b"]->setPortMetaDataValue("UIWidget", "slider");
    top.createCompoundAnnotation(Annotation::eStickyNote, "sticky")->setAnnotationMetaDataValue("text", "here");
    return top.saveToString(nullptr).toChar();
}

class Host final : public tool::EditHost {
public:
    void print(std::string const&) override {}
    void note(std::string const&) override {}
    void save(std::string const&) override {}
};

/// Those that may change something, undo and redo among them.
std::vector<tool::Edit> const& playable()
{
    static std::vector<tool::Edit> const edits = [] {
        std::vector<tool::Edit> found;
        for (tool::Edit const& edit : tool::allEdits()) {
            if (edit.name() == "list")
                break; // from there on none changes anything
            found.push_back(edit);
        }
        return found;
    }();
    return edits;
}

unsigned sizeOf(Compound const& compound)
{
    unsigned count = compound.nodes().size();
    for (AddRefWrapper<Node> const& node : compound.nodes()) {
        if (AddRefWrapper<Compound> const inner = node->getAsCompound())
            count += sizeOf(*inner);
    }
    return count;
}

class Play {
public:
    explicit Play(std::string const& input)
        : m_input(input)
        , m_session(m_document, m_host)
    {
        static std::string const start = startText();
        StatusStr const status = m_document.openText(start.c_str(), start.size());
        require(!*status.getErrorString(), "the graph can be read", status.getErrorString());
        m_start = m_present = text();
        CopyPasteCommandBase::setClipboardData(""); // no input shall see what one before it copied
    }

    void run()
    {
        if (m_input[0] == '!') {
            std::size_t at = 1;
            tav_test::EditWriter writer(m_document, [&](std::size_t count) {
                return at < m_input.size() ? static_cast<unsigned char>(m_input[at++]) % count : 0;
            });
            while (at < m_input.size() && mayGoOn())
                play(writer.next(playable()));
        } else {
            for (std::size_t begin = 0; begin < m_input.size() && mayGoOn();) {
                std::size_t const end = std::min(m_input.find('\n', begin), m_input.size());
                play(m_input.substr(begin, end - begin));
                begin = end + 1;
            }
        }
        takeBack("taking all back gives the graph from before");
        m_session.redoAll();
        demandConsistency("all made again");
        takeBack("taking all back a second time gives the graph from before");
    }

private:
    bool mayGoOn() const { return !m_session.isOver() && sizeOf(*m_document.getTopCompound()) < kMostNodes; }

    void play(std::string const& line)
    {
        m_script += line + '\n';
        std::string const wrong = m_session.play(line);
        demandConsistency(line);
        if (wrong.empty())
            m_present = text();
        else
            demandEqual(m_present, text(), "a refused edit changes nothing: " + line + ": " + wrong);
    }

    std::string text() const { return m_document.getTopCompound()->saveToString(nullptr).toChar(); }

    void takeBack(char const* promise)
    {
        if (!m_session.undoAll())
            fail("every edit can be taken back", promise);
        demandConsistency(promise);
        demandEqual(m_start, text(), promise);
    }

    void demandConsistency(std::string const& moment) const
    {
        StringArray problems;
        if (!m_document.getTopCompound()->checkConsistency(problems))
            fail("the graph is consistent: " + moment, problems.serialize(eSerializePlain).toChar());
    }

    void demandEqual(std::string const& expected, std::string const& found, std::string const& promise) const
    {
        if (expected == found)
            return;
        std::size_t at = 0;
        while (expected[at] == found[at])
            ++at;
        std::size_t const from = at < 200 ? 0 : at - 200;
        fail(promise, "expected ..." + expected.substr(from, 400) + "\n---- found ..." + found.substr(from, 400));
    }

    [[noreturn]] void fail(std::string const& promise, std::string const& detail) const
    {
        require(false, promise.c_str(), (detail + "\n---- script\n" + m_script).c_str());
        std::abort();
    }

    std::string const& m_input;
    std::string m_script; // what was played
    kit::Document m_document{&runtime()};
    Host m_host;
    tool::EditSession m_session;
    std::string m_start;
    std::string m_present;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    if (size == 0 || size > 4096)
        return 0; // some hundred edits show whatever there is to see
    Play(std::string(data, data + size)).run();
    return 0;
}
