// The options that the commands which examine files have in common.
#pragma once

#include <optional>
#include <string>

#include "host/judging/inspect_file.h"

namespace CLI {
class App;
}

namespace kestrel::host {

/// As they stand on the command line.
struct InspectArguments {
  std::optional<std::string> layout;
  std::optional<std::string> layoutFile;
  std::optional<std::string> item;
  std::optional<std::string> code;
  std::string order = "L R C LFE Ls Rs";
  bool skipLabels = false;
  bool reportAll = false;
  bool isStrict = false;
  int timeout = 30;        ///< seconds
  int memoryLimit = 1024;  ///< MiB
  bool requiresIsolation = false;
};

/// The arguments must live as long as the command.
void addInspectOptions(CLI::App& command, InspectArguments& arguments);

/// Raises UsageError. The reader is that of the platform; none where it has none.
InspectOptions inspectOptions(const InspectArguments& arguments);

}  // namespace kestrel::host
