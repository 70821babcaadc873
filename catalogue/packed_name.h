// A name of up to seven bytes as one number, so that a text is compared with all known names at
// once when it has been read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kestrel {

/// Gathers a name byte by byte. Below the first byte stands a 1 that keeps the length. A name of
/// more than kLongest bytes is cut: who gathers one must know that it is too long.
class PackedName {
 public:
  static constexpr std::size_t kLongest = 7;

  constexpr void append(char c) { bytes_ = bytes_ << 8U | static_cast<unsigned char>(c); }
  constexpr bool operator==(const PackedName&) const = default;

 private:
  std::uint64_t bytes_ = 1;
};

consteval PackedName pack(std::string_view name) {
  PackedName packed;
  for (const char c : name) packed.append(c);
  return packed;
}

}  // namespace kestrel
