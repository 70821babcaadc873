// The forms of a report beside its page: totals and lines, and reports of listed files only.
#include <gtest/gtest.h>

#include "host/reporting/report.h"
#include "host/reporting/results_file.h"
#include "tests/host/support/html_documents.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;

Json named(Json document, const std::string& file) {
  document["file"] = file;
  return document;
}

class ReportFormsTest : public ::testing::Test {
 protected:
  fs::path write(const std::string& name, const std::string& content) const {
    return directory_.write(name, content);
  }

  void expectRefusal(const std::vector<fs::path>& wanted, const std::string& why) const {
    for (const auto make : {reportPage, reportTotals, reportLines}) {
      try {
        make({directory_ / "r.jsonl"}, wanted);
        ADD_FAILURE() << "made: " << why;
      } catch (const NoResults& refusal) {
        EXPECT_EQ(refusal.what(), why);
      }
    }
  }

  TemporaryDirectory directory_;
};

TEST_F(ReportFormsTest, totalsCountTheLastResultOfEachFile) {
  const fs::path monday =
      write("1.jsonl", line(named(unexaminedDocument(), "dir/good.mov")) + line(codedDocument()));
  const fs::path tuesday = write("2.jsonl", line(named(conformingDocument(), "./dir//good.mov")) +
                                                line(named(codedDocument(), "third.wav")));
  EXPECT_EQ(reportTotals({monday, tuesday}).text,
            "Verdict     Files\n"
            "identified  2\n"
            "conforms    1\n"
            "\n"
            "Layout           Files\n"
            "Stereo, Dolby E  2\n"
            "Stereo           1\n");
}

TEST_F(ReportFormsTest, linesStandAsTheyWereByTheirPlaces) {
  Json older = named(unexaminedDocument(), "./b.wav");
  Json first = named(codedDocument(), "/a \xc3\xa9 \"q\"\n\\ .wav");
  first["fraction"] = 0.1;
  first["whole"] = 30.0;
  first["large"] = 18446744073709551615U;
  const Json second = named(conformingDocument(), "b.wav");
  const fs::path results = write("r.jsonl", line(older) + line(second) + line(first));
  EXPECT_EQ(reportLines({results}).text, line(first) + line(second));
  const fs::path again = write("again.jsonl", reportLines({results}).text);
  EXPECT_EQ(reportLines({again, results, again}).text, line(first) + line(second));
}

TEST_F(ReportFormsTest, aListedFileIsTheSameByWhateverName) {
  const fs::path results = write("r.jsonl", line(named(codedDocument(), "dir/a.wav")) +
                                                line(named(codedDocument(), "dir/b.wav")));
  EXPECT_EQ(reportLines({results}, {{fs::absolute("dir//./b.wav")}}).text,
            line(named(codedDocument(), "dir/b.wav")));
  const std::vector<fs::path> twice = {"dir/a.wav", "./dir/a.wav"};
  EXPECT_TRUE(reportTotals({results}, twice)
                  .text.starts_with("Verdict     Files\n"
                                    "identified  1\n"
                                    "\n"));
  const std::string page = reportPage({results}, {{"dir/a.wav"}}).text;
  EXPECT_NE(page.find("a.wav"), std::string::npos);
  EXPECT_EQ(page.find("b.wav"), std::string::npos);
}

TEST_F(ReportFormsTest, aListedFileWithoutAResultIsNamed) {
  write("r.jsonl", line(named(codedDocument(), "a.wav")));
  expectRefusal({"a.wav", "./a.wav", "none\n.wav"},
                "1 of the 2 files of the list have no result, such as \"none\\n.wav\"");
  expectRefusal({"y.wav", "x.wav", "z.wav"},
                "3 of the 3 files of the list have no result, such as \"y.wav\"");
  expectRefusal({}, "no result to report");
}

TEST_F(ReportFormsTest, aTornLastLineIsNoResult) {
  const std::string torn = line(named(codedDocument(), "b.wav")).substr(0, 40);
  const fs::path results = write("r.jsonl", line(named(codedDocument(), "a.wav")) + torn);
  for (const auto make : {reportPage, reportTotals, reportLines}) {
    EXPECT_EQ(make({results}, std::nullopt).warnings.size(), 1U);
  }
  expectRefusal({"a.wav", "b.wav"},
                "1 of the 2 files of the list have no result, such as \"b.wav\"");
}

TEST_F(ReportFormsTest, aResultThatLacksPartsIsRefused) {
  for (const char* part : {"verdict", "findings", "error", "identification", "expectation"}) {
    Json document = codedDocument();
    document.erase(part);
    const fs::path results = write("r.jsonl", line(document));
    EXPECT_THROW(reportTotals({results}), NoResults) << part;
    EXPECT_THROW(reportLines({results}), NoResults) << part;
  }
}

}  // namespace
}  // namespace kestrel::host
