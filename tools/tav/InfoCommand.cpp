#include "Commands.h"
#include "GraphCheck.h"
#include "GraphFacts.h"
#include "GraphInput.h"
#include "Terminal.h"

#include <tav/GraphMemory.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <optional>

using namespace TAV_marlo_v1;

namespace tool {

namespace {

struct InfoOptions {
    std::vector<std::string> files;
    std::vector<std::string> libraries;
    bool json = false;
    bool memory = false;
};

struct FileInfo {
    QString file;
    GraphFacts facts;
    QStringList unknownTypes;
    qint64 errors = 0;
    qint64 warnings = 0;
    std::optional<GraphMemory> memory;
};

struct NamedShare {
    char const* name;
    GraphMemory::Share share;
};

std::array<NamedShare, 8> sharesOf(GraphMemory const& memory)
{
    return {{{"nodes", memory.nodes},
             {"compounds", memory.compounds},
             {"ports", memory.ports},
             {"connections", memory.connections},
             {"values", memory.values},
             {"metadata", memory.metadata},
             {"annotations", memory.annotations},
             {"texts", memory.texts}}};
}

QString asText(GraphMemory const& memory)
{
    QString text = "  memory             count          bytes        each\n";
    for (auto const& [name, share] : sharesOf(memory)) {
        QString const each = share.count > 0 ? QString::number(share.bytes / share.count) : QString();
        text += QString("    %1%2%3%4\n").arg(name, -12).arg(share.count, 12).arg(share.bytes, 15).arg(each, 12);
    }
    return text + QString("    %1%2\n").arg("together", -24).arg(memory.totalBytes(), 15);
}

QJsonObject asJson(GraphMemory const& memory)
{
    QJsonObject object{{"bytes", static_cast<qint64>(memory.totalBytes())}};
    for (auto const& [name, share] : sharesOf(memory))
        object.insert(name, QJsonObject{{"count", static_cast<qint64>(share.count)},
                                        {"bytes", static_cast<qint64>(share.bytes)}});
    return object;
}

QString asText(FileInfo const& info, bool typesWereJudged)
{
    GraphFacts const& facts = info.facts;
    QString text = info.file + '\n';
    auto const line = [&text](char const* what, QString const& value) {
        text += QString("  %1 %2\n").arg(QString(what).leftJustified(13), value);
    };
    line("graph", QString("%1 (%2)").arg(facts.name, facts.type));
    line("nodes", QString::number(facts.nodes));
    line("compounds", QString("%1, %2 deep").arg(facts.compounds).arg(facts.depth));
    if (facts.ioNodes > 0)
        line("IO nodes", QString::number(facts.ioNodes));
    line("ports", QString("%1 inputs, %2 outputs").arg(facts.inputs).arg(facts.outputs));
    line("connections", QString::number(facts.connections));
    line("annotations", QString("%1 backdrops, %2 sticky notes").arg(facts.backdrops).arg(facts.stickyNotes));
    std::vector<std::pair<qint64, QString>> types;
    for (auto it = facts.types.begin(); it != facts.types.end(); ++it)
        types.push_back({-it.value(), it.key()});
    std::sort(types.begin(), types.end());
    for (auto const& [count, type] : types)
        line(type == types.front().second ? "types" : "", QString("%1 %2").arg(-count, 6).arg(type));
    if (typesWereJudged)
        line("unknown types", info.unknownTypes.isEmpty() ? QString("none") : info.unknownTypes.join(", "));
    line("errors", QString::number(info.errors));
    line("warnings", QString::number(info.warnings));
    return info.memory ? text + asText(*info.memory) : text;
}

QJsonObject asJson(FileInfo const& info, bool typesWereJudged)
{
    QJsonObject object = toJson(info.facts);
    object.insert("file", info.file);
    if (typesWereJudged)
        object.insert("unknown_types", QJsonArray::fromStringList(info.unknownTypes));
    object.insert("errors", info.errors);
    object.insert("warnings", info.warnings);
    if (info.memory)
        object.insert("memory", asJson(*info.memory));
    return object;
}

ExitCode runInfo(InfoOptions const& options)
{
    auto const runtime = makeRuntime(options.libraries);
    if (!runtime)
        return eWrongInput;
    bool const judgeTypes = !options.libraries.empty();
    ExitCode outcome = eRight;
    QJsonArray objects;
    QByteArray text;
    Progress progress(static_cast<qsizetype>(options.files.size()));
    for (std::string const& path : options.files) {
        GraphInput input(path);
        progress.step(input.name());
        kit::Document document(runtime.get());
        if (!openOrReport(input, document)) {
            outcome = eWrongInput;
            continue;
        }
        CheckResult const check = checkGraph(input.bytes(), judgeTypes ? runtime.get() : nullptr);
        FileInfo info{input.name(),
                      countFacts(*document.getTopCompound()),
                      check.unknownTypes.values(),
                      countOf(check.problems, Severity::error),
                      countOf(check.problems, Severity::warning),
                      options.memory ? std::optional(measureMemory(*document.getTopCompound())) : std::nullopt};
        info.unknownTypes.sort();
        objects.append(asJson(info, judgeTypes));
        text += asText(info, judgeTypes).toUtf8();
    }
    return writeOut(options.json ? QJsonDocument(objects).toJson() : text) ? outcome : eWrongInput;
}

} // namespace

void addInfoCommand(CLI::App& app, ExitCode& outcome)
{
    auto const options = std::make_shared<InfoOptions>();
    CLI::App* const command = app.add_subcommand("info", "Counts what is in graphs: nodes, ports, connections, types.");
    command->add_option("FILE", options->files, "Graph files; \"-\" is standard input")->required();
    command->add_option("--library", options->libraries, "A library file: node types it lacks are listed as unknown")
        ->allow_extra_args(false);
    command->add_flag("--json", options->json, "Writes a JSON array with one object a file");
    command->add_flag("--memory", options->memory, "Also says what each graph takes in memory, by kind of object");
    command->footer("Examples:\n"
                    "  tav info scene.xml\n"
                    "  tav info --memory scene.xml\n"
                    "  tav info --json --library nodes.library.xml scenes/*.xml\n"
                    "  tav info - < scene.xml");
    command->callback([options, &outcome] { outcome = runInfo(*options); });
}

} // namespace tool
