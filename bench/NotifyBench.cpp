// Telling editors: of many changes in one bracket, and many editors of one change.

#include "CountingEditor.h"
#include "Row.h"
#include "SampleGraph.h"

#include <tav/StringArray.h>

#include <memory>

namespace bench {

namespace {

using TAV_marlo_v1::StringArray;

StringArray const kValues[] = {StringArray("0.25"), StringArray("0.75")};

void bracket(Row& row)
{
    SampleDocument document;
    addSampleNodes(document, document.top(), sampleNames(1000));
    std::vector<AddRefWrapper<Port>> const ports = SamplePorts(document.top()).a;
    CountingEditor editor;
    document.getEditorNotifier().registerEditor(&editor);
    unsigned turn = 0; // one value all around the ports, then the other
    while (row.next()) {
        editor.told = 0;
        row.time(row.size(), [&] {
            document.openChangeBracket();
            for (unsigned change = 0; change < row.size(); ++change, ++turn)
                ports[turn % ports.size()]->setPortDefaultValues(kValues[turn / ports.size() % 2]);
            row.require(editor.told == 0, "nobody hears of a change before the bracket closes");
            document.closeChangeBracket();
        });
        row.require(editor.told == row.size(), "the editor hears of each change once");
    }
}

void editors(Row& row)
{
    unsigned const changes = 100000 / row.size();
    SampleDocument document;
    addSampleNodes(document, document.top(), sampleNames(1));
    AddRefWrapper<Node> const node = document.top().nodes()[0u];
    std::vector<std::unique_ptr<CountingEditor>> listening;
    for (unsigned i = 0; i < row.size(); ++i) {
        listening.push_back(std::make_unique<CountingEditor>());
        node->registerEditor(listening.back().get());
    }
    unsigned rounds = 0;
    while (row.next()) {
        ++rounds;
        AddRefWrapper<Port> const port = node->inputs()[0u];
        row.time(std::uint64_t{changes} * row.size(), [&] {
            for (unsigned change = 0; change < changes; ++change)
                port->setPortDefaultValues(kValues[change % 2]);
        });
        for (auto const& editor : listening)
            row.require(editor->told == rounds * changes, "every editor hears of each change once");
    }
}

RowEntry const bracketEntry("changes in a bracket", bracket);
RowEntry const editorsEntry("editors at a node", editors, Sizes{10, 10000});

} // namespace

} // namespace bench
