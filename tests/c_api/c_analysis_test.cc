// What an analysis of the plain C interface tells, and that it keeps nothing of its request.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "api/kestrel.h"
#include "tests/c_api/c_analysis_support.h"
#include "tests/c_api/c_request.h"

namespace kestrel::test {
namespace {

TEST(CAnalysis, TellsTheOutcomeAndTheTrackTotal) {
  KestrelStream other = stream("2", 1);
  other.formatKey2 = 16;
  const struct {
    std::vector<KestrelStream> streams;
    std::int32_t outcome;
    std::uint32_t total;
    std::int32_t services;
  } rows[] = {{{stream("1", 2)}, KESTREL_FILLED, 2, 1},
              {{stream("1", 1), other}, KESTREL_EMPTIED, 2, 0},
              {{stream("1", 3)}, KESTREL_UNTOUCHED, 3, 0},
              {{stream("1", -1)}, KESTREL_UNTOUCHED, 4294967295U, 0},
              {{sharedPair("1", 1, 1), sharedPair("2", 1, 2)}, KESTREL_UNTOUCHED, 2, 0},
              {{sharedPair("1", 1, 1), sharedPair("2-1", 1, 2)}, KESTREL_UNTOUCHED, 4, 0},
              {{}, KESTREL_UNTOUCHED, 0, 0}};
  for (const auto& row : rows) {
    const Analysis analysis = analysed(request("T2=Stereo", row.streams));
    std::int32_t outcome = -1;
    std::uint32_t total = 77;
    EXPECT_EQ(kestrelOutcome(analysis.get(), &outcome, &total), KESTREL_OK);
    EXPECT_EQ(outcome, row.outcome);
    EXPECT_EQ(total, row.total);
    EXPECT_EQ(serviceCount(analysis), row.services);
  }
}

TEST(CAnalysis, KeepsNothingOfTheRequest) {
  std::string description = "T8=5.1 Mix,Stereo,Other";
  std::string labels = "Rs Ls LFE C R L";
  std::vector<KestrelStream> streams = {stream("1", 8, labels.c_str())};
  const Analysis analysis = analysed(request(description.c_str(), streams));
  const std::string sentence = sentenceAt(analysis, 0);
  std::fill(description.begin(), description.end(), '#');
  std::fill(labels.begin(), labels.end(), '#');
  streams.assign(1, KestrelStream{});
  EXPECT_STREQ(serviceAt(analysis, 0).label, "Rs Ls LFE C R L");
  EXPECT_EQ(sentenceAt(analysis, 0), sentence);
}

TEST(CAnalysis, ReportAllReportsServicesBehindAHyphen) {
  const std::vector<KestrelStream> streams = {stream("1", 4)};
  KestrelRequest asked = request("T4=-Stereo,Stereo", streams);
  EXPECT_EQ(serviceAt(analysed(asked), 0).serviceIndex, 1);
  for (const int yes : {1, 2, 255}) {
    asked.reportAll = static_cast<std::uint8_t>(yes);
    const Analysis analysis = analysed(asked);
    ASSERT_EQ(serviceCount(analysis), 2);
    EXPECT_EQ(serviceAt(analysis, 0).requested, 0);
    EXPECT_EQ(serviceAt(analysis, 1).requested, 1);
  }
}

}  // namespace
}  // namespace kestrel::test
