#include "Commands.h"
#include "GraphInput.h"
#include "Terminal.h"

#include <CLI/CLI.hpp>

using namespace TAV_marlo_v1;

namespace tool {

namespace {

struct DumpOptions {
    std::string file;
    std::string path = "/";
};

ExitCode runDump(DumpOptions const& options)
{
    auto const runtime = makeRuntime({});
    kit::Document document(runtime.get());
    AddRefWrapper<Compound> const compound = openCompound(options.file, options.path, document);
    if (!compound)
        return eWrongInput;

    StringArray lines;
    compound->debug(lines);
    QByteArray text;
    for (char const* line : lines)
        text.append(line).append('\n');
    return writeOut(text) ? eRight : eWrongInput;
}

} // namespace

void addDumpCommand(CLI::App& app, ExitCode& outcome)
{
    auto const options = std::make_shared<DumpOptions>();
    CLI::App* const command = app.add_subcommand("dump", "Lists the nodes, ports and connections of a graph.");
    command->add_option("FILE", options->file, "A graph file; \"-\" is standard input")->required();
    command->add_option("PATH", options->path, "The compound to list instead of the whole");
    command->footer("Examples:\n"
                    "  tav dump scene.xml\n"
                    "  tav dump scene.xml /shading/noise");
    command->callback([options, &outcome] { outcome = runDump(*options); });
}

} // namespace tool
