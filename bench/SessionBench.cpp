// A day with a large graph: it is loaded, edited at random by commands on an undo stack, all of that is
// undone, and what is saved then has to be the text that was loaded, to the byte.

#include "HeapUse.h"
#include "Row.h"
#include "SampleGraph.h"

#include <tav/CreateCompoundCommand.h>
#include <tav/MetadataCommand.h>
#include <tav/ModifyNodePortCommand.h>
#include <tav/NewConnectCommand.h>
#include <tav/NodeCommand.h>
#include <tav/StringArray.h>
#include <tav/kit/Document.h>
#include <tav/kit/StandardRuntime.h>
#include <tav/kit/UndoStack.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <random>

namespace bench {

namespace {

using namespace TAV_marlo_v1;

String graphText(unsigned nodes)
{
    SampleDocument document;
    fillSample(document, nodes);
    return document.top().saveToString(nullptr);
}

/// A library with the sample node as its one preset, "sample/mix".
String libraryText()
{
    SampleDocument document;
    addSampleNode(document, document.top(), "mix");
    document.top().getAsNode()->setNodeTypeName("library");
    return document.top().saveToString(nullptr);
}

/// Edits a document at random, in every run in the same way.
class RandomEditor {
public:
    RandomEditor(kit::Document& document, kit::UndoStack& stack)
        : m_document(document)
        , m_top(document.getTopCompound())
        , m_stack(stack)
    {
    }

    /// One more command, carried out and on the stack.
    void edit()
    {
        while (!tryEdit()) {
        }
    }

private:
    /// @return false when the choice did not fit: a group instead of a node, an input without connection
    bool tryEdit()
    {
        unsigned const choice = below(1000);
        if (choice < 2)
            return group();
        if (choice < 50)
            return create();
        AddRefWrapper<Node> const node = anyNode();
        if (node->isCompound())
            return false;
        if (choice < 130)
            return remove(*node);
        if (choice < 330)
            return rename(*node);
        if (choice < 700)
            return setValue(*node);
        if (choice < 800)
            return setMetadata(*node);
        return choice < 900 ? connect(*node) : disconnect(*node);
    }

    unsigned below(unsigned end) { return static_cast<unsigned>(m_random() % end); }
    AddRefWrapper<Node> anyNode() { return m_top->nodes()[below(m_top->nodes().size())]; }
    std::string newText() { return "v" + std::to_string(++m_texts); }

    /// Up to 20 nodes in a row become a compound.
    bool group()
    {
        CreateCompoundCommand command;
        command.setParentCompound(&m_document, "/");
        unsigned const first = below(m_top->nodes().size());
        for (unsigned i = first; i < std::min(first + 20, m_top->nodes().size()); ++i)
            command.addNode(m_top->nodes()[i]->getName());
        return m_stack.push(std::move(command), "group");
    }
    bool create()
    {
        NodeCommand command;
        command.createNode(m_top, "sample/mix", nullptr);
        return m_stack.push(std::move(command), "create");
    }
    bool remove(Node const& node)
    {
        NodeCommand command;
        command.removeNode(m_top, node.getName());
        return m_stack.push(std::move(command), "remove");
    }
    bool rename(Node const& node)
    {
        NodeCommand command;
        command.renameNode(m_top, node.getName(), newText().c_str());
        return m_stack.push(std::move(command), "rename");
    }
    bool setValue(Node const& node)
    {
        ModifyNodePortCommand command;
        command.setParentNode(&m_document, node.getFullPathName().getName());
        command.setPortValues(eInput, below(2) == 0 ? "a" : "b", StringArray(newText().c_str()));
        return m_stack.push(std::move(command), "set a value");
    }
    /// Gives an entry another value, adds one, or takes one away.
    bool setMetadata(Node const& node)
    {
        MetadataCommand command;
        command.setParentNode(&m_document, node.getFullPathName().getName());
        if (below(4) == 0)
            command.removeMetadata("uiPosition");
        else
            command.setMetadataValue(below(2) == 0 ? "uiPosition" : "note", newText().c_str());
        return m_stack.push(std::move(command), "set metadata");
    }
    bool connect(Node const& node)
    {
        AddRefWrapper<Node> const source = anyNode();
        if (source->isCompound())
            return false;
        NewConnectCommand command;
        command.connect(&m_document, source->outputs()[0u], node.inputs()[below(2)], /*copyMetaData=*/false);
        return m_stack.push(std::move(command), "connect");
    }
    bool disconnect(Node const& node)
    {
        AddRefWrapper<Port> const input = node.inputs()[below(2)];
        if (!input->isConnected())
            return false;
        NewConnectCommand command;
        command.disconnect(&m_document, input->connectedTo()[0u], input);
        return m_stack.push(std::move(command), "disconnect");
    }

    kit::Document& m_document;
    AddRefWrapper<Compound> m_top;
    kit::UndoStack& m_stack;
    std::mt19937 m_random{1};
    unsigned m_texts = 0;
};

void session(Row& row)
{
    unsigned const edits = row.size() / 10;
    String const text = graphText(row.size());
    kit::StandardRuntime runtime("session");
    StatusStr const library = runtime.addLibraryFromText(libraryText().toChar(), "library");
    row.require(!*library.getErrorString(), library.getErrorString());
    while (row.next()) {
        HeapWatch const heap;
        kit::Document document(&runtime);
        kit::UndoStack stack(&document);
        StatusStr status;
        double const load = secondsOf([&] { status = document.openText(text.toChar(), text.size()); });
        row.require(!*status.getErrorString(), status.getErrorString());

        RandomEditor editor(document, stack);
        double const edit = secondsOf([&] {
            for (unsigned i = 0; i < edits; ++i)
                editor.edit();
        });
        row.require(stack.count() == edits, "every command is on the stack");
        row.require(document.getTopCompound()->saveToString(nullptr) != text, "the graph is another one");

        bool undone = false;
        double const undo = secondsOf([&] { undone = stack.setIndex(0); });
        row.require(undone, "every command is undone");

        String saved;
        double const save = secondsOf([&] { saved = document.getTopCompound()->saveToString(nullptr); });
        row.require(saved == text, "undone and saved, it is the text that was loaded, to the byte");

        row.count(row.size(), load + edit + undo + save);
        row.note("load_ns", load * 1e9 / row.size());
        row.note("edit_ns", edit * 1e9 / edits);
        row.note("undo_ns", undo * 1e9 / edits);
        row.note("save_ns", save * 1e9 / row.size());
        row.note("peak_bytes", static_cast<double>(heap.peak()) / row.size());
    }
}

RowEntry const entry("session", session);

} // namespace

} // namespace bench
