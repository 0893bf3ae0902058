// The edits that only look.
#include "EditActions.h"
#include "EditSession.h"
#include "EditTable.h"
#include "EditTargets.h"

#include <tav/AnnotationList.h>
#include <tav/NodeList.h>
#include <tav/PortDataType.h>
#include <tav/PortList.h>
#include <tav/WatchPoint.h>

#include <algorithm>

using namespace TAV_marlo_v1;

namespace tool {

namespace {

std::string padded(std::string text, std::size_t width)
{
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

/// As "set" takes them.
std::string valueText(StringArray const& values)
{
    return quoted(values.size() == 1 ? values[0] : values.serialize(eSerializeLossless).toChar());
}

std::string flagText(Port const& port)
{
    std::string text;
    if (port.testFlag(eExposed))
        text += " exposed";
    if (port.isFanIn())
        text += " fan-in";
    if (port.testFlag(eUnconnectable))
        text += " unconnectable";
    return text;
}

/// "input  a float = 1 <- /three.out"
void appendPort(Port const& port, std::string const& indent, std::string& text)
{
    bool const isInput = port.getPortIOType() == eInput;
    AddRefWrapper<PortDataType> const type = port.getDataType();
    text += indent + (isInput ? "input " : "output ") + quoted(port.getFullName().getName());
    if (type)
        text += ' ' + quoted(type->getName());
    text += flagText(port);
    StringArray values;
    if (port.getPortDefaultValues(values))
        text += " = " + valueText(values);
    for (AddRefWrapper<Port> const& other : port.connectedTo())
        text += (isInput ? " <- " : " -> ") + quoted(other->getFullPathName().getName());
    if (AddRefWrapper<WatchPoint> const watchPoint = port.getWatchPoint())
        text += watchPoint->enabled() ? " watched" : " watched (off)";
    text += '\n';
    if (AddRefWrapper<PortList> const children = port.children()) {
        for (AddRefWrapper<Port> const& child : *children)
            appendPort(*child, indent + "  ", text);
    }
}

void appendEntries(Metadata const& store, std::string& text)
{
    StringArray keys;
    store.getMetadatas(keys);
    for (char const* key : keys) {
        StringArray values;
        store.getMetadata(key, values);
        text += "  metadata " + quoted(key);
        for (char const* value : values)
            text += ' ' + quoted(value);
        text += '\n';
    }
}

void appendPortEntries(Port const& port, std::string& text)
{
    StringArray keys;
    port.getAvailableMetadatas(eAnyMetadata, keys);
    for (char const* key : keys)
        text += "  metadata " + quoted(key) + ' ' + quoted(port.getPortMetaDataValue(key).toChar()) + '\n';
}

std::string nodeText(Node const& node)
{
    std::string text = quoted(pathOf(node)) + ' ' + quoted(node.getNodeTypeName()) + '\n';
    AddRefWrapper<Compound> const compound = node.getAsCompound();
    appendEntries(compound ? static_cast<Metadata const&>(*compound) : node, text);
    for (PortList const* list : {&node.inputs(), &node.outputs()}) {
        for (AddRefWrapper<Port> const& port : *list)
            appendPort(*port, "  ", text);
    }
    return text;
}

} // namespace

void list(EditSession& session, Words const& words)
{
    AddRefWrapper<Compound> const compound = compoundAt(session.document(), words.empty() ? "/" : words[0]);
    std::size_t width = 0;
    for (AddRefWrapper<Node> const& node : compound->nodes())
        width = std::max(width, quoted(pathOf(*node)).size());
    std::string text;
    for (AddRefWrapper<Node> const& node : compound->nodes())
        text += padded(quoted(pathOf(*node)), width) + "  " + quoted(node->getNodeTypeName())
                + (node->isCompound() ? "  (graph inside)\n" : "\n");
    for (AddRefWrapper<Annotation> const& annotation : compound->annotations())
        text += (annotation->getType() == Annotation::eBackdrop ? "backdrop " : "note ") + quoted(annotation->getName())
                + '\n';
    session.host().print(text);
}

void show(EditSession& session, Words const& words)
{
    if (AddRefWrapper<Node> const node = session.document().findNodeFromPath(words[0].c_str())) {
        session.host().print(nodeText(*node));
        return;
    }
    PortPlace const place = portAt(session.document(), words[0], "node or port");
    std::string text;
    appendPort(*place.port, "", text);
    appendPortEntries(*place.port, text);
    session.host().print(text);
}

void dump(EditSession& session, Words const&)
{
    StringArray lines;
    session.document().getTopCompound()->debug(lines);
    std::string text;
    for (char const* line : lines)
        text.append(line).append("\n");
    session.host().print(text);
}

void help(EditSession& session, Words const& words)
{
    std::string asked;
    for (std::string const& word : words)
        asked += (asked.empty() ? "" : " ") + word;
    std::string const text = editsAsText(asked);
    if (text.empty())
        throw EditError("there is no edit \"" + asked + "\"; \"help\" lists them all");
    session.host().print(text);
}

} // namespace tool
