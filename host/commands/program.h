// The program: does what its arguments ask, writes what is to be written.
#pragma once

#include <string>
#include <vector>

#include "host/basics/exit_code.h"

namespace kestrel::host {

/// @param arguments  without the program's name
ExitCode runProgram(const std::vector<std::string>& arguments);

}  // namespace kestrel::host
