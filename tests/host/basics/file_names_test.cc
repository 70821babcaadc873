#include "host/basics/file_names.h"

#include <gtest/gtest.h>

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;

TEST(FilePlaceTest, oneFileHasOnePlace) {
  const std::string here = fs::current_path().string();
  const struct {
    const char* path;
    std::string place;
  } rows[] = {{"a", here + "/a"},           {"./a", here + "/a"}, {"b/./a", here + "/b/a"},
              {"b//a", here + "/b/a"},      {"/x/a", "/x/a"},     {"/x/./a", "/x/a"},
              {"b/../a", here + "/b/../a"}, {"/x/a/", "/x/a"}};
  for (const auto& row : rows) {
    EXPECT_EQ(placeOf(row.path), row.place) << row.path;
  }
}

}  // namespace
}  // namespace kestrel::host
