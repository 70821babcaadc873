#include "host/judging/catalogue_items.h"

#include <gtest/gtest.h>

#include "host/judging/layout_description.h"

namespace kestrel::host {
namespace {

TEST(CatalogueItemsTest, everyDescriptionFillsItsTracks) {
  EXPECT_EQ(catalogueItems().size(), 41u);
  for (const CatalogueItem& item : catalogueItems()) {
    const auto entry = layoutEntry(item.description, item.tracks);
    ASSERT_TRUE(entry) << item.description;
    EXPECT_EQ(tracksOf(*entry), item.tracks) << item.description;
    EXPECT_EQ(entry->elements.size(), item.placed.size());
    EXPECT_EQ(item.placed.back().placed.tracks.back(), item.tracks);
  }
}

TEST(CatalogueItemsTest, itemsOfATotalStandInTheirOrder) {
  EXPECT_EQ(itemsOfTotal(8).size(), 6u);
  EXPECT_EQ(itemsOfTotal(8).front()->item.id, 7);
  EXPECT_EQ(itemsOfTotal(14).size(), 0u);
}

TEST(CatalogueItemsTest, codesStandBesideTheirItems) {
  EXPECT_EQ(catalogueItems()[11].codes, (std::vector<std::string>{"8g", "8i", "8h"}));
  EXPECT_EQ(catalogueItems()[20].codes, std::vector<std::string>{"12a"});
  EXPECT_TRUE(catalogueItems()[40].codes.empty());
}

}  // namespace
}  // namespace kestrel::host
