// Makes the calls of rows where a crash does no harm.
#pragma once

#include <vector>

#include "tests/robustness/call_row.h"

namespace kestrel::test {

/// What the rows answer, each on a thread with a small stack. Where the platform has fork(), some
/// rows at a time share a process; a crash is told in the `end` of its row, and the rows behind it
/// go on in a new process. Elsewhere all are asked in this process.
std::vector<Answer> askIsolated(const CallRows& rows);

}  // namespace kestrel::test
