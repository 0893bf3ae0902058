#include "Commands.h"
#include "Terminal.h"

#include <QtCore/QCoreApplication>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <string>
#include <vector>

namespace {

/// The arguments in UTF-8, on every platform.
std::vector<std::string> argumentsFromTheRight(QCoreApplication const& application)
{
    std::vector<std::string> arguments;
    for (QString const& argument : application.arguments())
        arguments.push_back(argument.toStdString());
    arguments.erase(arguments.begin());
    // The parser takes them off the end.
    std::reverse(arguments.begin(), arguments.end());
    return arguments;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication const application(argc, argv);
    tool::Streams const streams;

    CLI::App app("Looks at node graphs, checks them, lays out their text, draws and edits them.", "tav");
    app.require_subcommand(1);
    // Words with "/" in front are paths of nodes and files, on Windows too. The commands inherit this.
    app.allow_windows_style_options(false);
    app.footer("\"tav COMMAND --help\" shows what a command does, with examples.\n"
               "Exit codes: 0 all right, 1 something is wrong with the input, 2 wrong usage.");
    tool::ExitCode outcome = tool::eRight;
    tool::addInfoCommand(app, outcome);
    tool::addCheckCommand(app, outcome);
    tool::addFormatCommand(app, outcome);
    tool::addDumpCommand(app, outcome);
    tool::addDrawCommand(app, outcome);
    tool::addLibraryCommand(app, outcome);
    tool::addEditCommand(app, outcome);

    try {
        app.parse(argumentsFromTheRight(application));
    } catch (CLI::ParseError const& error) {
        // The parser's own codes tell more kinds of misuse apart than anyone asks for.
        return app.exit(error) == 0 ? tool::eRight : tool::eWrongUsage;
    }
    tool::clearStage();
    return outcome;
}
