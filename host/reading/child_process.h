// Another program that answers requests: they go to its standard input, what it writes to its
// standard output comes back. It has at most a given time for each answer.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::host {

struct ChildRequest {
  std::string text;
  std::chrono::milliseconds timeLimit;
  std::size_t outputLimit;  ///< in bytes; a child that writes more is killed
  /// Asked about all that came so far, each time that more has come. What it raises ends the child.
  std::function<bool(std::string_view)> isWhole;
};

enum class ChildEnd { kAnswered, kExited, kSignalled, kOverTime, kOverOutput };

struct ChildOutcome {
  ChildEnd end;
  std::int64_t code;   ///< the exit code, or the signal's number
  std::string output;  ///< the answer; what it wrote up to its end
};

/// One thread at a time.
class ChildProcess {
 public:
  /// @param words  the program's path, then its arguments
  /// What the program writes to its standard error is dropped. Raises NotExamined when it cannot be
  /// started.
  explicit ChildProcess(const std::vector<std::string>& words);
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess();  ///< kills what still runs; returns when it was reaped

  /// Returns when the answer is whole, or when the child has ended and was reaped; a child over a
  /// limit is killed. After anything but kAnswered there is no child to be asked any more.
  ChildOutcome ask(const ChildRequest& request);

 private:
  class Run;
  std::unique_ptr<Run> run_;
};

}  // namespace kestrel::host
