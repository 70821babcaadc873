// Walls around the process that parses a file from a stranger: what a fault in the parser could be
// made to do ends here. For Linux.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace kestrel::host {

struct ProcessLimits {
  std::uint64_t memory;                ///< in bytes of address space
  std::chrono::seconds processorTime;  ///< then the process gets SIGXCPU
};

/// The walls that this kernel cannot raise: "landlock", "seccomp".
std::vector<std::string> missingWalls();

/// Each of these takes something from the calling process for good, and raises std::runtime_error
/// when the system refuses. isolateProcess() is all of them, but for what the kernel lacks.

/// No environment, no privileges by exec, no core file; no descriptor but the standard ones and
/// `kept`.
void denyInheritance(int kept);

/// The memory limit does not hold under a sanitizer, which needs more addresses than that.
void limitProcess(const ProcessLimits& limits);

/// By landlock: nothing of the file system can be opened. What is open stays so.
void denyFileSystem();

/// By seccomp: only system calls from a list, those that reading an open file and using memory
/// take. Any other fails with EPERM, closing a descriptor too: the end of what the process writes
/// is its own end.
void denySystemCalls();

void isolateProcess(const ProcessLimits& limits, int kept);

}  // namespace kestrel::host
