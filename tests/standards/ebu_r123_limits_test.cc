// Widths and numbers of tracks that are too large for care.
#include <gtest/gtest.h>

#include <cstdint>

#include "tests/small_stack.h"
#include "tests/standards/ebu_r123_evaluation_support.h"

namespace kestrel::test {
namespace {

TEST(R123Limits, TheWidestTrackFillsTheSlotsBehindALargeDebt) {
  const Streams streams = {track(L"1", -2147483646, 0), pairTrack(L"5", kMost, 7)};
  EXPECT_TRUE(conforms(streams, {reported(kMono)}, {record(1, channels(5, 7, 0, 32))}));
}

TEST(R123Limits, TwoThousandMillionStepsOfOneChannelAreNotWalked) {
  // The group lacks 2147483646 channels, one fewer than are free: it takes one, and so on. What is
  // left is the last channel, which the next group takes. Both groups consume one track.
  constexpr std::int32_t kRounds = 200;
  Streams streams;
  Groups groups;
  Records records;
  for (std::int32_t i = 0; i < kRounds; ++i) {
    streams.push_back(track(L"1", 0, 2 * kRounds));
    streams.push_back(track(L"2", 0, 2 * kRounds + 1));
    groups.insert(groups.end(), 2, reported(kMono));
    records.push_back(record(1, channels(5, 7, 0, 32)));
    records.push_back(record(1, channels(5, 7, kMost - 1, 1)));
  }
  streams.push_back(track(L"3", -2147483645, 0));
  streams.push_back(pairTrack(L"5", kMost, 7));
  EXPECT_TRUE(conforms(streams, groups, records));
}

TEST(R123Limits, StepsOfSomeChannelsMayEndAboveTheNeed) {
  // Lacking 2147483642 of 2147483647 free channels, the group takes five at a time; the last five
  // end three above the need, two channels in front of the end.
  const Streams streams = {track(L"1", 0, 2), track(L"2", 0, 3), track(L"3", -2147483641, 0),
                           pairTrack(L"5", kMost, 7)};
  EXPECT_TRUE(
      conforms(streams, {reported(kMono), reported(kStereo)},
               {record(1, channels(5, 7, 0, 32)), record(2, channels(5, 7, kMost - 2, 2))}));
}

TEST(R123Limits, TheLeastWidthNeedsMoreThanOneOfTheWidest) {
  const Streams streams = {track(L"1", kLeast, 0), pairTrack(L"5", kMost, 7),
                           pairTrack(L"6", 2, 8)};
  EXPECT_TRUE(conforms(streams, {reported(kMono)}, {record(1, channels(5, 7, 0, 32))}));
  EXPECT_TRUE(fails(tracks(3, kLeast), {reported(kMono)}));
  EXPECT_TRUE(fails({track(L"1", kLeast, 0), pairTrack(L"5", kMost, 7)}, {reported(kMono)}));
}

TEST(R123Limits, AHundredThousandTracksNeedLittleStack) {
  constexpr std::int32_t kCount = 100'000;
  Streams streams = tracks(kCount, 1);
  Groups groups(kCount - 1, unreported(kMono));
  groups.push_back(reported(kMono));
  R123Input input = inputFor(streams, groups);
  R123Result expected{kItem, {record(1, channels(kCount, kCount - 1, 0, 1))}};
  runOnSmallStack([&] { EXPECT_TRUE(plain::sameResults(evaluate(input), expected)); });
  for (AudioStreamInfo& stream : streams) {
    stream = pairTrack(L"5", 2, 0);
  }
  input = inputFor(streams, {reported(kDolbyE)});
  expected.records.assign(kCount, dolbyE(5, 0, 2));
  runOnSmallStack([&] { EXPECT_TRUE(plain::sameResults(evaluate(input), expected)); });
}

}  // namespace
}  // namespace kestrel::test
