// The process-wide counter that expected services take their track numbers from. It is never reset
// while the library is loaded.
#pragma once

#include <atomic>
#include <cstdint>

namespace kestrel {

/// The last number that was taken. The first one is 0.
inline constinit std::atomic<std::int32_t> trackNumberCounter{-1};

/// `first` + `offset`; wraps from the largest 32-bit integer to the smallest, as the counter does.
constexpr std::int32_t trackNumberAfter(std::int32_t first, std::uint32_t offset) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(first) + offset);
}

/// Takes `count` consecutive track numbers and returns the first. Any thread may call it.
inline std::int32_t takeTrackNumbers(std::uint32_t count) noexcept {
  const std::int32_t last = trackNumberCounter.fetch_add(static_cast<std::int32_t>(count));
  return trackNumberAfter(last, 1);
}

}  // namespace kestrel
