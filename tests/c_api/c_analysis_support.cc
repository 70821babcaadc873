#include "tests/c_api/c_analysis_support.h"

#include <gtest/gtest.h>

#include <ostream>

namespace kestrel::test {

Analysis analysed(const KestrelRequest& request) {
  KestrelAnalysis* analysis = nullptr;
  std::size_t badByte = 77;
  std::int32_t badStream = 77;
  EXPECT_EQ(kestrelAnalyse(&request, &analysis, &badByte, &badStream), KESTREL_OK);
  EXPECT_NE(analysis, nullptr);
  EXPECT_EQ(badByte, 77U);
  EXPECT_EQ(badStream, 77);
  return Analysis(analysis);
}

std::ostream& operator<<(std::ostream& out, const Refusal& refusal) {
  return out << kestrelStatusText(refusal.status) << ", byte " << refusal.badByte << " of stream "
             << refusal.badStream;
}

Refusal refusalOf(const KestrelRequest* request) {
  char elsewhere = 0;
  auto* analysis = reinterpret_cast<KestrelAnalysis*>(&elsewhere);
  Refusal refusal{KESTREL_OK, 77, 77};
  refusal.status = kestrelAnalyse(request, &analysis, &refusal.badByte, &refusal.badStream);
  EXPECT_EQ(analysis, nullptr);
  return refusal;
}

Refusal refusal(KestrelStatus status) { return {status, 77, 77}; }

std::int32_t outcomeOf(const Analysis& analysis) {
  std::int32_t outcome = -1;
  EXPECT_EQ(kestrelOutcome(analysis.get(), &outcome, nullptr), KESTREL_OK);
  return outcome;
}

std::int32_t serviceCount(const Analysis& analysis) {
  std::int32_t count = -1;
  EXPECT_EQ(kestrelServiceCount(analysis.get(), &count), KESTREL_OK);
  return count;
}

std::int32_t findingCount(const Analysis& analysis) {
  std::int32_t count = -1;
  EXPECT_EQ(kestrelFindingCount(analysis.get(), &count), KESTREL_OK);
  return count;
}

KestrelService serviceAt(const Analysis& analysis, std::int32_t index) {
  KestrelService service{};
  service.structSize = sizeof service;
  EXPECT_EQ(kestrelGetService(analysis.get(), index, &service), KESTREL_OK) << index;
  return service;
}

KestrelFinding findingAt(const Analysis& analysis, std::int32_t index) {
  KestrelFinding finding{};
  finding.structSize = sizeof finding;
  EXPECT_EQ(kestrelGetFinding(analysis.get(), index, &finding), KESTREL_OK) << index;
  return finding;
}

std::string sentenceAt(const Analysis& analysis, std::int32_t index) {
  std::size_t needed = 0;
  EXPECT_EQ(kestrelFindingText(analysis.get(), index, nullptr, 0, &needed),
            KESTREL_BUFFER_TOO_SMALL);
  std::string text(needed, '?');
  EXPECT_EQ(kestrelFindingText(analysis.get(), index, text.data(), needed, &needed), KESTREL_OK);
  return text.c_str();
}

}  // namespace kestrel::test
