#include "host/utf8.h"

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
  const std::wstring lone = {static_cast<wchar_t>(0xD800), L'a', static_cast<wchar_t>(0x110000)};
  EXPECT_EQ(utf8FromWide(lone),
            "\xef\xbf\xbd"
            "a"
            "\xef\xbf\xbd");
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
