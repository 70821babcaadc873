#include "host/scanning/scan_line.h"

#include <gtest/gtest.h>

#include "host/judging/expectation.h"
#include "tests/host/support/html_documents.h"

namespace kestrel::host {
namespace {

using Names = std::vector<std::string>;

InspectOptions expecting(const Expectation& expectation) {
  InspectOptions options;
  options.expectation = expectation;
  return options;
}

Names differing(const InspectOptions& before, const InspectOptions& now) {
  const Names names = differingOptions(optionsOf(before), optionsOf(now));
  EXPECT_EQ(differingOptions(optionsOf(now), optionsOf(before)), names);
  return names;
}

TEST(ScanOptionsTest, eachThatChangesAResultIsTold) {
  const struct {
    const char* name;
    void (*change)(InspectOptions& options);
  } rows[] = {
      {"the expectation", [](InspectOptions& o) { o.expectation = expectedCode("8b"); }},
      {"--order", [](InspectOptions& o) { o.surroundChannelOrder = "L C R Ls Rs LFE"; }},
      {"--no-label-check", [](InspectOptions& o) { o.checkLabels = false; }},
      {"--report-all", [](InspectOptions& o) { o.reportAll = true; }},
      {"--strict", [](InspectOptions& o) { o.isStrict = true; }},
  };
  InspectOptions all;
  Names names;
  for (const auto& row : rows) {
    InspectOptions changed;
    row.change(changed);
    row.change(all);
    names.emplace_back(row.name);
    EXPECT_EQ(differing({}, changed), Names{row.name});
  }
  EXPECT_EQ(differing({}, all), names);
  EXPECT_EQ(differing(all, all), Names());
}

TEST(ScanOptionsTest, theTimeLimitMayChange) {
  InspectOptions longer;
  longer.timeLimit = std::chrono::seconds(300);
  EXPECT_EQ(differing({}, longer), Names());
}

TEST(ScanOptionsTest, anExpectationIsTheSameHoweverItIsSpelled) {
  const auto code = expecting(expectedCode("8b"));
  EXPECT_EQ(differing(code, expecting(expectedCode("EBU R 123: 8B"))), Names());
  EXPECT_EQ(differing(code, expecting(expectedCode("8d"))), Names{"the expectation"});
  EXPECT_EQ(differing(code, expecting(expectedItem("7"))), Names{"the expectation"});
  const auto layout = expecting(expectedLayout("T2=Stereo"));
  EXPECT_EQ(differing(layout, expecting(expectedLayout("T2=Mono,Mono"))), Names{"the expectation"});
}

TEST(ScanOptionsTest, optionsThatALineDoesNotKnowDiffer) {
  EXPECT_EQ(differingOptions(Json::object(), optionsOf({})).size(), 4U);
}

Json withOptions(Json document, int timeout) {
  InspectOptions options;
  options.timeLimit = std::chrono::seconds(timeout);
  document[kOptionsMember] = optionsOf(options);
  return document;
}

bool isLastingNow(const Json& document, int timeout) {
  InspectOptions options;
  options.timeLimit = std::chrono::seconds(timeout);
  return isLasting(document, optionsOf(options));
}

TEST(ScanOptionsTest, aFileThatWasNotExaminedIsTriedAgain) {
  EXPECT_TRUE(isLastingNow(withOptions(conformingDocument(), 30), 30));
  EXPECT_TRUE(isLastingNow(withOptions(brokenDocument(), 30), 300));
  EXPECT_FALSE(isLastingNow(withOptions(unexaminedDocument(), 30), 30));
}

TEST(ScanOptionsTest, aQuickReadIsTriedAgainWithMoreTime) {
  Json document = withOptions(conformingDocument(), 30);
  document["reader"] = "libmediainfo-quick";
  EXPECT_FALSE(isLastingNow(document, 31));
  EXPECT_TRUE(isLastingNow(document, 30));
  EXPECT_TRUE(isLastingNow(document, 29));
}

TEST(ScanOptionsTest, aLineWithoutOptionsDoesNotTell) {
  EXPECT_FALSE(isLastingNow(conformingDocument(), 30));
}

}  // namespace
}  // namespace kestrel::host
