// Looking nodes up, in random order: by name among their siblings, and by a path of eight names.

#include "BareGraph.h"
#include "Row.h"
#include "SampleGraph.h"

#include <algorithm>
#include <memory>
#include <unordered_map>

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

/// Plain folders of names, one in the other.
struct BareFolder {
    std::unordered_map<std::string, std::unique_ptr<BareFolder>> entries;

    BareFolder& make(std::string const& name) { return *(entries[name] = std::make_unique<BareFolder>()); }
    BareFolder const* find(std::string const& path) const
    {
        BareFolder const* folder = this;
        for (std::size_t from = 1; folder && from <= path.size();) {
            std::size_t const to = std::min(path.find('/', from), path.size());
            auto const found = folder->entries.find(path.substr(from, to - from));
            folder = found == folder->entries.end() ? nullptr : found->second.get();
            from = to + 1;
        }
        return folder;
    }
};

void findByPathBare(Row& row)
{
    BareFolder top;
    BareFolder* innermost = &top;
    std::string prefix;
    for (unsigned level = 1; level < kNamesInPath; ++level) {
        innermost = &innermost->make("c" + std::to_string(level));
        prefix.append("/c").append(std::to_string(level));
    }
    for (std::string const& name : sampleNames(row.size()))
        innermost->make(name);
    std::vector<std::string> const wanted = behind(prefix + "/", inRandomOrder(sampleNames(row.size())));
    while (row.next()) {
        unsigned found = 0;
        row.time(row.size(), [&] {
            for (std::string const& path : wanted)
                found += top.find(path) ? 1 : 0;
        });
        row.require(found == row.size(), "every bare path is found");
    }
}

/// The deeper a node stands, the more names its path has: the time of one name.
void findDeep(Row& row)
{
    constexpr unsigned kLookUps = 1000;
    SampleDocument document;
    std::vector<AddRefWrapper<Compound>> const chain = addNesting(document, row.size());
    TAV_marlo_v1::Namable const path = chain.back()->getAsNode()->getFullPathName();
    while (row.next()) {
        unsigned found = 0;
        row.time(std::uint64_t{kLookUps} * row.size(), [&] {
            for (unsigned i = 0; i < kLookUps; ++i)
                found += document.findNodeFromPath(path.getName()) == chain.back()->getAsNode() ? 1 : 0;
        });
        row.require(found == kLookUps, "the path leads to the innermost node");
    }
}

RowEntry const nameEntry("find by name", findByName);
RowEntry const bareEntry("find by name.bare", findByNameBare);
RowEntry const pathEntry("find by path", findByPath);
RowEntry const barePathEntry("find by path.bare", findByPathBare);
RowEntry const deepEntry("find by path, N names long", findDeep, Sizes{10, 100});

} // namespace

} // namespace bench
