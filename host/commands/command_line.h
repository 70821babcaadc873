// The program's arguments: which command they name, with its options checked.
#pragma once

#include <string>
#include <vector>

#include "host/commands/command.h"

namespace kestrel::host {

/// @param arguments  without the program's name
/// @return what to do: the command, or printing the help or the version. Raises UsageError
CommandRun parseCommandLine(const std::vector<std::string>& arguments);

}  // namespace kestrel::host
