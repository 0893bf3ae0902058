// Port::restoreFromString.

#include "foundation/PropertyListAccess.h"
#include "graph/PortImpl.h"
#include "persistence/GraphVocabulary.h"
#include "persistence/PortReader.h"
#include "persistence/PortValueText.h"

#include <tav/ChangeBracket.h>
#include <tav/Container.h>
#include <tav/Node.h>

#include <functional>
#include <string>
#include <vector>

namespace TAV_marlo_v1 {

using namespace graphtext;

namespace {

Container* containerOf(Port const& port)
{
    AddRefWrapper<Node> const node = port.getParentNode();
    return node ? node->getContainer() : nullptr;
}

Runtime* runtimeOf(Port const& port)
{
    Container const* const container = containerOf(port);
    return container ? container->getRuntime() : nullptr;
}

/// Reads a "port" text into a port that stands in nothing, with the type of the one it is for.
class PortTextHandler final : public ElementHandler {
public:
    explicit PortTextHandler(Port const& like)
        : m_like(like)
        , m_types(runtimeOf(like))
    {
        startOver();
    }

    bool read(char const* text) { return m_source.parse(text); }
    std::string const& error() const noexcept { return m_source.error(); }
    Port& port() const noexcept { return *m_port; }
    /// The values of the other side of a compound port; null when there are none.
    StringArray const* othersValues() const noexcept { return m_othersValues ? &*m_othersValues : nullptr; }

    void startElement(std::string_view name, ElementAttributes const& attributes) override
    {
        if (m_ports.isActive())
            m_ports.startElement(name, attributes);
        else if (name != kPort)
            failAtElement(m_source, name, kPort);
        else
            begin(readPortAttributes(m_source, kPort, attributes));
    }
    void characters(std::string_view) override {}
    void endElement() override { m_ports.endElement(); }
    void startOver() override
    {
        m_ports.abandon();
        m_port = Port::createNew(m_like.getName(), m_like.getPortIOType());
        PortAccess::setDataType(*m_port, m_like.getDataType());
        m_othersValues.reset();
    }

private:
    void begin(PortAttributes attributes)
    {
        if (m_source.failed())
            return;
        if (m_like.isCompoundInternalPort())
            attributes.externalValues.swap(attributes.internalValues); // the outer ones are taken as its own
        if (attributes.internalValues && attributes.externalValues)
            m_othersValues = splitPortValues(*attributes.internalValues, m_port->getDataType().get());
        m_ports.beginFreePort(*m_port, attributes);
    }

    Port const& m_like;
    AddRefWrapper<Port> m_port;
    std::optional<StringArray> m_othersValues;
    ElementSource m_source{*this};
    DataTypeLookup m_types;
    PortReader m_ports{m_source, m_types};
};

/// Gives a port what another one holds, asked and told like any change. The first refusal ends it; what
/// was changed until then can be put back, last first and on the same terms.
class PortUpdate {
public:
    /// @return false when the owner refused something
    bool run(Port& port, Port const& source)
    {
        copyOptions(port, source);
        return copyFlags(port, source) && copyValues(port, PortAccess::values(source)) && copyMetadata(port, source)
               && copyChildren(port, source);
    }

    bool copyValues(Port& port, StringArray const* wanted)
    {
        StringArray present;
        bool const hasValues = port.getPortDefaultValues(present);
        if (wanted ? hasValues && present == *wanted : !hasValues)
            return true;
        auto const put = [](Port& to, StringArray const* values) {
            return values ? to.setPortDefaultValues(*values) : to.resetPortDefaultValues();
        };
        return note(put(port, wanted), port, "default values",
                    [=](Port& kept) { put(kept, hasValues ? &present : nullptr); });
    }

    void putBack()
    {
        for (; !m_steps.empty(); m_steps.pop_back())
            m_steps.back()();
    }

    /// The children that are gone for good let go of what they are connected to.
    void cutRemovedChildren()
    {
        for (AddRefWrapper<Port> const& child : m_removed) {
            PortAccess::removeAllConnectionsBelow(*child);
            PortAccess::unlinkAll(*child);
        }
    }

    std::string const& refusal() const noexcept { return m_refusal; }

private:
    /// Notes how a change is taken back or, when there was none, that it was refused. @return `changed`
    template <class TakeBack>
    bool note(bool changed, Port& port, char const* what, TakeBack takeBack)
    {
        if (changed)
            m_steps.push_back([kept = AddRefWrapper<Port>(&port), takeBack] { takeBack(*kept); });
        else
            m_refusal = std::string(port.getFullPathName().getName()) + ": the " + what + " can't be changed";
        return changed;
    }

    void copyOptions(Port& port, Port const& source)
    {
        auto const optionsOf = [](Port const& of) {
            PropertyList const* const options = PortAccess::options(of);
            return options ? *options : PropertyList();
        };
        auto const put = [](Port& to, PropertyList const& options) {
            PortAccess::setOptions(to, options);
            if (Port* const twin = PortAccess::twin(to))
                PortAccess::setOptions(*twin, options);
            to.notifyChange(ePortMetadataChanged);
        };
        PropertyList const present = optionsOf(port), wanted = optionsOf(source);
        if (present == wanted)
            return;
        put(port, wanted);
        note(true, port, "options", [=](Port& kept) { put(kept, present); });
    }

