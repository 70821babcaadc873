#include "host/basics/text_parts.h"

#include <gtest/gtest.h>

namespace kestrel::host {
namespace {

TEST(TextPartsTest, theFirstNumberCounts) {
  EXPECT_EQ(leadingNumber<std::int32_t>("6"), 6);
  EXPECT_EQ(leadingNumber<std::int32_t>("6 / 2"), 6);
  EXPECT_EQ(leadingNumber<std::int32_t>("48000.000"), 48000);
  for (const char* text : {"", " 6", "-6", "+6", "x", "99999999999"}) {
    EXPECT_EQ(leadingNumber<std::int32_t>(text), std::nullopt) << text;
  }
}

TEST(TextPartsTest, aRunOfBlanksIsOneSeparator) {
  using Parts = std::vector<std::string_view>;
  EXPECT_EQ(splitAtBlanks("L R"), (Parts{"L", "R"}));
  EXPECT_EQ(splitAtBlanks("  L   R "), (Parts{"L", "R"}));
  EXPECT_EQ(splitAtBlanks("LFE"), (Parts{"LFE"}));
  EXPECT_EQ(splitAtBlanks(""), Parts{});
  EXPECT_EQ(splitAtBlanks("   "), Parts{});
}

}  // namespace
}  // namespace kestrel::host
