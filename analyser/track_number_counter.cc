// One relaxed atomic step for all numbers of a call: the numbers carry no other memory with them.
#include "analyser/track_number_counter.h"

#include <atomic>

namespace kestrel {

namespace {

constinit std::atomic<std::int32_t> trackNumberCounter{-1};

}  // namespace

std::int32_t takeTrackNumbers(std::uint32_t count) noexcept {
  // An atomic of a signed type wraps by its definition.
  const std::int32_t last =
      trackNumberCounter.fetch_add(static_cast<std::int32_t>(count), std::memory_order_relaxed);
  return trackNumberAfter(last, 1);
}

}  // namespace kestrel
