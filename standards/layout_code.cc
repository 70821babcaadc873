// Codes are found in one pass over the text: each is one or two digits and a letter, so wherever a
// digit stands before a letter, tables made from the rules say which rules that meets. The first of
// all rules that are met decides. The mix of tests and the order are part of the interface: "12a"
// holds "2a", so the rule for 12a never decides.
#include "standards/layout_code.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace kestrel {

namespace {

constexpr std::array<LayoutCodeRule, 22> kRules = {{
    {CodeTest::kContains, "2a", 0},   {CodeTest::kEquals, "4a", 2},
    {CodeTest::kEquals, "4b", 2},     {CodeTest::kEquals, "4c", 2},
    {CodeTest::kContains, "8a", 8},   {CodeTest::kContains, "8b", 7},
    {CodeTest::kContains, "8d", 10},  {CodeTest::kContains, "8g", 11},
    {CodeTest::kEquals, "8i", 11},    {CodeTest::kEquals, "8h", 11},
    {CodeTest::kContains, "12a", 20}, {CodeTest::kContains, "12b", 21},
    {CodeTest::kContains, "12c", 22}, {CodeTest::kContains, "12d", 23},
    {CodeTest::kContains, "12e", 24}, {CodeTest::kContains, "12f", 25},
    {CodeTest::kContains, "12g", 26}, {CodeTest::kContains, "12h", 27},
    {CodeTest::kContains, "16a", 33}, {CodeTest::kContains, "16b", 34},
    {CodeTest::kContains, "16c", 35}, {CodeTest::kContains, "16f", 36},
}};

using RuleIndex = std::uint8_t;
constexpr RuleIndex kNoRule = kRules.size();

constexpr std::size_t kDigits = 10;
constexpr std::size_t kLetters = 26;

// The place of a code's last digit, which says what rules the code may meet.
enum class Place {
  kBehindOne,  // a "1" stands before it
  kWhole,      // the text is the digit and a lower-case letter, and nothing else
  kElsewhere,
};

consteval bool mayMeet(const LayoutCodeRule& rule, Place place) {
  if (rule.test == CodeTest::kEquals) return place == Place::kWhole;
  return rule.code.size() == 2 || place == Place::kBehindOne;
}

// The first rule that a code at one kind of place meets, by its last digit and its letter.
struct RuleTable {
  std::array<std::array<RuleIndex, kLetters>, kDigits> rules{};

  consteval explicit RuleTable(Place place) {
    for (auto& row : rules) row.fill(kNoRule);
    for (std::size_t i = kRules.size(); i-- > 0;) {
      if (!mayMeet(kRules[i], place)) continue;
      const std::string_view end = kRules[i].code.substr(kRules[i].code.size() - 2);
      rules[static_cast<std::size_t>(end[0] - '0')][static_cast<std::size_t>(end[1] - 'a')] =
          static_cast<RuleIndex>(i);
    }
  }
};

constexpr RuleTable kBehindOne(Place::kBehindOne);
constexpr RuleTable kWhole(Place::kWhole);
constexpr RuleTable kElsewhere(Place::kElsewhere);

// By rule; the last one is for a text that meets none.
constexpr auto kItems = [] {
  std::array<ServiceMapItem, kRules.size() + 1> items{};
  std::ranges::transform(kRules, items.begin(), &LayoutCodeRule::item);
  items[kNoRule] = NO_SERVICE_MAP_ITEM;
  return items;
}();

static_assert(std::ranges::all_of(kRules, [](const LayoutCodeRule& rule) {
  return rule.code.size() == 2 ||
         (rule.code.size() == 3 && rule.code[0] == '1' && rule.test == CodeTest::kContains);
}));

// 0 to 25 for an ASCII letter of either case, more for any other character.
constexpr std::size_t letterIndex(char c) {
  return static_cast<unsigned char>((static_cast<unsigned char>(c) | 0x20U) - 'a');
}

// 0 to 9 for an ASCII digit, more for any other character.
constexpr std::size_t digitIndex(char c) {
  return static_cast<unsigned char>(static_cast<unsigned char>(c) - '0');
}

// Of an ASCII letter.
constexpr bool isLower(char letter) { return letter >= 'a'; }

const RuleTable& tableAt(const char* text, std::size_t at) {
  if (at > 0) return text[at - 1] == '1' ? kBehindOne : kElsewhere;
  const bool isWhole = text[2] == '\0' && isLower(text[1]);
  return isWhole ? kWhole : kElsewhere;
}

}  // namespace

std::span<const LayoutCodeRule> layoutCodeRules() noexcept { return kRules; }

ServiceMapItem itemOfLayoutCode(const char* text) noexcept {
  RuleIndex first = kNoRule;
  for (std::size_t at = 0; text[at] != '\0'; ++at) {
    const std::size_t digit = digitIndex(text[at]);
    if (digit >= kDigits) continue;
    const std::size_t letter = letterIndex(text[at + 1]);
    if (letter >= kLetters) continue;
    first = std::min(first, tableAt(text, at).rules[digit][letter]);
  }
  return kItems[first];
}

}  // namespace kestrel
