#include "persistence/PortWriter.h"

#include "graph/PortImpl.h"
#include "persistence/GraphVocabulary.h"
#include "persistence/PortValueText.h"

#include <tav/Compound.h>
#include <tav/PortFilterCallback.h>

#include <typeinfo>

namespace TAV_marlo_v1 {

using namespace graphtext;

/// What the owner of a port says about it. An owner of the library's own classes says what is kept with
/// the port, so it need not be asked; any other may know better.
class PortWriter::Owner {
public:
    explicit Owner(Port const& port)
        : m_owner(port.getParent())
        , m_isAsked(m_owner && typeid(*m_owner) != typeid(Node) && typeid(*m_owner) != typeid(Compound))
    {
    }

    PortFlags flags(Port& port) const { return m_isAsked ? port.getFlags() : PortAccess::flags(port); }

    /// The default values, null when there are none to be saved. `storage` may be used to hold them.
    StringArray const* values(Port& port, StringArray& storage) const
    {
        if (!m_isAsked)
            return PortAccess::values(port);
        storage.clear();
        return port.canSaveDefaultValues() && port.getPortDefaultValues(storage) ? &storage : nullptr;
    }

    PropertyList const* options(Port& port, PropertyList& storage) const
    {
        if (!m_isAsked)
            return PortAccess::options(port);
        storage = port.getOptions();
        return storage.empty() ? nullptr : &storage;
    }

    /// Calls back with each key and its value.
    template <class Visit>
    void forEachMetadata(Port& port, Visit const& visit) const
    {
        if (!m_isAsked) {
            PropertyList const* const metadata = PortAccess::metadata(port);
            for (unsigned i = 0; metadata && i < metadata->getNumberOfPairs(); ++i) {
                String key, value;
                metadata->getStringPairAt(i, key, value);
                visit(key.toChar(), value.toChar());
            }
            return;
        }
        StringArray keys;
        port.getAvailableMetadatas(eAnyMetadata, keys);
        for (char const* const key : keys)
            visit(key, port.getPortMetaDataValue(key).toChar());
    }

private:
    PortNotification* m_owner;
    bool m_isAsked;
};

void PortWriter::writePort(Port& port, PortFilterCallback* filter)
{
    writePort(Owner(port), port, filter);
}

void PortWriter::writePort(Owner const& owner, Port& port, PortFilterCallback* filter)
{
    auto const& record = PortAccess::impl(port);
    PortFlags const flags = owner.flags(port);
    bool const isFanIn = (flags & eFanIn) != 0;

    m_sink.start(kPort);
    m_sink.attribute(kName, port.getName());
    m_sink.attribute(kType, record.type ? record.type->getName() : "");
    m_sink.attribute(kFlag, static_cast<std::uint32_t>(flags));
    m_sink.attribute(kIsInput, record.ioType == eInput ? kYes : kNo);
    if (isFanIn)
        m_sink.attribute(kIsFanIn, kYes);
    writeOptions(owner, port);
    writeValueAttributes(owner, port);
    writeMetadata(owner, port);

    if (PortList const* const children = PortAccess::children(port)) {
        if (!children->empty()) {
            m_sink.start(kPorts);
            PortAccess::impl(*children).ports.forEach([&](Port& child) {
                if (!filter || filter->accept(&child))
                    writePort(owner, child, nullptr);
            });
            m_sink.end();
        }
        if (isFanIn)
            writeMembers(owner, *children);
    }
    m_sink.end();
}

void PortWriter::writeOptions(Owner const& owner, Port& port)
{
    PropertyList storage;
    if (PropertyList const* const options = owner.options(port, storage))
        m_sink.attribute(kOptions, options->serialize(eSerializeLossless).toChar());
}

/// Of a compound port, on whichever side it is written, the inner and then the outer side's values; of
/// any other port its values.
void PortWriter::writeValueAttributes(Owner const& owner, Port& port)
{
    Port* const twin = PortAccess::twin(port);
    StringArray storage;
    if (!twin) {
        if (StringArray const* const values = owner.values(port, storage))
            writeJoined(port.isCompoundInternalPort() ? kDefaultInternalValues : kDefaultValues, *values);
        return;
    }
    bool const isInner = port.isCompoundInternalPort();
    Owner const twinOwner(*twin);
    Port& inner = isInner ? port : *twin;
    Port& outer = isInner ? *twin : port;
    if (StringArray const* const values = (isInner ? owner : twinOwner).values(inner, storage))
        writeJoined(kDefaultInternalValues, *values);
    if (StringArray const* const values = (isInner ? twinOwner : owner).values(outer, storage))
        writeJoined(kDefaultExternalValues, *values);
}

void PortWriter::writeJoined(std::string_view attribute, StringArray const& values)
{
    m_sink.beginAttribute(attribute);
    for (unsigned i = 0; i < values.size(); ++i) {
        if (i > 0)
            m_sink.attributePiece({&kValueSeparator, 1});
        m_sink.attributePiece(values[i]);
    }
    m_sink.endAttribute();
}

void PortWriter::writeMetadata(Owner const& owner, Port& port)
{
    bool isOpen = false;
    owner.forEachMetadata(port, [&](char const* key, char const* value) {
        if (!isOpen)
            m_sink.start(kMetadatas);
        isOpen = true;
        m_sink.start(kMetadata);
        m_sink.attribute(kName, key);
        m_sink.attribute(kValue, value);
        m_sink.end();
    });
    if (isOpen)
        m_sink.end();
}

void PortWriter::writeMembers(Owner const& owner, PortList const& members)
{
    m_sink.start(kMembers);
    PortAccess::impl(members).ports.forEach([&](Port& member) {
        m_sink.start(kMember);
        m_sink.attribute(kName, member.getName());
        writeValueAttributes(owner, member);
        m_sink.end();
    });
    m_sink.end();
}

} // namespace TAV_marlo_v1
