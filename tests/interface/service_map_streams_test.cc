// What getServiceMap reads off the streams of a file: their track total and their track numbers.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <utility>

#include "tests/interface/service_map_support.h"
#include "tests/library_under_test.h"

namespace kestrel::test {
namespace {

// --- The file's track total

TEST(ServiceMap, NoStreamsLeaveTheVectorAsItIsWhateverTheDescription) {
  for (const char* description : {"", "T0=Stereo", "T00=Stereo", "T2=Stereo", "T0=Dolby E"}) {
    EXPECT_TRUE(leavesUntouched(call(description, {}))) << description;
  }
}

TEST(ServiceMap, AStreamCountBelowOneCountsAsNoStreams) {
  const Streams streams = {stream(L"1", 2)};
  for (const std::int32_t count : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    Records results(1);
    results[0].trackCount = 9;
    EXPECT_EQ(0, library().getServiceMap("T2=Stereo;T0=Dolby E", L"", 0, streams.data(), count,
                                         &results, 0, 0));
    ASSERT_EQ(results.size(), 1U) << count;
    EXPECT_EQ(results[0].trackCount, 9) << count;
  }
}

TEST(ServiceMap, AFileWithoutTracksSelectsATotalOfZero) {
  for (const char* description : {"T0=Dolby E", "T00=Dolby E", "T2=Stereo;T0=Dolby E"}) {
    EXPECT_TRUE(fills(call(description, {stream(L"1", 0)}), {unknownService()}));
  }
  EXPECT_TRUE(leavesUntouched(call("T000=Dolby E", {stream(L"1", 0)})));
  EXPECT_TRUE(leavesUntouched(call("T1=Dolby E", {stream(L"1", 0)})));
}

TEST(ServiceMap, PairCodedStreamsOfOneNumberCountAsOnePair) {
  const Streams streams = {stream(L"1", 2), pairCoded(L"2-1", 1, 7), pairCoded(L"2-2", 1, 7)};
  EXPECT_TRUE(fills(call("T4=Stereo,EMCA", streams),
                    {service(tracks(1, 2)), emca({{2, 7, 7, 0}, {2, 7, 7, 0}})}));
  EXPECT_TRUE(leavesUntouched(call("T6=Stereo,EMCA", streams)));
}

TEST(ServiceMap, SharedPairStreamsCountAsOnePairTogether) {
  const Streams streams = {sharedPair(L"7", 1, 3), sharedPair(L"8", 1, 3)};
  EXPECT_TRUE(fills(call("T2=EMCA", streams), {emca({{7, 3, 3, 0}, {8, 3, 3, 1}})}));
  EXPECT_TRUE(leavesUntouched(call("T4=EMCA", streams)));
}

TEST(ServiceMap, ASharedPairStreamWithAHyphenCountsByItsNumber) {
  const Streams streams = {sharedPair(L"7-1", 1, 3), sharedPair(L"8-1", 1, 4)};
  EXPECT_TRUE(
      fills(call("T4=EMCA,EMCA", streams), {emca(tracks(7, 1, 0, 3)), emca(tracks(8, 1, 0, 4))}));
}

// The number ends at a NUL, the text does not.
TEST(ServiceMap, AHyphenAfterANulIsAHyphen) {
  const Streams streams = {sharedPair(std::wstring(L"7\0-", 3), 1, 3),
                           sharedPair(std::wstring(L"8\0-", 3), 1, 4)};
  EXPECT_TRUE(
      fills(call("T4=EMCA,EMCA", streams), {emca(tracks(7, 1, 0, 3)), emca(tracks(8, 1, 0, 4))}));
  EXPECT_TRUE(leavesUntouched(call("T2=EMCA", streams)));
}

// Each has the bits of a hyphen among its own, or looks like one.
TEST(ServiceMap, OnlyAHyphenIsAHyphen) {
  for (const wchar_t character :
       {L'\u012D', L'\u2D2D', L'\u2010', L'\u2212', L'\uFF0D', L'_', L','}) {
    const std::wstring end(1, character);
    const Streams streams = {sharedPair(L"7" + end, 1, 3), sharedPair(L"8" + end, 1, 3)};
    EXPECT_TRUE(fills(call("T2=EMCA", streams), {emca({{7, 3, 3, 0}, {8, 3, 3, 1}})}))
        << static_cast<std::uint32_t>(character);
    EXPECT_TRUE(leavesUntouched(call("T4=EMCA,EMCA", streams)));
  }
}

TEST(ServiceMap, ASharedPairStreamIsRememberedByItsNumberToo) {
  const Streams streams = {sharedPair(L"5", 1, 7), pairCoded(L"5-1", 1, 7)};
  EXPECT_TRUE(fills(call("T2=EMCA", streams), {emca({{5, 7, 7, 0}, {5, 7, 7, 0}})}));
}

TEST(ServiceMap, OrdinaryStreamsBetweenThemDoNotSplitAPair) {
  const Streams streams = {pairCoded(L"5-1", 2, 3), stream(L"1", 2), pairCoded(L"5-2", 2, 4)};
  // The total is 4; the second pair-coded stream needs a service of its own.
  EXPECT_TRUE(fills(call("T4=EMCA,Stereo,EMCA", streams),
                    {emca(tracks(5, 2, 0, 3)), service(tracks(1, 2)), emca(tracks(5, 2, 0, 4))}));
}

TEST(ServiceMap, ARepeatedPairNumberCountsAgainAfterAnotherPair) {
  const Streams streams = {pairCoded(L"5-1", 2, 3), pairCoded(L"6-1", 2, 4),
                           pairCoded(L"5-2", 2, 5)};
  EXPECT_TRUE(
      fills(call("T6=EMCA,EMCA,EMCA", streams),
            {emca(tracks(5, 2, 0, 3)), emca(tracks(6, 2, 0, 4)), emca(tracks(5, 2, 0, 5))}));
}

TEST(ServiceMap, TheFirstPairCountsWhateverItsNumber) {
  const std::pair<const wchar_t*, std::int64_t> rows[] = {
      {L"-1", -1}, {L"0", 0}, {L"", 0}, {L"none", 0}, {L"4294967295", 4294967295}};
  for (const auto& [id, number] : rows) {
    EXPECT_TRUE(fills(call("T2=EMCA", {pairCoded(id, 2)}), {emca(tracks(number, 2))}));
  }
}

TEST(ServiceMap, PairNumbersAreComparedInThirtyTwoBits) {
  const Streams same = {pairCoded(L"1-1", 1), pairCoded(L"4294967297-1", 1)};
  EXPECT_TRUE(fills(call("T2=EMCA", same), {emca(tracks(1, 1) + tracks(4294967297, 1))}));
  const Streams minusOne = {pairCoded(L"-1", 1), pairCoded(L"9223372036854775808", 1)};
  EXPECT_TRUE(fills(call("T2=EMCA", minusOne), {emca(tracks(-1, 1) + tracks(kLargestNumber, 1))}));
}

TEST(ServiceMap, PairNumbersThatAgreeInThirtyTwoBitsOnlyDoNotJoinGroups) {
  const Streams streams = {pairCoded(L"1-1", 1, 3), pairCoded(L"4294967297-1", 1, 4)};
  EXPECT_TRUE(leavesUntouched(call("T4=EMCA,EMCA", streams)));
  EXPECT_TRUE(fills(call("T2=EMCA", streams), {emca(tracks(1, 1, 0, 3))}));
}

TEST(ServiceMap, TheTrackTotalWrapsAsThirtyTwoBits) {
  const std::int32_t most = std::numeric_limits<std::int32_t>::max();
  Streams streams = {stream(L"1", 2)};
  for (int i = 0; i < 4; ++i) streams.push_back(stream(L"2", -most));
  // 2 - 4 * (2^31 - 1) is 6 beside a multiple of 2^32.
  EXPECT_TRUE(fills(call("T6=Stereo", streams), {service(tracks(1, 2))}));
}

TEST(ServiceMap, AStreamWithoutTracksOnlyChangesTheTotal) {
  const Streams streams = {stream(L"1", 0), stream(L"2", 4), stream(L"3", -2)};
  EXPECT_TRUE(fills(call("T2=Stereo", streams), {service(tracks(2, 2))}));
}

// --- The numbers of streams

TEST(ServiceMap, TheTrackNumberIsTheLeadingNumberOfTheStreamId) {
  const std::pair<const wchar_t*, std::int64_t> rows[] = {
      {L"12", 12},
      {L"3-4", 3},
      {L" \t\n\v\f\r12", 12},
      {L"+12", 12},
      {L"-12", -12},
      {L"- 12", 0},
      {L"+-12", 0},
      {L"--12", 0},
      {L"12.5", 12},
      {L"012", 12},
      {L"0x12", 0},
      {L"x12", 0},
      {L"", 0},
      {L"\u00A012", 0},
      {L"\u0661", 0},
      {L"1\u0662", 1},
      {L"9223372036854775807", kLargestNumber},
      {L"9223372036854775808", kLargestNumber},
      {L"99999999999999999999 x", kLargestNumber},
      {L"-9223372036854775808", -kLargestNumber - 1},
      {L"-9223372036854775809", -kLargestNumber - 1},
  };
  for (const auto& [id, number] : rows) {
    EXPECT_TRUE(fills(call("T1=Mono", {stream(id, 1)}), {service(tracks(number, 1))}));
  }
}

}  // namespace
}  // namespace kestrel::test
