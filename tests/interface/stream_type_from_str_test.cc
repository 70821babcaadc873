// From the name of a stream type to its id.
#include <gtest/gtest.h>

#include <string>

#include "tests/library_under_test.h"

namespace kestrel::test {
namespace {

TEST(StreamTypeFromStr, OnlyTheExactNameIsFound) {
  const struct {
    std::string name;
    StreamType type;
  } rows[] = {
      {"Mono", 0},     {"Stereo", 1},  {"5.1 Mix", 2},  {"7.1 Mix", 3},     {"Dolby E", 4},
      {"", 6},         {"stereo", 6},  {"STEREO", 6},   {"Stereo ", 6},     {" Stereo", 6},
      {"Stereo\n", 6}, {"Stere", 6},   {"Stereo1", 6},  {"Stereo 1", 6},    {"5.1 Mi", 6},
      {"5.1  Mix", 6}, {"5.1Mix", 6},  {"5,1 Mix", 6},  {"5.1 mix", 6},     {"5.1", 6},
      {"Dolby", 6},    {"DolbyE", 6},  {"Dolby e", 6},  {"EMCA", 6},        {"Mono,Mono", 6},
      {"2 Mono", 6},   {"M", 6},       {"1", 6},        {"\xFF", 6},        {"Mono\x80", 6},
      {"\xCDono", 6},  {"Mon\xEF", 6}, {"\001Mono", 6}, {"\0015.1 Mix", 6}, {"\001Dolby E", 6},
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

}  // namespace
}  // namespace kestrel::test
