// Runs of ASCII are passed at once, other characters one after the other.
//
//   lead byte   trail bytes   first trail byte, where it is narrower than 80..BF
//   00..7F      0
//   C2..DF      1
//   E0..EF      2             E0: A0..BF (no overlong form), ED: 80..9F (no surrogate)
//   F0..F4      3             F0: 90..BF (no overlong form), F4: 80..8F (none past U+10FFFF)
#include "plain_c/utf8.h"

#include <cstdint>
#include <cstring>

namespace kestrel {

namespace {

std::uint32_t byteAt(std::string_view text, std::size_t i) {
  return static_cast<unsigned char>(text[i]);
}

// Length of a character that is not ASCII, by its lead byte; 0 when none begins so.
std::size_t lengthByLead(std::uint32_t lead) {
  if (lead < 0xC2 || lead > 0xF4) return 0;
  if (lead < 0xE0) return 2;
  return lead < 0xF0 ? 3 : 4;
}

bool isTrail(std::uint32_t byte) { return byte >= 0x80 && byte <= 0xBF; }

bool isFirstTrail(std::uint32_t lead, std::uint32_t byte) {
  if (lead == 0xE0) return byte >= 0xA0 && byte <= 0xBF;
  if (lead == 0xED) return byte >= 0x80 && byte <= 0x9F;
  if (lead == 0xF0) return byte >= 0x90 && byte <= 0xBF;
  if (lead == 0xF4) return byte >= 0x80 && byte <= 0x8F;
  return isTrail(byte);
}

// Length of the well-formed character at the front of a text that does not begin with ASCII; 0 when
// there is none.
std::size_t wellFormedLength(std::string_view text) {
  const std::uint32_t lead = byteAt(text, 0);
  const std::size_t length = lengthByLead(lead);
  if (length == 0 || length > text.size() || !isFirstTrail(lead, byteAt(text, 1))) return 0;
  for (std::size_t i = 2; i < length; ++i)
    if (!isTrail(byteAt(text, i))) return 0;
  return length;
}

// Length of the ASCII at the front, which is looked at by eight bytes at once as far as that goes.
std::size_t asciiLength(std::string_view text) {
  constexpr std::uint64_t kHighBits = 0x8080'8080'8080'8080;
  std::uint64_t bytes = 0;
  std::size_t length = 0;
  for (; text.size() - length >= sizeof bytes; length += sizeof bytes) {
    std::memcpy(&bytes, text.data() + length, sizeof bytes);
    if ((bytes & kHighBits) != 0) break;
  }
  while (length < text.size() && byteAt(text, length) < 0x80) ++length;
  return length;
}

}  // namespace

std::optional<std::size_t> firstBadByte(std::string_view text) noexcept {
  std::string_view rest = text;
  for (rest.remove_prefix(asciiLength(rest)); !rest.empty();) {
    const std::size_t length = wellFormedLength(rest);
    if (length == 0) return text.size() - rest.size();
    rest.remove_prefix(length);
    rest.remove_prefix(asciiLength(rest));
  }
  return std::nullopt;
}

}  // namespace kestrel
