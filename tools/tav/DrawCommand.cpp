#include "Commands.h"
#include "DotGraph.h"
#include "GraphInput.h"
#include "Graphviz.h"
#include "Terminal.h"

#include <tav/kit/Files.h>

#include <QtCore/QFileInfo>

#include <CLI/CLI.hpp>

using namespace TAV_marlo_v1;

namespace tool {

namespace {

struct DrawOptions {
    std::string file;
    std::string path = "/";
    std::string output;
    int depth = 512;
    bool positions = false;
};

bool writeFile(std::string const& path, QByteArray const& bytes)
{
    StatusStr const status =
        kit::writeFile(path.c_str(), bytes.constData(), static_cast<unsigned long long>(bytes.size()));
    if (!status) {
        writeError(QString::fromUtf8(status.getErrorString()));
        return false;
    }
    return true;
}

ExitCode runDraw(DrawOptions const& options)
{
    QString const output = QString::fromStdString(options.output);
    QString const format = output.isEmpty() ? QString("svg") : QFileInfo(output).suffix().toLower();
    if (format != "svg" && format != "png" && format != "dot") {
        writeError(QString("tav: the picture's name has to end in .svg, .png or .dot: %1").arg(output));
        return eWrongUsage;
    }
    auto const runtime = makeRuntime({});
    kit::Document document(runtime.get());
    AddRefWrapper<Compound> const compound = openCompound(options.file, options.path, document);
    if (!compound)
        return eWrongInput;

    QByteArray picture = dotOf(*compound, {options.depth, options.positions});
    QString error;
    if (format != "dot"
        && !drawWithGraphviz(options.positions ? "neato" : "dot", format, QByteArray(picture), picture, error))
    {
        writeError("tav: " + error);
        return eWrongInput;
    }
    return (output.isEmpty() ? writeOut(picture) : writeFile(options.output, picture)) ? eRight : eWrongInput;
}

} // namespace

void addDrawCommand(CLI::App& app, ExitCode& outcome)
{
    auto const options = std::make_shared<DrawOptions>();
    CLI::App* const command = app.add_subcommand("draw", "Draws a graph with its nested compounds.");
    command->add_option("FILE", options->file, "A graph file; \"-\" is standard input")->required();
    command->add_option("PATH", options->path, "The compound to draw instead of the whole");
    command->add_option("-o,--output", options->output,
                        "The picture, .svg, .png or .dot; an SVG on standard output if left out");
    command->add_option("--depth", options->depth, "How many levels of compounds to open; all if left out")
        ->check(CLI::Range(0, 512));
    command->add_flag("--positions", options->positions,
                      "Puts nodes where an editor left them (\"uiPosition\"); opens no compounds");
    command->footer("Examples:\n"
                    "  tav draw scene.xml -o scene.svg\n"
                    "  tav draw scene.xml /shading --depth 1 -o shading.png\n"
                    "  tav draw --positions scene.xml -o scene.svg");
    command->callback([options, &outcome] { outcome = runDraw(*options); });
}

} // namespace tool
