// The names of streams at the positions of an item.
#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>

#include "tests/interface/stream_naming_support.h"
#include "tests/library_under_test.h"
#include "tests/plain/plain_naming.h"

namespace kestrel::test {
namespace {

constexpr ServiceMapItem kUnknownItems[] = {41, -1, 42, INT_MAX, INT_MIN};

std::string positionName(ServiceMapItem item, std::int32_t position) {
  const auto length = static_cast<std::size_t>(library().getStreamTypeNameLength(item, position));
  const std::string text =
      written(length + 1, [=](char* name) { library().getStreamTypeName(item, position, name); });
  EXPECT_EQ(text.find('\0'), length) << "item " << item << " position " << position;
  return text.substr(0, length);
}

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

}  // namespace
}  // namespace kestrel::test
