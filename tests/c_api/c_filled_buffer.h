// Functions of the plain C interface that fill a buffer, tried at every capacity: what does not fit
// is not written, and nothing is written beside the buffer.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "api/kestrel.h"
#include "tests/c_api/c_guarded_buffer.h"

namespace kestrel::test {

inline constexpr std::size_t kNeededAsItWas = 7777;

template <class Element>
using Fill = std::function<KestrelStatus(Element*, std::size_t, std::size_t*)>;

/// Fills buffers of every capacity up to one more than needed, and returns what the last one holds.
template <class Element>
std::vector<Element> filled(const Fill<Element>& fill) {
  std::size_t needed = kNeededAsItWas;
  EXPECT_EQ(fill(nullptr, 0, &needed), KESTREL_BUFFER_TOO_SMALL);
  EXPECT_LT(needed, kNeededAsItWas);
  std::vector<Element> answer;
  for (std::size_t capacity = 0; capacity <= needed + 1; ++capacity) {
    Guarded<Element> buffer(capacity);
    std::size_t told = kNeededAsItWas;
    const bool fits = capacity >= needed;
    EXPECT_EQ(fill(buffer.data(), capacity, &told), fits ? KESTREL_OK : KESTREL_BUFFER_TOO_SMALL);
    EXPECT_EQ(told, needed) << "capacity " << capacity;
    EXPECT_TRUE(buffer.holdsAtMost(fits ? needed : 0)) << "capacity " << capacity;
    if (fits) answer.assign(buffer.data(), buffer.data() + needed);
  }
  return answer;
}

inline std::string filledText(const Fill<char>& fill) {
  const std::vector<char> answer = filled(fill);
  const std::string text(answer.begin(), answer.end());
  EXPECT_EQ(text.find('\0') + 1, text.size()) << "the NUL is counted, and stands at the end alone";
  return text.substr(0, text.find('\0'));
}

template <class Element>
void expectFillRefused(KestrelStatus status, const Fill<Element>& fill) {
  for (const std::size_t capacity : {0U, 1U, 64U}) {
    Guarded<Element> buffer(64);
    std::size_t needed = kNeededAsItWas;
    EXPECT_EQ(fill(buffer.data(), capacity, &needed), status);
    EXPECT_EQ(needed, kNeededAsItWas);
    EXPECT_TRUE(buffer.holdsAtMost(0));
  }
}

template <class Element>
void expectFillRefusesNull(const Fill<Element>& fill) {
  Guarded<Element> buffer(64);
  EXPECT_EQ(fill(buffer.data(), 64, nullptr), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(fill(buffer.data(), 0, nullptr), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(fill(nullptr, 0, nullptr), KESTREL_NULL_ARGUMENT);
  EXPECT_TRUE(buffer.holdsAtMost(0));
  for (const std::size_t capacity : {std::size_t{1}, std::size_t{64}, SIZE_MAX}) {
    std::size_t needed = kNeededAsItWas;
    EXPECT_EQ(fill(nullptr, capacity, &needed), KESTREL_NULL_ARGUMENT) << capacity;
    EXPECT_EQ(needed, kNeededAsItWas);
  }
}

}  // namespace kestrel::test
