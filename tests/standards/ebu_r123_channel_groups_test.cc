// Groups of plain channels: which tracks they take, and how much of each.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

#include "tests/standards/ebu_r123_evaluation_support.h"

namespace kestrel::test {
namespace {

TEST(R123ChannelGroups, EachStreamTypeTakesItsChannels) {
  const struct {
    StreamType type;
    std::int32_t needed;
  } rows[] = {{kMono, 1}, {kStereo, 2}, {k51Mix, 6}, {k71Mix, 8}};
  for (const auto& row : rows) {
    Slots narrow;
    for (std::int32_t i = 0; i < row.needed; ++i) narrow = narrow + channels(i + 1, i, 0, 1);
    const auto count = static_cast<std::size_t>(row.needed);
    EXPECT_TRUE(conforms(tracks(count, 1), {reported(row.type)}, {record(row.needed, narrow)}));
    EXPECT_TRUE(fails(tracks(count - 1, 1), {reported(row.type)})) << "one track too few";
    if (row.needed == 1) continue;
    Slots wide;
    for (std::int32_t i = 0; i < row.needed / 2; ++i) wide = wide + channels(i + 1, i, 0, 2);
    EXPECT_TRUE(conforms(tracks(count / 2, 2), {reported(row.type)}, {record(row.needed, wide)}));
  }
}

TEST(R123ChannelGroups, OtherStreamTypesFail) {
  for (const std::uint32_t type : {4U, 5U, 6U, 7U, 0x80000000U, 0xFFFFFFFFU, 0x100U}) {
    EXPECT_TRUE(fails(tracks(8, 1), {{type, 1, 0}})) << type;
  }
}

TEST(R123ChannelGroups, GroupsFollowOneAnother) {
  const Streams streams = {track(L"1", 2, 0), track(L"2", 1, 1), track(L"3", 1, 2),
                           track(L"4", 2, 3), track(L"5", 2, 4), track(L"6", 2, 5)};
  EXPECT_TRUE(conforms(
      streams, {reported(kStereo), reported(kStereo), reported(k51Mix)},
      {record(2, channels(1, 0, 0, 2)), record(2, channels(2, 1, 0, 1) + channels(3, 2, 0, 1)),
       record(6, channels(4, 3, 0, 2) + channels(5, 4, 0, 2) + channels(6, 5, 0, 2))}));
}

TEST(R123ChannelGroups, AGroupBeginsInTheMiddleOfATrack) {
  EXPECT_TRUE(conforms(tracks(1, 2), {reported(kMono), reported(kMono)},
                       {record(1, channels(1, 0, 0, 1)), record(1, channels(1, 0, 1, 1))}));
  EXPECT_TRUE(conforms(
      tracks(2, 2), {unreported(kMono), reported(kStereo), reported(kMono)},
      {record(2, channels(1, 0, 1, 1) + channels(2, 1, 0, 1)), record(1, channels(2, 1, 1, 1))}));
  EXPECT_TRUE(fails(tracks(1, 2), {reported(kMono), reported(kStereo)}));
}

TEST(R123ChannelGroups, AGroupBeginsAtTheTrackThatTheRecordNames) {
  // The position moves by the tracks consumed, wherever these were.
  const Streams streams = {track(L"1", 1, 2), track(L"2", 1, 0), track(L"3", 1, 1)};
  EXPECT_TRUE(conforms(streams, {reported(kMono), reported(kMono), reported(kMono)},
                       {record(1, channels(3, 1, 0, 1)), record(1, channels(1, 2, 0, 1)),
                        record(1, channels(2, 0, 0, 1))}));
}

TEST(R123ChannelGroups, TheRecordAtThePositionChoosesTheProcedure) {
  // Track 1 sends an ordinary group to a pair-coded track, track 2 a Dolby E group to an ordinary.
  const Streams streams = {track(L"1", 1, 1), pairTrack(L"5", 1, 2), track(L"7", 1, 0)};
  EXPECT_TRUE(conforms(streams, {reported(kMono), reported(kDolbyE)},
                       {record(1, channels(5, 2, 0, 1)), dolbyE(7, 0, 1)}));
  EXPECT_TRUE(fails(streams, {reported(kDolbyE)}));
  EXPECT_TRUE(fails(streams, {reported(kMono), reported(kMono)}));
}

TEST(R123ChannelGroups, AGroupOutsideTheTracksFails) {
  for (const std::int32_t group : {-1, 1, 2, kMost, kLeast}) {
    EXPECT_TRUE(fails({track(L"1", 1, group)}, {reported(kMono)})) << group;
    EXPECT_TRUE(fails({pairTrack(L"5", 2, group)}, {reported(kDolbyE)})) << group;
  }
  EXPECT_TRUE(fails({track(L"1", 1, 0), track(L"2", 1, 2)}, {reported(kMono), reported(kMono)}));
}

TEST(R123ChannelGroups, OnlyTheGroupOfTheFirstTrackIsFollowed) {
  const Streams streams = {track(L"1", 1, 0), track(L"2", 1, -7), track(L"3", 1, kMost)};
  EXPECT_TRUE(fails(streams, {reported(kStereo), reported(kMono)}));
  EXPECT_TRUE(conforms(streams, {reported(kStereo)},
                       {record(2, channels(1, 0, 0, 1) + channels(2, -7, 0, 1))}));
}

TEST(R123ChannelGroups, TracksOfOneGroupShareTheirFormatKeys) {
  for (std::int32_t AudioStreamInfo::*key :
       {&AudioStreamInfo::formatKey1, &AudioStreamInfo::formatKey2, &AudioStreamInfo::formatKey3}) {
    Streams streams = tracks(4, 1);
    streams[2].*key = streams[3].*key = -5;
    const Slots front = channels(1, 0, 0, 1) + channels(2, 1, 0, 1);
    const Slots back = channels(3, 2, 0, 1) + channels(4, 3, 0, 1);
    EXPECT_TRUE(conforms(streams, {reported(kStereo), reported(kStereo)},
                         {record(2, front), record(2, back)}));
    EXPECT_TRUE(fails(streams, {reported(kMono), reported(kStereo)}));
    streams[3].*key = 0;
    EXPECT_TRUE(fails(streams, {reported(kStereo), reported(kStereo)}));
  }
}

TEST(R123ChannelGroups, ATrackWithoutChannelsIsConsumed) {
  const Streams streams = {track(L"1", 0, 0), track(L"2", 1, 1), track(L"3", 0, 2),
                           track(L"4", 1, 3)};
  EXPECT_TRUE(conforms(streams, {reported(kStereo)},
                       {record(2, channels(2, 1, 0, 1) + channels(4, 3, 0, 1))}));
  EXPECT_TRUE(fails(tracks(3, 0), {reported(kMono)}));
}

TEST(R123ChannelGroups, ATrackOfNegativeWidthMakesTheGroupNeedMore) {
  const Streams streams = {track(L"1", -1, 0), track(L"2", 2, 1), track(L"3", 1, 2)};
  EXPECT_TRUE(conforms(streams, {reported(kStereo)},
                       {record(2, channels(2, 1, 0, 2) + channels(3, 2, 0, 1))}));
  EXPECT_TRUE(fails(tracks(3, -1), {reported(kMono)}));
}

TEST(R123ChannelGroups, AWideTrackGivesWhatTheGroupDoesNotNeed) {
  // Of six free channels a Stereo takes 6 - (2 - 0); the next one takes the two that are left.
  const Streams streams = {track(L"1", 1, 1), pairTrack(L"5", 6, 9)};
  EXPECT_TRUE(conforms(streams, {reported(kStereo), reported(kStereo)},
                       {record(2, channels(5, 9, 0, 4)), record(2, channels(5, 9, 4, 2))}));
  // A Mono takes all but one.
  EXPECT_TRUE(conforms(streams, {reported(kMono), reported(kMono)},
                       {record(1, channels(5, 9, 0, 5)), record(1, channels(5, 9, 5, 1))}));
  // Six are just what a 5.1 Mix needs.
  EXPECT_TRUE(conforms(streams, {reported(k51Mix)}, {record(6, channels(5, 9, 0, 6))}));
}

TEST(R123ChannelGroups, AGroupThatStaysShortTakesFromTheSameTrackAgain) {
  // Of seven free channels a 5.1 Mix takes one, six times over; one is left.
  const Streams seven = {track(L"1", 1, 1), pairTrack(L"5", 7, 9)};
  EXPECT_TRUE(conforms(seven, {reported(k51Mix), reported(kMono)},
                       {record(6, channels(5, 9, 0, 6)), record(1, channels(5, 9, 6, 1))}));
  // Of ten it takes four and four again.
  const Streams ten = {track(L"1", 1, 1), pairTrack(L"5", 10, 9)};
  EXPECT_TRUE(conforms(ten, {reported(k51Mix), reported(kStereo)},
                       {record(6, channels(5, 9, 0, 8)), record(2, channels(5, 9, 8, 2))}));
}

TEST(R123ChannelGroups, SlotsPastTheLastAreDropped) {
  for (const std::int32_t width : {33, 34, 35, 100, kMost}) {
    const Streams streams = {track(L"1", 1, 1), pairTrack(L"5", width, 9)};
    const std::int32_t shown = width - 2 < 32 ? width - 2 : 32;
    EXPECT_TRUE(
        conforms(streams, {reported(kStereo), reported(kStereo)},
                 {record(2, channels(5, 9, 0, shown)), record(2, channels(5, 9, width - 2, 2))}));
  }
}

TEST(R123ChannelGroups, ATrackIsConsumedWhenItsLastChannelIsTaken) {
  // Tracks 2 to 4 are reached from track 1: one of none, one of six, one ordinary.
  const Streams streams = {track(L"1", 1, 2), track(L"2", 1, 3), track(L"3", 0, 5),
                           pairTrack(L"5", 6, 6), track(L"6", 1, 4)};
  // The Stereo consumes track 3 and leaves two channels of track 5 to the group of track 2.
  EXPECT_TRUE(conforms(streams, {reported(kStereo), reported(kStereo)},
                       {record(2, channels(5, 6, 0, 4)), record(2, channels(5, 6, 4, 2))}));
}

TEST(R123ChannelGroups, AnOffsetPastTheEndOfTheNextTrackCountsAsNegativeChannels) {
  // The Stereo of track 1 leaves an offset of 4; the group of track 2 begins at a track of one
  // channel, which has 1 - 4 free ones, and needs five more.
  const Streams streams = {track(L"1", 1, 2),      track(L"2", 1, 4),  track(L"3", 0, 30),
                           pairTrack(L"4", 6, 31), track(L"5", 1, 32), track(L"6", 2, 33),
                           track(L"7", 2, 34),     track(L"8", 1, 35)};
  EXPECT_TRUE(
      conforms(streams, {reported(kStereo), reported(kStereo)},
               {record(2, channels(4, 31, 0, 4)),
                record(2, channels(6, 33, 0, 2) + channels(7, 34, 0, 2) + channels(8, 35, 0, 1))}));
}

TEST(R123ChannelGroups, ADolbyEGroupInBetweenKeepsTheOffset) {
  const Streams streams = {track(L"1", 0, 0), pairTrack(L"9", 2, 1), track(L"2", 2, 2)};
  EXPECT_TRUE(conforms(
      streams, {reported(kMono), reported(kDolbyE), reported(kMono)},
      {record(1, channels(9, 1, 0, 1)), dolbyE(9, 1, 2), record(1, channels(2, 2, 1, 1))}));
}

TEST(R123ChannelGroups, AGroupMayEndAboveItsNeed) {
  // Of nine free channels the Stereo takes 9 - (2 - 0), and leaves one each to the next two groups.
  const Streams streams = {track(L"1", 1, 1), pairTrack(L"5", 9, 3)};
  EXPECT_TRUE(conforms(streams, {reported(kStereo), reported(kMono), reported(kMono)},
                       {record(2, channels(5, 3, 0, 7)), record(1, channels(5, 3, 7, 1)),
                        record(1, channels(5, 3, 8, 1))}));
}

}  // namespace
}  // namespace kestrel::test
