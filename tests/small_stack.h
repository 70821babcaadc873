// Runs a piece of a test on a thread with little stack, where recursion over a long input ends in a
// crash instead of passing unnoticed.
#pragma once

#include <functional>

namespace kestrel::test {

/// Runs `work` on a thread with 256 KiB of stack and waits for its end. What `work` throws is
/// thrown again here; a thread that cannot be started throws std::runtime_error.
void runOnSmallStack(std::function<void()> work);

}  // namespace kestrel::test
