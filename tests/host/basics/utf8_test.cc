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

TEST(Utf8Test, visibleTextKeepsQuotesAndBackslashes) {
  EXPECT_EQ(visible("a \"b\" \\c"), "a \"b\" \\c");
  EXPECT_EQ(visible("\"\x1b[2J\"\\\xe9\\"), "\"\\x1b[2J\"\\\\xe9\\");
  EXPECT_EQ(visible("\xe2\x80\xaex\xc2\x9b"), "\\u202ex\\x9b");
  EXPECT_EQ(visible("─ ✗ – é \xf0\x9f\x8e\xac"), "─ ✗ – é \xf0\x9f\x8e\xac");
  EXPECT_EQ(visible(visible("\x1b\"\n")), visible("\x1b\"\n"));
  EXPECT_EQ(visible(""), "");
}

TEST(Utf8Test, whatSteersATerminalIsEscaped) {
  const struct {
    int first;
    int last;
  } ranges[] = {{0x00, 0x1F},     {0x7F, 0x9F},     {0x61C, 0x61C},   {0x200B, 0x200F},
                {0x2028, 0x202E}, {0x2060, 0x2064}, {0x2066, 0x2069}, {0xFEFF, 0xFEFF}};
  for (const auto& [first, last] : ranges) {
    for (int unit = first; unit <= last; ++unit) {
      const std::string text = utf8FromWide(std::wstring(1, static_cast<wchar_t>(unit)));
      EXPECT_TRUE(isUnseen(static_cast<char32_t>(unit))) << unit;
      for (const std::string& shown : {visible(text), printable(text)}) {
        EXPECT_TRUE(shown.starts_with('\\') && shown.find(text) == std::string::npos) << unit;
      }
    }
  }
  for (const char32_t seen : {U' ', U'~', U'\x00a0', U'é', U'–', U'\xfffd'}) {
    EXPECT_FALSE(isUnseen(seen));
  }
}

}  // namespace
}  // namespace kestrel::host
