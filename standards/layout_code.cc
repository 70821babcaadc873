// Codes are found in one pass over the text: each is one or two digits and a letter, so wherever a
// letter stands behind a digit, tables made from the rules say which rules that meets. The first of
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

// Which rule the codes of one form and one test belong to, by their last digit and their letter.
struct RuleTable {
  std::array<std::array<RuleIndex, kLetters>, kDigits> rules{};

  constexpr RuleIndex at(std::size_t digit, std::size_t letter) const {
    return rules[digit][letter];
  }
};

consteval RuleTable tableOf(CodeTest test, std::size_t length) {
  RuleTable table;
  for (auto& row : table.rules) row.fill(kNoRule);
  for (std::size_t i = 0; i < kRules.size(); ++i) {
    const std::string_view code = kRules[i].code;
    if (kRules[i].test != test || code.size() != length) continue;
    const auto digit = static_cast<std::size_t>(code[length - 2] - '0');
    const auto letter = static_cast<std::size_t>(code[length - 1] - 'a');
    table.rules[digit][letter] = static_cast<RuleIndex>(i);
  }
  return table;
}

constexpr RuleTable kShortAnywhere = tableOf(CodeTest::kContains, 2);
constexpr RuleTable kLongAnywhere = tableOf(CodeTest::kContains, 3);  // "1" stands before the digit
constexpr RuleTable kShortWhole = tableOf(CodeTest::kEquals, 2);

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

// The first rule that the character at `end` meets as the last one of a code.
RuleIndex ruleAt(std::string_view text, std::size_t end) {
  const std::size_t digit = digitIndex(text[end - 1]);
  if (digit >= kDigits) return kNoRule;
  const std::size_t letter = letterIndex(text[end]);
  if (letter >= kLetters) return kNoRule;
  RuleIndex rule = kShortAnywhere.at(digit, letter);
  if (end >= 2 && text[end - 2] == '1') rule = std::min(rule, kLongAnywhere.at(digit, letter));
  if (text.size() == 2 && isLower(text[end])) rule = std::min(rule, kShortWhole.at(digit, letter));
  return rule;
}

}  // namespace

std::span<const LayoutCodeRule> layoutCodeRules() noexcept { return kRules; }

ServiceMapItem itemOfLayoutCode(std::string_view text) noexcept {
  RuleIndex first = kNoRule;
  for (std::size_t end = 1; end < text.size(); ++end) first = std::min(first, ruleAt(text, end));
  return first == kNoRule ? NO_SERVICE_MAP_ITEM : kRules[first].item;
}

}  // namespace kestrel
