// One counter that every call moves on would cross from processor to processor with every call, and
// two threads together would be no quicker than one. So numbers are taken from it by batches. A
// batch lies in one of some lanes, each on a cache line of its own; a thread always goes to the
// same lane. Where the counter still stands at the end of a lane's batch, the batch is made longer,
// so that a thread without company sees no gap. All steps are relaxed: numbers carry no other
// memory with them.
#include "analyser/track_number_counter.h"

#include <array>
#include <atomic>
#include <bit>
#include <cstddef>

#if defined(_WIN32)
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#else
#include <pthread.h>
#endif

namespace kestrel {

namespace {

constexpr std::size_t kCacheLine = 64;
constexpr std::size_t kLanes = 32;
constexpr std::uint32_t kReserve = 4096;  // numbers that a batch has beyond those asked for

// Numbers that belong to a lane: `left` ones from `next` on.
struct Batch {
  std::int32_t next = 0;
  std::uint32_t left = 0;

  std::int32_t end() const { return trackNumberAfter(next, left); }
  Batch without(std::uint32_t count) const { return {trackNumberAfter(next, count), left - count}; }
};

struct alignas(kCacheLine) Lane {
  std::atomic<Batch> batch;
};
static_assert(std::atomic<Batch>::is_always_lock_free);

struct Counter {
  alignas(kCacheLine) std::atomic<std::int32_t> last{-1};  // number that went into a batch
  std::array<Lane, kLanes> lanes{};
};
constinit Counter trackNumberCounter;

std::uint64_t ownThread() noexcept {
#if defined(_WIN32)
  return GetCurrentThreadId();
#else
  return static_cast<std::uint64_t>(pthread_self());
#endif
}

// The lane of the calling thread. Threads that share one are slower, not wrong.
Lane& ownLane() noexcept {
  // Identities are addresses or multiples of four; a multiplication spreads them over the top bits.
  constexpr auto kShift = 64U - static_cast<unsigned>(std::bit_width(kLanes - 1));
  return trackNumberCounter.lanes[(ownThread() * 0x9E37'79B9'7F4A'7C15) >> kShift];
}

// A batch of at least `count` numbers that goes on where `batch`, which has too few, ends; or one
// elsewhere, when other lanes have been at the counter since.
Batch longerBatch(Batch batch, std::uint32_t count) noexcept {
  constexpr std::uint32_t kMany = 1U << 31U;  // more leave no room for a reserve
  const std::uint32_t reserve = count < kMany ? kReserve : 0;
  const std::uint32_t missing = count - batch.left + reserve;
  std::int32_t last = trackNumberAfter(batch.end(), ~0U);
  if (trackNumberCounter.last.compare_exchange_strong(last, trackNumberAfter(last, missing),
                                                      std::memory_order_relaxed))
    return {batch.next, count + reserve};
  last = trackNumberCounter.last.fetch_add(static_cast<std::int32_t>(count + reserve),
                                           std::memory_order_relaxed);
  return {trackNumberAfter(last, 1), count + reserve};
}

}  // namespace

std::int32_t takeTrackNumbers(std::uint32_t count) noexcept {
  std::atomic<Batch>& own = ownLane().batch;
  Batch batch = own.load(std::memory_order_relaxed);
  while (batch.left >= count)
    if (count == 0 ||
        own.compare_exchange_weak(batch, batch.without(count), std::memory_order_relaxed))
      return batch.next;
  const Batch longer = longerBatch(batch, count);
  // When another thread of the lane was first, its batch stays and the rest of this one is lost.
  own.compare_exchange_strong(batch, longer.without(count), std::memory_order_relaxed);
  return longer.next;
}

}  // namespace kestrel
