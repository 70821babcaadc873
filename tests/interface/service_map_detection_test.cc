// How getServiceMap lines services and tracks up: pair-coded runs, missing tracks and tracks left
// over.
#include <gtest/gtest.h>

#include <cstdint>

#include "tests/interface/service_map_support.h"

namespace kestrel::test {
namespace {

// --- Pair-coded services

TEST(ServiceMap, AServiceThatIsNotReportedKeepsTheNextOnesAligned) {
  EXPECT_TRUE(fills(call("T4=-Mono,Stereo,Mono", monoStreams(4)),
                    {service(monoTracks(2, 2)), service(monoTracks(4, 1))}));
  const Streams streams = {pairCoded(L"5", 2, 7), stream(L"1", 2)};
  EXPECT_TRUE(fills(call("T4=-EMCA,Stereo", streams), {service(tracks(1, 2))}));
}

TEST(ServiceMap, JoinedStreamsOfTwoGroupsYieldTwoRecords) {
  const Streams streams = {pairCoded(L"5-1", 2, 7), pairCoded(L"5-2", 2, 8)};
  const Slots second = {{5, 7, 8, 2}, {5, 7, 8, 3}};
  EXPECT_TRUE(fills(call("T2=EMCA", streams), {emca(tracks(5, 2, 0, 7)), emca(second)}));
}

TEST(ServiceMap, AStreamOfTheGroupBeforeItStartsItsIndicesAgain) {
  const Streams streams = {pairCoded(L"5-1", 2, 7), pairCoded(L"5-2", 2, 8),
                           pairCoded(L"5-3", 2, 7)};
  const Slots second = {{5, 7, 8, 2}, {5, 7, 8, 3}};
  EXPECT_TRUE(fills(call("T2=EMCA", streams),
                    {emca(tracks(5, 2, 0, 7)), emca(second), emca(tracks(5, 2, 0, 7))}));
}

TEST(ServiceMap, SharedPairStreamsJoinTheGroupBeforeThem) {
  const Streams streams = {sharedPair(L"7", 1, 3), sharedPair(L"8", 2, 4)};
  EXPECT_TRUE(fills(call("T2=EMCA", streams),
                    {emca(tracks(7, 1, 0, 3)), emca({{8, 3, 4, 1}, {8, 3, 4, 2}})}));
}

TEST(ServiceMap, ALaterSharedPairStreamJoinsAnOrdinaryStreamBeforeIt) {
  const Streams streams = {sharedPair(L"7", 2, 3), stream(L"1", 2, 5), sharedPair(L"8", 2, 4)};
  const Slots joined = {{8, 5, 4, 2}, {8, 5, 4, 3}};
  EXPECT_TRUE(fills(call("T4=EMCA,Stereo,EMCA", streams),
                    {emca(tracks(7, 2, 0, 3)), service(tracks(1, 2, 0, 5)), emca(joined)}));
}

TEST(ServiceMap, TheFirstSharedPairStreamKeepsItsGroupBehindAnOrdinaryStream) {
  // Even behind a stream of its own number.
  for (const wchar_t* id : {L"1", L"8"}) {
    const Streams streams = {stream(id, 2, 5), sharedPair(L"8", 2, 4)};
    const std::int64_t number = id[0] - L'0';
    EXPECT_TRUE(fills(call("T4=Stereo,EMCA", streams),
                      {service(tracks(number, 2, 0, 5)), emca(tracks(8, 2, 0, 4))}));
  }
}

TEST(ServiceMap, AStreamWhoseFlagIsNotOneJoinsNoGroup) {
  const Streams streams = {pairCoded(L"5-1", 1, 7), withFlag(stream(L"5-2", 1, 8), 2)};
  EXPECT_TRUE(fills(call("T2=EMCA", streams), {emca(tracks(5, 1, 0, 7))}));
}

TEST(ServiceMap, APairCodedSlotNeedsAPairCodedTrack) {
  EXPECT_TRUE(leavesUntouched(call("T2=EMCA", {stream(L"1", 2)})));
  EXPECT_TRUE(leavesUntouched(call("T2=Stereo", {pairCoded(L"1", 2)})));
  EXPECT_TRUE(leavesUntouched(call("T4=EMCA,Stereo", {stream(L"1", 2), pairCoded(L"3", 2, 7)})));
}

TEST(ServiceMap, APairCodedServiceTakesARunOfAnyLength) {
  for (const std::int32_t channelCount : {1, 2, 3, 8, 31, 32}) {
    const Streams streams = {pairCoded(L"5", channelCount, 7), stream(L"1", 2)};
    EXPECT_TRUE(fills(call("T4=EMCA,Stereo", streams),
                      {emca(tracks(5, channelCount, 0, 7)), service(tracks(1, 2))}));
  }
}

TEST(ServiceMap, TwoPairCodedServicesNeedTwoGroups) {
  EXPECT_TRUE(
      leavesUntouched(call("T4=EMCA,EMCA", {pairCoded(L"5", 2, 7), pairCoded(L"6", 2, 7)})));
  EXPECT_TRUE(fills(call("T4=EMCA,EMCA", {pairCoded(L"5", 2, 7), pairCoded(L"6", 2, 8)}),
                    {emca(tracks(5, 2, 0, 7)), emca(tracks(6, 2, 0, 8))}));
}

TEST(ServiceMap, APairCodedServiceTakesOrdinaryTracksOfItsGroupToo) {
  const Streams streams = {pairCoded(L"5", 2, 7), stream(L"1", 2, 7)};
  const Slots all = tracks(5, 2, 0, 7) + tracks(1, 2, 0, 7);
  EXPECT_TRUE(fills(call("T4=EMCA", streams), {emca(all)}));
  EXPECT_TRUE(fills(call("T4=EMCA,-Stereo", streams), {emca(all)}));
  // Behind a joined stream they make a record of their own.
  const Streams joined = {pairCoded(L"5-1", 1, 7), pairCoded(L"5-2", 1, 8), stream(L"1", 2, 7)};
  const Slots second = {{5, 7, 8, 1}};
  EXPECT_TRUE(fills(call("T4=EMCA", joined),
                    {emca(tracks(5, 1, 0, 7)), emca(second), emca(tracks(1, 2, 0, 7))}));
}

TEST(ServiceMap, APairCodedServiceThatFindsNoTrackLeftIsNotReported) {
  // A flag of 2 meets the second service, but the first one takes all tracks of the group.
  const Streams streams = {pairCoded(L"1", 2), withFlag(stream(L"2", 2), 2)};
  EXPECT_TRUE(fills(call("T4=EMCA,EMCA", streams), {emca(tracks(1, 2) + tracks(2, 2))}));
}

TEST(ServiceMap, AServiceThatRunsOutOfTracksFailsTheNeighbourCheck) {
  const Streams streams = {pairCoded(L"5", 2, 7), stream(L"1", 2, 7)};
  EXPECT_TRUE(empties(call("T4=EMCA,Stereo", streams)));
  EXPECT_TRUE(empties(callReportingAll("T4=EMCA,-Stereo", streams)));
  const Streams half = {pairCoded(L"5", 2, 7), stream(L"1", 1, 7), stream(L"2", 1, 8)};
  EXPECT_TRUE(empties(call("T4=EMCA,Stereo", half)));
}

TEST(ServiceMap, AMissingTrackIsNotFoundInAStreamOfNumberMinusOne) {
  const Streams streams = {pairCoded(L"-1", 2, 7), stream(L"-1", 2, 7)};
  EXPECT_TRUE(empties(call("T4=EMCA,Stereo", streams)));
}

TEST(ServiceMap, AMonoServiceThatRunsOutOfTracksIsReportedWithoutOne) {
  const Streams streams = {pairCoded(L"5", 2, 7), stream(L"1", 1, 7)};
  EXPECT_TRUE(fills(call("T3=EMCA,Mono", streams),
                    {emca(tracks(5, 2, 0, 7) + tracks(1, 1, 0, 7)), record(1, {})}));
}

TEST(ServiceMap, AMixThatRunsOutOfTracksDerivesNoLabel) {
  const Streams streams = {pairCoded(L"5", 2, 7), stream(L"1", 6, 7, kSixLabels)};
  const Slots all = tracks(5, 2, 0, 7) + tracks(1, 6, 0, 7);
  EXPECT_TRUE(fills(callChecking("T8=EMCA,-5.1 Mix", streams), {emca(all)}));
  EXPECT_TRUE(empties(callChecking("T8=EMCA,5.1 Mix", streams)));
}

TEST(ServiceMap, MoreThanThirtyTwoTracksFillTheThirtyTwoSlots) {
  const Streams streams = {pairCoded(L"5", 40, 7), stream(L"1", 2)};
  EXPECT_TRUE(
      fills(call("T4=EMCA,Stereo", streams), {emca(tracks(5, 32, 0, 7)), service(tracks(1, 2))}));
}

TEST(ServiceMap, AFlagBeyondOneIsAPairInTheTotalButNoPairCodedTrack) {
  // The slot and the flag agree as on and on; the service then finds no pair-coded track.
  for (const std::uint8_t flag : {std::uint8_t{2}, std::uint8_t{255}}) {
    const Streams alone = {withFlag(stream(L"1", 2, 7), flag)};
    EXPECT_TRUE(fills(call("T2=EMCA", alone), {}));
    EXPECT_TRUE(leavesUntouched(call("T2=Stereo", alone)));
    // The tracks that it left go to the next service.
    const Streams two = {withFlag(stream(L"1", 1, 7), flag), stream(L"2", 2)};
    EXPECT_TRUE(fills(call("T4=EMCA,Stereo", two), {service(tracks(1, 1, 0, 7) + tracks(2, 1))}));
  }
}

TEST(ServiceMap, AFlagBeyondOneMeetsOneSlotPerTrack) {
  // Each track stands alone: the second one meets the second service.
  const Streams streams = {withFlag(stream(L"1-1", 1, 7), 2), withFlag(stream(L"2-1", 1, 7), 2)};
  EXPECT_TRUE(fills(call("T4=EMCA,EMCA", streams), {}));
  EXPECT_TRUE(leavesUntouched(call("T2=EMCA,Stereo", {withFlag(stream(L"1", 2, 7), 2)})));
}

TEST(ServiceMap, AnySharedFlagCounts) {
  Streams streams = {sharedPair(L"7", 1, 3), sharedPair(L"8", 1, 3)};
  streams[0].isPairShared = 2;
  streams[1].isPairShared = 255;
  EXPECT_TRUE(fills(call("T2=EMCA", streams), {emca({{7, 3, 3, 0}, {8, 3, 3, 1}})}));
}

// --- Missing tracks and unknown services

TEST(ServiceMap, AFileWithTooFewTracksIsLeftUntouched) {
  EXPECT_TRUE(leavesUntouched(call("T2=Stereo,Stereo", {stream(L"1", 2)})));
  EXPECT_TRUE(leavesUntouched(call("T2=Stereo,-Mono", {stream(L"1", 2)})));
  EXPECT_TRUE(leavesUntouched(call("T2=EMCA,EMCA", {pairCoded(L"1", 2)})));
  EXPECT_TRUE(leavesUntouched(call("T2=EMCA", {pairCoded(L"1", 0)})));
  EXPECT_TRUE(leavesUntouched(call("T0=Mono", {stream(L"1", 0)})));
}

TEST(ServiceMap, TracksMayBeLeftOver) {
  EXPECT_TRUE(fills(call("T8=Mono", {stream(L"1", 8)}), {service(tracks(1, 1))}));
  EXPECT_TRUE(
      fills(call("T4=Stereo", {stream(L"1", 2), pairCoded(L"3", 2)}), {service(tracks(1, 2))}));
}

TEST(ServiceMap, UnknownServicesAloneAlignWithAnyTracks) {
  EXPECT_TRUE(fills(call("T2=Dolby E", {stream(L"1", 2)}), {unknownService()}));
  EXPECT_TRUE(fills(call("T2=Dolby E", {pairCoded(L"1", 2)}), {unknownService()}));
  EXPECT_TRUE(fills(call("T2=x,-y,z", {stream(L"1", 2)}), {unknownService(), unknownService()}));
}

TEST(ServiceMap, AnUnknownServiceLeavesItsTracksToTheNext) {
  EXPECT_TRUE(fills(call("T4=Stereo,Dolby E,Mono", {stream(L"1", 4)}),
                    {service(tracks(1, 2)), unknownService(), service(tracks(1, 1, 2))}));
}

}  // namespace
}  // namespace kestrel::test
