// The five tables of the catalogue from inside.
#include "catalogue/catalogue_tables.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace kestrel {
namespace {

TEST(CatalogueTables, HaveTheirSizes) {
  EXPECT_EQ(StreamTypeNames.size(), 5);
  EXPECT_EQ(ServiceMapItemNames.size(), 41);
  EXPECT_EQ(ServiceMapRows.size(), 7);
  EXPECT_EQ(ServiceMapItemStreamTypes.size(), 41);
  EXPECT_EQ(ServiceMapRowTrackCounts.size(), 7);
}

TEST(CatalogueTables, HoldNoEntryForAnUnknownId) {
  EXPECT_THROW(StreamTypeNames.at(5), std::out_of_range);
  EXPECT_THROW(StreamTypeNames.at(6), std::out_of_range);
  EXPECT_THROW(ServiceMapItemNames.at(41), std::out_of_range);
  EXPECT_THROW(ServiceMapItemStreamTypes.at(-1), std::out_of_range);
  EXPECT_THROW(ServiceMapRows.at(7), std::out_of_range);
  EXPECT_THROW(ServiceMapRowTrackCounts.at(7), std::out_of_range);
}

TEST(CatalogueTables, NameTheStreamTypes) {
  EXPECT_EQ(StreamTypeNames.at(kMono), "Mono");
  EXPECT_EQ(StreamTypeNames.at(kStereo), "Stereo");
  EXPECT_EQ(StreamTypeNames.at(k51Mix), "5.1 Mix");
  EXPECT_EQ(StreamTypeNames.at(k71Mix), "7.1 Mix");
  EXPECT_EQ(StreamTypeNames.at(kDolbyE), "Dolby E");
}

TEST(CatalogueTables, ThreeItemsAreNamedLikeStreamTypes) {
  EXPECT_EQ(ServiceMapItemNames.at(0), StreamTypeNames.at(kStereo));
  EXPECT_EQ(ServiceMapItemNames.at(4), StreamTypeNames.at(k51Mix));
  EXPECT_EQ(ServiceMapItemNames.at(9), StreamTypeNames.at(k71Mix));
}

}  // namespace
}  // namespace kestrel
