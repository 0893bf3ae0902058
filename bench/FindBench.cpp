// Looking nodes up, in random order: by name among their siblings, and by a path of eight names.

#include "BareGraph.h"
#include "Row.h"
#include "SampleGraph.h"

namespace bench {

namespace {

constexpr unsigned kNamesInPath = 8;

std::vector<std::string> inRandomOrder(std::vector<std::string> const& names)
{
    std::vector<std::string> mixed;
    mixed.reserve(names.size());
    for (unsigned const index : shuffled(static_cast<unsigned>(names.size())))
        mixed.push_back(names[index]);
    return mixed;
}

void findByName(Row& row)
{
    SampleDocument document;
    addSampleNodes(document, document.top(), sampleNames(row.size()));
    std::vector<std::string> const wanted = inRandomOrder(sampleNames(row.size()));
    TAV_marlo_v1::NodeList const& nodes = document.top().nodes();
    while (row.next()) {
        unsigned found = 0;
        row.time(row.size(), [&] {
            for (std::string const& name : wanted)
                found += nodes[name.c_str()] ? 1 : 0;
        });
        row.require(found == row.size(), "every name is found");
    }
}

void findByNameBare(Row& row)
{
    BareGraph graph;
    graph.addSampleNodes(sampleNames(row.size()));
    std::vector<std::string> const wanted = inRandomOrder(sampleNames(row.size()));
    while (row.next()) {
        unsigned found = 0;
        row.time(row.size(), [&] {
            for (std::string const& name : wanted)
                found += graph.byName.find(name) != graph.byName.end() ? 1 : 0;
        });
        row.require(found == row.size(), "every bare name is found");
    }
}

std::vector<std::string> behind(std::string const& prefix, std::vector<std::string> names)
{
    for (std::string& name : names)
        name.insert(0, prefix);
    return names;
}

void findByPath(Row& row)
{
    SampleDocument document;
    std::vector<AddRefWrapper<Compound>> const chain = addNesting(document, kNamesInPath - 1);
    addSampleNodes(document, *chain.back(), sampleNames(row.size()));
    std::string prefix;
    for (AddRefWrapper<Compound> const& compound : chain)
        prefix.append("/").append(compound->getName());
    std::vector<std::string> const wanted = behind(prefix + "/", inRandomOrder(sampleNames(row.size())));
    row.require(document.findNodeFromPath(wanted[0].c_str())->getFullPathName() == wanted[0].c_str(),
                "the path leads to the node that has it");
    while (row.next()) {
        unsigned found = 0;
        row.time(row.size(), [&] {
            for (std::string const& path : wanted)
                found += document.findNodeFromPath(path.c_str()) ? 1 : 0;
        });
        row.require(found == row.size(), "every path is found");
    }
}

RowEntry const nameEntry("find by name", findByName);
RowEntry const bareEntry("find by name.bare", findByNameBare);
RowEntry const pathEntry("find by path", findByPath);

} // namespace

} // namespace bench
