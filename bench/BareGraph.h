#pragma once

#include <list>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace bench {

/// The yardstick: the sample graph as plain structs in standard containers, found by name, and nothing
/// else: no order of removal that is kept, nobody asked, nobody told.
struct BareNode;

struct BarePort {
    BareNode* owner;
    std::string name;
    std::string const* type;
    std::vector<std::string> values;
    std::vector<BarePort*> connections;
};

struct BareNode {
    std::string name;
    std::string const* type;
    std::vector<std::unique_ptr<BarePort>> inputs, outputs;
    std::map<std::string, std::vector<std::string>> metadata;
};

struct BareGraph {
    using Nodes = std::list<BareNode>;

    BareNode& addSampleNode(std::string const& name);
    void addSampleNodes(std::vector<std::string> const& names);
    /// Adds nodes and connections as fillSample does.
    void fillSample(unsigned count);
    void rename(BareNode& node, std::string const& name);
    bool remove(std::string const& name);

    Nodes nodes;
    std::unordered_map<std::string, Nodes::iterator> byName;
};

void connectBare(BarePort& output, BarePort& input);
/// The sample's connections. @param nodes in the order of the list
void connectBareNodes(std::vector<BareNode*> const& nodes);
std::vector<BareNode*> bareNodesOf(BareGraph& graph);

} // namespace bench
