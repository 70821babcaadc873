// Counts the heap allocations of this process, those of the shared library included.
#pragma once

#include <cstdint>

namespace kestrel::bench {

/// Calls of operator new so far.
std::int64_t allocationCount();

}  // namespace kestrel::bench
