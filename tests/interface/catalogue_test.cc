// The catalogue queries, through the exported names of the built library.
#include "api/catalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <fstream>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/library_under_test.h"

namespace kestrel {
namespace {

const test::Library& lib = test::library();

std::vector<std::int32_t> itemsOf(std::int32_t row) {
  std::vector<std::int32_t> items(static_cast<std::size_t>(lib.getServiceMapItemsCount(row)));
  EXPECT_EQ(lib.getServiceMapItems(row, items.data()), static_cast<std::int64_t>(items.size()));
  return items;
}

std::vector<std::int32_t> streamTypesOf(std::int32_t item) {
  std::vector<std::int32_t> types(static_cast<std::size_t>(lib.getStreamTypesCount(item)));
  EXPECT_EQ(lib.getStreamTypes(item, types.data()), static_cast<std::int64_t>(types.size()));
  return types;
}

std::string nameOf(std::int32_t item) {
  std::string name(static_cast<std::size_t>(lib.getServiceMapItemNameLength(item)) + 1, '#');
  lib.getServiceMapItemName(item, name.data());
  EXPECT_EQ(name.back(), '\0');
  name.pop_back();
  return name;
}

void expectUnknownId(const std::function<void()>& call) {
  try {
    call();
    ADD_FAILURE() << "raised nothing";
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "invalid map<K, T> key");
  }
}

std::string join(const std::vector<std::int32_t>& numbers) {
  std::string text;
  for (const std::int32_t number : numbers)
    text += (text.empty() ? "" : " ") + std::to_string(number);
  return text;
}

std::string dumpCatalogue() {
  std::ostringstream dump;
  for (std::int32_t row = 0; row < lib.getRowCount(); ++row)
    dump << "row " << row << ": " << lib.getTracksCount(row) << " / "
         << lib.getDefaultServiceMapItem(row) << " / " << join(itemsOf(row)) << "\n";
  dump << "\n";
  for (std::int32_t item = 0; item < NO_SERVICE_MAP_ITEM; ++item)
    dump << "item " << item << ": " << lib.getServiceMapItemRow(item) << " / " << nameOf(item)
         << " / " << join(streamTypesOf(item)) << "\n";
  return dump.str();
}

TEST(Catalogue, IsTheGoldenOne) {
  std::ifstream file(KESTREL_GOLDEN_CATALOGUE);
  ASSERT_TRUE(file) << KESTREL_GOLDEN_CATALOGUE;
  std::ostringstream golden;
  for (std::string line; std::getline(file, line);)
    if (!line.starts_with('#')) golden << line << "\n";
  EXPECT_EQ("\n" + dumpCatalogue(), golden.str());
}

TEST(Catalogue, HasSevenRowsAndNoneOfFourteenTracks) {
  EXPECT_EQ(lib.getRowCount(), 7);
  std::vector<std::int64_t> tracks;
  for (std::int32_t row = 0; row < 7; ++row) tracks.push_back(lib.getTracksCount(row));
  EXPECT_EQ(tracks, (std::vector<std::int64_t>{2, 4, 6, 8, 10, 12, 16}));
}

TEST(Catalogue, EveryItemFillsTheTracksOfItsRow) {
  constexpr std::int32_t kWidths[] = {1, 2, 6, 8, 2};
  for (std::int32_t item = 0; item < NO_SERVICE_MAP_ITEM; ++item) {
    std::int64_t tracks = 0;
    for (const std::int32_t type : streamTypesOf(item)) {
      ASSERT_TRUE(type >= 0 && type <= 4) << "item " << item;
      tracks += kWidths[type];
    }
    EXPECT_EQ(tracks, lib.getTracksCount(lib.getServiceMapItemRow(item))) << "item " << item;
  }
}

TEST(Catalogue, RowsEnumerateTheItemsInAscendingOrder) {
  std::int32_t next = 0;
  for (std::int32_t row = 0; row < lib.getRowCount(); ++row)
    for (const std::int32_t item : itemsOf(row)) {
      EXPECT_EQ(item, next++);
      EXPECT_EQ(lib.getServiceMapItemRow(item), row);
    }
  EXPECT_EQ(next, NO_SERVICE_MAP_ITEM);
}

TEST(Catalogue, NoTwoItemsShareAName) {
  std::vector<std::string> names;
  for (std::int32_t item = 0; item < NO_SERVICE_MAP_ITEM; ++item) names.push_back(nameOf(item));
  std::ranges::sort(names);
  EXPECT_EQ(std::ranges::adjacent_find(names), names.end());
}

TEST(Catalogue, ItemFortyHoldsTenStreams) {
  EXPECT_EQ(streamTypesOf(40), (std::vector<std::int32_t>{2, 0, 0, 1, 0, 0, 0, 0, 0, 0}));
}

TEST(Catalogue, StereoPlusMonoItemsBeginWithOneStereo) {
  const struct {
    std::int32_t item;
    std::size_t streams;
  } rows[] = {{11, 7}, {17, 9}, {29, 11}, {38, 15}};
  for (const auto& row : rows) {
    std::vector<std::int32_t> expected(row.streams, kMono);
    expected.front() = kStereo;
    EXPECT_EQ(streamTypesOf(row.item), expected) << "item " << row.item;
  }
}

TEST(Catalogue, ThreeStereoShareTheRowOfSixTracks) {
  EXPECT_EQ(itemsOf(2), (std::vector<std::int32_t>{4, 5, 6}));
  EXPECT_EQ(nameOf(5), "3 Stereo");
  EXPECT_EQ(lib.getServiceMapItemRow(9), 3);
}

TEST(RowQueries, AnUnknownRowRaises) {
  std::int32_t buffer[16];
  for (const std::int32_t row : {7, -1, 99, INT_MAX, INT_MIN}) {
    SCOPED_TRACE(row);
    expectUnknownId([=] { lib.getTracksCount(row); });
    expectUnknownId([=] { lib.getServiceMapItemsCount(row); });
    expectUnknownId([=] { lib.getDefaultServiceMapItem(row); });
    expectUnknownId([&] { lib.getServiceMapItems(row, buffer); });
  }
}

TEST(RowQueries, RowSixHoldsSixteenTracks) { EXPECT_EQ(lib.getTracksCount(6), 16); }

TEST(RowQueries, RowFiveHoldsFourteenItems) {
  EXPECT_EQ(lib.getServiceMapItemsCount(5), 14);
  std::vector<std::int32_t> items(15, -7);
  EXPECT_EQ(lib.getServiceMapItems(5, items.data()), 14);
  for (std::int32_t i = 0; i < 14; ++i) EXPECT_EQ(items[static_cast<std::size_t>(i)], 19 + i);
  EXPECT_EQ(items.back(), -7) << "written past the list";
}

TEST(RowQueries, ANullBufferIsNotAnUnknownRow) {
  EXPECT_EQ(lib.getServiceMapItems(99, nullptr), 0);
  EXPECT_EQ(lib.getServiceMapItems(5, nullptr), 0);
}

TEST(RowQueries, TheDefaultIsTheFirstItemOfTheRow) {
  constexpr std::int32_t kDefaults[] = {0, 2, 4, 7, 13, 19, 33};
  for (std::int32_t row = 0; row < 7; ++row)
    EXPECT_EQ(lib.getDefaultServiceMapItem(row), kDefaults[row]) << "row " << row;
}

TEST(ItemQueries, AnUnknownItemLooksLikeOneOfRowZero) {
  EXPECT_EQ(lib.getServiceMapItemRow(40), 6);
  for (const std::int32_t item : {1, 41, -1, INT_MAX, INT_MIN})
    EXPECT_EQ(lib.getServiceMapItemRow(item), 0) << "item " << item;
}

TEST(ItemQueries, AnUnknownItemRaises) {
  char name[64];
  std::int32_t types[16];
  for (const std::int32_t item : {41, -1, INT_MAX, INT_MIN}) {
    SCOPED_TRACE(item);
    expectUnknownId([=] { lib.getServiceMapItemNameLength(item); });
    expectUnknownId([&] { lib.getServiceMapItemName(item, name); });
    expectUnknownId([=] { lib.getStreamTypesCount(item); });
    expectUnknownId([&] { lib.getStreamTypes(item, types); });
  }
}

TEST(ItemQueries, ANullBufferIsNotAnUnknownItem) {
  EXPECT_NO_THROW(lib.getServiceMapItemName(99, nullptr));
  EXPECT_EQ(lib.getStreamTypes(99, nullptr), 0);
  EXPECT_EQ(lib.getStreamTypes(39, nullptr), 0);
}

TEST(ItemQueries, ANameIsWrittenWithItsNulAndNothingMore) {
  EXPECT_EQ(lib.getServiceMapItemNameLength(0), 6);
  EXPECT_EQ(lib.getServiceMapItemNameLength(22), 45);
  std::string buffer(48, '#');
  lib.getServiceMapItemName(22, buffer.data());
  EXPECT_EQ(buffer, std::string("2x Stereo + 2x Dolby E + 2x Stereo (R123 12c)") + '\0' + "##");
}

TEST(ItemQueries, StreamTypesAreWrittenAndNothingMore) {
  EXPECT_EQ(lib.getStreamTypesCount(39), 16);
  std::vector<std::int32_t> types(11, -7);
  EXPECT_EQ(lib.getStreamTypes(40, types.data()), 10);
  EXPECT_EQ(types, (std::vector<std::int32_t>{2, 0, 0, 1, 0, 0, 0, 0, 0, 0, -7}));
}

}  // namespace
}  // namespace kestrel
