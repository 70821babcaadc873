#include "host/reporting/scan_summary.h"

#include <gtest/gtest.h>

#include "tests/host/support/html_documents.h"

namespace kestrel::host {
namespace {

TEST(ScanSummaryTest, aConformingFileHasTheExpectedLayout) {
  const ResultFacts facts = factsOf(conformingDocument());
  EXPECT_EQ(facts.verdict, "conforms");
  EXPECT_EQ(facts.layout, "Stereo");
  EXPECT_EQ(facts.exitCode, 0);
  EXPECT_TRUE(facts.findings.empty());
}

TEST(ScanSummaryTest, anotherFileHasTheBestSupportedLayout) {
  EXPECT_EQ(factsOf(brokenDocument()).layout, "5.1 Mix, Mono, Mono");
  EXPECT_EQ(factsOf(codedDocument()).layout, "Stereo, Dolby E");
  EXPECT_EQ(factsOf(unexaminedDocument()).layout, "none");
}

TEST(ScanSummaryTest, aFindingCountsOncePerFile) {
  Json document = brokenDocument();
  document["findings"].push_back(document["findings"][0]);
  EXPECT_EQ(factsOf(document).findings,
            (std::vector<std::string>{"file-truncated", "formats-differ", "label-order"}));
  EXPECT_EQ(factsOf(unexaminedDocument()).findings, (std::vector<std::string>{"no-media"}));
}

TEST(ScanSummaryTest, theHighestCountComesFirst) {
  const std::vector<std::pair<std::string, std::size_t>> expected = {{"c", 3}, {"a", 1}, {"b", 1}};
  EXPECT_EQ(byCount({{"a", 1}, {"b", 1}, {"c", 3}}), expected);
}

TEST(ScanSummaryTest, resultsAreCountedInTables) {
  ScanSummary summary;
  for (const Json& document : allDocuments()) {
    summary.add(factsOf(document));
  }
  EXPECT_EQ(summary.files, 4U);
  EXPECT_EQ(summary.exitCode, 2);
  EXPECT_EQ(summaryText(summary),
            "Verdict           Files\n"
            "conforms          1\n"
            "does not conform  1\n"
            "identified        1\n"
            "not examined      1\n"
            "\n"
            "Layout               Files\n"
            "5.1 Mix, Mono, Mono  1\n"
            "Stereo               1\n"
            "Stereo, Dolby E      1\n"
            "none                 1\n"
            "\n"
            "Finding         Files\n"
            "file-truncated  1\n"
            "formats-differ  1\n"
            "label-order     1\n"
            "no-media        1\n");
}

}  // namespace
}  // namespace kestrel::host
