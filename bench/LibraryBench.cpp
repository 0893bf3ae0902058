// Many definitions in a node library, found by preset path.

#include "Row.h"
#include "SampleGraph.h"

#include <tav/NodeLibrary.h>
#include <tav/kit/StandardRuntime.h>

namespace bench {

namespace {

using TAV_marlo_v1::NodeLibrary;

class Library {
public:
    Library()
        : m_runtime("library bench")
        , m_basic(NodeLibrary::createNew("basic", "Basic"))
    {
        AddRefWrapper<NodeLibrary> const arithmetic = NodeLibrary::createNew("arithmetic", "Arithmetic");
        m_runtime.getNodeLibrary()->addSubLibrary(arithmetic);
        arithmetic->addSubLibrary(m_basic);
    }
    void add(std::vector<std::string> const& names)
    {
        for (std::string const& name : names)
            m_basic->addNode(name.c_str(), name.c_str());
    }
    bool find(std::string const& path) const { return bool(m_runtime.getNodeDefinitionFromPresetPath(path.c_str())); }
    unsigned size() const { return m_basic->getNumberOfNodes(); }

private:
    TAV_marlo_v1::kit::StandardRuntime m_runtime;
    AddRefWrapper<NodeLibrary> m_basic;
};

void add(Row& row)
{
    std::vector<std::string> const names = sampleNames(row.size());
    while (row.next()) {
        Library library;
        row.time(row.size(), [&] { library.add(names); });
        row.require(library.size() == row.size(), "every definition is in the library");
    }
}

void find(Row& row)
{
    std::vector<std::string> const names = sampleNames(row.size());
    Library library;
    library.add(names);
    std::vector<std::string> paths;
    for (unsigned const index : shuffled(row.size()))
        paths.push_back("arithmetic/basic/" + names[index]);
    while (row.next()) {
        unsigned found = 0;
        row.time(row.size(), [&] {
            for (std::string const& path : paths)
                found += library.find(path) ? 1 : 0;
        });
        row.require(found == row.size(), "every path leads to a definition");
        row.require(!library.find("arithmetic/basic/nothing"), "no other path does");
    }
}

constexpr Sizes kSizes{1000, 100000};

RowEntry const addEntry("definitions: add", add, kSizes);
RowEntry const findEntry("definitions: find by preset path", find, kSizes);

} // namespace

} // namespace bench
