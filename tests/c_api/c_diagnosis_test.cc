// The findings of a file as a whole: a clean file has none, and several stand in one order.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "api/kestrel.h"
#include "tests/c_api/c_diagnosis_support.h"
#include "tests/c_api/c_request.h"

namespace kestrel::test {
namespace {

// --- No findings

TEST(CleanFile, HasNoFindings) {
  const Streams back = {stream("1", 6, "C L R Ls Rs LFE"), stream("2", 2, "L L")};
  for (const Diagnosis& diagnosis :
       {Diagnosis("T8=5.1 Mix,Stereo", {stream("1", 6, kSixLabels), stream("2", 2, "L L")}),
        Diagnosis::withOrder("C L R Ls Rs LFE", "T8=5.1 Mix,Stereo;T2=Other", back),
        Diagnosis::withoutSurroundCheck("T8=5.1 Mix,Stereo", back),
        Diagnosis("T4=EMCA,-Stereo,", {pairCoded("1", 32), stream("2", 2)}),
        Diagnosis("T8=7.1 Mix", {stream("1", 8)}), Diagnosis("T1=Mono", {stream("1", 1)})}) {
    expectDiagnosis(diagnosis, KESTREL_FILLED, {});
  }
}

TEST(CleanFile, MayDifferInFormatKeysBetweenServicesAndWithinEmca) {
  const Streams streams = {withKeys(pairCoded("1", 1), 1, 1, 1),
                           withKeys(pairCoded("1", 1), 2, 2, 2), withKeys(stream("2", 2), 3, 3, 3),
                           withKeys(stream("3", 1), 4, 4, 4)};
  expectDiagnosis({"T5=EMCA,Stereo,Mono", streams}, KESTREL_FILLED, {});
}

TEST(CleanFile, HasNoSentences) {
  const Diagnosis diagnosis("T2=Stereo", {stream("1", 2)});
  char text[8] = "text";
  std::size_t needed = 77;
  EXPECT_EQ(kestrelFindingText(diagnosis.analysis(), 0, text, 8, &needed), KESTREL_BAD_INDEX);
  EXPECT_STREQ(text, "text");
  EXPECT_EQ(needed, 77U);
}

// --- Order

TEST(Findings, AreErrorsFirstAndThenTheOthersEachInTheOrderOfTheServices) {
  const Streams streams = {stream("1", 6, "L R C LFE Ls"), stream("2", 1),
                           withKeys(stream("3", 1), 9, 0, 0), pairCoded("4", 33)};
  const Diagnosis diagnosis("T10=x,5.1 Mix,y,Stereo,EMCA,z", streams);
  std::vector<std::pair<std::int32_t, std::int32_t>> order;
  for (const Found& found : diagnosis.findings()) order.emplace_back(found.code, found.service);
  const std::vector<std::pair<std::int32_t, std::int32_t>> expected = {
      {KESTREL_KEY1_DIFFERS, 3},    {KESTREL_UNKNOWN_SERVICE, 0}, {KESTREL_LABEL_MISSING, 1},
      {KESTREL_UNKNOWN_SERVICE, 2}, {KESTREL_RUN_TOO_LONG, 4},    {KESTREL_UNKNOWN_SERVICE, 5}};
  EXPECT_EQ(order, expected);
}

}  // namespace
}  // namespace kestrel::test
