// Port::restoreFromString.

#include "foundation/PropertyListAccess.h"
#include "graph/PortImpl.h"
#include "persistence/GraphVocabulary.h"
#include "persistence/PortReader.h"
#include "persistence/PortValueText.h"

#include <tav/ChangeBracket.h>
#include <tav/Container.h>
#include <tav/Node.h>

#include <bit>

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
        : m_isInner(like.isCompoundInternalPort())
        , m_port(Port::createNew(like.getName(), like.getPortIOType()))
        , m_types(runtimeOf(like))
    {
        PortAccess::setDataType(*m_port, like.getDataType());
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

private:
    void begin(PortAttributes attributes)
    {
        if (m_source.failed())
            return;
        if (m_isInner)
            attributes.externalValues.swap(attributes.internalValues); // the outer ones are taken as its own
        if (attributes.internalValues && attributes.externalValues)
            m_othersValues = splitPortValues(*attributes.internalValues, m_port->getDataType().get());
        m_ports.beginFreePort(*m_port, attributes);
    }

    bool m_isInner;
    AddRefWrapper<Port> m_port;
    std::optional<StringArray> m_othersValues;
    ElementSource m_source{*this};
    DataTypeLookup m_types;
    PortReader m_ports{m_source, m_types};
};

/// Gives a port what another one holds, asked and told like any change.
class PortUpdate {
public:
    void run(Port& port, Port const& source)
    {
        copyFlags(port, source);
        copyOptions(port, source);
        copyValues(port, PortAccess::values(source));
        copyMetadata(port, source);
        copyChildren(port, source);
    }

    static void copyValues(Port& port, StringArray const* wanted)
    {
        StringArray present;
        bool const hasValues = port.getPortDefaultValues(present);
        if (wanted && !(hasValues && present == *wanted))
            port.setPortDefaultValues(*wanted);
        else if (!wanted && hasValues)
            port.resetPortDefaultValues();
    }

private:
    static void copyFlags(Port& port, Port const& source)
    {
        auto const word = [](PortFlags flags) { return static_cast<std::uint32_t>(flags & ~eDetached); };
        std::uint32_t const wanted = word(PortAccess::flags(source));
        for (std::uint32_t left = wanted ^ word(PortAccess::flags(port)); left != 0; left &= left - 1) {
            auto const flag = static_cast<PortFlags>(std::uint32_t(1) << std::countr_zero(left));
            if ((wanted & flag) != 0)
                port.setFlag(flag);
            else
                port.clearFlag(flag);
        }
    }

    static void copyOptions(Port& port, Port const& source)
    {
        PropertyList const* const options = PortAccess::options(source);
        PropertyList const wanted = options ? *options : PropertyList();
        PropertyList const* const present = PortAccess::options(port);
        if (present ? *present == wanted : wanted.empty())
            return;
        PortAccess::setOptions(port, wanted);
        if (Port* const twin = PortAccess::twin(port))
            PortAccess::setOptions(*twin, wanted);
        port.notifyChange(ePortMetadataChanged);
    }

    static void copyMetadata(Port& port, Port const& source)
    {
        StringArray present, wanted;
        port.getAvailableMetadatas(eAnyMetadata, present);
        if (PropertyList const* const metadata = PortAccess::metadata(source))
            metadata->getStringPairNames(wanted);
        if (present != wanted) { // also when only the order differs
            for (char const* const key : present)
                port.setPortMetaDataValue(key, nullptr);
        }
        for (char const* const key : wanted) {
            char const* const value = PortAccess::metadata(source)->getStringPairValue(key);
            port.setPortMetaDataValue(key, value ? value : "");
        }
    }

    /// Children are told apart by name: those that stay keep their connections.
    void copyChildren(Port& port, Port const& source)
    {
        AddRefWrapper<PortList> const wanted = source.children();
        if (AddRefWrapper<PortList> const present = port.children()) {
            for (unsigned i = present->size(); i > 0; --i) {
                AddRefWrapper<Port> const child = (*present)[i - 1];
                if (!wanted || !(*wanted)[child->getName()])
                    present->remove(child);
            }
        }
        if (!wanted || wanted->empty())
            return;
        AddRefWrapper<PortList> const list = port.createChildrenList();
        for (unsigned i = 0; i < wanted->size(); ++i) {
            AddRefWrapper<Port> const child = (*wanted)[i];
            unsigned index = kNotFound;
            AddRefWrapper<Port> known = list->findPort(child->getName(), index);
            if (!known) {
                known = Port::createNew(child->getName(), port.getPortIOType());
                PortAccess::setDataType(*known, child->getDataType());
                if (!list->insert(known, i))
                    continue;
            } else if (index != i) {
                list->movePort(index, i);
            }
            run(*known, *child);
        }
    }
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
    PortUpdate().run(*this, handler.port());
    Port* const twin = PortAccess::twin(*this);
    if (twin && handler.othersValues())
        PortUpdate::copyValues(*twin, handler.othersValues());
    return StatusStr();
}

} // namespace TAV_marlo_v1
