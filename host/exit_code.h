// What the program tells its caller by its exit code.
#pragma once

namespace kestrel::host {

enum class ExitCode : int {
  kConforms = 0,
  kDoesNotConform = 1,
  kNotExamined = 2,  ///< one line on stderr says why; nothing is on stdout
};

}  // namespace kestrel::host
