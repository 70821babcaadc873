// Runs the program as a user does: a process, its exit code and its two outputs.
#pragma once

#include <sys/types.h>

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
  /// Where the standard input comes from; empty: that of the test.
  std::string inputFile;
  /// The size in bytes that no file may exceed, like a full disk; 0: none.
  std::size_t largestFile = 0;
  /// The width of the terminal that the standard output is to be; 0: it is none.
  unsigned short terminalColumns = 0;
  /// Variables that are set for the program only, as "NAME=value".
  std::vector<std::string> environment;
};

/// The standard output is a terminal.
ProgramRun runProgramOnTerminal(const std::vector<std::string>& arguments,
                                const RunOptions& options);

ProgramRun runProgramProcess(const std::vector<std::string>& arguments,
                             const RunOptions& options = {});

bool holds(const std::string& text, const std::string& part);

/// The program wrote nothing but this one message, and its exit code is 2.
void expectFailure(const ProgramRun& run, const std::string& error);

/// The processes whose parent is the given one, first come first.
std::vector<pid_t> childrenOf(pid_t parent);

}  // namespace kestrel::host
