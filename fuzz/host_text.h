// What every text of the host for people must be.
#pragma once

#include <string_view>

#include "fuzz/disagreement.h"
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

}  // namespace kestrel::fuzz
