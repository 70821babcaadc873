// The counters are atomic because a compiler may hold that malloc() touches no variable of the
// program.
#include "tests/robustness/failing_memory.h"

#include <atomic>

namespace kestrel::test {
namespace {

constinit std::atomic<std::int64_t> allocations{0};
constinit std::atomic<std::int64_t> blocks{0};
constinit std::atomic<std::int64_t> failing{0};  // counted from 1; 0: none
constinit std::atomic<bool> failingLasts{false};

}  // namespace

bool isToFail() noexcept {
  const std::int64_t number = ++allocations;
  const std::int64_t first = failing;
  return first > 0 && (number == first || (failingLasts && number > first));
}

void countBlock(std::int64_t change) noexcept { blocks += change; }

std::int64_t liveBlocks() { return blocks; }

MemoryUse withFailing(std::int64_t number, Lasting lasting, const std::function<void()>& call) {
  const std::int64_t before = blocks;
  allocations = 0;
  failingLasts = lasting == Lasting::kYes;
  failing = number;
  call();
  failing = 0;
  const std::int64_t made = allocations;
  return {made, blocks - before, number > 0 && made >= number};
}

}  // namespace kestrel::test
