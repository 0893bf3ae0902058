// The text of a graph: flat, and of the same nodes spread over a chain of compounds.

#include "Row.h"
#include "SampleGraph.h"
#include "XmlPasses.h"

#include <cstring>

namespace bench {

namespace {

using TAV_marlo_v1::String;

unsigned countOf(char const* text, char const* word)
{
    unsigned count = 0;
    while ((text = std::strstr(text, word)) != nullptr) {
        text += std::strlen(word);
        ++count;
    }
    return count;
}

void saveDocument(Row& row, SampleDocument const& document)
{
    while (row.next()) {
        String text;
        row.time(row.size(), [&] { text = document.top().saveToString(nullptr); });
        row.require(countOf(text.toChar(), "<tavNode ") == row.size(), "every node is in the text");
        row.note("bytes_per_node", static_cast<double>(text.size()) / row.size());
    }
}

void write(Row& row, SampleDocument const& document)
{
    String const text = document.top().saveToString(nullptr);
    while (row.next()) {
        XmlPass const pass = writerPass({text.toChar(), text.size()});
        row.count(row.size(), pass.seconds);
        row.require(pass.good, "the raw writer gives the same bytes");
    }
}

void save(Row& row)
{
    SampleDocument document;
    fillSample(document, row.size());
    saveDocument(row, document);
}

void saveWriter(Row& row)
{
    SampleDocument document;
    fillSample(document, row.size());
    write(row, document);
}

constexpr unsigned kDepth = 8;

void saveNested(Row& row)
{
    SampleDocument document;
    fillNested(document, row.size(), kDepth);
    saveDocument(row, document);
}

void saveNestedWriter(Row& row)
{
    SampleDocument document;
    fillNested(document, row.size(), kDepth);
    write(row, document);
}

// The indentation makes the nested text five times as long: its largest size would need gigabytes for that.
constexpr Sizes kNested{1000, 100000};

RowEntry const entry("save", save);
RowEntry const writerEntry("save.writer", saveWriter);
RowEntry const nestedEntry("save, nested 8 deep", saveNested, kNested);
RowEntry const nestedWriterEntry("save, nested 8 deep.writer", saveNestedWriter, kNested);

} // namespace

} // namespace bench