    bool copyFlags(Port& port, Port const& source)
    {
        PortFlags const present = PortAccess::flags(port) & ~eDetached;
        PortFlags const wanted = PortAccess::flags(source) & ~eDetached;
        // Members go with the flag for good; taken out before it, they can be put back.
        if ((present & ~wanted & eFanIn) != eNoPortFlags && !removeChildren(port, nullptr))
            return false;
        return clearFlags(port, present & ~wanted) && setFlags(port, wanted & ~present);
    }

    bool clearFlags(Port& port, PortFlags flags)
    {
        port.clearFlag(flags);
        return flags == eNoPortFlags
               || note(!PortAccess::hasFlag(port, flags), port, "flags", [=](Port& kept) { kept.setFlag(flags); });
    }

    bool setFlags(Port& port, PortFlags flags)
    {
        AddRefWrapper<PortList> const children = port.children();
        port.setFlag(flags);
        bool const changed = (PortAccess::flags(port) & flags) == flags;
        return flags == eNoPortFlags || note(changed, port, "flags", [=](Port& kept) {
                   // Children that were there before are no members, which would go with the flag.
                   if (children)
                       PortAccess::setChildren(kept, nullptr);
                   kept.clearFlag(flags);
                   if (children)
                       PortAccess::setChildren(kept, children);
               });
    }

    bool copyMetadata(Port& port, Port const& source)
    {
        StringArray present, wanted;
        port.getAvailableMetadatas(eAnyMetadata, present);
        if (PropertyList const* const metadata = PortAccess::metadata(source))
            metadata->getStringPairNames(wanted);
        bool const isInPlace = present == wanted; // else all anew, also when only the order differs
        for (unsigned i = isInPlace ? 0 : present.size(); i > 0; --i) {
            if (!putMetadata(port, present[i - 1], nullptr, /*exists=*/true))
                return false;
        }
        for (char const* const key : wanted) {
            char const* const value = PortAccess::metadata(source)->getStringPairValue(key);
            if (!putMetadata(port, key, value ? value : "", /*exists=*/isInPlace))
                return false;
        }
        return true;
    }

    bool putMetadata(Port& port, char const* key, char const* value, bool exists)
    {
        String const present = port.getPortMetaDataValue(key);
        if (exists && value && present == value)
            return true;
        return note(port.setPortMetaDataValue(key, value), port, "metadata", [=, name = String(key)](Port& kept) {
            kept.setPortMetaDataValue(name.toChar(), exists ? present.toChar() : nullptr);
        });
    }

    /// Children are told apart by name: those that stay keep their connections.
    bool copyChildren(Port& port, Port const& source)
    {
        AddRefWrapper<PortList> const wanted = source.children();
        if (!removeChildren(port, wanted.get()))
            return false;
        if (!wanted || wanted->empty())
            return true;
        AddRefWrapper<PortList> const list = port.createChildrenList();
        for (unsigned i = 0; i < wanted->size(); ++i) {
            AddRefWrapper<Port> const child = (*wanted)[i];
            AddRefWrapper<Port> const placed = placeChild(port, *list, *child, i);
            if (!placed || !run(*placed, *child))
                return false;
        }
        return true;
    }

    bool removeChildren(Port& port, PortList const* wanted)
    {
        AddRefWrapper<PortList> const list = port.children();
        for (unsigned i = list ? list->size() : 0; i > 0; --i) {
            AddRefWrapper<Port> const child = (*list)[i - 1];
            if (wanted && (*wanted)[child->getName()])
                continue;
            if (!note(list->remove(child), port, "children",
                      [=](Port& kept) { kept.createChildrenList()->insert(child, i - 1); }))
                return false;
            m_removed.push_back(child);
        }
        return true;
    }

    /// The child of that name, made if there is none, moved to `index`; empty when that was refused.
    AddRefWrapper<Port> placeChild(Port& port, PortList& children, Port const& wanted, unsigned index)
    {
        unsigned from = kNotFound;
        AddRefWrapper<Port> child = children.findPort(wanted.getName(), from);
        bool placed = from == index;
        if (!child) {
            child = Port::createNew(wanted.getName(), port.getPortIOType());
            PortAccess::setDataType(*child, wanted.getDataType());
            placed = note(children.insert(child, index), port, "children",
                          [=](Port& kept) { kept.children()->remove(child); });
        } else if (!placed) {
            placed = note(children.movePort(from, index), port, "children",
                          [=](Port& kept) { kept.children()->movePort(index, from); });
        }
        return placed ? child : AddRefWrapper<Port>();
    }

    std::vector<std::function<void()>> m_steps;
    std::vector<AddRefWrapper<Port>> m_removed;
    std::string m_refusal;
};

} // namespace

StatusStr Port::restoreFromString(char const* text)
{
    if (!text)
        return StatusStr(noTextFound(kPort).c_str());
    AddRefWrapper<Port> const self(this); // hooks are called
    PortTextHandler handler(*this);
    if (!handler.read(text))
        return StatusStr(handler.error().c_str());

    AddRefWrapper<Node> const node = getParentNode();
    Container* const container = containerOf(*this);
    ChangeBracket const bracket = container ? container->createChangeBracket(node.get()) : ChangeBracket(node.get());
    PortUpdate update;
    AddRefWrapper<Port> const twin(PortAccess::twin(*this));
    bool const done = update.run(*this, handler.port())
                      && (!twin || !handler.othersValues() || update.copyValues(*twin, handler.othersValues()));
    if (!done) {
        update.putBack();
        return StatusStr(update.refusal().c_str());
    }
    update.cutRemovedChildren();
    return StatusStr();
}

} // namespace TAV_marlo_v1
