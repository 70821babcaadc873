// How getServiceMap reads a layout description: entries, totals, elements and hyphens.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "tests/interface/service_map_support.h"

namespace kestrel::test {
namespace {

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

}  // namespace
}  // namespace kestrel::test
