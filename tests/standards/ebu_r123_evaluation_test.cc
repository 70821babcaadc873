// Which configuration an evaluation uses, what becomes of the item, and what is reported.
#include <gtest/gtest.h>

#include <cstdint>

#include "tests/standards/ebu_r123_evaluation_support.h"

namespace kestrel::test {
namespace {

// --- Which configuration, which item

TEST(R123Evaluation, TheConfigurationOfTheChannelCountIsUsed) {
  const R123Configurations configurations = {{1, {31, {reported(kMono)}}},
                                             {2, {32, {reported(kStereo)}}},
                                             {4, {33, {reported(kStereo), reported(kStereo)}}}};
  const Streams streams = tracks(2, 1);
  const Slots slots = channels(1, 0, 0, 1) + channels(2, 1, 0, 1);
  EXPECT_TRUE(endsAs({streams, false, configurations, 41}, {32, {record(2, slots)}}));
  EXPECT_TRUE(
      endsAs({tracks(1, 1), false, configurations, 41}, {31, {record(1, channels(1, 0, 0, 1))}}));
}

TEST(R123Evaluation, AnExpectedItemStaysInPlace) {
  R123Input input = inputFor(tracks(1, 2), {reported(kStereo)});
  const Records records = {record(2, channels(1, 0, 0, 2))};
  for (const std::int32_t item : {0, 7, 40, 42, -1, kMost, kLeast}) {
    input.item = item;
    EXPECT_TRUE(endsAs(input, {item, records}));
  }
  input.item = NO_SERVICE_MAP_ITEM;
  EXPECT_TRUE(endsAs(input, {kItem, records}));
}

TEST(R123Evaluation, WithoutAConfigurationTheItemIsUntouched) {
  const R123Configurations others = {{1, {5, {reported(kMono)}}}, {3, {6, {}}}};
  for (const std::int32_t item : {NO_SERVICE_MAP_ITEM, 0, 7, -1}) {
    EXPECT_TRUE(endsAs({tracks(2, 1), true, others, item}, {item, {}}));
    EXPECT_TRUE(endsAs({tracks(2, 1), true, {}, item}, {item, {}}));
    EXPECT_TRUE(endsAs({{}, true, {}, item}, {item, {}}));
  }
}

TEST(R123Evaluation, TracksThatCannotBeCountedLeaveTheItemUntouched) {
  const R123Configurations configurations = {{-1, {5, {reported(kStereo)}}},
                                             {2, {6, {reported(kStereo)}}}};
  for (const std::int32_t item : {NO_SERVICE_MAP_ITEM, 0, 7, -1}) {
    EXPECT_TRUE(endsAs({tracks(1, 2), false, configurations, item}, {item, {}}));
    EXPECT_TRUE(endsAs({tracks(1, 3), true, configurations, item}, {item, {}}));
  }
}

TEST(R123Evaluation, ATotalOfMinusOneCannotBeCountedEither) {
  const R123Configurations configurations = {{-1, {5, {reported(kMono)}}}};
  const Streams streams = {track(L"1", -2, 1), track(L"2", 1, 1)};
  for (const std::int32_t item : {NO_SERVICE_MAP_ITEM, 7}) {
    EXPECT_TRUE(endsAs({streams, true, configurations, item}, {item, {}}));
  }
}

TEST(R123Evaluation, ANegativeOrWrappedTotalIsANumberLikeAnyOther) {
  // -2 + 1 + 1 + -2; the second track's group holds one channel.
  const Streams streams = {track(L"1", -2, 1), track(L"2", 1, 1), track(L"3", 1, 2),
                           track(L"4", -2, 3)};
  EXPECT_TRUE(endsAs({streams, true, {{-2, {kItem, {reported(kMono)}}}}, 41},
                     {kItem, {record(1, channels(2, 1, 0, 1))}}));
  const Streams wrapping = {track(L"1", 1, 0), track(L"2", kLeast, 0), track(L"3", kLeast, 0)};
  EXPECT_TRUE(endsAs({wrapping, true, {{1, {kItem, {reported(kMono)}}}}, 41},
                     {kItem, {record(1, channels(1, 0, 0, 1))}}));
}

TEST(R123Evaluation, NoGroupsMeansFailure) {
  EXPECT_TRUE(fails({}, {}));
  EXPECT_TRUE(fails(tracks(2, 1), {}));
}

TEST(R123Evaluation, AGroupNeedsATrack) {
  EXPECT_TRUE(fails({}, {reported(kMono)}));
  EXPECT_TRUE(fails(tracks(2, 1), {reported(kStereo), reported(kMono)}));
  EXPECT_TRUE(fails({pairTrack(L"5", 2, 0)}, {reported(kDolbyE), reported(kDolbyE)}));
}

TEST(R123Evaluation, TracksLeftOverDoNotMatter) {
  Streams streams = tracks(3, 2);
  streams[1].group = -1;
  streams[2] = pairTrack(L"5", kMost, kMost);
  EXPECT_TRUE(conforms(streams, {reported(kStereo)}, {record(2, channels(1, 0, 0, 2))}));
}

// --- Reporting

TEST(R123Evaluation, OnlyReportedChannelGroupsYieldRecords) {
  const Streams streams = tracks(4, 1);
  EXPECT_TRUE(conforms(streams, {unreported(kStereo), reported(kMono), unreported(kMono)},
                       {record(1, channels(3, 2, 0, 1))}));
  EXPECT_TRUE(fails(streams, {unreported(kStereo), unreported(kMono), unreported(kMono)}));
}

TEST(R123Evaluation, EveryDolbyETrackYieldsARecord) {
  const Streams streams = {pairTrack(L"5", 2, 0), pairTrack(L"5", 2, 0), track(L"1", 1, 2)};
  EXPECT_TRUE(conforms(streams, {unreported(kDolbyE), reported(kMono)},
                       {dolbyE(5, 0, 2, 0), dolbyE(5, 0, 2, 0), record(1, channels(1, 2, 0, 1))}));
  EXPECT_TRUE(fails(streams, {unreported(kDolbyE), unreported(kMono)}));
  EXPECT_TRUE(fails(streams, {unreported(kDolbyE)}));
}

TEST(R123Evaluation, AnyByteButZeroReports) {
  for (const std::uint8_t report : {std::uint8_t{2}, std::uint8_t{128}, std::uint8_t{255}}) {
    EXPECT_TRUE(conforms(tracks(1, 1), {{0, report, 9}}, {record(1, channels(1, 0, 0, 1))}));
    EXPECT_TRUE(conforms({pairTrack(L"5", 2, 0)}, {{4, report, 9}}, {dolbyE(5, 0, 2)}));
  }
}

TEST(R123Evaluation, TheThirdFieldOfAGroupIsNotInterpreted) {
  for (const std::uint32_t extra : {0U, 1U, 41U, 0xFFFFFFFFU}) {
    EXPECT_TRUE(conforms(tracks(1, 2), {{1, 1, extra}}, {record(2, channels(1, 0, 0, 2))}));
  }
}

}  // namespace
}  // namespace kestrel::test
