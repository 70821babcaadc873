#include "host/basics/utf8.h"

#include <gtest/gtest.h>

namespace kestrel::host {
namespace {

TEST(Utf8Test, textsGoToWideAndBack) {
  for (const char* text : {"", "Ls Rs", "\xc3\xa9t\xc3\xa9", "\xf0\x9f\x8e\xac"}) {
    const auto wide = wideFromUtf8(text);
    ASSERT_TRUE(wide) << text;
    EXPECT_EQ(utf8FromWide(*wide), text);
  }
  EXPECT_EQ(wideFromUtf8("\xc3\xa9"), L"\x00e9");
}

TEST(Utf8Test, otherBytesHaveNoWideForm) {
  for (const char* text : {"\xe9", "\xc3", "\xff", "a\x80z", "\xed\xa0\x80"}) {
    EXPECT_EQ(wideFromUtf8(text), std::nullopt) << text;
  }
}

TEST(Utf8Test, whatIsNoCharacterIsReplaced) {
  const std::string replaced = "\xef\xbf\xbd";
  for (const int unit : {0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0x110000}) {
    if (static_cast<int>(static_cast<wchar_t>(unit)) != unit) {
      continue;  // more than a unit holds here
    }
    const std::wstring wide = {static_cast<wchar_t>(unit), L'a', static_cast<wchar_t>(unit)};
    EXPECT_EQ(utf8FromWide(wide), replaced + "a" + replaced) << unit;
  }
}

TEST(Utf8Test, printableTextStaysOnOneLine) {
  EXPECT_EQ(printable("a file.mxf"), "a file.mxf");
  EXPECT_EQ(printable("\xc3\xa9t\xc3\xa9"), "\xc3\xa9t\xc3\xa9");
  EXPECT_EQ(printable("a\nb\x1b[0m"), "a\\nb\\x1b[0m");
  EXPECT_EQ(printable("\xe9"), "\\xe9");
  EXPECT_EQ(printable(""), "");
}

}  // namespace
}  // namespace kestrel::host
