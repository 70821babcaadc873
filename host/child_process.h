// Runs another program for at most a given time and collects what it writes to its standard output.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kestrel::host {

struct ChildCommand {
  std::vector<std::string> words;  ///< the program's path, then its arguments
  std::chrono::milliseconds timeLimit;
  std::size_t outputLimit;  ///< in bytes; a child that writes more is killed
};

enum class ChildEnd { kExited, kSignalled, kOverTime, kOverOutput };

struct ChildOutcome {
  ChildEnd end;
  std::int64_t code;   ///< the exit code, or the signal's number
  std::string output;  ///< what it wrote up to its end
};

/// Returns when the child has ended and was reaped; a child over a limit is killed. The child reads
/// nothing, and what it writes to its standard error is dropped. Raises NotExamined when the
/// program cannot be started. Any number of threads may call it at once.
ChildOutcome runChild(const ChildCommand& command);

}  // namespace kestrel::host
