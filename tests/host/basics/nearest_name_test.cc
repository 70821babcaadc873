#include "host/basics/nearest_name.h"

#include <gtest/gtest.h>

namespace kestrel::host {
namespace {

const std::vector<std::string> kNames = {"Mono", "Stereo", "5.1 Mix", "7.1 Mix", "EMCA"};

TEST(NearestNameTest, takesTheFewestChanges) {
  const struct {
    const char* text;
    const char* nearest;
  } rows[] = {{"Sterio", "Stereo"}, {"stereo", "Stereo"},  {"5.1 mix", "5.1 Mix"},
              {"5.1", "5.1 Mix"},   {"7.1Mix", "7.1 Mix"}, {" Mono", "Mono"},
              {"emca", "EMCA"},     {"Mono", "Mono"},      {"", "Mono"}};
  for (const auto& row : rows) {
    EXPECT_EQ(nearestName(row.text, kNames), row.nearest) << row.text;
  }
}

TEST(NearestNameTest, longTextsAndNoNamesAreFine) {
  EXPECT_EQ(nearestName(std::string(10'000'000, 'x'), {"Mono"}), "Mono");
  EXPECT_EQ(nearestName("x", {}), "");
}

}  // namespace
}  // namespace kestrel::host
