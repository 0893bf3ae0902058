#pragma once

namespace CLI {
class App;
}

namespace tool {

/// What the process ends with.
enum ExitCode : int { eRight = 0, eWrongInput = 1, eWrongUsage = 2 };

// Each command adds itself to the parser; when it is the one that is called, it does its work and
// notes down the outcome.

void addInfoCommand(CLI::App& app, ExitCode& outcome);
void addCheckCommand(CLI::App& app, ExitCode& outcome);
void addFormatCommand(CLI::App& app, ExitCode& outcome);
void addDumpCommand(CLI::App& app, ExitCode& outcome);
void addDrawCommand(CLI::App& app, ExitCode& outcome);
void addLibraryCommand(CLI::App& app, ExitCode& outcome);
void addEditCommand(CLI::App& app, ExitCode& outcome);

} // namespace tool
