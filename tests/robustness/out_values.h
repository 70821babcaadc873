// The out-values of a call, each with a value that no answer holds, so that what a call has written
// can be told: one element more than it should have counts as well.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace kestrel::test {

struct OutValues {
  static constexpr std::int32_t kNumber = -77;
  static constexpr std::size_t kNeeded = 7777;
  static constexpr char kByte = '~';

  OutValues() {
    numbers.fill(kNumber);
    list.fill(kNumber);
    text.fill(kByte);
  }

  std::array<std::int32_t, 3> numbers;
  std::array<std::int32_t, 20> list;
  std::array<char, 200> text;
  const char* constant = &text[0];
  std::size_t needed = kNeeded;
  std::uint32_t total = kNeeded;

  std::string inWords() const;
};

/// What one call of a function that fills a buffer writes: "needed 2; list 1 1".
std::string wrote(std::size_t needed, const std::string& buffer = "");

}  // namespace kestrel::test
