// The examination of many files: each becomes one line of results as it is finished.
#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

#include "host/basics/exit_code.h"
#include "host/judging/inspect_file.h"

namespace kestrel::host {

struct ScanRequest {
  std::vector<std::filesystem::path> paths;  ///< files, and directories to be searched
  InspectOptions inspect;
  std::filesystem::path output;  ///< empty: the standard output
  bool resume = false;           ///< go on with the results that stand in the output
  bool recheck = false;          ///< the same, but examine all files anew and tell what changed
  bool replace = false;          ///< take away what stands in the output
  bool isQuiet = false;          ///< neither a progress bar nor a summary
  std::size_t jobs = 1;
};

/// Results go to the output, all else to the standard error. Gives the highest exit code of the
/// files, those of earlier runs included; 128 and the signal's number when it was interrupted.
/// Raises UsageError, NoResults or OutputError when the scan cannot go on.
ExitCode scan(const ScanRequest& request);

}  // namespace kestrel::host
