#include <tav/CreateCompoundCommand.h>

#include "commands/AnnotationEdits.h"
#include "commands/CommandScope.h"
#include "commands/ConnectionEdits.h"
#include "commands/NodeEdits.h"
#include "graph/CompoundImpl.h"

#include <tav/AnnotationList.h>
#include <tav/CnxInfoArray.h>
#include <tav/NodeList.h>

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace TAV_marlo_v1 {

namespace {

using detail::EditLog;

/// What is to be grouped, in the parent's order.
struct Selection {
    std::vector<AddRefWrapper<Node>> nodes;
    std::vector<AddRefWrapper<Annotation>> annotations;
    bool isWhole = true; // every name led to something
};

template <class Item, class List>
std::vector<AddRefWrapper<Item>> findAll(List const& list, StringArray const& names, bool& isWhole)
{
    std::vector<AddRefWrapper<Item>> items;
    std::unordered_set<Item const*> known;
    for (char const* const name : names) {
        AddRefWrapper<Item> const item = list[name];
        if (!item)
            isWhole = false;
        else if (known.insert(item.get()).second)
            items.push_back(item);
    }
    return items;
}

template <class Item, class IndexOf>
void sortByPlace(std::vector<AddRefWrapper<Item>>& items, IndexOf&& indexOf)
{
    std::vector<std::pair<unsigned, AddRefWrapper<Item>>> placed;
    placed.reserve(items.size());
    for (AddRefWrapper<Item> const& item : items)
        placed.emplace_back(indexOf(item), item);
    std::sort(placed.begin(), placed.end(), [](auto const& a, auto const& b) { return a.first < b.first; });
    for (std::size_t i = 0; i < items.size(); ++i)
        items[i] = placed[i].second;
}

/// Groups one selection.
class Grouping {
public:
    Grouping(EditLog& log, Compound& parent, Selection const& selection)
        : m_log(log)
        , m_parent(parent)
        , m_selection(selection)
    {
        for (AddRefWrapper<Node> const& node : selection.nodes)
            m_selected.insert(node.get());
    }

    /// @return empty, with the graph as it was, when the parent makes no compound or anything is refused
    AddRefWrapper<Compound> run(char const* name, detail::Scene const& scene)
    {
        std::size_t const start = m_log.mark();
        collectCrossing();
        AddRefWrapper<Compound> const compound = detail::createCompound(m_log, m_parent, name);
        if (compound && moveInto(*compound) && routeThrough(*compound))
            return compound;
        m_log.takeBackTo(start, scene);
        return {};
    }

private:
    struct Crossing {
        AddRefWrapper<Port> inside;
        AddRefWrapper<Port> outside;
    };

    /// The connections that cross the border, by the ports inside in the parent's order: all at inputs,
    /// then all at outputs.
    void collectCrossing()
    {
        for (CnxType const type : {eInputCnx, eOutputCnx}) {
            for (AddRefWrapper<Node> const& node : m_selection.nodes) {
                for (CnxInfo const& connection : node->connections(type)) {
                    bool const isInput = type == eInputCnx;
                    AddRefWrapper<Port> const mine = isInput ? connection.getInputPort() : connection.getOutputPort();
                    AddRefWrapper<Port> const far = isInput ? connection.getOutputPort() : connection.getInputPort();
                    if (far->isCompoundInternalPort() || m_selected.count(far->getParentNode().get()) == 0)
                        m_crossing.push_back({mine, far});
                }
            }
        }
    }

    bool moveInto(Compound& compound)
    {
        for (Crossing const& crossing : m_crossing) {
            if (!detail::cutConnection(m_log, *crossing.inside, *crossing.outside))
                return false;
        }
        for (AddRefWrapper<Node> const& node : m_selection.nodes) {
            if (!detail::moveNode(m_log, *node, compound))
                return false;
        }
        for (AddRefWrapper<Annotation> const& annotation : m_selection.annotations) {
            if (!detail::moveAnnotation(m_log, *annotation, compound))
                return false;
        }
        return true;
    }

    bool routeThrough(Compound& compound)
    {
        compound.createIONode(eInputIO);
        compound.createIONode(eOutputIO);
        for (Crossing const& crossing : m_crossing) {
            if (!route(compound, crossing))
                return false;
        }
        return true;
    }

    /// Makes the connection anew, through the compound port for its source.
    bool route(Compound& compound, Crossing const& crossing)
    {
        bool const isInput = crossing.inside->getPortIOType() == eInput;
        Port* const source = isInput ? crossing.outside.get() : crossing.inside.get();
        AddRefWrapper<Port>& border = m_borderPorts[source];
        bool const isNew = !border;
        if (isNew) // its removal needs no note: it goes with the compound
            border =
                CompoundAccess::createPortLike(compound, *crossing.inside, crossing.inside->getName(), eNoPortFlags);
        AddRefWrapper<Port> const inner = compound.getReversePort(border);
        return inner && (!(isNew || isInput) || connect(*inner, *crossing.inside))
               && (!(isNew || !isInput) || connect(*border, *crossing.outside));
    }

    bool connect(Port& a, Port& b) { return detail::makeConnection(m_log, a, b, /*copyMetadata=*/false); }

    EditLog& m_log;
    Compound& m_parent;
    Selection const& m_selection;
    std::unordered_set<Node const*> m_selected;
    std::vector<Crossing> m_crossing;
    std::unordered_map<Port const*, AddRefWrapper<Port>> m_borderPorts; // the outside of the port for a source
};

} // namespace

struct CreateCompoundCommand::Impl {
    Selection select(Compound const& parent) const;

    detail::CommandTarget target;
    StringArray nodeNames;
    StringArray annotationNames;
    String compoundName;
    String createdName;
    EditLog log;
};

CreateCompoundCommand::CreateCompoundCommand()
    : m_impl(std::make_unique<Impl>())
{
}

CreateCompoundCommand::CreateCompoundCommand(CreateCompoundCommand&& other) noexcept = default;

CreateCompoundCommand::~CreateCompoundCommand() = default;

bool CreateCompoundCommand::setParentCompound(Container* container, char const* path)
{
    return m_impl && m_impl->target.setCompound(container, path);
}

bool CreateCompoundCommand::addNode(char const* name)
{
    if (!m_impl || !name)
        return false;
    m_impl->nodeNames.add(name);
    return true;
}

bool CreateCompoundCommand::addAnnotation(char const* name)
{
    if (!m_impl || !name)
        return false;
    m_impl->annotationNames.add(name);
    return true;
}

bool CreateCompoundCommand::setCompoundName(char const* name)
{
    if (!m_impl || !name)
        return false;
    m_impl->compoundName = name;
    return true;
}

char const* CreateCompoundCommand::getCreatedCompoundName() const
{
    return m_impl ? m_impl->createdName.toChar() : "";
}

Selection CreateCompoundCommand::Impl::select(Compound const& parent) const
{
    Selection selection;
    selection.nodes = findAll<Node>(parent.nodes(), nodeNames, selection.isWhole);
    selection.annotations = findAll<Annotation>(parent.annotations(), annotationNames, selection.isWhole);
    sortByPlace(selection.nodes, [&](auto const& node) { return parent.nodes().findNode(node); });
    sortByPlace(selection.annotations, [&](auto const& item) { return parent.annotations().findAnnotation(item); });
    return selection;
}

namespace {

bool canGroup(Compound const& parent, Selection const& selection)
{
    NodeList nodes;
    for (AddRefWrapper<Node> const& node : selection.nodes)
        nodes.add(node);
    AnnotationList annotations;
    for (AddRefWrapper<Annotation> const& annotation : selection.annotations)
        annotations.add(annotation);
    return parent.canCreateCompound(nodes, annotations);
}

} // namespace

bool CreateCompoundCommand::doit()
{
    if (!m_impl)
        return false;
    m_impl->log.clear();
    m_impl->createdName = "";
    AddRefWrapper<Compound> const parent = m_impl->target.findCompound();
    if (!parent)
        return false;
    Selection const selection = m_impl->select(*parent);
    if (!canGroup(*parent, selection))
        return false;

    auto const bracket = m_impl->target.scope().openBracket();
    char const* const name = m_impl->compoundName.empty() ? "compound" : m_impl->compoundName.toChar();
    AddRefWrapper<Compound> const compound =
        Grouping(m_impl->log, *parent, selection).run(name, m_impl->target.scope().scene());
    if (!compound)
        return false;
    m_impl->createdName = compound->getName();
    return selection.isWhole;
}

bool CreateCompoundCommand::redo()
{
    return doit();
}

bool CreateCompoundCommand::undo()
{
    if (!m_impl || !m_impl->target.scope().container() || m_impl->log.empty())
        return false;
    auto const bracket = m_impl->target.scope().openBracket();
    m_impl->createdName = "";
    return m_impl->log.takeBack(m_impl->target.scope().scene());
}

} // namespace TAV_marlo_v1
