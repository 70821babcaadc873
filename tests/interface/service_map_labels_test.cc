// The label that getServiceMap gives a 5.1 mix: the labels of its tracks or the order of the call.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/interface/service_map_support.h"

namespace kestrel::test {
namespace {

using plain::ServiceMapInput;

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

}  // namespace
}  // namespace kestrel::test
