// What every text of the host for people must be.
#pragma once

#include <string_view>

#include "fuzz/disagreement.h"
#include "host/basics/utf8.h"
#include "tests/plain/plain_utf8.h"

namespace kestrel::fuzz {

/// UTF-8 without control characters but newlines, so that no file can steer a terminal.
inline void requireReadable(const char* what, std::string_view text) {
  if (plain::firstBadByte(text)) disagree("a text is UTF-8", what, ": ", text);
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte < 0x20 && c != '\n') || byte == 0x7F)
      disagree("control characters", what, ": ", text);
  }
}

/// Neither are characters that turn the direction of writing, or cannot be seen otherwise.
inline void requireVisible(const char* what, std::string_view text) {
  requireReadable(what, text);
  for (const wchar_t character : host::wideFromUtf8(text).value_or(L"")) {
    if (character != L'\n' && host::isUnseen(static_cast<char32_t>(character)))
      disagree("characters that cannot be seen", what, ": ", text);
  }
}

}  // namespace kestrel::fuzz
