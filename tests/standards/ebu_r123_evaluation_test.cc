// The EBU R 123 evaluation with configurations of the test. A test states the whole result: the
// item and every field of every record. Expectations are written out, not computed.
#include "standards/ebu_r123_evaluation.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "api/catalogue_ids.h"
#include "tests/plain/plain_ebu_r123.h"
#include "tests/small_stack.h"

namespace kestrel::test {
namespace {

using plain::R123Input;
using plain::R123Result;
using Streams = std::vector<AudioStreamInfo>;
using Records = std::vector<ServiceMapResult>;
using Groups = std::vector<R123GroupRequirement>;
using Slots = std::vector<TrackSlot>;

constexpr std::int32_t kMost = INT_MAX;
constexpr std::int32_t kLeast = INT_MIN;
constexpr std::int32_t kItem = 22;  // of every configuration here

AudioStreamInfo track(const std::wstring& id, std::int32_t channelCount, std::int32_t group) {
  AudioStreamInfo info;
  info.streamId = id;
  info.group = group;
  info.channelCount = channelCount;
  return info;
}

AudioStreamInfo pairTrack(const std::wstring& id, std::int32_t channelCount, std::int32_t group) {
  AudioStreamInfo info = track(id, channelCount, group);
  info.isPairCoded = 1;
  return info;
}

// Tracks "1", "2" and so on of equal width, each the first of its own group.
Streams tracks(std::size_t count, std::int32_t channelCount) {
  Streams streams;
  for (std::size_t i = 0; i < count; ++i) {
    streams.push_back(track(std::to_wstring(i + 1), channelCount, static_cast<std::int32_t>(i)));
  }
  return streams;
}

R123GroupRequirement reported(StreamType type) { return {static_cast<std::uint32_t>(type), 1, 0}; }

R123GroupRequirement unreported(StreamType type) {
  return {static_cast<std::uint32_t>(type), 0, 0};
}

// `count` slots of one track, from a channel on.
Slots channels(std::int64_t number, std::int32_t group, std::int32_t first, std::int32_t count) {
  Slots slots;
  for (std::int32_t i = 0; i < count; ++i) slots.push_back({number, group, -1, first + i});
  return slots;
}

Slots operator+(Slots left, const Slots& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

ServiceMapResult record(std::int32_t trackCount, const Slots& slots) {
  ServiceMapResult result;
  for (std::size_t i = 0; i < slots.size(); ++i) result.slots[i] = slots[i];
  result.trackCount = trackCount;
  result.reported = 1;
  return result;
}

ServiceMapResult dolbyE(std::int64_t number, std::int32_t group, std::int32_t trackCount,
                        std::uint8_t report = 1) {
  ServiceMapResult result = record(trackCount, {{number, group, -1, -1}});
  result.reported = report;
  result.isEmca = 1;
  return result;
}

R123Result evaluate(const R123Input& input) {
  R123Result result{input.item, {}};
  result.records =
      evaluateEbuR123(input.streams, input.allowTwoTrackStreams, input.configurations, result.item);
  return result;
}

testing::AssertionResult endsAs(const R123Input& input, const R123Result& expected) {
  const R123Result actual = evaluate(input);
  if (plain::sameResults(actual, expected)) return testing::AssertionSuccess();
  return testing::AssertionFailure() << input << "expected: " << expected << "actual: " << actual;
}

// An evaluation that finds `groups` under the number of channels that the streams have.
R123Input inputFor(const Streams& streams, const Groups& groups) {
  const std::int32_t count = plain::countR123Channels(streams, true);
  return {streams, true, {{count, {kItem, groups}}}, NO_SERVICE_MAP_ITEM};
}

testing::AssertionResult conforms(const Streams& streams, const Groups& groups,
                                  const Records& records) {
  return endsAs(inputFor(streams, groups), {kItem, records});
}

testing::AssertionResult fails(const Streams& streams, const Groups& groups) {
  R123Input input = inputFor(streams, groups);
  for (const std::int32_t item : {NO_SERVICE_MAP_ITEM, 7, -1}) {
    input.item = item;
    const testing::AssertionResult result = endsAs(input, {NO_SERVICE_MAP_ITEM, {}});
    if (!result) return result;
  }
  return testing::AssertionSuccess();
}

// --- The number of channels

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

// --- The channel procedure

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

// --- The Dolby E procedure

TEST(R123DolbyEGroups, APairOfTracksYieldsARecordEach) {
  const Streams streams = {pairTrack(L"5-1", 2, 0), pairTrack(L"5-2", 8, 7),
                           pairTrack(L" 5", kMost, 0), pairTrack(L"6", 2, 3)};
  EXPECT_TRUE(conforms(streams, {reported(kDolbyE)},
                       {dolbyE(5, 0, 2), dolbyE(5, 7, 8), dolbyE(5, 0, kMost)}));
  EXPECT_TRUE(
      conforms(streams, {reported(kDolbyE), unreported(kDolbyE)},
               {dolbyE(5, 0, 2), dolbyE(5, 7, 8), dolbyE(5, 0, kMost), dolbyE(6, 3, 2, 0)}));
}

TEST(R123DolbyEGroups, TheChannelCountIsHandedOnAsItIs) {
  for (const std::int32_t width : {0, -1, 1, 33, kMost, kLeast}) {
    EXPECT_TRUE(conforms({pairTrack(L"5", width, 0)}, {reported(kDolbyE)}, {dolbyE(5, 0, width)}));
  }
}

TEST(R123DolbyEGroups, OtherStreamTypesFail) {
  for (const std::uint32_t type : {0U, 1U, 2U, 3U, 5U, 6U, 0xFFFFFFFFU, 0x104U}) {
    EXPECT_TRUE(fails({pairTrack(L"5", 2, 0)}, {{type, 1, 0}})) << type;
  }
}

TEST(R123DolbyEGroups, FormatKeysDoNotMatter) {
  Streams streams = {pairTrack(L"5", 2, 0), pairTrack(L"5", 2, 0)};
  streams[1].formatKey1 = streams[1].formatKey2 = streams[1].formatKey3 = 3;
  EXPECT_TRUE(conforms(streams, {reported(kDolbyE)}, {dolbyE(5, 0, 2), dolbyE(5, 0, 2)}));
}

TEST(R123DolbyEGroups, ATrackThatIsNotPairCodedEndsTheGroup) {
  const Streams streams = {pairTrack(L"5", 2, 0), track(L"5", 1, 1), pairTrack(L"5", 2, 2)};
  EXPECT_TRUE(conforms(streams, {reported(kDolbyE), reported(kMono), reported(kDolbyE)},
                       {dolbyE(5, 0, 2), record(1, channels(5, 1, 0, 1)), dolbyE(5, 2, 2)}));
}

TEST(R123DolbyEGroups, TheNumberIsThatOfTheFirstTrackOfTheGroup) {
  // The track at the position says where the group begins; its own number does not matter.
  const Streams streams = {pairTrack(L"5", 2, 1), pairTrack(L"6", 3, 8), pairTrack(L"6", 4, 9)};
  EXPECT_TRUE(conforms(streams, {reported(kDolbyE)}, {dolbyE(6, 8, 3), dolbyE(6, 9, 4)}));
}

TEST(R123DolbyEGroups, NumbersAreComparedInSixtyFourBits) {
  const Streams streams = {pairTrack(L"1", 2, 0), pairTrack(L"4294967297", 3, 1)};
  EXPECT_TRUE(conforms(streams, {reported(kDolbyE)}, {dolbyE(1, 0, 2)}));
  EXPECT_TRUE(conforms(streams, {reported(kDolbyE), reported(kDolbyE)},
                       {dolbyE(1, 0, 2), dolbyE(4294967297, 1, 3)}));
}

TEST(R123DolbyEGroups, AFailureTakesTheirRecordsBack) {
  const Streams streams = {pairTrack(L"5", 2, 0), track(L"1", 1, 1)};
  EXPECT_TRUE(fails(streams, {reported(kDolbyE), reported(kStereo)}));
  EXPECT_TRUE(fails(streams, {reported(kDolbyE), reported(kDolbyE)}));
}

// --- Widths that are too large for care

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
