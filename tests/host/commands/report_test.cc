// `kestrel report` as its users see it.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "tests/host/support/html_browser.h"
#include "tests/host/support/scan_program.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;

constexpr char kOlderPage[] = "<!DOCTYPE html>\n<meta name=\"generator\" content=\"kestrel\">\n";

class ReportTest : public ::testing::Test {
 protected:
  ProgramRun run(const std::string& script) const { return runScript(directory_ / "", script); }
  std::string contentIn(const std::string& name) const { return contentOf(directory_ / name); }

  TemporaryDirectory directory_;
};

TEST_F(ReportTest, aScanOfRealFilesBecomesAPage) {
  ASSERT_EQ(run("\"$KESTREL\" scan '" KESTREL_TEST_MEDIA "' --timeout 2 -q -o r.jsonl").exitCode,
            2);
  const ProgramRun report = run("\"$KESTREL\" report r.jsonl -o page.html");
  EXPECT_EQ(report.exitCode, 0);
  EXPECT_EQ(report.output + report.errors, "");
  EXPECT_EQ(run("\"$KESTREL\" report r.jsonl").output, contentIn("page.html"));
  ASSERT_TRUE(hasBrowser()) << "Chromium is not installed";
  const std::size_t files = documentsIn(contentIn("r.jsonl")).size();
  const nlohmann::json answers =
      askPage(contentIn("page.html"),
              {"document.querySelectorAll('section.file').length",
               "document.querySelector('section[data-verdict=conforms] svg .expected') !== null",
               "[...document.querySelectorAll('[id]')].length === "
               "new Set([...document.querySelectorAll('[id]')].map(e => e.id)).size"});
  EXPECT_EQ(answers, (nlohmann::json{files, true, true}));
  if (const char* pictures = std::getenv("KESTREL_KEEP_PICTURES"); pictures != nullptr) {
    takePicture(contentIn("page.html"), fs::path(pictures) / "media.png");
  }
}

TEST_F(ReportTest, thePageIsWrittenWholeOrNotAtAll) {
  directory_.write("page.html", kOlderPage);
  directory_.write("bad.jsonl", "text\n");
  const ProgramRun bad = run("\"$KESTREL\" report bad.jsonl -o page.html");
  EXPECT_EQ(bad.exitCode, 2);
  EXPECT_EQ(bad.errors,
            "kestrel: \"bad.jsonl\" is no file of results: line 1 is no result of kestrel\n");
  EXPECT_EQ(contentIn("page.html"), kOlderPage);
}

TEST_F(ReportTest, linesOfTwoScansBecomeOneFileWithEachFileOnce) {
  directory_.write("list",
                   KESTREL_TEST_MEDIA "/rf64_stereo.wav\n" KESTREL_TEST_MEDIA "/wav_mono.wav\n");
  ASSERT_EQ(run("\"$KESTREL\" scan --files-from list -q -o 1.jsonl").exitCode, 1);
  ASSERT_EQ(run("\"$KESTREL\" scan '" KESTREL_TEST_MEDIA "/wav_mono.wav' -q -o 2.jsonl").exitCode,
            1);
  ASSERT_EQ(run("\"$KESTREL\" report 1.jsonl 2.jsonl --format jsonl -o both.jsonl").exitCode, 0);
  EXPECT_EQ(namesIn(contentIn("both.jsonl")),
            (std::vector<std::string>{"rf64_stereo.wav", "wav_mono.wav"}));
  const ProgramRun totals =
      run("tr '\\n' '\\0' <list | \"$KESTREL\" report both.jsonl --format text"
          " --files-from - -0");
  EXPECT_EQ(totals.exitCode, 0) << totals.errors;
  EXPECT_EQ(totals.output, run("\"$KESTREL\" scan --files-from list -o x.jsonl").errors);
}

TEST_F(ReportTest, aListedFileWithoutAResultKeepsTheReportFromBeingMade) {
  ASSERT_EQ(
      run("\"$KESTREL\" scan '" KESTREL_TEST_MEDIA "/rf64_stereo.wav' -q -o r.jsonl").exitCode, 0);
  directory_.write("out", kOlderPage);
  directory_.write("list", "none.wav\n");
  const ProgramRun report =
      run("\"$KESTREL\" report r.jsonl --files-from list --format jsonl -o out");
  EXPECT_EQ(report.exitCode, 2);
  EXPECT_EQ(report.errors,
            "kestrel: 1 of the 1 files of the list have no result, such as \"none.wav\"\n");
  EXPECT_EQ(contentIn("out"), kOlderPage);
  EXPECT_EQ(run("\"$KESTREL\" report r.jsonl -0").errors, "kestrel: -0 needs --files-from\n");
  EXPECT_EQ(run("\"$KESTREL\" report r.jsonl --files-from none").exitCode, 2);
  EXPECT_EQ(run("\"$KESTREL\" report r.jsonl --format pdf").exitCode, 2);
}

TEST_F(ReportTest, aPlaceThatCannotBeWrittenIsSaid) {
  ASSERT_EQ(
      run("\"$KESTREL\" scan '" KESTREL_TEST_MEDIA "/rf64_stereo.wav' -q -o r.jsonl").exitCode, 0);
  for (const char* place : {"/dev/full", "none/page.html"}) {
    const ProgramRun report = run(std::string("\"$KESTREL\" report r.jsonl -o ") + place);
    EXPECT_EQ(report.exitCode, 2) << place;
    EXPECT_TRUE(report.errors.starts_with("kestrel: ")) << report.errors;
  }
  EXPECT_EQ(run("\"$KESTREL\" report r.jsonl >/dev/full").exitCode, 2);
  EXPECT_EQ(run("\"$KESTREL\" report").exitCode, 2);
}

}  // namespace
}  // namespace kestrel::host
