// Scripts of edits on a small graph. After each the graph is consistent, one that is refused changes nothing, and
// when everything is taken back the graph has the bytes it had; so again after everything was made once more.
//
// An input is a script, or behind a "!" bytes that choose, edit by edit, from what the graph allows just then.

#include "EditCompletion.h"
#include "EditSession.h"
#include "EditTable.h"
#include "Support.h"

#include <tav/AnnotationList.h>
#include <tav/CopyPasteCommandBase.h>
#include <tav/PortProperties.h>

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

/// Writes edits that the graph has a place for, as the bytes choose.
class Writer {
public:
    Writer(std::string const& bytes, kit::Document const& document)
        : m_bytes(bytes)
        , m_document(document)
    {
    }

    bool atEnd() const { return m_at >= m_bytes.size(); }

    std::string next()
    {
        static std::vector<tool::Edit> const edits = playable();
        tool::Edit const& edit = edits[choose(edits.size())];
        std::string line = edit.name();
        for (std::size_t i = 0; tool::EditSlot const* const slot = edit.slotAt(i); ++i) {
            line += ' ';
            bool const isNumber = slot->name == "N" || slot->name == "INDEX";
            line += isNumber ? std::to_string(choose(4)) : word(line, *slot);
            bool const mayEnd = isWhole(edit, i + 1);
            if (mayEnd && choose(3) == 0)
                break;
        }
        return line;
    }

private:
    static std::vector<tool::Edit> playable()
    {
        std::vector<tool::Edit> edits;
        for (tool::Edit const& edit : tool::allEdits()) {
            if (edit.name() == "list")
                break; // from there on none changes anything
            edits.push_back(edit);
        }
        return edits;
    }

    static bool isWhole(tool::Edit const& edit, std::size_t count)
    {
        try {
            tool::Words words;
            for (std::size_t i = 0; i < count; ++i)
                words.push_back(edit.slotAt(i)->fixed.empty() ? "x" : edit.slotAt(i)->fixed[0]);
            edit.check(words);
            return true;
        } catch (tool::EditError const&) {
            return false;
        }
    }

    std::size_t choose(std::size_t count)
    {
        return m_at < m_bytes.size() ? static_cast<unsigned char>(m_bytes[m_at++]) % count : 0;
    }

    /// A word that may stand there, by way of compounds if it is a path; a name of few where any may stand.
    std::string word(std::string const& line, tool::EditSlot const& slot)
    {
        static char const* const names[] = {"x", "p", "n1", "k", "1", "b", "{1,2}"};
        std::string typed = slot.name == "NODE" && choose(2) == 0 ? "/" : "";
        for (;;) {
            tool::Words const found = tool::completionsOf(m_document, line + typed).words;
            if (found.empty())
                return typed.empty() ? names[choose(std::size(names))] : typed;
            std::string const chosen = found[choose(found.size())];
            bool const goesOn = chosen.back() == '.' || (chosen.back() == '/' && choose(8) != 0);
            if (!goesOn || typed == chosen)
                return chosen;
            typed = chosen;
        }
    }

    std::string const& m_bytes;
    kit::Document const& m_document;
    std::size_t m_at = 1; // behind the "!"
};

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
            for (Writer writer(m_input, m_document); !writer.atEnd() && mayGoOn();)
                play(writer.next());
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
