// Ids and indices that the plain C interface refuses.
#pragma once

#include <climits>
#include <cstdint>
#include <vector>

namespace kestrel::test {

/// What an out-parameter holds before a call that must not write it.
inline constexpr std::int32_t kAsItWas = -77;

/// The ids that a list of `count` does not hold.
inline std::vector<std::int32_t> unknownIds(std::int32_t count) {
  return {INT_MIN, INT_MIN + 1, -2, -1, count, count + 1, 1000, 1 << 16, INT_MAX - 1, INT_MAX};
}

}  // namespace kestrel::test
