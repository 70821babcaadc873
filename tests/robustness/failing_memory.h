// Memory that runs out at will. Functions of the program go before those of the C library or of the
// C++ standard library, also for the library under test; they count blocks and can be told to fail.
// Two files replace functions, of which a program takes one: failing_malloc.cc all of malloc(), on
// Linux with glibc; failing_new.cc operator new alone, for the address sanitizer, which brings a
// malloc() of its own.
#pragma once

#include <cstdint>
#include <functional>

namespace kestrel::test {

/// Blocks in use in the whole program.
std::int64_t liveBlocks();

enum class Lasting { kNo, kYes };

struct MemoryUse {
  std::int64_t allocations = 0;
  std::int64_t kept = 0;  // blocks that were in use afterwards and not before
  bool failed = false;    // an allocation did
};

/// Makes a call; the `failing`-th of its allocations fails, and those behind it too if that is
/// lasting. 0: none fails.
MemoryUse withFailing(std::int64_t failing, Lasting lasting, const std::function<void()>& call);

// For the functions that hand out memory.

/// Counts an allocation; true when it is to fail.
bool isToFail() noexcept;
void countBlock(std::int64_t change) noexcept;

}  // namespace kestrel::test
