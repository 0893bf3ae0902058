// How a container finds what a path leads to. A path does not tell by itself where one name ends and
// the next begins, since names may hold "/" and "." too, and a separator at the end of a name gives way
// to the "." of a port. So the walk goes down the graph along every name that the path can go on with;
// as each compound has one way to it, each is visited once at most.

#include <tav/Container.h>

#include <tav/Compound.h>
#include <tav/PortList.h>

#include "graph/AnnotationListImpl.h"
#include "graph/CompoundImpl.h"
#include "graph/NamedList.h"
#include "graph/NodeImpl.h"
#include "graph/PortListImpl.h"
#include "host/ContainerImpl.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace TAV_marlo_v1 {

namespace {

constexpr std::size_t kNowhere = std::string_view::npos;

bool isSeparator(char c)
{
    return c == '/' || c == '.';
}

/// The first separator at `from` or behind it, or the end of the path.
std::size_t findSeparator(std::string_view path, std::size_t from)
{
    while (from < path.size() && !isSeparator(path[from]))
        ++from;
    return from;
}

/// What a name does for the look-up of a path.
struct Step {
    bool isEnd = false;          // the path ends with it
    std::size_t node = kNowhere; // the separator of what the object contains, if the path may go on there
    std::size_t port = kNowhere; // the "." of a port of the object, which takes the place of one separator at
                                 // the end of what stands in front of it
};

bool isAt(std::string_view path, std::size_t position, std::string_view text)
{
    return path.compare(position, text.size(), text) == 0;
}

/// `from` is where the path of what holds the name ends, and so where its separator stands.
Step stepTo(std::string_view path, std::size_t from, char separator, std::string_view name)
{
    Step step;
    bool const isHere = path[from] == separator;
    std::size_t const end = from + 1 + name.size();
    if (isHere && isAt(path, from + 1, name)) {
        step.isEnd = end == path.size();
        if (end < path.size() && isSeparator(path[end]))
            step.node = end;
    }

    std::size_t port = kNowhere;
    if (name.empty())
        port = from; // the separator in front of the name is the one at the end
    else if (!isSeparator(name.back()))
        port = step.node;
    else if (isHere && isAt(path, from + 1, name.substr(0, name.size() - 1)))
        port = end - 1;
    if (port < path.size() && path[port] == '.')
        step.port = port;
    return step;
}

/// Calls `visit(object)` for each object of the list that the path may go on with, in the order of the
/// list, until one answers true. Only an empty name does without its separator.
template <class T, class Visit>
bool visitCandidates(detail::NamedList<T> const& list, std::string_view path, std::size_t from, char separator,
                     Visit visit)
{
    std::size_t const begin = from + 1;
    if (!list.mayHoldSeparators()) {
        if (path[from] != separator)
            return false;
        T* const found = list.find(path.substr(begin, findSeparator(path, begin) - begin));
        return found && visit(*found);
    }

    auto const separators = std::count_if(path.begin() + static_cast<std::ptrdiff_t>(begin), path.end(), isSeparator);
    if (list.size() <= 3 * static_cast<std::size_t>(separators) + 2) {
        for (unsigned i = 0; i < list.size(); ++i)
            if (visit(*list.at(i)))
                return true;
        return false;
    }

    std::vector<T*> candidates;
    auto const add = [&](std::string_view name) {
        if (T* const found = list.find(name))
            candidates.push_back(found);
    };
    std::string name;
    add(name);
    for (std::size_t end = begin; end <= path.size(); ++end) {
        if (end < path.size() && !isSeparator(path[end]))
            continue;
        name.assign(path.substr(begin, end - begin));
        add(name);
        for (char const last : {'/', '.'}) {
            name.push_back(last);
            add(name);
            name.pop_back();
        }
    }
    std::sort(candidates.begin(), candidates.end(),
              [&list](T const* a, T const* b) { return list.indexOf(a) < list.indexOf(b); });
    candidates.erase(std::unique(candidates.begin(), candidates.end()), candidates.end());
    return std::any_of(candidates.begin(), candidates.end(), [&visit](T* candidate) { return visit(*candidate); });
}

/// What is looked for. Each answers true to end the walk.
class Target {
public:
    virtual ~Target() = default;
    virtual bool isNode(Node&) { return false; }
    /// What follows the "." at `from` may be a port of the node.
    virtual bool isPortOf(Node&, std::string_view, std::size_t) { return false; }
    virtual bool isIn(Compound&, std::string_view, std::size_t) { return false; }
};

/// `to` is the step that led to the node.
bool walk(Node& node, std::string_view path, Step const& to, Target& target)
{
    if (to.isEnd && target.isNode(node))
        return true;
    if (to.port != kNowhere && target.isPortOf(node, path, to.port))
        return true;
    Compound* const compound = NodeAccess::impl(node).owned.get();
    if (to.node == kNowhere || !compound)
        return false;
    if (target.isIn(*compound, path, to.node))
        return true;
    return visitCandidates(NodeAccess::impl(compound->nodes()).nodes, path, to.node, '/', [&](Node& child) {
        return walk(child, path, stepTo(path, to.node, '/', NamedAccess::text(child).view()), target);
    });
}

void search(Node* top, char const* text, Target& target)
{
    if (!top || !text)
        return;
    std::string_view const path(text);
    if (path.empty() || !isSeparator(path[0]))
        return;
    Step toTop; // "/" alone; what is inside brings its own
    toTop.isEnd = path == "/";
    toTop.node = 0;
    toTop.port = path[0] == '.' ? 0 : kNowhere;
    walk(*top, path, toTop, target);
}

class NodeTarget final : public Target {
public:
    AddRefWrapper<Node> found;

