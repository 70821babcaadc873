// getServiceMap of the library that ships, one behaviour per test. A test names a call and states
// everything that the call leaves behind: the outcome and every field of every record.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "tests/library_under_test.h"
#include "tests/plain/plain_service_map.h"
#include "tests/small_stack.h"

namespace kestrel::test {
namespace {

using plain::Outcome;
using plain::PlainResult;
using plain::ServiceMapInput;
using Streams = std::vector<AudioStreamInfo>;
using Records = std::vector<ServiceMapResult>;
using Slots = std::vector<TrackSlot>;

constexpr std::int64_t kLargestNumber = std::numeric_limits<std::int64_t>::max();
constexpr wchar_t kSixLabels[] = L"L R C LFE Ls Rs";
constexpr wchar_t kOrder[] = L"Rs Ls LFE C R L";

AudioStreamInfo stream(const std::wstring& id, std::int32_t channelCount, std::int32_t group = 1,
                       const std::wstring& labels = L"") {
  AudioStreamInfo info;
  info.streamId = id;
  info.trackLabels = labels;
  info.group = group;
  info.channelCount = channelCount;
  return info;
}

AudioStreamInfo pairCoded(const std::wstring& id, std::int32_t channelCount,
                          std::int32_t group = 1) {
  AudioStreamInfo info = stream(id, channelCount, group);
  info.isPairCoded = 1;
  return info;
}

AudioStreamInfo sharedPair(const std::wstring& id, std::int32_t channelCount,
                           std::int32_t group = 1) {
  AudioStreamInfo info = pairCoded(id, channelCount, group);
  info.isPairShared = 1;
  return info;
}

AudioStreamInfo withFormat(AudioStreamInfo info, std::int32_t key1, std::int32_t key2,
                           std::int32_t key3) {
  info.formatKey1 = key1;
  info.formatKey2 = key2;
  info.formatKey3 = key3;
  return info;
}

AudioStreamInfo withFlag(AudioStreamInfo info, std::uint8_t isPairCoded) {
  info.isPairCoded = isPairCoded;
  return info;
}

// Streams "1", "2" and so on, one track each, with one of the labels each.
Streams monoStreams(const std::vector<std::wstring>& labels) {
  Streams streams;
  for (const std::wstring& label : labels) {
    streams.push_back(stream(std::to_wstring(streams.size() + 1), 1, 1, label));
  }
  return streams;
}

Streams monoStreams(std::size_t count) {
  return monoStreams(std::vector<std::wstring>(count, L"M"));
}

// The slots of `count` neighbouring tracks of one stream.
Slots tracks(std::int64_t number, std::int32_t count, std::int32_t first = 0,
             std::int32_t group = 1) {
  Slots slots;
  for (std::int32_t i = 0; i < count; ++i) slots.push_back({number, group, group, first + i});
  return slots;
}

// The slots of neighbouring streams of monoStreams().
Slots monoTracks(std::int64_t firstNumber, std::int32_t count) {
  Slots slots;
  for (std::int32_t i = 0; i < count; ++i) slots.push_back({firstNumber + i, 1, 1, 0});
  return slots;
}

Slots operator+(Slots left, const Slots& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

ServiceMapResult record(std::int32_t trackCount, const Slots& slots,
                        const std::wstring& label = L"") {
  ServiceMapResult result;
  for (std::size_t i = 0; i < slots.size(); ++i) result.slots[i] = slots[i];
  result.trackCount = trackCount;
  result.reported = 1;
  result.label = label;
  return result;
}

ServiceMapResult service(const Slots& slots, const std::wstring& label = L"") {
  return record(static_cast<std::int32_t>(slots.size()), slots, label);
}

ServiceMapResult emca(const Slots& slots) {
  ServiceMapResult result = service(slots);
  result.isEmca = 1;
  return result;
}

ServiceMapResult requested(ServiceMapResult result) {
  result.requested = 1;
  return result;
}

ServiceMapResult unknownService() { return record(-1, {}); }

testing::AssertionResult endsAs(const ServiceMapInput& input, const PlainResult& expected) {
  const PlainResult actual = callServiceMap(input);
  if (plain::sameResults(actual, expected)) return testing::AssertionSuccess();
  return testing::AssertionFailure() << input << "expected: " << expected << "actual: " << actual;
}

testing::AssertionResult fills(const ServiceMapInput& input, Records records) {
  return endsAs(input, {Outcome::kFilled, std::move(records)});
}

testing::AssertionResult empties(const ServiceMapInput& input) {
  return endsAs(input, {Outcome::kEmptied, {}});
}

testing::AssertionResult leavesUntouched(const ServiceMapInput& input) {
  return endsAs(input, {Outcome::kUntouched, {}});
}

ServiceMapInput call(std::string description, Streams streams) {
  return {std::move(description), kOrder, std::move(streams), false, false};
}

ServiceMapInput callReportingAll(std::string description, Streams streams) {
  return {std::move(description), kOrder, std::move(streams), true, false};
}

ServiceMapInput callChecking(std::string description, Streams streams) {
  return {std::move(description), kOrder, std::move(streams), false, true};
}

// --- The file's track total
// -----------------------------------------------------------------------

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
// -----------------------------------------------------------------------

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

// --- The layout description
// -----------------------------------------------------------------------

struct ElementRow {
  std::string element;
  std::int32_t trackCount;
  bool isEmca = false;
};

const ElementRow kElementRows[] = {
    {"Mono", 1},      {"Stereo", 2},   {"5.1 Mix", 6},  {"7.1 Mix", 8}, {"EMCA", 2, true},
    {"Dolby E", -1},  {"stereo", -1},  {" Mono", -1},   {"Mono ", -1},  {"Stereo ", -1},
    {"5.1  Mix", -1}, {"5.1 mix", -1}, {"5.1", -1},     {"EMCa", -1},   {"EMCA ", -1},
    {"MonoMono", -1}, {"Mon", -1},     {"St-ereo", -1}, {"Mono-", -1},  {"EMCA-", -1},
    {"7.1 Mix.", -1},
};

// A file that carries the element alone: an unknown name leaves its two tracks over.
Streams streamsFor(const ElementRow& row) {
  if (row.isEmca) return {pairCoded(L"1", 2)};
  return {stream(L"1", row.trackCount < 0 ? 2 : row.trackCount)};
}

ServiceMapResult recordFor(const ElementRow& row) {
  ServiceMapResult result = record(row.trackCount, tracks(1, row.trackCount));
  result.isEmca = row.isEmca ? 1 : 0;
  if (row.element.ends_with("5.1 Mix")) result.label = kOrder;
  return result;
}

std::string descriptionFor(const ElementRow& row, const std::string& prefix) {
  const std::int32_t total = row.trackCount < 0 ? 2 : row.trackCount;
  return "T" + std::to_string(total) + "=" + prefix + row.element;
}

TEST(ServiceMap, AnElementIsReadByItsExactName) {
  for (const ElementRow& row : kElementRows) {
    const std::string description = descriptionFor(row, "");
    EXPECT_TRUE(fills(call(description, streamsFor(row)), {recordFor(row)}));
    EXPECT_TRUE(fills(callReportingAll(description, streamsFor(row)), {requested(recordFor(row))}));
  }
}

TEST(ServiceMap, AnElementBehindAHyphenIsLeftOutUnlessAllAreReported) {
  for (const ElementRow& row : kElementRows) {
    // A hyphen within the name would be taken out too.
    if (row.element.find('-') != std::string::npos) continue;
    const std::string description = descriptionFor(row, "-");
    EXPECT_TRUE(fills(call(description, streamsFor(row)), {}));
    EXPECT_TRUE(fills(callReportingAll(description, streamsFor(row)), {recordFor(row)}));
  }
}

TEST(ServiceMap, BehindALeadingHyphenEveryHyphenIsTakenOut) {
  const Streams eight = {stream(L"1", 8)};
  EXPECT_TRUE(fills(callReportingAll("T8=-7.1 Mix", eight), {service(tracks(1, 8))}));
  EXPECT_TRUE(fills(callReportingAll("T8=-7-.-1- Mix--", eight), {service(tracks(1, 8))}));
  EXPECT_TRUE(fills(callReportingAll("T2=--EMCA", {pairCoded(L"1", 2)}), {emca(tracks(1, 2))}));
  EXPECT_TRUE(fills(callReportingAll("T2=-St-ereo", {stream(L"1", 2)}), {service(tracks(1, 2))}));
  EXPECT_TRUE(fills(callReportingAll("T2=-", {stream(L"1", 2)}), {unknownService()}));
}

TEST(ServiceMap, TheFirstEntryWithTheFilesTotalIsUsed) {
  const Streams four = {stream(L"1", 4)};
  const Records twoStereo = {service(tracks(1, 2)), service(tracks(1, 2, 2))};
  EXPECT_TRUE(fills(call("T2=Stereo;T4=Stereo,Stereo", four), twoStereo));
  EXPECT_TRUE(fills(call("T4=Stereo,Stereo;T4=Mono", four), twoStereo));
  EXPECT_TRUE(fills(call("xxT4=Stereo,Stereo", four), twoStereo));
  EXPECT_TRUE(fills(call("TT4=Stereo,Stereo", four), twoStereo));
  EXPECT_TRUE(fills(call("T=T4T44T04=Stereo,Stereo", four), twoStereo));
  EXPECT_TRUE(leavesUntouched(call("", four)));
  EXPECT_TRUE(leavesUntouched(call("T2=Stereo", four)));
}

TEST(ServiceMap, ATotalMayHaveALeadingZero) {
  const Streams streams = {stream(L"1", 2), pairCoded(L"3", 2, 7), stream(L"5", 4)};
  EXPECT_TRUE(fills(call("T08=Stereo,EMCA,Stereo,Stereo", streams),
                    {service(tracks(1, 2)), emca(tracks(3, 2, 0, 7)), service(tracks(5, 2)),
                     service(tracks(5, 2, 2))}));
}

TEST(ServiceMap, AServiceBehindAHyphenKeepsItsTracks) {
  const Streams eight = {stream(L"1", 8)};
  EXPECT_TRUE(fills(call("T8=5.1 Mix,-Stereo", eight), {service(tracks(1, 6), kOrder)}));
  EXPECT_TRUE(fills(call("T8=-5.1 Mix,Stereo", eight), {service(tracks(1, 2, 6))}));
  EXPECT_TRUE(fills(call("T16=7.1 Mix,7.1 Mix", {stream(L"1", 16)}),
                    {service(tracks(1, 8)), service(tracks(1, 8, 8))}));
}

TEST(ServiceMap, ABlankDoesNotEndAServiceList) {
  const char* description = "T2=Stereo T4=Stereo,Stereo";
  EXPECT_TRUE(leavesUntouched(call(description, {stream(L"1", 4)})));
  // The one element is "Stereo T".
  EXPECT_TRUE(fills(call(description, {stream(L"1", 2)}), {unknownService()}));
}

TEST(ServiceMap, EveryCharacterOutsideTheListsEndsAServiceList) {
  const Streams two = {stream(L"1", 2)};
  for (int code = 1; code < 256; ++code) {
    const char c = static_cast<char>(code);
    const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    const bool inList = letter || std::string("157,-. ").find(c) != std::string::npos;
    const std::string description = std::string("T2=Stereo") + c + "Mono";
    if (c == ',') continue;
    const ServiceMapResult expected = inList ? unknownService() : service(tracks(1, 2));
    EXPECT_TRUE(fills(call(description, two), {expected})) << code;
  }
}

TEST(ServiceMap, ATotalHasOneOrTwoDigits) {
  EXPECT_TRUE(leavesUntouched(call("T123=Stereo", {stream(L"1", 12)})));
  EXPECT_TRUE(leavesUntouched(call("T123=Stereo", {stream(L"1", 123)})));
  EXPECT_TRUE(leavesUntouched(call("T123=Stereo", {stream(L"1", 23)})));
  EXPECT_TRUE(leavesUntouched(call("T=Stereo", {stream(L"1", 2)})));
  EXPECT_TRUE(leavesUntouched(call("T100=Stereo;T00=Stereo", {stream(L"1", 100)})));
  EXPECT_TRUE(fills(call("T99=Mono", {stream(L"1", 99)}), {service(tracks(1, 1))}));
}

TEST(ServiceMap, NothingMayStandBesideTheEqualsSign) {
  const Streams two = {stream(L"1", 2)};
  for (const char* near : {"T2 =Stereo", "T 2=Stereo", "T+2=Stereo", "T2:Stereo", "T2Stereo",
                           "T2==Stereo", "T2=", "T2=;Stereo"}) {
    EXPECT_TRUE(leavesUntouched(call(near, two)));
  }
  EXPECT_TRUE(fills(call("T2= Stereo", two), {unknownService()}));
}

TEST(ServiceMap, ATrailingCommaAddsNoService) {
  EXPECT_TRUE(fills(call("T4=Stereo,Stereo,", {stream(L"1", 4)}),
                    {service(tracks(1, 2)), service(tracks(1, 2, 2))}));
  EXPECT_TRUE(fills(call("T4=,", {stream(L"1", 4)}), {unknownService()}));
}

TEST(ServiceMap, TwoCommasHoldAnUnknownService) {
  const Streams four = {stream(L"1", 4)};
  EXPECT_TRUE(fills(call("T4=Stereo,,Stereo", four),
                    {service(tracks(1, 2)), unknownService(), service(tracks(1, 2, 2))}));
  EXPECT_TRUE(fills(call("T4=,Stereo", four), {unknownService(), service(tracks(1, 2))}));
  EXPECT_TRUE(fills(call("T4=Stereo,,", four), {service(tracks(1, 2)), unknownService()}));
}

TEST(ServiceMap, CaseMattersInADescription) {
  EXPECT_TRUE(leavesUntouched(call("t2=Stereo", {stream(L"1", 2)})));
  EXPECT_TRUE(fills(call("T2=stereo", {stream(L"1", 2)}), {unknownService()}));
}

// --- The labels of a 5.1 mix
// ----------------------------------------------------------------------

TEST(ServiceMap, LabelsOfMonoStreamsBecomeTheLabelOfTheMix) {
  const Streams streams = monoStreams({L"L", L"R", L"C", L"LFE", L"Ls", L"Rs"});
  EXPECT_TRUE(fills(callChecking("T6=5.1 Mix", streams), {service(monoTracks(1, 6), kSixLabels)}));
}

TEST(ServiceMap, TheOrderOfTheLabelsIsFree) {
  const Streams streams = monoStreams({L"L", L"R", L"Ls", L"Rs", L"C", L"LFE"});
  EXPECT_TRUE(
      fills(callChecking("T6=5.1 Mix", streams), {service(monoTracks(1, 6), L"L R Ls Rs C LFE")}));
}

TEST(ServiceMap, WrongLabelsLeaveTheOrderOfTheCall) {
  const std::vector<std::vector<std::wstring>> rows = {
      {L"L", L"L", L"C", L"LFE", L"Ls", L"Rs"},
      {L"l", L"R", L"C", L"LFE", L"Ls", L"Rs"},
      {L"L", L"R", L"C", L"LFE", L"Ls", L""},
      {L"L", L"R", L"C", L"LFE", L"Ls", L" "},
      {L"L", L"R", L"C", L"LFE", L"Ls", L"X"},
      {L"L", L"R", L"C", L"LFE", L"Ls", L"RS"},
      {L"L\t", L"R", L"C", L"LFE", L"Ls", L"Rs"},
      {L"L\u00A0", L"R", L"C", L"LFE", L"Ls", L"Rs"},
      {L"", L"", L"", L"", L"", L""},
      {L"", L"L", L"R", L"C", L"LFE", L"Ls"},
  };
  for (const std::vector<std::wstring>& labels : rows) {
    EXPECT_TRUE(fills(callChecking("T6=5.1 Mix", monoStreams(labels)),
                      {service(monoTracks(1, 6), kOrder)}));
  }
}

TEST(ServiceMap, WithoutTheSurroundCheckNoLabelIsDerived) {
  const Streams streams = monoStreams({L"L", L"R", L"C", L"LFE", L"Ls", L"Rs"});
  EXPECT_TRUE(fills(call("T6=5.1 Mix", streams), {service(monoTracks(1, 6), kOrder)}));
}

TEST(ServiceMap, TheTracksOfOneStreamTakeItsLabelsInTurn) {
  const Records expected = {service(tracks(1, 6), kSixLabels)};
  for (const wchar_t* labels :
       {L"L R C LFE Ls Rs", L"  L  R C   LFE Ls Rs ", L"L R C LFE Ls Rs and more"}) {
    EXPECT_TRUE(fills(callChecking("T6=5.1 Mix", {stream(L"1", 6, 1, labels)}), expected));
  }
}

TEST(ServiceMap, ALabelTextThatIsTooShortLeavesTheOrderOfTheCall) {
  for (const wchar_t* labels :
       {L"L R C LFE Ls", L"", L" ", L"      ", L"L,R,C,LFE,Ls,Rs", L"L\tR\tC\tLFE\tLs\tRs"}) {
    EXPECT_TRUE(fills(callChecking("T6=5.1 Mix", {stream(L"1", 6, 1, labels)}),
                      {service(tracks(1, 6), kOrder)}));
  }
}

TEST(ServiceMap, AnEmptyOrderGivesAnEmptyLabel) {
  ServiceMapInput input = call("T6=5.1 Mix", {stream(L"1", 6)});
  input.order = L"";
  EXPECT_TRUE(fills(input, {service(tracks(1, 6))}));
}

TEST(ServiceMap, OnlyMixesOfSixTracksCarryALabel) {
  const Streams streams = {stream(L"1", 14, 1, L"M M M M M M M M L R C LFE Ls Rs")};
  EXPECT_TRUE(fills(callChecking("T14=7.1 Mix,5.1 Mix", streams),
                    {service(tracks(1, 8)), service(tracks(1, 6, 8), kSixLabels)}));
}

TEST(ServiceMap, LabelsComeFromTheFirstStreamOfTheNumber) {
  const Streams streams = {stream(L"1", 0, 1, kSixLabels), stream(L"1", 6, 1, L"M M M M M M")};
  EXPECT_TRUE(fills(callChecking("T6=5.1 Mix", streams), {service(tracks(1, 6), kSixLabels)}));
  const Streams reversed = {streams[1], streams[0]};
  EXPECT_TRUE(fills(callChecking("T6=5.1 Mix", reversed), {service(tracks(1, 6), kOrder)}));
}

TEST(ServiceMap, EachMixDerivesItsOwnLabel) {
  const Streams streams = {stream(L"1", 6, 1, L"L R C LFE Ls Ls"), stream(L"2", 6, 1, kSixLabels)};
  EXPECT_TRUE(fills(callChecking("T12=5.1 Mix,5.1 Mix", streams),
                    {service(tracks(1, 6), kOrder), service(tracks(2, 6), kSixLabels)}));
}

// --- Pair-coded services
// --------------------------------------------------------------------------

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
// ----------------------------------------------------------

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

// --- Neighbouring tracks and the vector of the host
// -----------------------------------------------

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

// --- Inputs that are too long for care
// ------------------------------------------------------------

constexpr std::size_t kMegabyte = 1024 * 1024;

std::string repeated(const std::string& text, std::size_t size) {
  std::string out;
  while (out.size() < size) out += text;
  return out;
}

// The outcome of a call made with little stack.
PlainResult callOnSmallStack(const ServiceMapInput& input) {
  PlainResult result;
  runOnSmallStack([&] { result = callServiceMap(input); });
  return result;
}

// Does not print the input, which is long.
testing::AssertionResult fillsOnSmallStack(const ServiceMapInput& input, const Records& records) {
  const PlainResult actual = callOnSmallStack(input);
  if (plain::sameResults(actual, {Outcome::kFilled, records})) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "actual: " << actual;
}

TEST(ServiceMapLimits, APairCodedStreamOfAllTracksThatCanBeSaid) {
  const std::int32_t most = std::numeric_limits<std::int32_t>::max();
  const Records expected = {emca(tracks(5, 32, 0, 7))};
  EXPECT_TRUE(fillsOnSmallStack(call("T2=EMCA", {pairCoded(L"5", most, 7)}), expected));
  EXPECT_TRUE(fillsOnSmallStack(call("T2=EMCA", {sharedPair(L"5", most, 7)}), expected));
}

TEST(ServiceMapLimits, AnOrdinaryStreamOfTwoThousandMillionTracks) {
  const Streams streams = {stream(L"1", 2'000'000'000, 1, kSixLabels),
                           stream(L"2", -1'999'999'992)};
  const Records expected = {service(tracks(1, 6), kSixLabels), service(tracks(1, 2, 6))};
  EXPECT_TRUE(fillsOnSmallStack(callChecking("T8=5.1 Mix,Stereo", streams), expected));
}

TEST(ServiceMapLimits, ALongDescriptionOfManyEntries) {
  const Records expected = {service(tracks(1, 2))};
  const Streams streams = {stream(L"1", 2)};
  for (const char* entry : {"T1=Mono;", "T3=Stereo,Mono;", "T1=;", "T123=x;", "T1=T;"}) {
    const std::string description = repeated(entry, kMegabyte) + "T2=Stereo";
    EXPECT_TRUE(fillsOnSmallStack(call(description, streams), expected)) << entry;
  }
}

TEST(ServiceMapLimits, ALongListOfUnknownServices) {
  const Records expected = {service(tracks(1, 2))};
  const std::string description = "T2=" + repeated("-x,", kMegabyte) + "Stereo";
  EXPECT_TRUE(fillsOnSmallStack(call(description, {stream(L"1", 2)}), expected));
  const std::string oneName = "T2=Stereo,-" + repeated("x", kMegabyte);
  EXPECT_TRUE(fillsOnSmallStack(call(oneName, {stream(L"1", 2)}), expected));
}

TEST(ServiceMapLimits, ALongListOfServicesThatAreNotReported) {
  const std::string list = repeated("-Mono,", kMegabyte);
  const auto count = static_cast<std::int32_t>(list.size() / 6);
  const ServiceMapInput shortFile = call("T2=" + list + "Stereo", {stream(L"1", 2)});
  EXPECT_EQ(callOnSmallStack(shortFile).outcome, Outcome::kUntouched);
  const Streams streams = {stream(L"1", count + 2), stream(L"2", -count)};
  EXPECT_TRUE(
      fillsOnSmallStack(call("T2=" + list + "Stereo", streams), {service(tracks(1, 2, count))}));
}

TEST(ServiceMapLimits, ALongDescriptionThatNeverBecomesAnEntry) {
  for (const char* text : {"T", "T1", "T12", "=", ",", "T1 ", "-", "\xFF"}) {
    const ServiceMapInput input = call(repeated(text, kMegabyte), {stream(L"1", 2)});
    EXPECT_EQ(callOnSmallStack(input).outcome, Outcome::kUntouched) << text;
  }
}

TEST(ServiceMapLimits, AHundredThousandOrdinaryStreams) {
  constexpr std::int32_t kStreams = 100'000;
  Streams streams;
  for (std::int32_t i = 0; i < kStreams; ++i) {
    streams.push_back(stream(std::to_wstring(kStreams - i), 1, i, L"L"));
  }
  streams.push_back(stream(L"0", 8 - kStreams));
  Records expected = {record(6, {}, kOrder), record(2, {})};
  for (std::int32_t i = 0; i < 8; ++i) {
    const TrackSlot slot = {kStreams - i, i, i, 0};
    (i < 6 ? expected[0].slots[static_cast<std::size_t>(i)]
           : expected[1].slots[static_cast<std::size_t>(i - 6)]) = slot;
  }
  EXPECT_TRUE(fillsOnSmallStack(callChecking("T8=5.1 Mix,Stereo", streams), expected));
}

TEST(ServiceMapLimits, AHundredThousandStreamsOfOnePair) {
  const Streams streams(100'000, pairCoded(L"5-1", 1, 7));
  Slots slots;
  for (int i = 0; i < 32; ++i) slots.push_back({5, 7, 7, 0});
  EXPECT_TRUE(fillsOnSmallStack(call("T2=EMCA", streams), {emca(slots)}));
}

TEST(ServiceMapLimits, AHundredThousandStreamsOfOneSharedPair) {
  const Streams streams(100'000, sharedPair(L"5", 1, 7));
  EXPECT_TRUE(fillsOnSmallStack(call("T2=EMCA", streams), {emca(tracks(5, 32, 0, 7))}));
}

TEST(ServiceMapLimits, AStreamIdOfTenThousandDigits) {
  const std::wstring digits(10'000, L'9');
  EXPECT_TRUE(fillsOnSmallStack(call("T2=Stereo", {stream(digits, 2)}),
                                {service(tracks(kLargestNumber, 2))}));
  EXPECT_TRUE(fillsOnSmallStack(call("T2=Stereo", {stream(L"-" + digits, 2)}),
                                {service(tracks(-kLargestNumber - 1, 2))}));
  const std::wstring zeros(10'000, L'0');
  EXPECT_TRUE(
      fillsOnSmallStack(call("T2=Stereo", {stream(zeros + L"12", 2)}), {service(tracks(12, 2))}));
}

TEST(ServiceMapLimits, LongTextsBesideTheDescription) {
  ServiceMapInput input =
      callChecking("T6=5.1 Mix", {stream(L"1", 6, 1, std::wstring(kMegabyte, L' ') + kSixLabels)});
  EXPECT_TRUE(fillsOnSmallStack(input, {service(tracks(1, 6), kSixLabels)}));
  input.order = std::wstring(kMegabyte, L'L');
  input.streams[0].trackLabels = input.order;
  EXPECT_TRUE(fillsOnSmallStack(input, {service(tracks(1, 6), input.order)}));
}

TEST(ServiceMapLimits, BadArgumentsNeedLittleStack) {
  const Streams streams = {stream(L"1", 2)};
  std::vector<std::int32_t> returned;
  runOnSmallStack([&] {
    const Library& functions = library();
    Records results;
    const std::int32_t least = std::numeric_limits<std::int32_t>::min();
    const AudioStreamInfo* first = streams.data();
    returned = {
        functions.getServiceMap("T2=Stereo", L"", 0, first, least, &results, 0, 0),
        functions.getServiceMap(nullptr, nullptr, 0, nullptr, least, &results, 0, 0),
        functions.getServiceMap("T2=Stereo", nullptr, 0, nullptr, 1, &results, 0, 0),
        functions.getServiceMap("T2=Stereo", nullptr, 0, first, 1, nullptr, 0, 0),
    };
  });
  EXPECT_EQ(returned, std::vector<std::int32_t>(4, 0));
}

}  // namespace
}  // namespace kestrel::test
