// Arguments of the plain C interface that are refused: NULLs, counts and indices, and what a
// refusal leaves behind.
#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "api/kestrel.h"
#include "tests/c_api/c_analysis_support.h"
#include "tests/c_api/c_request.h"

namespace kestrel::test {
namespace {

// --- NULL

TEST(CAnalysisNull, IsRefusedInEveryPlaceOfARequest) {
  const std::vector<KestrelStream> streams = {stream("1", 2)};
  const KestrelRequest good = request("T2=Stereo", streams);
  EXPECT_EQ(refusalOf(nullptr), refusal(KESTREL_NULL_ARGUMENT));
  EXPECT_EQ(kestrelAnalyse(&good, nullptr, nullptr, nullptr), KESTREL_NULL_ARGUMENT);
  KestrelRequest bad = good;
  bad.layoutDescription = nullptr;
  EXPECT_EQ(refusalOf(&bad), refusal(KESTREL_NULL_ARGUMENT));
  bad = good;
  bad.surroundChannelOrder = nullptr;
  EXPECT_EQ(refusalOf(&bad), refusal(KESTREL_NULL_ARGUMENT));
  bad = good;
  bad.streams = nullptr;
  EXPECT_EQ(refusalOf(&bad), refusal(KESTREL_NULL_ARGUMENT));
}

TEST(CAnalysisNull, IsRefusedForTheTextsOfAnyStream) {
  for (const auto text : {&KestrelStream::streamId, &KestrelStream::trackLabels}) {
    for (std::size_t at = 0; at < 3; ++at) {
      std::vector<KestrelStream> streams(3, stream("1", 2));
      streams[at].*text = nullptr;
      const KestrelRequest bad = request("T6=Stereo", streams);
      EXPECT_EQ(refusalOf(&bad), refusal(KESTREL_NULL_ARGUMENT));
    }
  }
}

TEST(CAnalysisNull, IsAllowedWhereTheHeaderSaysSo) {
  const KestrelRequest empty = request("", {});
  KestrelRequest bad = empty;
  bad.layoutDescription = "\xFF";
  KestrelAnalysis* analysis = nullptr;
  EXPECT_EQ(kestrelAnalyse(&bad, &analysis, nullptr, nullptr), KESTREL_BAD_TEXT);
  EXPECT_EQ(kestrelAnalyse(&empty, &analysis, nullptr, nullptr), KESTREL_OK);
  kestrelFreeAnalysis(analysis);
  kestrelFreeAnalysis(nullptr);
}

TEST(CAnalysisNull, AnalysesAreNotRead) {
  std::int32_t number = 77;
  std::uint32_t total = 77;
  std::size_t needed = 77;
  char text[8] = "text";
  KestrelService service{};
  KestrelFinding finding{};
  service.structSize = sizeof service;
  finding.structSize = sizeof finding;
  EXPECT_EQ(kestrelOutcome(nullptr, &number, &total), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelServiceCount(nullptr, &number), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelGetService(nullptr, 0, &service), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelFindingCount(nullptr, &number), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelGetFinding(nullptr, 0, &finding), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelFindingText(nullptr, 0, text, 8, &needed), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelDescribedTotals(nullptr, &number, 1, &needed), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(number, 77);
  EXPECT_EQ(total, 77U);
  EXPECT_EQ(needed, 77U);
  EXPECT_STREQ(text, "text");
}

TEST(CAnalysisNull, OutPointersAreNeeded) {
  const Analysis owner = analysed(request("T2=Stereo", {}));
  const KestrelAnalysis* analysis = owner.get();
  std::uint32_t total = 77;
  std::int32_t totals[1] = {77};
  std::size_t needed = 77;
  char text[200] = "text";
  EXPECT_EQ(kestrelOutcome(analysis, nullptr, &total), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelServiceCount(analysis, nullptr), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelFindingCount(analysis, nullptr), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelGetFinding(analysis, 0, nullptr), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelFindingText(analysis, 0, nullptr, 8, &needed), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelFindingText(analysis, 0, text, 200, nullptr), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelDescribedTotals(analysis, nullptr, 1, &needed), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(kestrelDescribedTotals(analysis, totals, 1, nullptr), KESTREL_NULL_ARGUMENT);
  const std::vector<KestrelStream> streams = {stream("1", 2)};
  const Analysis filled = analysed(request("T2=Stereo", streams));
  EXPECT_EQ(kestrelGetService(filled.get(), 0, nullptr), KESTREL_NULL_ARGUMENT);
  EXPECT_EQ(total, 77U);
  EXPECT_EQ(totals[0], 77);
  EXPECT_EQ(needed, 77U);
  EXPECT_STREQ(text, "text");
}

// --- Counts and indices

TEST(CAnalysisCounts, ANegativeCountIsRefused) {
  const std::vector<KestrelStream> streams = {stream("1", 2)};
  for (const std::int32_t count : {-1, -2, INT_MIN + 1, INT_MIN}) {
    KestrelRequest bad = request("T2=Stereo", streams);
    bad.streamCount = count;
    EXPECT_EQ(refusalOf(&bad), refusal(KESTREL_BAD_COUNT)) << count;
    bad.streams = nullptr;
    EXPECT_NE(refusalOf(&bad).status, KESTREL_OK) << count;
  }
}

TEST(CAnalysisCounts, AHugeCountOfNothingIsRefused) {
  for (const std::uint32_t stride : {48U, 64U, 0U, 47U, 0xFFFFFFF8U, 0xFFFFFFFFU}) {
    KestrelRequest bad = request("T2=Stereo", {});
    bad.streamCount = INT_MAX;
    bad.streams = nullptr;
    bad.streamStride = stride;
    EXPECT_NE(refusalOf(&bad).status, KESTREL_OK) << stride;
  }
}

TEST(CAnalysisCounts, NoStreamsNeedNoArray) {
  const std::vector<KestrelStream> streams = {stream("1", 2)};
  KestrelRequest none = request("T2=Stereo", streams);
  none.streamCount = 0;
  EXPECT_EQ(outcomeOf(analysed(none)), KESTREL_UNTOUCHED);
  none.streams = nullptr;
  EXPECT_EQ(outcomeOf(analysed(none)), KESTREL_UNTOUCHED);
}

TEST(CAnalysisCounts, AnIndexOutsideAListIsRefused) {
  const std::vector<KestrelStream> streams = {stream("1", 3)};
  const Analysis analysis = analysed(request("T3=Stereo", streams));
  ASSERT_EQ(serviceCount(analysis), 1);
  ASSERT_EQ(findingCount(analysis), 1);
  for (const std::int32_t index : {INT_MIN, -1, 1, 2, INT_MAX}) {
    KestrelService service;
    KestrelFinding finding;
    std::memset(&service, 0x5A, sizeof service);
    std::memset(&finding, 0x5A, sizeof finding);
    service.structSize = sizeof service;
    finding.structSize = sizeof finding;
    const KestrelService serviceBefore = service;
    const KestrelFinding findingBefore = finding;
    char text[300] = "text";
    std::size_t needed = 77;
    EXPECT_EQ(kestrelGetService(analysis.get(), index, &service), KESTREL_BAD_INDEX) << index;
    EXPECT_EQ(kestrelGetFinding(analysis.get(), index, &finding), KESTREL_BAD_INDEX) << index;
    EXPECT_EQ(kestrelFindingText(analysis.get(), index, text, 300, &needed), KESTREL_BAD_INDEX);
    EXPECT_EQ(std::memcmp(&service, &serviceBefore, sizeof service), 0);
    EXPECT_EQ(std::memcmp(&finding, &findingBefore, sizeof finding), 0);
    EXPECT_STREQ(text, "text");
    EXPECT_EQ(needed, 77U);
  }
}

}  // namespace
}  // namespace kestrel::test
