// Makes the calls of rows where a crash does no harm.
#pragma once

#include <string>

#include "tests/robustness/call_row.h"

namespace kestrel::test {

/// What a row answers on a thread with a small stack. Where the platform has fork(), in a process
/// of its own: a crash is told in `end`. Elsewhere in this process.
Answer askIsolated(const CallRow& row);

}  // namespace kestrel::test
