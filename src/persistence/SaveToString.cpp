// The operations of the interface that save as text.

#include "persistence/GraphWriter.h"

#include <tav/Annotation.h>
#include <tav/Compound.h>
#include <tav/Node.h>
#include <tav/Port.h>

namespace TAV_marlo_v1 {

namespace {

template <class Write>
String writtenText(Write const& write)
{
    ElementSink sink;
    GraphWriter writer(sink);
    write(writer);
    return sink.takeText();
}

} // namespace

String Port::saveToString(PortFilterCallback* filter) const
{
    ElementSink sink;
    PortWriter(sink).writePort(const_cast<Port&>(*this), filter);
    return sink.takeText();
}

String Node::saveToString(PortFilterCallback* filter) const
{
    return writtenText([&](GraphWriter& writer) { writer.writeNode(*this, filter, GraphWriter::eAskingHook); });
}

String Node::saveWithoutHook(PortFilterCallback* filter) const
{
    return writtenText([&](GraphWriter& writer) { writer.writeNode(*this, filter, GraphWriter::eWithoutHook); });
}

bool Node::onSaveToString(PortFilterCallback*, String&) const
{
    return false;
}

String Compound::saveToString(PortFilterCallback* filter) const
{
    return writtenText([&](GraphWriter& writer) { writer.writeCompound(*this, filter, GraphWriter::eAskingHook); });
}

String Compound::saveWithoutHook(PortFilterCallback* filter) const
{
    return writtenText([&](GraphWriter& writer) { writer.writeCompound(*this, filter, GraphWriter::eWithoutHook); });
}

bool Compound::onSaveToString(PortFilterCallback*, String&) const
{
    return false;
}

String Compound::saveItemsToString(StringArray const& nodeNames, StringArray const& annotationNames,
                                   ESaveMode mode) const
{
    return writtenText([&](GraphWriter& writer) { writer.writeItems(*this, nodeNames, annotationNames, mode); });
}

String Annotation::saveToString() const
{
    return writtenText([&](GraphWriter& writer) { writer.writeAnnotation(*this); });
}

} // namespace TAV_marlo_v1
