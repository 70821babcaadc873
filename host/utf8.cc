// The conversions are those of std::filesystem::path between char8_t and the character type of
// the wide encoding; unlike those to and from wchar_t itself they know no locale. They raise an
// error on text that has no other form.
#include "host/utf8.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <type_traits>

namespace kestrel::host {
namespace {

using WideUnit = std::conditional_t<sizeof(wchar_t) == sizeof(char32_t), char32_t, char16_t>;

bool isNoCharacter(WideUnit unit) {
  const char32_t value = unit;
  return sizeof(WideUnit) == 4 && (value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF));
}

}  // namespace

std::optional<std::wstring> wideFromUtf8(std::string_view text) {
  try {
    const std::filesystem::path path(std::u8string(text.begin(), text.end()));
    const auto wide = path.string<WideUnit>();
    if (std::ranges::any_of(wide, isNoCharacter)) {
      return std::nullopt;
    }
    return std::wstring(wide.begin(), wide.end());
  } catch (const std::system_error&) {
    return std::nullopt;
  }
}

std::string utf8FromWide(std::wstring_view text) {
  std::basic_string<WideUnit> clean(text.begin(), text.end());
  std::ranges::replace_if(clean, isNoCharacter, u'\xFFFD');
  const std::u8string utf8 = std::filesystem::path(clean).u8string();
  return {utf8.begin(), utf8.end()};
}

std::string printable(std::string_view text) {
  const std::string quoted = fmt::format("{:?}", text);
  return quoted.substr(1, quoted.size() - 2);
}

}  // namespace kestrel::host
