// Values that a careless or hostile host may pass.
#pragma once

#include <climits>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/c_api/c_unknown_ids.h"

namespace kestrel::test {

inline constexpr std::size_t kMegabyte = 1 << 20;

template <class Char>
struct NamedText {
  std::string name;
  std::basic_string<Char> text;
};

/// A text made of one piece, as long as `size` or a little longer.
template <class Char>
std::basic_string<Char> longText(const std::basic_string<Char>& piece, std::size_t size) {
  std::basic_string<Char> text;
  text.reserve(size + piece.size());
  while (text.size() < size) text += piece;
  return text;
}

template <class Char>
std::basic_string<Char> megabyteOf(const std::basic_string<Char>& piece) {
  return longText(piece, kMegabyte / sizeof(Char));
}

/// Narrow texts that name nothing.
inline std::vector<NamedText<char>> hostileTexts() {
  return {
      {"empty", ""},
      {"a NUL in front", std::string("\0Stereo", 7)},
      {"1 MB of x", megabyteOf<char>("x")},
      {"1 MB of commas", megabyteOf<char>(",")},
      {"1 MB of Stereo,", megabyteOf<char>("Stereo,")},
      {"a name cut short", "Stere"},
      {"a name with a blank", "Stereo "},
      {"bytes that are no UTF-8", "Stereo\xFF\xFE\xC0\x80"},
      {"UTF-8 cut short", "\xE2\x82"},
      {"a surrogate in UTF-8", "\xED\xA0\x80"},
      {"all bytes",
       [] {
         std::string text;
         for (int byte = 1; byte < 256; ++byte) text += static_cast<char>(byte);
         return text;
       }()},
      {"format directives", "%s%n%ls%999999999d"},
  };
}

/// Wide texts without any meaning.
inline std::vector<NamedText<wchar_t>> hostileWideTexts() {
  return {
      {"empty", L""},
      {"1 MB of x", megabyteOf<wchar_t>(L"x")},
      {"1 MB of blanks", megabyteOf<wchar_t>(L" ")},
      {"1 MB of minus signs", megabyteOf<wchar_t>(L"-")},
      {"a lone high surrogate", std::wstring(1, static_cast<wchar_t>(0xD800))},
      {"a lone low surrogate", std::wstring(1, static_cast<wchar_t>(0xDFFF)) + L"1"},
      {"characters of all ones", std::wstring(3, static_cast<wchar_t>(-1))},
      {"NULs inside", std::wstring(L"\0001\0-2\0", 6)},
      {"digits of other scripts", L"\u0661\uFF11"},
  };
}

}  // namespace kestrel::test
