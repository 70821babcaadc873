#include "host/basics/text_columns.h"

#include <gtest/gtest.h>

namespace kestrel::host {
namespace {

constexpr TextStyle kPlain{};
constexpr TextStyle kColoured{true, 0};

TextStyle narrow(std::size_t columns) { return {false, columns}; }

TEST(TextStyleTest, coloursSurroundTheirPartOnly) {
  StyledLine line;
  line.add("a ").add("b", Colour::kBad).add(" ").add("", Colour::kGood);
  EXPECT_EQ(line.text(kPlain), "a b\n");
  EXPECT_EQ(line.text(kColoured), "a \x1b[1;31mb\x1b[0m\n");
}

TEST(TextStyleTest, aLineIsCutToTheTerminalBetweenCharacters) {
  StyledLine line;
  line.add("a\xc3\xa9").add("\xe2\x94\x8c x", Colour::kBad);
  const struct {
    std::size_t columns;
    const char* text;
  } rows[] = {{1, "a\n"},
              {2, "a\xc3\xa9\n"},
              {3, "a\xc3\xa9\xe2\x94\x8c\n"},
              {5, "a\xc3\xa9\xe2\x94\x8c x\n"},
              {99, "a\xc3\xa9\xe2\x94\x8c x\n"}};
  for (const auto& row : rows) {
    EXPECT_EQ(line.text(narrow(row.columns)), row.text) << row.columns;
  }
}

TEST(TextStyleTest, sentencesAreBrokenAtBlanks) {
  EXPECT_EQ(wrapped("one two three", narrow(8)), "one two\nthree\n");
  EXPECT_EQ(wrapped("one two three", narrow(7)), "one two\nthree\n");
  EXPECT_EQ(wrapped("one two three", narrow(6)), "one\ntwo\nthree\n");
  EXPECT_EQ(wrapped("one two three", kPlain), "one two three\n");
  EXPECT_EQ(wrapped("", narrow(5)), "\n");
}

TEST(TextStyleTest, aWordThatIsTooWideIsBroken) {
  EXPECT_EQ(wrapped("a verylongword b", narrow(5)), "a\nveryl\nongwo\nrd b\n");
  EXPECT_EQ(wrapped("\xc3\xa9\xc3\xa9\xc3\xa9", narrow(2)), "\xc3\xa9\xc3\xa9\n\xc3\xa9\n");
}

TEST(TextStyleTest, neighbouringServicesHaveDifferentColours) {
  for (std::size_t index = 0; index < 20; ++index) {
    EXPECT_NE(serviceColour(index), serviceColour(index + 1));
  }
}

}  // namespace
}  // namespace kestrel::host
