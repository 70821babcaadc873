// The number of channels, under which the evaluation looks for a configuration.
#include <gtest/gtest.h>

#include <cstdint>
#include <utility>

#include "tests/standards/ebu_r123_evaluation_support.h"

namespace kestrel::test {
namespace {

TEST(R123ChannelCount, ChannelsOfTracksAddUpAndAPairCountsOnce) {
  const struct {
    Streams streams;
    std::int32_t count;
  } rows[] = {
      {{}, 0},
      {{track(L"1", 1, 0)}, 1},
      {{track(L"1", 2, 0), track(L"2", 1, 0)}, 3},
      {{track(L"1", 0, 0)}, 0},
      {{track(L"1", -3, 0), track(L"2", 2, 0)}, -1},
      {{pairTrack(L"5", 1, 0)}, 2},
      {{pairTrack(L"5", kMost, 0)}, 2},
      {{pairTrack(L"5", kLeast, 0)}, 2},
      {{pairTrack(L"5-1", 1, 0), pairTrack(L"5-2", 1, 0)}, 2},
      {{pairTrack(L"5-1", 1, 0), pairTrack(L" +05x", 1, 0), pairTrack(L"5", 1, 0)}, 2},
      {{pairTrack(L"5", 1, 0), pairTrack(L"6", 1, 0)}, 4},
      {{pairTrack(L"5", 1, 0), pairTrack(L"6", 1, 0), pairTrack(L"5", 1, 0)}, 6},
      {{pairTrack(L"5", 1, 0), track(L"1", 1, 0), pairTrack(L"5", 1, 0)}, 5},
      {{pairTrack(L"5", 1, 0), track(L"1", 0, 0), pairTrack(L"5", 1, 0)}, 4},
      {{pairTrack(L"5", 2, 0), pairTrack(L"5", 2, 0), track(L"1", 1, 2), track(L"2", 1, 3)}, 4},
      {{pairTrack(L"", 1, 0), pairTrack(L"0", 1, 0), pairTrack(L"x", 1, 0)}, 2},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(countR123Channels(row.streams, true), row.count)
        << R123Input{row.streams, true, {}, 0};
  }
}

TEST(R123ChannelCount, AFirstPairNumberedMinusOneAddsNothing) {
  EXPECT_EQ(countR123Channels(Streams{pairTrack(L"-1", 2, 0)}, true), 0);
  EXPECT_EQ(countR123Channels(Streams{pairTrack(L"5", 2, 0), pairTrack(L"-1", 2, 0)}, true), 4);
  EXPECT_EQ(countR123Channels(
                Streams{pairTrack(L"5", 2, 0), track(L"5", 1, 0), pairTrack(L" -1-2", 2, 0)}, true),
            3);
}

TEST(R123ChannelCount, PairNumbersAreComparedInSixtyFourBits) {
  const std::pair<const wchar_t*, const wchar_t*> different[] = {
      {L"1", L"4294967297"},
      {L"0", L"4294967296"},
      {L"9223372036854775807", L"9223372036854775806"},
      {L"9223372036854775807", L"-9223372036854775808"}};
  for (const auto& [first, second] : different) {
    EXPECT_EQ(countR123Channels(Streams{pairTrack(first, 2, 0), pairTrack(second, 2, 0)}, true), 4);
  }
  EXPECT_EQ(countR123Channels(Streams{pairTrack(L"4294967295", 2, 0)}, true), 2);
  EXPECT_EQ(countR123Channels(Streams{pairTrack(L"9223372036854775808", 2, 0),
                                      pairTrack(L"99999999999999999999", 2, 0)},
                              true),
            2);
}

TEST(R123ChannelCount, ATrackMayBeTwoChannelsWideWhereThatIsAllowed) {
  const struct {
    std::int32_t channelCount;
    std::int32_t allowed;
    std::int32_t notAllowed;
  } rows[] = {{0, 0, 0},   {1, 1, 1},       {2, 2, -1},
              {3, -1, -1}, {kMost, -1, -1}, {kLeast, kLeast, kLeast}};
  for (const auto& row : rows) {
    const Streams streams = {track(L"1", row.channelCount, 0)};
    EXPECT_EQ(countR123Channels(streams, true), row.allowed) << row.channelCount;
    EXPECT_EQ(countR123Channels(streams, false), row.notAllowed) << row.channelCount;
  }
  EXPECT_EQ(countR123Channels(Streams{pairTrack(L"5", 2, 0)}, false), 2);
}

TEST(R123ChannelCount, AnyByteButZeroMakesATrackPairCoded) {
  for (const std::uint8_t flag : {std::uint8_t{1}, std::uint8_t{2}, std::uint8_t{128}}) {
    AudioStreamInfo wide = track(L"5", 9, 0);
    wide.isPairCoded = flag;
    EXPECT_EQ(countR123Channels(Streams{wide, wide}, false), 2) << int{flag};
  }
}

TEST(R123ChannelCount, ASharedPairIsNothingSpecial) {
  AudioStreamInfo first = pairTrack(L"5", 1, 0);
  AudioStreamInfo second = pairTrack(L"6", 1, 0);
  first.isPairShared = second.isPairShared = 1;
  EXPECT_EQ(countR123Channels(Streams{first, second}, false), 4);
}

TEST(R123ChannelCount, TheTotalWrapsAsThirtyTwoBits) {
  EXPECT_EQ(countR123Channels(tracks(2, kLeast), true), 0);
  EXPECT_EQ(countR123Channels(tracks(3, kLeast), true), kLeast);
  EXPECT_EQ(countR123Channels(Streams{track(L"1", kLeast, 0), track(L"2", -1, 0)}, true), kMost);
  EXPECT_EQ(countR123Channels(tracks(4, -kMost), true), 4);
}

}  // namespace
}  // namespace kestrel::test
