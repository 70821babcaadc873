// Runs the program as a user does: a process, its exit code and its two outputs.
#pragma once

#include <string>
#include <vector>

namespace kestrel::host {

struct ProgramRun {
  int exitCode;  ///< -1: ended by a signal
  std::string output;
  std::string errors;
};

struct RunOptions {
  /// Takes from the super-user the right to read every file, so that modes count for it too.
  bool obeyFileModes = false;
  /// Empty: that of the test.
  std::string workingDirectory;
  /// Where the standard output goes, in place of the record.
  std::string outputFile;
};

ProgramRun runProgramProcess(const std::vector<std::string>& arguments,
                             const RunOptions& options = {});

}  // namespace kestrel::host
