// Long and random texts, for both ways from a text to an id.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <iostream>
#include <string>
#include <string_view>

#include "tests/interface/stream_naming_support.h"
#include "tests/library_under_test.h"
#include "tests/plain/plain_naming.h"
#include "tests/random_inputs.h"
#include "tests/small_stack.h"
#include "tests/test_rounds.h"

namespace kestrel::test {
namespace {

constexpr int kMismatchesShown = 5;

TEST(FromStrLimits, LongTextsNeedLittleStack) {
  constexpr std::size_t kMegabyte = 1024 * 1024;
  for (const char* filler : {"Mono", "Mono,", "Stereo,5.1 Mix,", ",", " ", "x", "\xFF"}) {
    std::string text;
    while (text.size() < kMegabyte) text += filler;
    StreamType type = -77;
    ServiceMapItem item = -77;
    runOnSmallStack([&] {
      type = library().streamTypeFromStr(text.c_str());
      item = library().serviceMapItemFromStr(text.c_str());
    });
    EXPECT_EQ(type, kUnknown) << filler;
    EXPECT_EQ(item, NO_SERVICE_MAP_ITEM) << filler;
  }
}

constexpr std::array<std::string_view, 18> kNearNames = {
    "mono", "Mono ", " Stereo", "Stere",  "Stereo1", "5.1Mix", "5.1 mix", "7.1",      "Dolby",
    "EMCA", "",      "\xFF",    "2 Mono", "Mono 1",  "-Mono",  "5.1 Mi",  "MonoMono", "x"};

constexpr std::array<std::string_view, 6> kNearCommas = {", ", ",,", ";", "", " ,", " "};

// Some stream names, most of them exact, with a comma in between, most often just one.
std::string randomNames(Random& random) {
  std::string text;
  const std::size_t count = 1 + random.below(random.oneIn(4) ? 17 : 4);
  for (std::size_t i = 0; i < count; ++i) {
    if (i > 0) text += random.oneIn(20) ? random.oneOf(kNearCommas) : ",";
    text += random.oneIn(15) ? random.oneOf(kNearNames) : kTypeNames[random.below(3)];
  }
  return text;
}

std::string changed(std::string text, Random& random) {
  const std::size_t at = random.below(text.size());
  switch (random.below(4)) {
    case 0:
      return text.erase(at, 1);
    case 1:
      text[at] = static_cast<char>(text[at] ^ (1 << random.below(8)));
      return text;
    case 2:
      return text.insert(at, 1, ", \xFF"[random.below(3)]);
    default:
      return text.insert(text.size(), random.oneOf(kNearCommas));
  }
}

std::string randomText(Random& random) {
  if (random.oneIn(2)) return randomNames(random);
  const ServiceMapItem item = random.between(0, NO_SERVICE_MAP_ITEM - 1);
  const std::string text = plain::spelledOut(plainCatalogue(), item);
  return random.oneIn(2) ? text : changed(text, random);
}

TEST(FromStrRandom, EveryTextIsReadAsThePlainFormReadsIt) {
  const int texts = rounds(100'000);
  Random random(20'260'502);
  int items = 0;
  int types = 0;
  int mismatches = 0;
  for (int i = 0; i < texts && mismatches < kMismatchesShown; ++i) {
    const std::string text = randomText(random);
    const auto item = plain::serviceMapItemFromStr(plainCatalogue(), text.c_str());
    const auto type = plain::streamTypeFromStr(plainCatalogue(), text.c_str());
    if (item != NO_SERVICE_MAP_ITEM) ++items;
    if (type != kUnknown) ++types;
    const bool same = library().serviceMapItemFromStr(text.c_str()) == item &&
                      library().streamTypeFromStr(text.c_str()) == type;
    EXPECT_TRUE(same) << testing::PrintToString(text) << ": item " << item << ", type " << type;
    if (!same) ++mismatches;
  }
  std::cout << texts << " texts, " << items << " items, " << types << " stream types\n";
  EXPECT_EQ(mismatches, 0);
  EXPECT_GT(items, texts / 5);
  EXPECT_GT(types, texts / 50);
}

}  // namespace
}  // namespace kestrel::test
