#include "host/reporting/report.h"

#include <gtest/gtest.h>

#include "host/basics/text_input.h"
#include "host/reporting/results_file.h"
#include "tests/host/support/html_documents.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

std::size_t count(const std::string& text, const std::string& part) {
  std::size_t times = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++times;
  }
  return times;
}

class ReportPageTest : public ::testing::Test {
 protected:
  Report report(const std::string& content) const {
    return reportPage({directory_.write("r.jsonl", content)});
  }

  void expectRefusal(const std::string& content, const std::string& why) const {
    try {
      report(content);
      FAIL() << "taken: " << content;
    } catch (const NoResults& refusal) {
      EXPECT_NE(std::string(refusal.what()).find(why), std::string::npos) << refusal.what();
    }
  }

  TemporaryDirectory directory_;
};

TEST_F(ReportPageTest, filesStandInTheOrderOfTheirNames) {
  const std::string html = report(line(conformingDocument()) + line(codedDocument())).text;
  EXPECT_EQ(count(html, "<section class=\"file\""), 2U);
  EXPECT_LT(html.find("<bdi>coded.wav</bdi>"), html.find("<bdi>good.mov</bdi>"));
  EXPECT_NE(html.find("<title>The audio of 2 files</title>"), std::string::npos);
}

TEST_F(ReportPageTest, theLastResultOfAFileCounts) {
  Json changed = conformingDocument();
  changed["verdict"]["result"] = "does-not-conform";
  const auto first = directory_.write("1.jsonl", line(changed) + line(conformingDocument()));
  const auto second = directory_.write("2.jsonl", line(changed));
  EXPECT_EQ(count(reportPage({first}).text, "data-verdict=\"conforms\""), 1U);
  const std::string html = reportPage({first, second}).text;
  EXPECT_EQ(count(html, "<section class=\"file\""), 1U);
  EXPECT_EQ(count(html, "data-verdict=\"does-not-conform\""), 1U);
}

TEST_F(ReportPageTest, aFileIsTheSameByWhateverName) {
  Json newer = conformingDocument();
  newer["file"] = "./dir//good.mov";
  newer["verdict"]["result"] = "does-not-conform";
  Json older = conformingDocument();
  older["file"] = "dir/good.mov";
  const std::string html = report(line(older) + line(codedDocument()) + line(newer)).text;
  EXPECT_EQ(count(html, "<section class=\"file\""), 2U);
  EXPECT_EQ(count(html, "data-verdict=\"conforms\""), 0U);
  EXPECT_EQ(count(html, "<bdi>./dir//good.mov</bdi>"), 1U);
}

TEST_F(ReportPageTest, linesWithAndWithoutOptionsAreTaken) {
  Json document = codedDocument();
  document["options"] = {{"strict", true}};
  EXPECT_EQ(
      count(report(line(conformingDocument()) + line(document)).text, "<section class=\"file\""),
      2U);
}

TEST_F(ReportPageTest, aTornLastLineIsLeftOutWithAWarning) {
  const std::string whole = line(conformingDocument());
  const Report page = report(whole + line(codedDocument()).substr(0, 40));
  EXPECT_EQ(count(page.text, "<section class=\"file\""), 1U);
  ASSERT_EQ(page.warnings.size(), 1U);
  EXPECT_NE(page.warnings[0].find("r.jsonl\": the last line is torn"), std::string::npos);
  EXPECT_TRUE(report(whole.substr(0, whole.size() - 1)).warnings.empty());
}

TEST_F(ReportPageTest, whatIsNoFileOfResultsIsRefused) {
  expectRefusal("", "no result to report");
  expectRefusal("text\n", "line 1 is no result");
  expectRefusal("{\"schema\":\"kestrel-result-2\",\"file\":\"a\"}\n", "line 1 is no result");
  expectRefusal(line(conformingDocument()) + "{}\n" + line(codedDocument()), "line 2 is no result");
  expectRefusal("[" + conformingDocument().dump() + "]\n", "line 1 is no result");
  expectRefusal(std::string(100000, '['), "line 1 is no result");
  EXPECT_THROW(reportPage({directory_ / "none"}), InputError);
  EXPECT_THROW(reportPage({directory_ / ""}), InputError);
}

TEST_F(ReportPageTest, aResultThatLacksPartsIsRefused) {
  for (const char* part : {"verdict", "tracks", "findings", "trackTotal", "error"}) {
    Json document = conformingDocument();
    document.erase(part);
    expectRefusal(line(document), "r.jsonl\": line 1 is not a whole result: ");
  }
  Json document = conformingDocument();
  document["fileBytes"] = "zz";
  expectRefusal(line(document), "is not a whole result");
  document = conformingDocument();
  document["tracks"][0]["streams"][0] = 99;
  expectRefusal(line(document), "is not a whole result");
}

}  // namespace
}  // namespace kestrel::host
