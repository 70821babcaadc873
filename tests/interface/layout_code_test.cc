// GetServiceMapItemByAS11R123 of the library that ships. Rows say what a code stands for; all short
// texts and many random ones are compared with the plain form.
#include <gtest/gtest.h>

#include <array>
#include <clocale>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tests/library_under_test.h"
#include "tests/plain/plain_layout_code.h"
#include "tests/random_inputs.h"
#include "tests/small_stack.h"
#include "tests/test_rounds.h"

namespace kestrel::test {
namespace {

constexpr int kMismatchesShown = 5;

ServiceMapItem itemOf(const std::string& code) {
  return library().GetServiceMapItemByAS11R123(code.c_str());
}

struct Row {
  std::string code;
  ServiceMapItem item;
};

template <class Rows>
void expectRows(const Rows& rows) {
  for (const Row& row : rows) {
    EXPECT_EQ(itemOf(row.code), row.item) << testing::PrintToString(row.code);
  }
}

// Compares one text, and says whether the two agree.
bool agrees(const std::string& code) {
  const ServiceMapItem expected = plain::itemOfLayoutCode(code.c_str());
  const ServiceMapItem actual = itemOf(code);
  EXPECT_EQ(actual, expected) << testing::PrintToString(code);
  return actual == expected;
}

const Row kCodesFoundAnywhere[] = {
    {"2a", 0},   {"8a", 8},   {"8b", 7},   {"8d", 10},  {"8g", 11},  {"12b", 21},
    {"12c", 22}, {"12d", 23}, {"12e", 24}, {"12f", 25}, {"12g", 26}, {"12h", 27},
    {"16a", 33}, {"16b", 34}, {"16c", 35}, {"16f", 36},
};

const Row kWholeCodes[] = {{"4a", 2}, {"4b", 2}, {"4c", 2}, {"8h", 11}, {"8i", 11}};

std::string upperCased(std::string code) {
  code.back() = static_cast<char>(code.back() - 'a' + 'A');
  return code;
}

TEST(LayoutCode, ACodeStandsForItsItem) {
  expectRows(kCodesFoundAnywhere);
  expectRows(kWholeCodes);
}

TEST(LayoutCode, MostCodesAreFoundAnywhereAndInEitherCase) {
  for (const auto& [code, item] : kCodesFoundAnywhere) {
    for (const std::string& cased : {code, upperCased(code)}) {
      expectRows(std::array<Row, 7>{{{cased, item},
                                     {"EBU R 123: " + cased, item},
                                     {cased + " (12 tracks)", item},
                                     {" " + cased + " ", item},
                                     {"\xFF\x80" + cased + "\xC3\xA9", item},
                                     {"x" + cased + cased, item},
                                     {"1" + cased + "9", item}}});
    }
  }
}

TEST(LayoutCode, SomeCodesMustBeTheWholeTextInLowerCase) {
  for (const auto& [code, item] : kWholeCodes) {
    EXPECT_EQ(itemOf(code), item) << code;
    for (const std::string& text : {upperCased(code), " " + code, code + " ", "EBU R 123: " + code,
                                    code + "\n", code + code, "0" + code, code + "1"}) {
      EXPECT_EQ(itemOf(text), NO_SERVICE_MAP_ITEM) << testing::PrintToString(text);
    }
  }
}

TEST(LayoutCode, TwoAIsFoundAtTheEndOfALongerText) {
  expectRows(std::array<Row, 6>{
      {{"2a", 0}, {"2A", 0}, {"EBU R 123 2a", 0}, {"x2A", 0}, {"22a", 0}, {"4c 2a", 0}}});
}

TEST(LayoutCode, TwelveAHoldsTwoAAndIsStereo) {
  expectRows(std::array<Row, 4>{{{"12a", 0}, {"12A", 0}, {"EBU R 123: 12a", 0}, {"12a 8a", 0}}});
}

TEST(LayoutCode, TheFirstRuleThatHoldsDecides) {
  expectRows(std::array<Row, 10>{{{"8a 12b", 8},
                                  {"12b 8a", 8},
                                  {"8b 8a", 8},
                                  {"8d8b", 7},
                                  {"8g8d", 10},
                                  {"16f12h", 27},
                                  {"16f 16a", 33},
                                  {"12h12b", 21},
                                  {"16f2A", 0},
                                  {"8h 8g", 11}}});
}

TEST(LayoutCode, EveryTwoCodesInOneTextAreDecidedByTheOrderOfTheRules) {
  std::vector<std::string> codes = {"12a"};
  for (const Row& row : kCodesFoundAnywhere) codes.push_back(row.code);
  for (const Row& row : kWholeCodes) codes.push_back(row.code);
  for (const std::string& first : codes) {
    for (const std::string& second : codes) {
      agrees(first + second);
      agrees(upperCased(first) + " " + second);
    }
  }
}

TEST(LayoutCode, CodesThatAreNotListedStandForNothing) {
  for (const char* code :
       {"8c", "8e", "8f", "16d", "16e", "16g", "4d", "2b", "12i", "16D", "6a", "10a", "8C"}) {
    EXPECT_EQ(itemOf(code), NO_SERVICE_MAP_ITEM) << code;
  }
}

TEST(LayoutCode, OtherTextsStandForNothing) {
  for (const char* text : {"", " ", "Stereo", "5.1 Mix", "2", "a", "8", "12", "16", "a2", "b8",
                           "2 a", "8-a", "1 2b", "1\t6a", "EBU R 123", "R123"}) {
    EXPECT_EQ(itemOf(text), NO_SERVICE_MAP_ITEM) << text;
  }
}

TEST(LayoutCode, TheItemNamesOfTheCatalogueAreReadLikeAnyText) {
  expectRows(std::array<Row, 4>{{{"2x Stereo + 2x Dolby E + 2x Stereo (R123 12c)", 22},
                                 {"3x Stereo/Dolby E Pairs (R123 12h)", 27},
                                 {"2x Stereo + 2x 5.1 Mix", NO_SERVICE_MAP_ITEM},
                                 {"16 Mono", NO_SERVICE_MAP_ITEM}}});
}

TEST(LayoutCode, OnlyAsciiLettersHaveACase) {
  for (const char* text : {
           "\x12"    // the digit 2 without its sixth bit
           "a",      //
           "\x18"    // the digit 8 without it
           "a",      //
           "1\x12"   //
           "b",      //
           "2\x81",  // an A, and an a, with the eighth bit
           "8\xC1",  //
           "8\xE1",  //
           "\xB2"    // a 2 with the eighth bit
           "a",      //
           "\xB8"    //
           "B",      //
           "8\x01",  // an A without its seventh bit
           "8\x21",  //
           "8`",
           "8@",
           "2\xC3\xA1",
       }) {
    EXPECT_EQ(itemOf(text), NO_SERVICE_MAP_ITEM) << testing::PrintToString(std::string(text));
  }
}

TEST(LayoutCode, TheTextEndsAtItsNul) {
  EXPECT_EQ(library().GetServiceMapItemByAS11R123("2\0a"), NO_SERVICE_MAP_ITEM);
  EXPECT_EQ(library().GetServiceMapItemByAS11R123("\0002a"), NO_SERVICE_MAP_ITEM);
  EXPECT_EQ(library().GetServiceMapItemByAS11R123("4c\0 "), 2);
}

TEST(LayoutCode, NullCountsAsEmpty) {
  EXPECT_EQ(library().GetServiceMapItemByAS11R123(nullptr), NO_SERVICE_MAP_ITEM);
}

// --- Against the plain form

// Compares `text` and every text that continues it up to `length` characters.
template <class Visit>
bool forEachContinuation(std::string& text, std::size_t length, std::string_view alphabet,
                         const Visit& visit) {
  if (!text.empty() && !visit(text)) return false;
  if (text.size() == length) return true;
  for (const char c : alphabet) {
    text.push_back(c);
    const bool goOn = forEachContinuation(text, length, alphabet, visit);
    text.pop_back();
    if (!goOn) return false;
  }
  return true;
}

TEST(LayoutCodeAgainstPlainForm, EveryShortText) {
  int texts = 0;
  int codes = 0;
  std::string text;
  const bool all =
      forEachContinuation(text, 4, "12468abcdefghiABCDH ", [&](const std::string& code) {
        ++texts;
        if (plain::itemOfLayoutCode(code.c_str()) != NO_SERVICE_MAP_ITEM) ++codes;
        return agrees(code);
      });
  EXPECT_TRUE(all) << "ended at the first difference";
  EXPECT_EQ(texts, 20 + 400 + 8'000 + 160'000);
  EXPECT_GT(codes, 5'000);
}

constexpr std::string_view kLikelyBytes = "12468812461268abcdefghiABCDEFGHIab  ";

char randomByte(Random& random) {
  if (random.oneIn(12)) return static_cast<char>(random.between(-128, -1));
  if (random.oneIn(40)) return static_cast<char>(random.between(1, 127));
  return random.oneOf(kLikelyBytes);
}

std::string randomCode(Random& random) {
  std::string code;
  const std::size_t length = random.below(13);
  while (code.size() < length) code.push_back(randomByte(random));
  if (random.oneIn(4)) code = "EBU R 123: " + code;
  return code;
}

TEST(LayoutCodeAgainstPlainForm, RandomTexts) {
  const int texts = rounds(250'000);
  Random random(20'260'503);
  int mismatches = 0;
  std::array<int, NO_SERVICE_MAP_ITEM + 1> counts{};
  for (int i = 0; i < texts && mismatches < kMismatchesShown; ++i) {
    const std::string code = randomCode(random);
    ++counts[static_cast<std::size_t>(plain::itemOfLayoutCode(code.c_str()))];
    if (!agrees(code)) ++mismatches;
  }
  EXPECT_EQ(mismatches, 0);
  EXPECT_LT(counts[NO_SERVICE_MAP_ITEM], texts * 9 / 10) << "too few texts hold a code";
  for (const Row& row : kCodesFoundAnywhere) {
    EXPECT_GT(counts[static_cast<std::size_t>(row.item)], 0) << "no text holds " << row.code;
  }
}

// --- Locales

// Puts the process into a locale, and back at the end.
class ProcessLocale {
 public:
  explicit ProcessLocale(const char* name)
      : previous_(std::setlocale(LC_ALL, nullptr)), name_(std::setlocale(LC_ALL, name)) {}
  ~ProcessLocale() { std::setlocale(LC_ALL, previous_.c_str()); }
  ProcessLocale(const ProcessLocale&) = delete;
  ProcessLocale& operator=(const ProcessLocale&) = delete;

  bool isSet() const { return name_ != nullptr; }

 private:
  std::string previous_;
  const char* name_;
};

TEST(LayoutCode, TheLocaleOfTheProcessDoesNotMatter) {
  int locales = 0;
  for (const char* name : {"C", "C.UTF-8", "tr_TR.UTF-8", "tr_TR.ISO-8859-9", "de_DE.ISO-8859-1",
                           "Turkish_Turkey.1254", "German_Germany.1252"}) {
    const ProcessLocale locale(name);
    if (!locale.isSet()) continue;
    SCOPED_TRACE(name);
    ++locales;
    expectRows(kCodesFoundAnywhere);
    expectRows(kWholeCodes);
    Random random(5);
    for (int i = 0; i < 5'000; ++i) {
      if (!agrees(randomCode(random))) break;
    }
  }
  EXPECT_GE(locales, 1);
}

// --- Long texts

TEST(LayoutCodeLimits, ALongTextNeedsLittleStack) {
  constexpr std::size_t kMegabyte = 1024 * 1024;
  for (const std::string filler : {" ", "8", "1", "12", "16", "x", "\xFF"}) {
    std::string text;
    while (text.size() < kMegabyte) text += filler;
    std::array<ServiceMapItem, 4> items{};
    runOnSmallStack([&] {
      items = {itemOf(text), itemOf(text + "16F"), itemOf("16f" + text), itemOf(text + " 4c")};
    });
    EXPECT_EQ(items,
              (std::array<ServiceMapItem, 4>{NO_SERVICE_MAP_ITEM, 36, 36, NO_SERVICE_MAP_ITEM}))
        << testing::PrintToString(filler);
  }
}

TEST(LayoutCodeLimits, ManyCodesInALongTextAreDecidedByTheOrderOfTheRules) {
  std::string text;
  for (int i = 0; i < 100'000; ++i) text += "16f 16c 12h ";
  EXPECT_EQ(itemOf(text), 27);
  EXPECT_EQ(itemOf(text + "2A"), 0);
}

}  // namespace
}  // namespace kestrel::test
