// The rules are tried in this order, and the first match decides. The tests and the order are part
// of the interface: "12a" contains "2a", so the rule for 12a never decides.
#include "standards/layout_code.h"

#include <algorithm>
#include <array>

#include "api/layout_code.h"
#include "catalogue/host_text.h"

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

// In ASCII, regardless of the locale.
constexpr char lowerCased(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool containsNoCase(std::string_view text, std::string_view code) {
  return !std::ranges::search(text, code, {}, lowerCased).empty();
}

bool holds(const LayoutCodeRule& rule, std::string_view text) {
  return rule.test == CodeTest::kEquals ? text == rule.code : containsNoCase(text, rule.code);
}

}  // namespace

std::span<const LayoutCodeRule> layoutCodeRules() noexcept { return kRules; }

ServiceMapItem itemOfLayoutCode(std::string_view text) noexcept {
  for (const LayoutCodeRule& rule : kRules)
    if (holds(rule, text)) return rule.item;
  return NO_SERVICE_MAP_ITEM;
}

ServiceMapItem GetServiceMapItemByAS11R123(const char* code) {
  return itemOfLayoutCode(viewOf(code));
}

}  // namespace kestrel
