// Dolby E groups: which pair-coded tracks they take.
#include <gtest/gtest.h>

#include <cstdint>

#include "tests/standards/ebu_r123_evaluation_support.h"

namespace kestrel::test {
namespace {

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

}  // namespace
}  // namespace kestrel::test
