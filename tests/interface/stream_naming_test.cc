// Stream names, stream type names and the way back from texts to ids, through the exported names of
// the library that ships.
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iostream>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "tests/library_under_test.h"
#include "tests/plain/plain_naming.h"
#include "tests/random_inputs.h"
#include "tests/small_stack.h"

namespace kestrel::test {
namespace {

constexpr int kMismatchesShown = 5;
constexpr StreamType kUnknownTypes[] = {5, 6, -1, 7, INT_MAX, INT_MIN};
constexpr ServiceMapItem kUnknownItems[] = {41, -1, 42, INT_MAX, INT_MIN};

constexpr std::array<std::string_view, 5> kTypeNames = {"Mono", "Stereo", "5.1 Mix", "7.1 Mix",
                                                        "Dolby E"};

std::vector<StreamType> streamTypesOf(ServiceMapItem item) {
  std::vector<StreamType> types(static_cast<std::size_t>(library().getStreamTypesCount(item)));
  library().getStreamTypes(item, types.data());
  return types;
}

const plain::PlainCatalogue& plainCatalogue() {
  static const plain::PlainCatalogue catalogue = [] {
    plain::PlainCatalogue made;
    for (StreamType type = 0; type <= kDolbyE; ++type) {
      made.streamTypeNames[type] = kTypeNames[static_cast<std::size_t>(type)];
    }
    for (ServiceMapItem item = 0; item < NO_SERVICE_MAP_ITEM; ++item) {
      made.streamTypesOfItem[item] = streamTypesOf(item);
    }
    return made;
  }();
  return catalogue;
}

// What a call writes into a buffer of exactly `size` characters.
std::string written(std::size_t size, const std::function<void(char*)>& write) {
  const std::string canary = "\xA5\x5A\xA5\x5A";
  std::string buffer = canary + std::string(size, '#') + canary;
  write(buffer.data() + canary.size());
  EXPECT_TRUE(buffer.starts_with(canary)) << "written in front of the buffer";
  EXPECT_TRUE(buffer.ends_with(canary)) << "written behind the buffer";
  return buffer.substr(canary.size(), size);
}

std::string withNul(std::string_view text) { return std::string(text) + '\0'; }

std::string positionName(ServiceMapItem item, std::int32_t position) {
  const auto length = static_cast<std::size_t>(library().getStreamTypeNameLength(item, position));
  const std::string text =
      written(length + 1, [=](char* name) { library().getStreamTypeName(item, position, name); });
  EXPECT_EQ(text.find('\0'), length) << "item " << item << " position " << position;
  return text.substr(0, length);
}

void expectUnknownId(const std::function<void()>& call) {
  try {
    call();
    ADD_FAILURE() << "raised nothing";
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "invalid map<K, T> key");
  }
}

// --- Names of positions

TEST(StreamNames, AnOrdinalStandsBehindATypeThatOccursMoreThanOnce) {
  const struct {
    ServiceMapItem item;
    std::int32_t position;
    std::string name;
  } rows[] = {
      {0, 0, "Stereo"},     {1, 0, "Mono 1"},    {1, 1, "Mono 2"},     {2, 1, "Stereo 2"},
      {4, 0, "5.1 Mix"},    {7, 0, "5.1 Mix"},   {7, 1, "Stereo"},     {8, 0, "Stereo"},
      {9, 0, "7.1 Mix"},    {11, 0, "Stereo"},   {11, 1, "Mono 1"},    {11, 6, "Mono 6"},
      {20, 0, "Stereo 1"},  {20, 2, "Dolby E"},  {20, 3, "Stereo 2"},  {22, 2, "Dolby E 1"},
      {22, 3, "Dolby E 2"}, {22, 5, "Stereo 4"}, {33, 3, "5.1 Mix 2"}, {36, 7, "Dolby E 4"},
      {38, 14, "Mono 14"},  {39, 15, "Mono 16"}, {40, 0, "5.1 Mix"},   {40, 1, "Mono 1"},
      {40, 2, "Mono 2"},    {40, 3, "Stereo"},   {40, 4, "Mono 3"},    {40, 9, "Mono 8"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(positionName(row.item, row.position), row.name)
        << "item " << row.item << " position " << row.position;
  }
}

TEST(StreamNames, TheLengthLeavesTheNulOut) {
  EXPECT_EQ(library().getStreamTypeNameLength(2, 1), 8);
  EXPECT_EQ(library().getStreamTypeNameLength(0, 0), 6);
  EXPECT_EQ(library().getStreamTypeNameLength(39, 15), 7);
}

TEST(StreamNames, TheTwoLengthsDifferByTheNul) {
  EXPECT_EQ(library().getStreamTypeNameLength(4, 0), 7);
  EXPECT_EQ(library().getStreamTypeSymbolicLength(k51Mix), 8);
}

TEST(StreamNames, EveryPositionIsNamedAsThePlainFormNamesIt) {
  int positions = 0;
  for (const auto& [item, types] : plainCatalogue().streamTypesOfItem) {
    std::set<std::string> names;
    for (std::int32_t position = 0; position < static_cast<std::int32_t>(types.size());
         ++position) {
      const std::string name = positionName(item, position);
      EXPECT_EQ(name, plain::streamPositionName(plainCatalogue(), item, position))
          << "item " << item << " position " << position;
      names.insert(name);
      ++positions;
    }
    EXPECT_EQ(names.size(), types.size()) << "two streams of item " << item << " share a name";
  }
  EXPECT_EQ(positions, 224);
}

TEST(StreamNames, APositionOutsideTheListRaises) {
  for (const auto& [item, types] : plainCatalogue().streamTypesOfItem) {
    const auto count = static_cast<std::int32_t>(types.size());
    for (const std::int32_t position : {-1, count, count + 1, 16, 32, INT_MAX, INT_MIN}) {
      SCOPED_TRACE(testing::Message() << "item " << item << " position " << position);
      expectUnknownId([&] { library().getStreamTypeNameLength(item, position); });
      const std::string buffer = written(16, [&](char* name) {
        expectUnknownId([&] { library().getStreamTypeName(item, position, name); });
      });
      EXPECT_EQ(buffer, std::string(16, '#'));
    }
  }
}

TEST(StreamNames, AnUnknownItemRaises) {
  for (const ServiceMapItem item : kUnknownItems) {
    SCOPED_TRACE(item);
    expectUnknownId([=] { library().getStreamTypeNameLength(item, 0); });
    char name[16] = "as it was";
    expectUnknownId([&] { library().getStreamTypeName(item, 0, name); });
    EXPECT_STREQ(name, "as it was");
  }
}

TEST(StreamNames, ANullBufferIsIgnoredWhateverTheIds) {
  for (const ServiceMapItem item : {0, 40, 41, -1, INT_MAX}) {
    for (const std::int32_t position : {0, 99, -1, INT_MIN}) {
      EXPECT_NO_THROW(library().getStreamTypeName(item, position, nullptr))
          << "item " << item << " position " << position;
    }
  }
}

// --- Names of stream types

TEST(StreamTypeSymbols, EveryTypeHasItsName) {
  for (StreamType type = 0; type <= kDolbyE; ++type) {
    const std::string_view name = kTypeNames[static_cast<std::size_t>(type)];
    const auto length = static_cast<std::int32_t>(name.size());
    EXPECT_STREQ(library().getStreamTypeSymbol(type), std::string(name).c_str());
    EXPECT_EQ(library().getStreamTypeSymbolicLength(type), length + 1) << name;
    const std::string text = written(name.size() + 1, [&](char* buffer) {
      EXPECT_EQ(library().getStreamTypeSymbolic(type, buffer), length) << name;
    });
    EXPECT_EQ(text, withNul(name));
  }
}

TEST(StreamTypeSymbols, TheSymbolicLengthCountsTheNulAndTheReturnedOneDoesNot) {
  EXPECT_EQ(library().getStreamTypeSymbolicLength(k51Mix), 8);
  char name[8];
  EXPECT_EQ(library().getStreamTypeSymbolic(k51Mix, name), 7);
  EXPECT_STREQ(name, "5.1 Mix");
}

TEST(StreamTypeSymbols, AnUnknownTypeRaises) {
  for (const StreamType type : kUnknownTypes) {
    SCOPED_TRACE(type);
    expectUnknownId([=] { library().getStreamTypeSymbol(type); });
    expectUnknownId([=] { library().getStreamTypeSymbolicLength(type); });
    char name[16] = "as it was";
    expectUnknownId([&] { library().getStreamTypeSymbolic(type, name); });
    EXPECT_STREQ(name, "as it was");
  }
}

TEST(StreamTypeSymbols, TheNextCallOverwritesTheText) {
  for (StreamType one = 0; one <= kDolbyE; ++one) {
    for (StreamType other = 0; other <= kDolbyE; ++other) {
      const char* first = library().getStreamTypeSymbol(one);
      const char* second = library().getStreamTypeSymbol(other);
      EXPECT_EQ(first, second);
      EXPECT_EQ(first, kTypeNames[static_cast<std::size_t>(other)]);
    }
  }
}

TEST(StreamTypeSymbols, AnUnknownTypeLeavesTheTextAsItWas) {
  const char* text = library().getStreamTypeSymbol(k71Mix);
  for (const StreamType type : kUnknownTypes) {
    expectUnknownId([=] { library().getStreamTypeSymbol(type); });
    EXPECT_STREQ(text, "7.1 Mix") << "after type " << type;
  }
}

TEST(StreamTypeSymbols, TheOtherNamingFunctionsLeaveTheTextAlone) {
  const char* text = library().getStreamTypeSymbol(kMono);
  char name[16];
  library().getStreamTypeSymbolic(kDolbyE, name);
  library().getStreamTypeSymbolicLength(kDolbyE);
  library().getStreamTypeName(22, 2, name);
  library().streamTypeFromStr("Stereo");
  library().serviceMapItemFromStr("Stereo,5.1 Mix");
  EXPECT_STREQ(text, "Mono");
}

// --- From texts to ids

TEST(StreamTypeFromStr, OnlyTheExactNameIsFound) {
  const struct {
    std::string name;
    StreamType type;
  } rows[] = {
      {"Mono", 0},     {"Stereo", 1},  {"5.1 Mix", 2}, {"7.1 Mix", 3},  {"Dolby E", 4},
      {"", 6},         {"stereo", 6},  {"STEREO", 6},  {"Stereo ", 6},  {" Stereo", 6},
      {"Stereo\n", 6}, {"Stere", 6},   {"Stereo1", 6}, {"Stereo 1", 6}, {"5.1 Mi", 6},
      {"5.1  Mix", 6}, {"5.1Mix", 6},  {"5,1 Mix", 6}, {"5.1 mix", 6},  {"5.1", 6},
      {"Dolby", 6},    {"DolbyE", 6},  {"Dolby e", 6}, {"EMCA", 6},     {"Mono,Mono", 6},
      {"2 Mono", 6},   {"M", 6},       {"1", 6},       {"\xFF", 6},     {"Mono\x80", 6},
      {"\xCDono", 6},  {"Mon\xEF", 6},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(library().streamTypeFromStr(row.name.c_str()), row.type)
        << testing::PrintToString(row.name);
  }
}

TEST(StreamTypeFromStr, NullIsNoName) { EXPECT_EQ(library().streamTypeFromStr(nullptr), kUnknown); }

TEST(StreamTypeFromStr, TheTextEndsAtItsNul) {
  EXPECT_EQ(library().streamTypeFromStr("Mono\0,Mono"), kMono);
  EXPECT_EQ(library().streamTypeFromStr("\0Mono"), kUnknown);
}

const struct {
  std::string text;
  ServiceMapItem item;
} kListRows[] = {
    {"Stereo", 0},
    {"Mono,Mono", 1},
    {"Mono,Mono,Mono,Mono", 3},
    {"5.1 Mix", 4},
    {"5.1 Mix,Stereo", 7},
    {"Stereo,5.1 Mix", 8},
    {"7.1 Mix", 9},
    {"Stereo,5.1 Mix,Dolby E,Stereo", 20},
    {"5.1 Mix,Mono,Mono,Stereo,Mono,Mono,Mono,Mono,Mono,Mono", 40},
    // Near misses.
    {"", 41},
    {",", 41},
    {" ", 41},
    {"Mono", 41},
    {"Mono,Mono,Mono", 41},
    {"Dolby E", 41},
    {"7.1 Mix,7.1 Mix", 41},
    {"Stereo, 5.1 Mix", 41},
    {"Stereo ,5.1 Mix", 41},
    {"Stereo,,5.1 Mix", 41},
    {"Stereo;5.1 Mix", 41},
    {"Stereo,5.1 Mix,", 41},
    {",Stereo,5.1 Mix", 41},
    {"Stereo,5.1 Mix ", 41},
    {" Stereo,5.1 Mix", 41},
    {"Stereo,5.1 Mix\n", 41},
    {"Stereo,5.1 Mi", 41},
    {"Stereo,5.1 Mixx", 41},
    {"Stereo5.1 Mix", 41},
    {"stereo,5.1 Mix", 41},
    {"STEREO,5.1 MIX", 41},
    {"Stereo 1,Stereo 2", 41},
    {"2 Stereo", 41},
    {"2 Mono", 41},
    {"5.1 Mix + Stereo Downmix", 41},
    {"EMCA", 41},
    {"Stereo,EMCA", 41},
    {"\xFF", 41},
    {"Stereo\x80", 41},
    {"\xD3tereo", 41},
    {"Stereo\xAC"
     "5.1 Mix",
     41},
};

TEST(ServiceMapItemFromStr, OnlyAnExactListIsFound) {
  for (const auto& row : kListRows) {
    EXPECT_EQ(library().serviceMapItemFromStr(row.text.c_str()), row.item)
        << testing::PrintToString(row.text);
  }
}

TEST(ServiceMapItemFromStr, NullIsNoList) {
  EXPECT_EQ(library().serviceMapItemFromStr(nullptr), NO_SERVICE_MAP_ITEM);
}

TEST(ServiceMapItemFromStr, TheTextEndsAtItsNul) {
  EXPECT_EQ(library().serviceMapItemFromStr("Stereo\0,5.1 Mix"), 0);
  EXPECT_EQ(library().serviceMapItemFromStr("\0Stereo"), NO_SERVICE_MAP_ITEM);
}

TEST(ServiceMapItemFromStr, AnItemSpelledOutIsFoundAgain) {
  for (ServiceMapItem item = 0; item < NO_SERVICE_MAP_ITEM; ++item) {
    const std::string text = plain::spelledOut(plainCatalogue(), item);
    const auto first = plain::serviceMapItemFromStr(plainCatalogue(), text.c_str());
    EXPECT_EQ(library().serviceMapItemFromStr(text.c_str()), first) << text;
    EXPECT_EQ(first, item) << "two items hold the streams " << text;
  }
}

TEST(ServiceMapItemFromStr, ThePartsOfAListAreListsOfTheirOwn) {
  for (ServiceMapItem item = 0; item < NO_SERVICE_MAP_ITEM; ++item) {
    const std::string whole = plain::spelledOut(plainCatalogue(), item);
    for (std::size_t i = 0; i <= whole.size(); ++i) {
      for (const std::string& text : {whole.substr(0, i), whole.substr(i)}) {
        EXPECT_EQ(library().serviceMapItemFromStr(text.c_str()),
                  plain::serviceMapItemFromStr(plainCatalogue(), text.c_str()))
            << text;
      }
    }
  }
}

TEST(ServiceMapItemFromStr, ADisplayNameIsAListOnlyWhereItNamesOneStream) {
  for (ServiceMapItem item = 0; item < NO_SERVICE_MAP_ITEM; ++item) {
    const auto length = static_cast<std::size_t>(library().getServiceMapItemNameLength(item));
    const std::string name =
        written(length + 1, [=](char* buffer) { library().getServiceMapItemName(item, buffer); });
    const bool namesOneStream = item == 0 || item == 4 || item == 9;
    EXPECT_EQ(library().serviceMapItemFromStr(name.c_str()),
              namesOneStream ? item : NO_SERVICE_MAP_ITEM)
        << name;
  }
}

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

// --- Random texts

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
  constexpr int kTexts = 100'000;
  Random random(20'260'502);
  int items = 0;
  int types = 0;
  int mismatches = 0;
  for (int i = 0; i < kTexts && mismatches < kMismatchesShown; ++i) {
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
  std::cout << kTexts << " texts, " << items << " items, " << types << " stream types\n";
  EXPECT_EQ(mismatches, 0);
  EXPECT_GT(items, kTexts / 5);
  EXPECT_GT(types, kTexts / 50);
}

}  // namespace
}  // namespace kestrel::test
