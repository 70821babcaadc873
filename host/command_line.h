// The program's arguments, checked.
#pragma once

#include <chrono>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/service_check.h"

namespace kestrel::host {

struct InspectCommand {
  std::string file;
  ServiceRequest request;
  std::chrono::seconds timeLimit{30};
};

/// The arguments make no sense; the text says which, on one line.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct CommandLine {
  std::optional<InspectCommand> inspect;
  std::string answer;  ///< without a command: the help or the version, as asked for
};

/// @param arguments  without the program's name
CommandLine parseCommandLine(const std::vector<std::string>& arguments);

}  // namespace kestrel::host
