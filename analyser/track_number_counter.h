// The process-wide counter from which every expected service takes its track numbers. It starts at
// -1, so that the first number handed out is 0, and is never reset while the library is loaded.
#pragma once

#include <cstdint>

namespace kestrel {

/// Takes `count` consecutive track numbers and returns the first. To one thread numbers go up by
/// one from call to call; a call behind one of another thread may skip some. They wrap from the
/// largest 32-bit integer to the smallest. Threads may call it at once: no number is handed out
/// twice before the counter has gone round.
std::int32_t takeTrackNumbers(std::uint32_t count) noexcept;

/// `first` + `offset`, wrapped as the counter wraps.
constexpr std::int32_t trackNumberAfter(std::int32_t first, std::uint32_t offset) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(first) + offset);
}

}  // namespace kestrel
