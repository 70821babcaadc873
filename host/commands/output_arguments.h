// Where the commands that have -o write to, and what they must not overwrite.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace kestrel::host {

struct OutputArguments {
  std::string file;
  bool isForced = false;

  /// By either of its names too: behind /dev/stdout there may be a file, which must not be replaced
  /// while others still write to it.
  bool isStandardOutput() const { return file.empty() || file == "-" || file == "/dev/stdout"; }

  /// As writeResult() takes it.
  std::string target() const { return isStandardOutput() ? "" : file; }
};

/// The arguments must live as long as the command.
void addOutputOptions(CLI::App& command, OutputArguments& arguments, const std::string& help);

/// Raises UsageError when the output is one of the inputs. Empty names do not count.
void requireNoInput(const OutputArguments& arguments, const std::vector<std::string>& inputs);

/// Raises UsageError when the output is a file that holds anything but what this program wrote,
/// unless it is forced. A device or a pipe is none.
void requireOwn(const OutputArguments& arguments);

}  // namespace kestrel::host
