// A file of results holds the answers to one question: what it was begun with is asked to go on.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/host/support/scan_program.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;

class ScanResumeOptionsTest : public ::testing::Test {
 protected:
  ScanResumeOptionsTest() {
    fs::create_directory(directory_ / "in");
    for (const char* name : {"rf64_stereo.wav", "mxf_8mono_mca.mxf"}) {
      fs::copy_file(fs::path(KESTREL_TEST_MEDIA) / name, directory_ / (std::string("in/") + name));
    }
    directory_.write("layout.txt", "T8=5.1 Mix,Stereo\nT2=Stereo\n");
  }

  ProgramRun scan(const std::string& options) const {
    return runScript(directory_ / "", "\"$KESTREL\" scan in -o r.jsonl " + options);
  }

  std::string results() const { return contentOf(directory_ / "r.jsonl"); }

  void expectRefusal(const std::string& options, const std::string& names) const {
    const std::string before = results();
    const ProgramRun refused = scan("--resume " + options);
    EXPECT_EQ(refused.exitCode, 2) << options;
    EXPECT_EQ(refused.output, "");
    EXPECT_EQ(refused.errors, "kestrel: \"r.jsonl\" holds results of other options (" + names +
                                  "): go on with those, or take another file\n");
    EXPECT_EQ(results(), before);
  }

  TemporaryDirectory directory_;
};

TEST_F(ScanResumeOptionsTest, eachLineHoldsThem) {
  ASSERT_EQ(scan("--layout-file layout.txt --strict --timeout 17").exitCode, 0);
  for (const auto& document : documentsIn(results())) {
    const auto& options = document.at("options");
    EXPECT_EQ(options.at("expectation").at("description"), "T8=5.1 Mix,Stereo;T2=Stereo");
    EXPECT_EQ(options.at("order"), "L R C LFE Ls Rs");
    EXPECT_EQ(options.at("labelCheck"), true);
    EXPECT_EQ(options.at("reportAll"), false);
    EXPECT_EQ(options.at("strict"), true);
    EXPECT_EQ(options.at("timeout"), 17);
  }
}

TEST_F(ScanResumeOptionsTest, otherOnesAreRefused) {
  ASSERT_EQ(scan("").exitCode, 0);
  expectRefusal("--strict", "--strict");
  expectRefusal("--code 8b", "the expectation");
  expectRefusal("--report-all --no-label-check --order 'L C R Ls Rs LFE'",
                "--order, --no-label-check, --report-all");
  EXPECT_EQ(scan("--resume --timeout 60 --jobs 1 --quiet").exitCode, 0);
}

TEST_F(ScanResumeOptionsTest, aTornFileOfOtherOptionsIsLeftAsItIs) {
  ASSERT_EQ(scan("--item 7").exitCode, 1);
  directory_.write("r.jsonl", results() + "{\"schema\":\"kes");
  expectRefusal("--item 1", "the expectation");
  expectRefusal("", "the expectation");
}

TEST_F(ScanResumeOptionsTest, aLayoutFileThatHasChangedIsAnotherQuestion) {
  ASSERT_EQ(scan("--layout-file layout.txt").exitCode, 0);
  directory_.write("layout.txt", "T8=Stereo,5.1 Mix\nT2=Stereo\n");
  expectRefusal("--layout-file layout.txt", "the expectation");
}

TEST_F(ScanResumeOptionsTest, resultsOfFilesThatAreNotScannedCountToo) {
  ASSERT_EQ(scan("--strict").exitCode, 0);
  fs::rename(directory_ / "in/rf64_stereo.wav", directory_ / "in/new.wav");
  fs::remove(directory_ / "in/mxf_8mono_mca.mxf");
  expectRefusal("", "--strict");
}

TEST_F(ScanResumeOptionsTest, linesWithoutOptionsAreDoneAgain) {
  ASSERT_EQ(scan("").exitCode, 0);
  std::string older;
  for (nlohmann::ordered_json document : documentsIn(results())) {
    document.erase("options");
    older += document.dump() + "\n";
  }
  directory_.write("r.jsonl", older);
  const ProgramRun again = scan("--resume --code 8b");
  EXPECT_EQ(again.exitCode, 1) << again.errors;
  EXPECT_NE(again.errors.find("conforms          1\n"), std::string::npos) << again.errors;
  EXPECT_EQ(results().substr(0, older.size()), older);
  EXPECT_EQ(namesIn(results()).size(), 4U);
}

}  // namespace
}  // namespace kestrel::host