    bool isNode(Node& node) override
    {
        found = AddRefWrapper<Node>(&node);
        return true;
    }
};

class AnnotationTarget final : public Target {
public:
    AddRefWrapper<Annotation> found;

    bool isIn(Compound& compound, std::string_view path, std::size_t from) override
    {
        if (path[from] == '/')
            found = AddRefWrapper<Annotation>(
                AnnotationAccess::impl(compound.annotations()).annotations.find(path.substr(from + 1)));
        return static_cast<bool>(found);
    }
};

class PortTarget final : public Target {
public:
    PortTarget(Container::ESearchIOType ioType, Container::ESearchMode mode, bool onlyFirst)
        : m_ioType(ioType)
        , m_mode(mode)
        , m_onlyFirst(onlyFirst)
    {
    }

    std::vector<AddRefWrapper<Port>> found;

    bool isPortOf(Node& node, std::string_view path, std::size_t from) override
    {
        if (isIn(node.inputs(), path, from) || isIn(node.outputs(), path, from))
            return true;
        Compound* const compound = NodeAccess::impl(node).owned.get();
        if (m_mode != Container::eSearchAllPorts || !compound)
            return false;
        // Seen from inside, what an output of the compound takes is an input.
        return isIn(compound->innerOutputs(), path, from) || isIn(compound->innerInputs(), path, from);
    }

private:
    bool isIn(PortList const& list, std::string_view path, std::size_t from)
    {
        return visitCandidates(PortAccess::impl(list).ports, path, from, '.', [&](Port& port) {
            Step const step = stepTo(path, from, '.', NamedAccess::text(port).view());
            if (step.isEnd && isWanted(port)) {
                found.emplace_back(&port);
                if (m_onlyFirst)
                    return true;
            }
            if (step.port == kNowhere || m_mode == Container::eSearchOwnPorts)
                return false;
            AddRefWrapper<PortList> const children = port.children();
            return children && isIn(*children, path, step.port);
        });
    }
    using Target::isIn;

    bool isWanted(Port const& port) const
    {
        return m_ioType == Container::eSearchAnyIO
               || (port.getPortIOType() == eInput) == (m_ioType == Container::eSearchInput);
    }

    Container::ESearchIOType m_ioType;
    Container::ESearchMode m_mode;
    bool m_onlyFirst;
};

std::vector<AddRefWrapper<Port>> allPorts(Node* top, char const* path, Container::ESearchIOType ioType)
{
    PortTarget target(ioType, Container::eSearchAllPorts, /*onlyFirst=*/false);
    search(top, path, target);
    return std::move(target.found);
}

} // namespace

AddRefWrapper<Node> Container::findNodeFromPath(char const* path) const
{
    NodeTarget target;
    search(m_impl->topNode.get(), path, target);
    return target.found;
}

AddRefWrapper<Port> Container::findPortFromPath(char const* path, ESearchIOType ioType, ESearchMode mode) const
{
    PortTarget target(ioType, mode, /*onlyFirst=*/true);
    search(m_impl->topNode.get(), path, target);
    return target.found.empty() ? AddRefWrapper<Port>() : target.found.front();
}

AddRefWrapper<Annotation> Container::findAnnotationFromPath(char const* path) const
{
    AnnotationTarget target;
    search(m_impl->topNode.get(), path, target);
    return target.found;
}

bool Container::findPortsForConnection(char const* outputPath, char const* inputPath, AddRefWrapper<Port>& output,
                                       AddRefWrapper<Port>& input) const
{
    output.reset();
    input.reset();
    Node* const top = m_impl->topNode.get();
    std::vector<AddRefWrapper<Port>> const givers = allPorts(top, outputPath, eSearchOutput);
    std::vector<AddRefWrapper<Port>> const takers = allPorts(top, inputPath, eSearchInput);
    for (AddRefWrapper<Port> const& giver : givers) {
        AddRefWrapper<Compound> const scope = giver->getParentCompound();
        for (AddRefWrapper<Port> const& taker : takers) {
            if (scope && taker->getParentCompound() == scope) {
                output = giver;
                input = taker;
                return true;
            }
        }
    }
    return false;
}

} // namespace TAV_marlo_v1
