#include "tests/plain/plain_utf8.h"

namespace kestrel::plain {
namespace {

struct Character {
  std::uint32_t code = 0;
  std::size_t length = 0;  // in bytes; 0: not well-formed
};

// What the bytes would be if they were a character of that length, well-formed or not.
std::uint32_t payloadOf(std::string_view bytes) {
  constexpr std::uint32_t kFirstBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
  std::uint32_t code = static_cast<unsigned char>(bytes[0]) & kFirstBits[bytes.size()];
  for (std::size_t i = 1; i < bytes.size(); ++i) {
    code = code << 6 | (static_cast<unsigned char>(bytes[i]) & 0x3FU);
  }
  return code;
}

// The character that the text begins with.
Character firstCharacter(std::string_view text) {
  for (std::size_t length = 1; length <= 4 && length <= text.size(); ++length) {
    const std::string_view bytes = text.substr(0, length);
    const std::uint32_t code = payloadOf(bytes);
    std::string written;
    appendUtf8(written, code);
    const bool isCharacter = code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
    if (isCharacter && written == bytes) return {code, length};
  }
  return {};
}

void appendWide(std::wstring& wide, std::uint32_t code) {
  if (sizeof(wchar_t) == 2 && code > 0xFFFF) {
    wide += static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10));
    code = 0xDC00 + ((code - 0x10000) & 0x3FF);
  }
  wide += static_cast<wchar_t>(code);
}

}  // namespace

void appendUtf8(std::string& text, std::uint32_t code) {
  const auto append = [&](std::uint32_t byte) { text += static_cast<char>(byte); };
  if (code < 0x80) return append(code);
  if (code < 0x800) {
    append(0xC0 | code >> 6);
  } else if (code < 0x10000) {
    append(0xE0 | code >> 12);
    append(0x80 | (code >> 6 & 0x3F));
  } else {
    append(0xF0 | code >> 18);
    append(0x80 | (code >> 12 & 0x3F));
    append(0x80 | (code >> 6 & 0x3F));
  }
  append(0x80 | (code & 0x3F));
}

std::optional<std::size_t> firstBadByte(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = firstCharacter(text.substr(at)).length;
    if (length == 0) return at;
    at += length;
  }
  return std::nullopt;
}

std::wstring widened(std::string_view text) {
  std::wstring wide;
  while (!text.empty()) {
    Character character = firstCharacter(text);
    if (character.length == 0) character = {static_cast<unsigned char>(text[0]), 1};
    appendWide(wide, character.code);
    text.remove_prefix(character.length);
  }
  return wide;
}

std::string toUtf8(const std::wstring& wide) {
  std::string text;
  for (std::size_t i = 0; i < wide.size(); ++i) {
    auto code = static_cast<std::uint32_t>(wide[i]);
    if (code >= 0xD800 && code < 0xDC00 && i + 1 < wide.size()) {
      code = 0x10000 + ((code - 0xD800) << 10) + (static_cast<std::uint32_t>(wide[++i]) - 0xDC00);
    }
    appendUtf8(text, code);
  }
  return text;
}

}  // namespace kestrel::plain
