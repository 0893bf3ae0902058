#include "Commands.h"
#include "GraphInput.h"
#include "Terminal.h"

#include <CLI/CLI.hpp>

using namespace TAV_marlo_v1;

namespace tool {

namespace {

struct FormatOptions {
    std::string file;
    std::string output;
    bool inPlace = false;
};

ExitCode runFormat(FormatOptions const& options)
{
    GraphInput input(options.file);
    if (options.inPlace && input.isStandardInput()) {
        writeError("tav: standard input cannot be changed in place");
        return eWrongUsage;
    }
    auto const runtime = makeRuntime({});
    kit::Document document(runtime.get());
    if (!openWholeOrReport(input, document))
        return eWrongInput;

    showSilentStage("writing the graph", input.bytes().size());
    std::string const target = options.inPlace ? options.file : options.output;
    if (target.empty()) {
        String const text = document.getTopCompound()->saveToString(nullptr);
        return writeOut(QByteArray(text.toChar(), static_cast<qsizetype>(text.size()))) ? eRight : eWrongInput;
    }
    StatusStr const status = document.saveAs(target.c_str());
    if (!status)
        writeError(QString::fromUtf8(status.getErrorString()));
    return !status ? eWrongInput : eRight;
}

} // namespace

void addFormatCommand(CLI::App& app, ExitCode& outcome)
{
    auto const options = std::make_shared<FormatOptions>();
    CLI::App* const command = app.add_subcommand("format", "Writes a graph as the library lays it out, to the byte.");
    command->add_option("FILE", options->file, "A graph file; \"-\" is standard input")->required();
    CLI::Option* const output = command->add_option("-o,--output", options->output, "Writes this file");
    command->add_flag("-i,--in-place", options->inPlace, "Writes the file itself")->excludes(output);
    command->footer("Without option the text goes to standard output. A graph with errors is not written.\n\n"
                    "Examples:\n"
                    "  tav format scene.xml > tidy.xml\n"
                    "  tav format --in-place scene.xml");
    command->callback([options, &outcome] { outcome = runFormat(*options); });
}

} // namespace tool
