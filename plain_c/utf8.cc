//   lead byte   trail bytes   first trail byte, if it is narrower than 80..BF
//   00..7F      0
//   C2..DF      1
//   E0..EF      2             E0: A0..BF (no overlong form), ED: 80..9F (no surrogate)
//   F0..F4      3             F0: 90..BF (no overlong form), F4: 80..8F (none past U+10FFFF)
#include "plain_c/utf8.h"

#include <algorithm>
#include <cstdint>

namespace kestrel {

namespace {

std::uint32_t byteAt(std::string_view text, std::size_t i) {
  return static_cast<unsigned char>(text[i]);
}

// Length of a character that is not ASCII, by its lead byte; 0 if no character begins with it.
std::size_t lengthByLead(std::uint32_t lead) {
  if (lead < 0xC2 || lead > 0xF4) return 0;
  if (lead < 0xE0) return 2;
  return lead < 0xF0 ? 3 : 4;
}

bool isTrail(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80; }

bool isFirstTrail(std::uint32_t lead, std::uint32_t byte) {
  if (lead == 0xE0) return byte >= 0xA0;
  if (lead == 0xED) return byte <= 0x9F;
  if (lead == 0xF0) return byte >= 0x90;
  if (lead == 0xF4) return byte <= 0x8F;
  return true;
}

// Length of the well-formed character at the start of a text that does not begin with ASCII; 0 if
// there is none.
std::size_t wellFormedLength(std::string_view text) {
  const std::uint32_t lead = byteAt(text, 0);
  const std::size_t length = lengthByLead(lead);
  if (length == 0 || length > text.size() || !isFirstTrail(lead, byteAt(text, 1))) return 0;
  return std::ranges::all_of(text.substr(1, length - 1), isTrail) ? length : 0;
}

}  // namespace

std::optional<std::size_t> firstBadByte(std::string_view text) noexcept {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = byteAt(text, at) < 0x80 ? 1 : wellFormedLength(text.substr(at));
    if (length == 0) return at;
    at += length;
  }
  return std::nullopt;
}

}  // namespace kestrel
