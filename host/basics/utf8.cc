// The conversions are those of std::filesystem::path between char8_t and the character type of
// the wide encoding; unlike those to and from wchar_t itself they know no locale. They raise an
// error on text that has no other form.
#include "host/basics/utf8.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>
#include <type_traits>

namespace kestrel::host {
namespace {

using WideUnit = std::conditional_t<sizeof(wchar_t) == sizeof(char32_t), char32_t, char16_t>;

using WideText = std::basic_string<WideUnit>;

bool isWithin(char32_t value, char32_t first, char32_t last) {
  return value >= first && value <= last;
}

bool isNoCharacter(char32_t value) { return value > 0x10FFFF || isWithin(value, 0xD800, 0xDFFF); }

// Units that take two for some characters: whether two of them are one character.
bool isPair(const WideText& text, std::size_t at) {
  return sizeof(WideUnit) == 2 && at + 1 < text.size() && isWithin(text[at], 0xD800, 0xDBFF) &&
         isWithin(text[at + 1], 0xDC00, 0xDFFF);
}

void replaceWhatIsNoCharacter(WideText& text) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (isPair(text, at)) {
      ++at;
    } else if (isNoCharacter(text[at])) {
      text[at] = u'\xFFFD';
    }
  }
}

struct Range {
  char32_t first;
  char32_t last;
};

// C0 and C1 controls; Arabic letter mark; no width; line ends, embeddings, overrides; isolates;
// byte order mark; annotations.
constexpr std::array<Range, 8> kUnseen = {{{0x00, 0x1F},
                                           {0x7F, 0x9F},
                                           {0x061C, 0x061C},
                                           {0x200B, 0x200F},
                                           {0x2028, 0x202E},
                                           {0x2060, 0x2069},
                                           {0xFEFF, 0xFEFF},
                                           {0xFFF9, 0xFFFB}}};

// By fmt's debug form, which escapes more than isUnseen(): also what no standard has assigned.
std::string escaped(std::string_view text) {
  const std::string quoted = fmt::format("{:?}", text);
  return quoted.substr(1, quoted.size() - 2);
}

}  // namespace

std::optional<std::wstring> wideFromUtf8(std::string_view text) {
  try {
    const std::filesystem::path path(std::u8string(text.begin(), text.end()));
    const auto wide = path.string<WideUnit>();
    if (sizeof(WideUnit) == 4 && std::ranges::any_of(wide, isNoCharacter)) {
      return std::nullopt;
    }
    return std::wstring(wide.begin(), wide.end());
  } catch (const std::system_error&) {
    return std::nullopt;
  }
}

std::string utf8FromWide(std::wstring_view text) {
  WideText clean(text.begin(), text.end());
  replaceWhatIsNoCharacter(clean);
  const std::u8string utf8 = std::filesystem::path(clean).u8string();
  return {utf8.begin(), utf8.end()};
}

bool isUnseen(char32_t character) {
  return std::ranges::any_of(
      kUnseen, [=](Range range) { return isWithin(character, range.first, range.last); });
}

std::string visible(std::string_view text) {
  constexpr std::string_view kKept = "\"\\";
  std::string shown;
  while (!text.empty()) {
    const std::size_t length = std::min(text.find_first_of(kKept), text.size());
    shown += escaped(text.substr(0, length));
    text.remove_prefix(length);
    const std::size_t kept = std::min(text.find_first_not_of(kKept), text.size());
    shown += text.substr(0, kept);
    text.remove_prefix(kept);
  }
  return shown;
}

std::string printable(std::string_view text) { return escaped(text); }

}  // namespace kestrel::host
