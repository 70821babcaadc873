// Random inputs for the tests that compare the library with its plain form. A generator is seeded
// by the test and draws its numbers in one fixed way, so a seed means the same inputs on every
// platform.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

#include "tests/plain/plain_service_map.h"

namespace kestrel::test {

/// Picks small numbers. The distributions of the standard library differ between platforms, so the
/// engine's own numbers, which do not, are reduced here; the slight bias does not matter.
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}

  /// A number from 0 to `count` - 1; `count` is not 0.
  std::size_t below(std::size_t count) {
    return static_cast<std::size_t>((engine_() >> 16) % static_cast<std::uint64_t>(count));
  }

  /// A number from `first` to `last`, both included.
  std::int32_t between(std::int32_t first, std::int32_t last) {
    return first + static_cast<std::int32_t>(below(static_cast<std::size_t>(last - first) + 1));
  }

  /// True once in `count` calls.
  bool oneIn(std::size_t count) { return below(count) == 0; }

  /// One element of an array or of another indexed list that is not empty.
  template <class List>
  const auto& oneOf(const List& list) {
    return list[below(std::size(list))];
  }

 private:
  std::mt19937_64 engine_;
};

/// A layout description of at most 120 characters, rich in entries that nearly count.
std::string randomDescription(Random& random);

/// The track totals that stand in random descriptions, and two that only nearly do.
inline constexpr std::array<std::uint32_t, 10> kDescribedTotals = {0, 1,  2,  4,  6,
                                                                   8, 16, 99, 12, 123};

/// The arguments of one call: streams that carry a random list of services, now and then with one
/// thing changed.
plain::ServiceMapInput randomServiceMapInput(Random& random);

}  // namespace kestrel::test
