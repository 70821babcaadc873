#include "host/commands/program.h"

#include <exception>

#include "host/basics/output.h"
#include "host/commands/command_line.h"

namespace kestrel::host {

ExitCode runProgram(const std::vector<std::string>& arguments) {
  try {
    return parseCommandLine(arguments)();
  } catch (const std::exception& error) {
    printMessage(error.what());
    return ExitCode::kNotExamined;
  }
}

}  // namespace kestrel::host
