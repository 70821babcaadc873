// The program's arguments: which command they name, with its options checked.
//
// Each command has a function that adds its subcommand with its options; when the user gives that
// subcommand, `run` becomes what it does. Running raises UsageError, NotExamined or OutputError for
// what goes wrong as a whole.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/basics/exit_code.h"

namespace CLI {
class App;
}

namespace kestrel::host {

using CommandRun = std::function<ExitCode()>;
using AddCommand = void (*)(CLI::App& program, CommandRun& run);

void addInspect(CLI::App& program, CommandRun& run);
void addCatalogue(CLI::App& program, CommandRun& run);
void addCodes(CLI::App& program, CommandRun& run);
void addExplain(CLI::App& program, CommandRun& run);
void addScan(CLI::App& program, CommandRun& run);
void addReport(CLI::App& program, CommandRun& run);

/// @param arguments  without the program's name
/// @return what to do: the command, or printing the help or the version. Raises UsageError
CommandRun parseCommandLine(const std::vector<std::string>& arguments);

}  // namespace kestrel::host
