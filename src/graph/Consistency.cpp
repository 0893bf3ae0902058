// The check that everything in a compound agrees with everything else.

#include "graph/AnnotationListImpl.h"
#include "graph/CompoundImpl.h"
#include "graph/NodeImpl.h"
#include "graph/PortImpl.h"

#include <string>
#include <unordered_map>
#include <unordered_set>

namespace TAV_marlo_v1 {

namespace {

class ConsistencyCheck {
public:
    explicit ConsistencyCheck(StringArray& problems)
        : m_problems(problems)
    {
    }

    void checkCompound(Compound const& compound);
    bool foundNothing() const { return m_found == 0; }

private:
    void report(std::string const& path, std::string const& problem)
    {
        m_problems.add((path + ": " + problem).c_str());
        ++m_found;
    }
    void require(bool holds, std::string const& path, char const* problem)
    {
        if (!holds)
            report(path, problem);
    }

    template <class T>
    void checkNames(detail::NamedList<T> const& list, std::string const& path, char const* kind);
    void checkNode(Node const& node, Compound const& parent);
    void checkPorts(PortList const& list, PortNotification const* owner, PortIOType ioType, std::string const& path);
    void checkPort(Port const& port, std::string const& path);
    void checkConnections(Port const& port, std::string const& path);
    void checkTwins(Compound const& compound, Node const& owner, PortIOType type, std::string const& path);
    void checkTwinPair(Port const& outside, Port const& inside, std::string const& path);
    void checkIONodes(Compound const& compound, std::string const& path);
    void checkMessageCounts(Compound const& compound, std::string const& path);

