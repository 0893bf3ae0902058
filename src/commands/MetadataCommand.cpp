#include <tav/MetadataCommand.h>

#include "commands/CommandScope.h"
#include "commands/EditLog.h"

#include <tav/PropertyList.h>
#include <tav/WatchPoint.h>

#include <optional>
#include <variant>
#include <vector>

namespace TAV_marlo_v1 {

namespace {

enum class TargetKind { eNode, eCompound, eWatchPoint };

struct SetValues {
    String key;
    StringArray values;
};
struct Remove {
    String key;
};
struct SetAll {
    PropertyList list;
};
using Record = std::variant<SetValues, Remove, SetAll>;

/// What the path leads to, with a handle that keeps it.
struct Target {
    AddRefWrapper<Node> node;
    AddRefWrapper<Compound> compound;
    AddRefWrapper<WatchPoint> watchPoint;
    Metadata* metadata = nullptr;
};

bool apply(Metadata& metadata, SetValues const& record)
{
    StringArray present;
    if (metadata.getMetadata(record.key.toChar(), present) && present == record.values)
        return true;
    if (record.values.size() == 1)
        return metadata.setMetadataValue(record.key.toChar(), record.values[0]);
    // Several values, or none, in the place that the entry has: by way of the whole store.
    PropertyList store = metadata.getPropertyList();
    if (!store.setStringPairValues(record.key.toChar(), record.values))
        store.addStringPair(record.key.toChar(), record.values);
    metadata.setFromPropertyList(store);
    return true;
}

bool apply(Metadata& metadata, Remove const& record)
{
    return metadata.removeMetadata(record.key.toChar());
}

bool apply(Metadata& metadata, SetAll const& record)
{
    if (metadata.getPropertyList() != record.list)
        metadata.setFromPropertyList(record.list);
    return true;
}

} // namespace

struct MetadataCommand::Impl {
    Target find() const;
    /// The watch point of the port at the path.
    AddRefWrapper<WatchPoint> findWatchPoint() const;

    TargetKind kind = TargetKind::eNode;
    detail::CommandTarget target;
    std::vector<Record> records;
    std::optional<PropertyList> before; // the store before the last run
};

// The record is made with the target: a command without one holds nothing.
MetadataCommand::MetadataCommand() = default;

MetadataCommand::MetadataCommand(MetadataCommand&& other) noexcept = default;

MetadataCommand::~MetadataCommand() = default;

bool MetadataCommand::setParentNode(Container* container, char const* path)
{
    if (m_impl)
        return false;
    m_impl = std::make_unique<Impl>();
    m_impl->kind = TargetKind::eNode;
    return m_impl->target.setNode(container, path);
}

bool MetadataCommand::setParentCompound(Container* container, char const* path)
{
    if (m_impl)
        return false;
    m_impl = std::make_unique<Impl>();
    m_impl->kind = TargetKind::eCompound;
    return m_impl->target.setCompound(container, path);
}

bool MetadataCommand::setParentWatchPoint(Container* container, char const* path)
{
    if (m_impl)
        return false;
    m_impl = std::make_unique<Impl>();
    m_impl->kind = TargetKind::eWatchPoint;
    m_impl->target.set(container, path);
    return static_cast<bool>(m_impl->findWatchPoint());
}

bool MetadataCommand::setMetadataValue(char const* key, char const* value)
{
    return value && setMetadataValues(key, StringArray(value));
}

bool MetadataCommand::setMetadataValues(char const* key, StringArray const& values)
{
    if (!m_impl || !key)
        return false;
    m_impl->records.push_back(SetValues{key, values});
    return true;
}

bool MetadataCommand::removeMetadata(char const* key)
{
    if (!m_impl || !key)
        return false;
    m_impl->records.push_back(Remove{key});
    return true;
}

bool MetadataCommand::setFromPropertyList(PropertyList const& list)
{
    if (!m_impl)
        return false;
    m_impl->records.push_back(SetAll{list});
    return true;
}

AddRefWrapper<WatchPoint> MetadataCommand::Impl::findWatchPoint() const
{
    Container const* const container = target.scope().container();
    if (!container)
        return {};
    for (auto const ioType : {Container::eSearchInput, Container::eSearchOutput}) {
        AddRefWrapper<Port> const port =
            container->findPortFromPath(target.path().toChar(), ioType, Container::eSearchAllPorts);
        if (port && port->getWatchPoint())
            return port->getWatchPoint();
    }
    return {};
}

Target MetadataCommand::Impl::find() const
{
    Target found;
    if (kind == TargetKind::eWatchPoint) {
        found.watchPoint = findWatchPoint();
        found.metadata = found.watchPoint.get();
    } else {
        found.node = target.findNode();
        found.metadata = found.node.get();
    }
    if (kind == TargetKind::eCompound) {
        found.compound = found.node ? found.node->getAsCompound() : AddRefWrapper<Compound>();
        found.metadata = found.compound.get();
    }
    return found;
}

bool MetadataCommand::doit()
{
    if (!m_impl || m_impl->records.empty())
        return false;
    m_impl->before.reset();
    Target const target = m_impl->find();
    if (!target.metadata)
        return false;
    auto const bracket = m_impl->target.scope().openBracket();
    m_impl->before = target.metadata->getPropertyList();
    bool isWhole = true;
    for (Record const& record : m_impl->records)
        isWhole = std::visit([&](auto const& kind) { return apply(*target.metadata, kind); }, record) && isWhole;
    return isWhole;
}

bool MetadataCommand::redo()
{
    return doit();
}

void MetadataCommand::undo()
{
    if (!m_impl || !m_impl->before)
        return;
    Target const target = m_impl->find();
    if (!target.metadata)
        return;
    auto const bracket = m_impl->target.scope().openBracket();
    if (target.metadata->getPropertyList() != *m_impl->before)
        target.metadata->setFromPropertyList(*m_impl->before);
    m_impl->before.reset();
}

} // namespace TAV_marlo_v1
