// Both functions take one character after the other off the front of the text.
//
//   lead byte   trail bytes   first trail byte, where it is narrower than 80..BF
//   00..7F      0
//   C2..DF      1
//   E0..EF      2             E0: A0..BF (no overlong form), ED: 80..9F (no surrogate)
//   F0..F4      3             F0: 90..BF (no overlong form), F4: 80..8F (none past U+10FFFF)
#include "analyser/utf8.h"

#include <cstdint>

namespace kestrel {

namespace {

std::uint32_t byteAt(std::string_view text, std::size_t i) {
  return static_cast<unsigned char>(text[i]);
}

// Length of the character at the front, by its lead byte; 0 when none begins so.
std::size_t lengthByLead(std::uint32_t lead) {
  if (lead < 0x80) return 1;
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

// Length of the well-formed character at the front of a text that is not empty; 0 when there is
// none.
std::size_t wellFormedLength(std::string_view text) {
  const std::uint32_t lead = byteAt(text, 0);
  const std::size_t length = lengthByLead(lead);
  if (length < 2) return length;
  if (length > text.size() || !isFirstTrail(lead, byteAt(text, 1))) return 0;
  for (std::size_t i = 2; i < length; ++i)
    if (!isTrail(byteAt(text, i))) return 0;
  return length;
}

std::uint32_t codePoint(std::string_view text, std::size_t length) {
  if (length == 1) return byteAt(text, 0);
  std::uint32_t value = byteAt(text, 0) & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) value = (value << 6U) | (byteAt(text, i) & 0x3FU);
  return value;
}

void append(std::wstring& wide, std::uint32_t point) {
  if constexpr (sizeof(wchar_t) == 2) {
    if (point > 0xFFFF) {
      wide += static_cast<wchar_t>(0xD800U + ((point - 0x10000U) >> 10U));
      point = 0xDC00U + ((point - 0x10000U) & 0x3FFU);
    }
  }
  wide += static_cast<wchar_t>(point);
}

}  // namespace

std::optional<std::size_t> firstBadByte(std::string_view text) noexcept {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = wellFormedLength(text.substr(at));
    if (length == 0) return at;
    at += length;
  }
  return std::nullopt;
}

std::wstring widen(std::string_view text) {
  std::wstring wide;
  wide.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = wellFormedLength(text);
    append(wide, codePoint(text, length));
    text.remove_prefix(length);
  }
  return wide;
}

}  // namespace kestrel