    StringArray& m_problems;
    unsigned m_found = 0;
};

void ConsistencyCheck::checkCompound(Compound const& compound)
{
    Compound::Impl const& record = CompoundAccess::impl(compound);
    std::string const path = compound.onGetParentFullPathName().getName();
    require(!record.owner || NodeAccess::impl(*record.owner).owned.get() == &compound, path,
            "its owner node holds another compound");
    require(compound.nodes().getParentCompound() == &compound, path, "its node list names another compound");

    detail::NamedList<Node> const& nodes = NodeAccess::impl(record.nodes).nodes;
    checkNames(nodes, path, "node");
    nodes.forEach([&](Node& node) { checkNode(node, compound); });

    checkNames(AnnotationAccess::impl(record.annotations).annotations, path, "annotation");
    for (AddRefWrapper<Annotation> const& annotation : record.annotations)
        require(annotation->getParentCompound() == &compound, path, "an annotation names another compound");

    checkPorts(*record.innerInputs, &compound, eOutput, path);
    checkPorts(*record.innerOutputs, &compound, eInput, path);
    if (record.owner) {
        checkTwins(compound, *record.owner, eInput, path);
        checkTwins(compound, *record.owner, eOutput, path);
    }
    checkIONodes(compound, path);
    checkMessageCounts(compound, path);
    nodes.forEach([&](Node& node) {
        if (AddRefWrapper<Compound> const nested = node.getAsCompound())
            checkCompound(*nested);
    });
}

template <class T>
void ConsistencyCheck::checkNames(detail::NamedList<T> const& list, std::string const& path, char const* kind)
{
    std::unordered_set<detail::SharedText const*> names;
    unsigned index = 0;
    list.forEach([&](T& object) {
        detail::SharedText const& name = NamedAccess::text(object);
        if (!names.insert(&name).second)
            report(path, std::string("the ") + kind + " name \"" + name.chars() + "\" is taken twice");
        else if (list.find(name.view()) != &object)
            report(path, std::string("the ") + kind + " \"" + name.chars() + "\" is not found by its name");
        if (list.at(index) != &object || list.indexOf(&object) != index)
            report(path, std::string("the ") + kind + " \"" + name.chars() + "\" is not found by its place");
        ++index;
    });
}

void ConsistencyCheck::checkNode(Node const& node, Compound const& parent)
{
    Node::Impl const& record = NodeAccess::impl(node);
    std::string const path = node.getFullPathName().getName();
    require(record.parent == &parent, path, "its parent is another compound");
    require(record.home == &NodeAccess::impl(CompoundAccess::impl(parent).nodes), path,
            "it stands in the list of another compound");
    if (record.owned) {
        require(CompoundAccess::owner(*record.owned) == &node, path, "its compound names another owner node");
        require(std::string(record.owned->getName()) == node.getName(), path, "its compound bears another name");
    }
    // What an IO node shows belongs to the compound and is checked there.
    if (!node.testFlag(eInputIO))
        checkPorts(record.outputs(), &node, eOutput, path);
    if (!node.testFlag(eOutputIO))
        checkPorts(record.inputs(), &node, eInput, path);
}

void ConsistencyCheck::checkPorts(PortList const& list, PortNotification const* owner, PortIOType ioType,
                                  std::string const& path)
{
    PortList::Impl const& record = PortAccess::impl(list);
    require(record.owner == owner, path, "a port list names another owner");
    checkNames(record.ports, path, "port");
    record.ports.forEach([&](Port& port) {
        std::string const portPath = port.getFullPathName().getName();
        require(port.getParent() == owner, portPath, "it names another owner");
        require(PortAccess::home(port) == &record, portPath, "it stands in another list");
        require(port.getPortIOType() == ioType, portPath, "its direction is not that of its list");
        require(port.getParentPort() == record.parentPort, portPath, "it names another parent port");
        require(!PortAccess::hasFlag(port, eDetached), portPath, "it is in a list but marked as detached");
        checkPort(port, portPath);
    });
}

void ConsistencyCheck::checkPort(Port const& port, std::string const& path)
{
    AddRefWrapper<PortList> const children = port.children();
    require(children || !PortAccess::hasFlag(port, eFanIn), path, "it is a fan-in port without a list of members");
    require(!port.isConnected() || !PortAccess::hasFlag(port, eUnconnectable), path,
            "it is connected though marked as unconnectable");
    checkConnections(port, path);
    if (children)
        checkPorts(*children, port.getParent(), port.getPortIOType(), path);
}

void ConsistencyCheck::checkConnections(Port const& port, std::string const& path)
{
    std::unordered_map<Port const*, unsigned> links;
    for (AddRefWrapper<Port> const& other : port.connectedTo())
        ++links[other.get()];
    for (auto const& [other, count] : links) {
        detail::NamedList<Port> const& back = PortAccess::connections(*other);
        unsigned listed = back.contains(&port) ? 1 : 0;
        if (count > 1) {
            listed = 0;
            back.forEach([&](Port& end) { listed += &end == &port ? 1 : 0; });
        }
        require(listed >= count, path, "it lists a connection that the other port does not know");
    }
}

void ConsistencyCheck::checkTwins(Compound const& compound, Node const& owner, PortIOType type, std::string const& path)
{
    PortList const& outer = type == eInput ? owner.inputs() : owner.outputs();
    PortList const& inner = type == eInput ? compound.innerInputs() : compound.innerOutputs();
    if (outer.size() != inner.size()) {
        report(path, "it has not as many ports outside as inside");
        return;
    }
    for (unsigned i = 0; i < outer.size(); ++i)
        checkTwinPair(*outer[i], *inner[i], path);
}

void ConsistencyCheck::checkTwinPair(Port const& outside, Port const& inside, std::string const& path)
{
    auto const sameList = [](PropertyList const* a, PropertyList const* b) { return a && b ? *a == *b : a == b; };
    std::string const portPath = path + "." + outside.getName();
    require(&NamedAccess::text(outside) == &NamedAccess::text(inside), portPath,
            "its two sides differ in name or order");
    require(outside.getDataType() == inside.getDataType(), portPath, "its two sides differ in type");
    require(sameList(PortAccess::options(outside), PortAccess::options(inside)), portPath,
            "its two sides differ in options");
    require(sameList(PortAccess::metadata(outside), PortAccess::metadata(inside)), portPath,
            "its two sides differ in metadata");
    require(PortAccess::hasFlag(outside, eExposed) == PortAccess::hasFlag(inside, eExposed), portPath,
            "its two sides differ in flag 4");
}

void ConsistencyCheck::checkIONodes(Compound const& compound, std::string const& path)
{
    unsigned nodesOfKind[2] = {0, 0};
    unsigned presenters[2] = {0, 0};
    for (AddRefWrapper<Node> const& node : compound.nodes()) {
        if (!node->testFlag(eAnyIO))
            continue;
        bool const isInputNode = node->testFlag(eInputIO);
        PortList const& shown = isInputNode ? node->outputs() : node->inputs();
        PortList const& inner = isInputNode ? compound.innerInputs() : compound.innerOutputs();
        std::string const nodePath = path + "/" + node->getName();
        if (PortAccess::impl(shown).presented == &PortAccess::impl(inner)) {
            bool same = shown.size() == inner.size();
            for (unsigned i = 0; same && i < inner.size(); ++i)
                same = shown[i] == inner[i];
            require(same, nodePath, "it does not show the compound's ports");
            ++presenters[isInputNode];
        } else {
            require(shown.empty() || compound.testFlag(eNoIOPortFill), nodePath,
                    "it has ports though another IO node shows the compound's");
        }
        ++nodesOfKind[isInputNode];
    }
    for (unsigned kind : {0u, 1u}) {
        require(nodesOfKind[kind] == 0 || presenters[kind] == 1 || compound.testFlag(eNoIOPortFill), path,
                "its ports are not shown by exactly one IO node of their kind");
    }
}

void ConsistencyCheck::checkMessageCounts(Compound const& compound, std::string const& path)
{
    MessageCounts counts{};
    NodeAccess::impl(compound.nodes()).nodes.forEach([&](Node& node) {
        MessageCounts const ofNode = NodeAccess::messageCounts(node);
        for (std::size_t kind = 0; kind < counts.size(); ++kind)
            counts[kind] += ofNode[kind];
    });
    require(counts == CompoundAccess::impl(compound).messageCounts, path, "its count of nodes with messages is wrong");
}

} // namespace

bool Compound::checkConsistency(StringArray& problems) const
{
    ConsistencyCheck check(problems);
    check.checkCompound(*this);
    return check.foundNothing();
}

} // namespace TAV_marlo_v1
