// What the program tells its caller by its exit code; docs/host.md explains it to users.
#pragma once

#include <algorithm>

namespace kestrel::host {

enum class ExitCode : int {
  kConforms = 0,
  kDoesNotConform = 1,
  kNotExamined = 2,
};

/// The exit code for several files, or several steps: the highest.
inline ExitCode worse(ExitCode left, ExitCode right) { return std::max(left, right); }

}  // namespace kestrel::host
