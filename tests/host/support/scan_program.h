// Runs the program for tests of scans: by a shell's line, or so that it can be interrupted.
#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/host/support/program_run.h"

namespace kestrel::host {

/// Runs a script of sh in a directory; $KESTREL is the program.
ProgramRun runScript(const std::filesystem::path& directory, const std::string& script);

/// The program at work; what it writes is dropped.
class RunningProgram {
 public:
  explicit RunningProgram(std::vector<std::string> arguments);
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;

  /// To its whole group, as a terminal does.
  void signal(int number) const;
  /// Its exit code; 128 and more when a signal ended it, as a shell has it.
  int wait() const;

 private:
  int id_;
};

/// Returns when the file holds as many lines.
void waitForLines(const std::filesystem::path& file, std::size_t count);

std::string contentOf(const std::filesystem::path& file);

/// The documents in a text of lines; fails the test at a line that is none.
std::vector<nlohmann::ordered_json> documentsIn(const std::string& lines);

/// The file names in them, without their directories, sorted.
std::vector<std::string> namesIn(const std::string& lines);

}  // namespace kestrel::host
