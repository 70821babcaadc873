// Every code point is tried, and every pair of bytes as the begin of a character, against the table
// of well-formed sequences as the Unicode standard prints it.
#include "plain_c/utf8.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace kestrel {
namespace {

std::string encoded(std::uint32_t point) {
  const auto trail = [&](std::uint32_t shift) {
    return static_cast<char>(0x80U + (point >> shift) % 64);
  };
  if (point < 0x80) return {static_cast<char>(point)};
  if (point < 0x800) return {static_cast<char>(0xC0U + point / 64), trail(0)};
  if (point < 0x10000) return {static_cast<char>(0xE0U + point / 4096), trail(6), trail(0)};
  return {static_cast<char>(0xF0U + point / 262144), trail(12), trail(6), trail(0)};
}

bool isSurrogate(std::uint32_t point) { return point >= 0xD800 && point < 0xE000; }

TEST(Utf8, HoldsEveryCodePointButSurrogates) {
  for (std::uint32_t point = 0; point < 0x110000; ++point) {
    const std::string text = "x" + encoded(point) + "x";
    if (isSurrogate(point))
      ASSERT_EQ(firstBadByte(text), 1U) << point;
    else
      ASSERT_EQ(firstBadByte(text), std::nullopt) << point;
  }
}

// The well-formed sequences: the lead bytes, the range of the first trail byte, the length.
constexpr struct {
  int firstLead, lastLead;
  int firstTrail, lastTrail;
  std::size_t length;
} kSequences[] = {
    {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3}, {0xE1, 0xEC, 0x80, 0xBF, 3},
    {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3}, {0xF0, 0xF0, 0x90, 0xBF, 4},
    {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
};

// The length of the sequences that begin with two bytes; 0 when none does.
std::size_t lengthBehind(int lead, int trail) {
  for (const auto& row : kSequences)
    if (lead >= row.firstLead && lead <= row.lastLead && trail >= row.firstTrail &&
        trail <= row.lastTrail)
      return row.length;
  return 0;
}

// "x" and the two bytes, filled up to a length by the last byte that may trail.
std::string sequence(int lead, int trail, std::size_t length) {
  std::string text = {'x', static_cast<char>(lead), static_cast<char>(trail)};
  text.resize(length + 1, '\xBF');
  return text;
}

TEST(Utf8, TakesNoOtherPairOfBytesForTheBeginOfACharacter) {
  for (int lead = 0x80; lead < 0x100; ++lead) {
    for (int trail = 0; trail < 0x100; ++trail) {
      const std::size_t length = lengthBehind(lead, trail);
      for (std::size_t written = 2; written <= 4; ++written) {
        const auto bad = firstBadByte(sequence(lead, trail, written));
        if (length == 0 || written < length)
          ASSERT_EQ(bad, 1U) << lead << ' ' << trail << ' ' << written;
        else if (written == length)
          ASSERT_EQ(bad, std::nullopt) << lead << ' ' << trail;
        else
          ASSERT_EQ(bad, length + 1) << lead << ' ' << trail << ' ' << written;
      }
    }
  }
}

TEST(Utf8, FindsABadByteAnywhereInALongText) {
  for (std::size_t place = 0; place < 40; ++place) {
    for (int bad = 0x80; bad < 0x100; ++bad) {
      std::string text(40, 'x');
      text[place] = static_cast<char>(bad);
      EXPECT_EQ(firstBadByte(text), place) << bad;
    }
  }
}

TEST(Utf8, WantsTrailBytesToTheEnd) {
  for (const std::string begin : {"\xE1\x80", "\xF1\x80", "\xF1\x80\x80"}) {
    const std::string rest(begin == "\xF1\x80" ? 1 : 0, '\x80');
    for (int byte = 0; byte < 0x100; ++byte) {
      const std::string text = begin + static_cast<char>(byte) + rest;
      const bool isTrail = byte >= 0x80 && byte <= 0xBF;
      EXPECT_EQ(firstBadByte(text) == std::nullopt, isTrail) << testing::PrintToString(text);
    }
  }
}

}  // namespace
}  // namespace kestrel
