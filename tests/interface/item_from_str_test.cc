// From a list of stream names to the item that holds them.
#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "tests/interface/stream_naming_support.h"
#include "tests/library_under_test.h"
#include "tests/plain/plain_naming.h"

namespace kestrel::test {
namespace {

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

}  // namespace
}  // namespace kestrel::test
