#include "Commands.h"
#include "GraphInput.h"
#include "Terminal.h"

#include <tav/NodeLibrary.h>
#include <tav/Port.h>
#include <tav/PortDataType.h>
#include <tav/PortList.h>
#include <tav/QtText.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <CLI/CLI.hpp>

#include <functional>

using namespace TAV_marlo_v1;

namespace tool {

namespace {

struct LibraryOptions {
    std::string file;
    bool json = false;
};

struct PortLine {
    QString name;
    QString type;
    QString value;
    bool hasValue;
};

/// The port's own values, or those of its inner side; or what its metadata gives as the default.
PortLine lineOf(Port const& port, AddRefWrapper<Port> const& inside)
{
    AddRefWrapper<PortDataType> const type = port.getDataType();
    PortLine line{toQString(port.getName()), type ? toQString(type->getName()) : QString(), {}, true};
    StringArray values;
    StringArray keys;
    port.getAvailableMetadatas(eAnyMetadata, keys);
    if (port.getPortDefaultValues(values) || (inside && inside->getPortDefaultValues(values)))
        line.value = serializeToQString(values, ";");
    else if (keys.contains("default"))
        line.value = toQString(port.getPortMetaDataValue("default"));
    else
        line.hasValue = false;
    return line;
}

/// A node made from the definition, in a graph of its own.
AddRefWrapper<Node> makeSample(Compound& graph, AddRefWrapper<NodeDefinition> const& definition)
{
    String const text = kit::StandardRuntime::getPresetText(definition);
    String errors;
    if (QByteArray(text.toChar()).startsWith("<tavNode"))
        return graph.createNodeFromString(text.toChar(), errors);
    AddRefWrapper<Compound> const compound = graph.createNewCompoundFromString(text.toChar(), errors);
    return compound ? compound->getAsNode() : AddRefWrapper<Node>();
}

/// Shows a library in one of two ways; walks it in one.
class LibraryView {
public:
    explicit LibraryView(Compound& scratch)
        : m_scratch(scratch)
    {
    }

    QByteArray asText(NodeLibrary const& library)
    {
        QString text;
        appendLibrary(library, 0, text);
        return text.toUtf8();
    }

    QJsonObject asJson(NodeLibrary const& library)
    {
        QJsonArray definitions;
        for (AddRefWrapper<NodeDefinition> const& definition : library.nodeDefs())
            definitions.append(definitionAsJson(definition));
        QJsonArray libraries;
        for (AddRefWrapper<NodeLibrary> const& child : library.subLibraries())
            libraries.append(asJson(*child));
        return {{"name", toQString(library.getName())},
                {"nice_name", toQString(library.getNiceName())},
                {"definitions", definitions},
                {"libraries", libraries}};
    }

private:
    using PortVisitor = std::function<void(PortLine const&)>;

    void forEachPort(AddRefWrapper<NodeDefinition> const& definition, PortVisitor const& input,
                     PortVisitor const& output)
    {
        AddRefWrapper<Node> const sample = makeSample(m_scratch, definition);
        if (!sample)
            return;
        AddRefWrapper<Compound> const compound = sample->getAsCompound();
        auto const show = [&compound](PortList const& ports, PortVisitor const& visit) {
            for (AddRefWrapper<Port> const& port : ports)
                visit(lineOf(*port, compound ? compound->getReversePort(port) : AddRefWrapper<Port>()));
        };
        show(sample->inputs(), input);
        show(sample->outputs(), output);
        m_scratch.removeNode(sample->getName());
    }

    void appendLibrary(NodeLibrary const& library, int level, QString& text)
    {
        QString const indent(4 * level, ' ');
        text += indent + named(library) + "/\n";
        for (AddRefWrapper<NodeDefinition> const& definition : library.nodeDefs()) {
            text += indent + "    " + named(*definition) + '\n';
            forEachPort(
                definition, [&](PortLine const& line) { text += portText(indent + "        in  ", line); },
                [&](PortLine const& line) { text += portText(indent + "        out ", line); });
        }
        for (AddRefWrapper<NodeLibrary> const& child : library.subLibraries())
            appendLibrary(*child, level + 1, text);
    }

    static QString named(NiceNamable const& item)
    {
        QString const name = toQString(item.getName());
        QString const niceName = toQString(item.getNiceName());
        return name == niceName ? name : QString("%1 \"%2\"").arg(name, niceName);
    }

    static QString portText(QString const& front, PortLine const& line)
    {
        QString const text = front + line.name + " : " + line.type;
        return text + (line.hasValue ? " = " + line.value : QString()) + '\n';
    }

    QJsonObject definitionAsJson(AddRefWrapper<NodeDefinition> const& definition)
    {
        QJsonArray inputs;
        QJsonArray outputs;
        forEachPort(
            definition, [&](PortLine const& line) { inputs.append(portAsJson(line)); },
            [&](PortLine const& line) { outputs.append(portAsJson(line)); });
        return {{"name", toQString(definition->getName())},
                {"nice_name", toQString(definition->getNiceName())},
                {"category", toQString(definition->category())},
                {"inputs", inputs},
                {"outputs", outputs}};
    }

    static QJsonObject portAsJson(PortLine const& line)
    {
        QJsonObject object{{"name", line.name}, {"type", line.type}};
        if (line.hasValue)
            object.insert("default", line.value);
        return object;
    }

    Compound& m_scratch;
};

ExitCode runLibrary(LibraryOptions const& options)
{
    auto const runtime = makeRuntime({options.file});
    if (!runtime)
        return eWrongInput;
    AddRefWrapper<NodeLibrary> const library = runtime->getNodeLibrary()->getSubLibraryAt(0);
    kit::Document scratch(runtime.get());
    LibraryView view(*scratch.getTopCompound());
    QByteArray const text = options.json ? QJsonDocument(view.asJson(*library)).toJson() : view.asText(*library);
    return writeOut(text) ? eRight : eWrongInput;
}

} // namespace

void addLibraryCommand(CLI::App& app, ExitCode& outcome)
{
    auto const options = std::make_shared<LibraryOptions>();
    CLI::App* const command =
        app.add_subcommand("library", "Lists the node definitions of a library file with their ports and defaults.");
    command->add_option("FILE", options->file, "A library file; \"-\" is standard input")->required();
    command->add_flag("--json", options->json, "Writes a JSON object");
    command->footer("Examples:\n"
                    "  tav library nodes.library.xml\n"
                    "  tav library --json nodes.library.xml");
    command->callback([options, &outcome] { outcome = runLibrary(*options); });
}

} // namespace tool
