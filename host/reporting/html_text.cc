#include "host/reporting/html_text.h"

#include <fmt/format.h>
#include <fmt/xchar.h>

#include <algorithm>
#include <array>
#include <cstdint>

#include "host/basics/utf8.h"

namespace kestrel::host {
namespace {

struct Replacement {
  wchar_t character;
  std::wstring_view text;
};

constexpr std::array<Replacement, 5> kMarkup = {
    {{L'&', L"&amp;"}, {L'<', L"&lt;"}, {L'>', L"&gt;"}, {L'"', L"&quot;"}, {L'\'', L"&#39;"}}};

struct Range {
  char32_t first;
  char32_t last;
};

// C0 and C1 controls; no width; line ends, embeddings, overrides; isolates; byte order mark;
// others.
constexpr std::array<Range, 7> kUnseen = {{{0x00, 0x1F},
                                           {0x7F, 0x9F},
                                           {0x200B, 0x200F},
                                           {0x2028, 0x202E},
                                           {0x2060, 0x2069},
                                           {0xFEFF, 0xFEFF},
                                           {0xFFF9, 0xFFFB}}};

bool isUnseen(char32_t unit) {
  return std::ranges::any_of(
      kUnseen, [unit](Range range) { return unit >= range.first && unit <= range.last; });
}

void append(std::wstring& html, wchar_t character) {
  const auto unit = static_cast<char32_t>(character);
  const auto* markup = std::ranges::find(kMarkup, character, &Replacement::character);
  if (markup != kMarkup.end()) {
    html += markup->text;
  } else if (isUnseen(unit)) {
    html += fmt::format(L"[U+{:04X}]", static_cast<std::uint32_t>(unit));
  } else {
    html += character;
  }
}

}  // namespace

std::string htmlText(std::string_view text) {
  auto wide = wideFromUtf8(text);
  if (!wide) {
    wide = wideFromUtf8(printable(text));
  }
  std::wstring html;
  for (const wchar_t character : *wide) {
    append(html, character);
  }
  return utf8FromWide(html);
}

}  // namespace kestrel::host
