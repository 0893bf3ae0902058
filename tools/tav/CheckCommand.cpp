#include "Commands.h"
#include "GraphCheck.h"
#include "GraphInput.h"
#include "Terminal.h"

#include <CLI/CLI.hpp>

namespace tool {

namespace {

struct CheckOptions {
    std::vector<std::string> files;
    std::vector<std::string> libraries;
};

/// Text that cannot be read has one problem, the reader's; any other has all that can be found.
Problems problemsOf(GraphInput const& input, TAV_marlo_v1::kit::StandardRuntime& runtime, bool judgeTypes)
{
    TAV_marlo_v1::kit::Document document(&runtime);
    Problem problem{};
    if (!input.open(document, problem))
        return {problem};
    return checkGraph(input.bytes(), judgeTypes ? &runtime : nullptr).problems;
}

ExitCode runCheck(CheckOptions const& options)
{
    auto const runtime = makeRuntime(options.libraries);
    if (!runtime)
        return eWrongInput;
    ExitCode outcome = eRight;
    Progress progress(static_cast<qsizetype>(options.files.size()));
    for (std::string const& path : options.files) {
        GraphInput input(path);
        progress.step(input.name());
        if (!input.read()) {
            outcome = eWrongInput;
            continue;
        }
        Problems const problems = problemsOf(input, *runtime, !options.libraries.empty());
        report(input.name(), problems);
        if (countOf(problems, Severity::error) > 0)
            outcome = eWrongInput;
    }
    return outcome;
}

} // namespace

void addCheckCommand(CLI::App& app, ExitCode& outcome)
{
    auto const options = std::make_shared<CheckOptions>();
    CLI::App* const command = app.add_subcommand(
        "check", "Says what is wrong with graphs, one \"file:line:column: error: text\" a line on standard error.");
    command->add_option("FILE", options->files, "Graph files; \"-\" is standard input")->required();
    command->add_option("--library", options->libraries, "A library file: node types it lacks are errors")
        ->allow_extra_args(false);
    command->footer("Warnings and notes are shown too, but only errors make the exit code 1.\n\n"
                    "Examples:\n"
                    "  tav check scene.xml\n"
                    "  tav check --library nodes.library.xml scenes/*.xml\n"
                    "  generate-scene | tav check -");
    command->callback([options, &outcome] { outcome = runCheck(*options); });
}

} // namespace tool
