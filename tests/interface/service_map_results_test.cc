// What getServiceMap makes of the services found: the check of neighbouring tracks, the records in
// the vector of the host, and the arguments that may be NULL.
#include <gtest/gtest.h>

#include <cstdint>

#include "tests/interface/service_map_support.h"
#include "tests/library_under_test.h"
#include "tests/plain/plain_service_map.h"

namespace kestrel::test {
namespace {

TEST(ServiceMap, OneStreamAgreesWithItself) {
  const Streams streams = {withFormat(stream(L"4", 6, 9), 48000, 24, 3)};
  EXPECT_TRUE(fills(call("T6=5.1 Mix", streams), {service(tracks(4, 6, 0, 9), kOrder)}));
}

TEST(ServiceMap, NeighboursThatDifferInAnyFormatKeyEmptyTheVector) {
  const AudioStreamInfo first = withFormat(stream(L"1", 1), 1, 2, 3);
  for (const AudioStreamInfo& second :
       {withFormat(stream(L"2", 1), 0, 2, 3), withFormat(stream(L"2", 1), 1, 0, 3),
        withFormat(stream(L"2", 1), 1, 2, 0)}) {
    EXPECT_TRUE(empties(call("T2=Stereo", {first, second})));
  }
  EXPECT_TRUE(fills(call("T2=Stereo", {first, withFormat(stream(L"2", 1), 1, 2, 3)}),
                    {service(monoTracks(1, 2))}));
}

TEST(ServiceMap, TracksOfDifferentServicesNeedNotAgree) {
  const Streams streams = {withFormat(stream(L"1", 2), 1, 2, 3),
                           withFormat(stream(L"2", 2), 1, 9, 3)};
  EXPECT_TRUE(
      fills(call("T4=Stereo,Stereo", streams), {service(tracks(1, 2)), service(tracks(2, 2))}));
}

TEST(ServiceMap, ADisagreementInTheLastServiceEmptiesTheVectorToo) {
  Streams streams = monoStreams(4);
  streams[3].formatKey2 = 5;
  EXPECT_TRUE(empties(call("T4=Stereo,Stereo", streams)));
  EXPECT_TRUE(fills(call("T4=Stereo,-Stereo", streams), {service(monoTracks(1, 2))}));
  EXPECT_TRUE(empties(callReportingAll("T4=Stereo,-Stereo", streams)));
}

TEST(ServiceMap, FormatsComeFromTheLastStreamOfTheNumber) {
  // The stream without tracks stands in for both of its namesakes.
  const Streams differ = {stream(L"1", 1), stream(L"2", 1), withFormat(stream(L"2", 0), 7, 0, 0)};
  EXPECT_TRUE(empties(call("T2=Stereo", differ)));
  const Streams agree = {stream(L"1", 1), withFormat(stream(L"2", 1), 7, 0, 0), stream(L"2", 0)};
  EXPECT_TRUE(fills(call("T2=Stereo", agree), {service(monoTracks(1, 2))}));
}

TEST(ServiceMap, PairCodedProgrammesNeedNotAgree) {
  const Streams streams = {withFormat(sharedPair(L"5", 1, 7), 1, 2, 3),
                           withFormat(sharedPair(L"6", 1, 7), 4, 5, 6)};
  EXPECT_TRUE(fills(call("T2=EMCA", streams), {emca({{5, 7, 7, 0}, {6, 7, 7, 1}})}));
}

TEST(ServiceMap, AServiceOfOneTrackHasNoNeighbours) {
  const Streams streams = {withFormat(stream(L"1", 1), 1, 2, 3),
                           withFormat(stream(L"2", 1), 4, 5, 6)};
  EXPECT_TRUE(
      fills(call("T2=Mono,Mono", streams), {service(monoTracks(1, 1)), service(monoTracks(2, 1))}));
}

Records threeOldRecords() {
  ServiceMapResult old;
  old.trackCount = 5;
  old.label = L"long enough to stand in storage of its own";
  return {old, old, old};
}

TEST(ServiceMap, OldRecordsGiveWayToTheNewOnes) {
  Records results = threeOldRecords();
  const Streams streams = {stream(L"1", 2)};
  EXPECT_EQ(1, library().getServiceMap("T2=Stereo", L"", 0, streams.data(), 1, &results, 0, 0));
  EXPECT_TRUE(plain::sameResults(results, {service(tracks(1, 2))}));
}

TEST(ServiceMap, AFailedCheckLeavesNoRecordAndNoStorage) {
  Records results = threeOldRecords();
  const Streams streams = {stream(L"1", 1), withFormat(stream(L"2", 1), 0, 1, 0)};
  EXPECT_EQ(0, library().getServiceMap("T2=Stereo", L"", 0, streams.data(), 2, &results, 0, 0));
  EXPECT_TRUE(results.empty());
  EXPECT_EQ(results.capacity(), 0U);
}

TEST(ServiceMap, AFailedDetectionLeavesTheVectorAndItsStorage) {
  Records results = threeOldRecords();
  const ServiceMapResult* storage = results.data();
  const Streams streams = {stream(L"1", 1)};
  EXPECT_EQ(0, library().getServiceMap("T2=Stereo", L"", 0, streams.data(), 1, &results, 0, 0));
  EXPECT_TRUE(plain::sameResults(results, threeOldRecords()));
  EXPECT_EQ(results.data(), storage);
}

TEST(ServiceMap, TheVectorMayBeUsedForTheNextCall) {
  Records results;
  const Streams streams = {stream(L"1", 2)};
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(1, library().getServiceMap("T2=Stereo", L"", 0, streams.data(), 1, &results, 0, 0));
    EXPECT_TRUE(plain::sameResults(results, {service(tracks(1, 2))}));
    results.insert(results.end(), 10, results[0]);
  }
}

TEST(ServiceMap, AllowTwoTrackStreamsChangesNothing) {
  const Streams streams = {stream(L"1", 2)};
  for (const std::int32_t allow : {0, 1, 255, 256, -1}) {
    Records results;
    EXPECT_EQ(1,
              library().getServiceMap("T2=Stereo", L"", allow, streams.data(), 1, &results, 0, 0));
    EXPECT_TRUE(plain::sameResults(results, {service(tracks(1, 2))})) << allow;
  }
}

TEST(ServiceMap, AnyByteButZeroSetsAnOption) {
  const Streams streams = {stream(L"1", 6, 1, kSixLabels)};
  for (const std::uint8_t on : {std::uint8_t{1}, std::uint8_t{2}, std::uint8_t{128}}) {
    Records results;
    EXPECT_EQ(1, library().getServiceMap("T6=5.1 Mix,-x", kOrder, 0, streams.data(), 1, &results,
                                         on, on));
    const Records expected = {requested(service(tracks(1, 6), kSixLabels)), unknownService()};
    EXPECT_TRUE(plain::sameResults(results, expected)) << int{on};
  }
}

TEST(ServiceMap, NullTextsCountAsEmpty) {
  const Streams streams = {stream(L"1", 6)};
  Records results(2);
  EXPECT_EQ(0, library().getServiceMap(nullptr, L"", 0, streams.data(), 1, &results, 0, 0));
  EXPECT_EQ(results.size(), 2U);
  EXPECT_EQ(1,
            library().getServiceMap("T6=5.1 Mix", nullptr, 0, streams.data(), 1, &results, 0, 0));
  EXPECT_TRUE(plain::sameResults(results, {service(tracks(1, 6))}));
}

TEST(ServiceMap, NullStreamsCountAsNoStreams) {
  for (const std::int32_t count : {-1, 0, 1, 1000}) {
    Records results(2);
    EXPECT_EQ(0, library().getServiceMap("T0=x;T2=Stereo", L"", 0, nullptr, count, &results, 0, 0));
    EXPECT_EQ(results.size(), 2U) << count;
  }
}

TEST(ServiceMap, ANullVectorIsLeftAlone) {
  const Streams streams = {stream(L"1", 2)};
  EXPECT_EQ(0, library().getServiceMap("T2=Stereo", L"", 0, streams.data(), 1, nullptr, 0, 0));
}

}  // namespace
}  // namespace kestrel::test
