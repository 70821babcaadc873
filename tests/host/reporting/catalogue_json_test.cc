#include "host/reporting/catalogue_json.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>

namespace kestrel::host {
namespace {

TEST(CatalogueJsonTest, itemsStandByTheirIds) {
  const Json items = catalogueJson();
  ASSERT_EQ(items.size(), 41U);
  for (std::size_t id = 0; id < items.size(); ++id) {
    EXPECT_EQ(items[id]["id"], id);
  }
  EXPECT_EQ(items[7], Json::parse(R"({"id": 7, "name": "5.1 Mix + Stereo Downmix",
      "trackTotal": 8,
      "services": [{"name": "5.1 Mix", "tracks": [1, 2, 3, 4, 5, 6]},
                   {"name": "Stereo", "tracks": [7, 8]}],
      "codes": ["8b"], "description": "T8=5.1 Mix,Stereo"})"));
  EXPECT_EQ(items[40]["codes"], Json::array());
}

TEST(CatalogueJsonTest, aCodeNamesItsItem) {
  const Json items = catalogueJson();
  const Json codes = codesJson();
  ASSERT_EQ(codes.size(), 22U);
  std::size_t ambiguous = 0;
  for (const Json& code : codes) {
    const Json& item = items[code["item"]["id"].get<std::size_t>()];
    EXPECT_EQ(code["item"]["name"], item["name"]);
    EXPECT_EQ(code["item"]["trackTotal"], item["trackTotal"]);
    EXPECT_NE(std::ranges::find(item["codes"], code["code"]), item["codes"].end());
    if (!code["otherItem"].is_null()) {
      ++ambiguous;
      EXPECT_EQ(code["code"], "12a");
      EXPECT_EQ(code["item"]["id"], 20);
      EXPECT_EQ(code["otherItem"]["id"], 0);
    }
  }
  EXPECT_EQ(ambiguous, 1U);
}

}  // namespace
}  // namespace kestrel::host
