// What -o does to what stands under its name already.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "tests/host/support/scan_program.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;

constexpr char kInput[] = "\" is itself an input: give -o another name";
constexpr char kForeign[] =
    "\" was not written by kestrel: give -o another name, or --force to replace it";

class OutputPlaceTest : public ::testing::Test {
 protected:
  OutputPlaceTest() {
    fs::create_directory(path("in"));
    fs::copy_file(fs::path(KESTREL_TEST_MEDIA) / "rf64_stereo.wav", path("in/a.wav"));
    fs::copy_file(fs::path(KESTREL_TEST_MEDIA) / "rf64_stereo.wav", path("in/b.wav"));
    fs::create_hard_link(path("in/a.wav"), path("hard"));
    fs::create_symlink("in/a.wav", path("soft"));
    directory_.write("notes", "precious\n");
    directory_.write("list", "in/a.wav\n");
    directory_.write("layout", "T2=Stereo\n");
    directory_.write("media.json", R"({"media": {"@ref": "x.wav", "track": []}})");
    kestrel("scan in/b.wav -q -o r.jsonl");
  }

  std::string path(const std::string& name) const { return directory_ / name; }
  std::string content(const std::string& name) const { return contentOf(path(name)); }
  ProgramRun run(const std::string& script) const { return runScript(path(""), script); }
  ProgramRun kestrel(const std::string& words) const { return run("\"$KESTREL\" " + words); }

  void expectUntouched(const std::string& words, const std::string& output,
                       const std::string& why) const {
    const std::string before = content(output);
    expectFailure(kestrel(words), '"' + output + why);
    EXPECT_EQ(content(output), before) << words;
  }

  TemporaryDirectory directory_;
};

TEST_F(OutputPlaceTest, anInputIsNeverAnOutput) {
  for (const std::string force : {"", " --force"}) {
    for (const std::string output : {"in/a.wav", "./in//a.wav", "hard", "soft"}) {
      expectUntouched("inspect in/b.wav in/a.wav -o " + output + force, output, kInput);
      expectUntouched("scan in -o " + output + force, output, kInput);
    }
    expectUntouched("inspect in/a.wav --layout-file layout -o layout" + force, "layout", kInput);
    expectUntouched("inspect --streams-from media.json -o media.json" + force, "media.json",
                    kInput);
    expectUntouched("inspect --streams-from - -o media.json <media.json" + force, "media.json",
                    kInput);
    expectUntouched("scan in --layout-file layout -o layout" + force, "layout", kInput);
    expectUntouched("scan --files-from list -o list" + force, "list", kInput);
    expectUntouched("scan --files-from - -o list <list" + force, "list", kInput);
    expectUntouched("report r.jsonl -o r.jsonl" + force, "r.jsonl", kInput);
    expectUntouched("report r.jsonl --files-from list -o list" + force, "list", kInput);
  }
}

TEST_F(OutputPlaceTest, anEmptyMediaFileThatAScanFindsIsNoOutput) {
  directory_.write("in/empty.wav", "");
  expectUntouched("scan in -o in/empty.wav", "in/empty.wav", kInput);
  expectFailure(kestrel("scan in none.wav -o none.wav"), std::string("\"none.wav") + kInput);
  EXPECT_FALSE(fs::exists(path("none.wav")));
}

TEST_F(OutputPlaceTest, whatAnotherProgramWroteIsReplacedByForceOnly) {
  expectUntouched("inspect -o in/a.wav in/b.wav", "in/a.wav", kForeign);
  expectUntouched("inspect in/a.wav -o notes", "notes", kForeign);
  expectUntouched("report r.jsonl -o notes", "notes", kForeign);
  expectUntouched("scan in -o notes", "notes",
                  "\" holds something already; --resume goes on with results, --force replaces it");
  EXPECT_EQ(kestrel("inspect in/a.wav -o notes --force").exitCode, 0);
  EXPECT_TRUE(content("notes").starts_with("File      in/a.wav"));
  directory_.write("notes", "precious\n");
  EXPECT_EQ(kestrel("report r.jsonl -o notes --force").exitCode, 0);
  EXPECT_TRUE(content("notes").starts_with("<!DOCTYPE html>"));
  EXPECT_EQ(kestrel("scan in -q -o notes --force").exitCode, 0);
  EXPECT_EQ(namesIn(content("notes")).size(), 2U);
  expectFailure(kestrel("scan in -q -o notes --force --resume"),
                "--resume goes on with results and --force replaces them: give one of them");
}

TEST_F(OutputPlaceTest, whatItWroteItselfIsReplaced) {
  fs::remove(path("notes"));
  for (const std::string words :
       {"inspect in/a.wav -o", "inspect in/a.wav --format json -o",
        "inspect in/a.wav in/b.wav --format json -o", "inspect in/a.wav --format html -o",
        "inspect in/a.wav in/b.wav -o", "report r.jsonl -o", "report r.jsonl --format text -o",
        "report r.jsonl --format jsonl -o", "report r.jsonl -o"}) {
    const ProgramRun written = kestrel(words + " notes");
    EXPECT_EQ(written.exitCode, 0) << words;
    EXPECT_EQ(written.errors + written.output, "") << words;
  }
  directory_.write("notes", "");
  EXPECT_EQ(kestrel("inspect in/a.wav -o notes").exitCode, 0) << "an empty file is free";
}

TEST_F(OutputPlaceTest, aScanGoesOnAmongItsOwnFiles) {
  ASSERT_EQ(kestrel("scan in -q -o in/results.jsonl").exitCode, 0);
  EXPECT_EQ(kestrel("scan in -q -o in/results.jsonl --resume").exitCode, 0);
  EXPECT_EQ(namesIn(content("in/results.jsonl")).size(), 2U);
}

TEST_F(OutputPlaceTest, aDashIsTheStandardOutput) {
  for (const std::string words : {"inspect in/a.wav", "scan in/a.wav -q", "report r.jsonl"}) {
    const ProgramRun dashed = kestrel(words + " -o -");
    EXPECT_EQ(dashed.exitCode, 0) << dashed.errors;
    EXPECT_EQ(dashed.output, kestrel(words).output);
  }
  EXPECT_FALSE(fs::exists(path("-")));
  expectFailure(kestrel("scan in -o - --resume"), "--resume needs -o with a file");
  EXPECT_EQ(kestrel("inspect in/a.wav -o /dev/stdout").output, kestrel("inspect in/a.wav").output);
  EXPECT_EQ(kestrel("inspect in/a.wav -o /dev/null").exitCode, 0);
}

TEST_F(OutputPlaceTest, whatFailsAtTheEndOfAFileIsSaidAndLeavesTheOlderOne) {
  ASSERT_EQ(kestrel("inspect in/a.wav in/b.wav -o out").exitCode, 0);
  const std::string older = content("out");
  const struct {
    const char* call;
    const char* why;
  } rows[] = {{"fsync", "Input/output error"}, {"close", "Disk quota exceeded"}};
  for (const auto& row : rows) {
    const std::string failing = std::string("export " KESTREL_FAILING_CALLS) +
                                " KESTREL_FAIL_CALL=" + row.call + " KESTREL_FAIL_FILE=";
    for (const std::string words : {"inspect in/a.wav", "report r.jsonl"}) {
      expectFailure(run(failing + ".tmp\n\"$KESTREL\" " + words + " -o out"),
                    std::string("the result cannot be written to \"out\": ") + row.why);
      EXPECT_EQ(content("out"), older);
    }
    expectFailure(run(failing + "/s.jsonl\n\"$KESTREL\" scan in -q -o s.jsonl"),
                  std::string("\"s.jsonl\" cannot be written: ") + row.why);
    EXPECT_EQ(namesIn(content("s.jsonl")).size(), 2U) << "the lines stay";
    fs::remove(path("s.jsonl"));
  }
  const ProgramRun quota = run("export " KESTREL_FAILING_CALLS
                               " KESTREL_FAIL_CALL=close KESTREL_FAIL_FILE=/shown\n"
                               "\"$KESTREL\" inspect in/a.wav >shown");
  EXPECT_EQ(quota.exitCode, 2);
  EXPECT_TRUE(holds(quota.errors, "standard output: Disk quota exceeded")) << quota.errors;
  for (const auto& entry : fs::directory_iterator(path(""))) {
    EXPECT_FALSE(entry.path().filename().string().ends_with(".tmp")) << entry.path();
  }
}

TEST_F(OutputPlaceTest, whatOthersWriteToTheStandardOutputStays) {
  for (const std::string words : {"inspect in/a.wav", "scan in/a.wav -q", "report r.jsonl"}) {
    const ProgramRun among =
        run("echo first\n\"$KESTREL\" " + words + " -o /dev/stdout\necho last");
    EXPECT_EQ(among.output, "first\n" + kestrel(words).output + "last\n");
    EXPECT_EQ(among.errors, "");
  }
}

// The limit is in blocks of 512 bytes; what exceeds it raises SIGXFSZ, unless that is ignored.
TEST_F(OutputPlaceTest, aLimitToTheSizeOfFilesLeavesTheOlderOne) {
  const std::string inspect = "\"$KESTREL\" inspect in/a.wav --format json -o out";
  ASSERT_EQ(run(inspect).exitCode, 0);
  const std::string older = content("out");
  expectFailure(run("ulimit -f 1\n" + inspect),
                "the result cannot be written to \"out\": File too large");
  EXPECT_EQ(content("out"), older);
  for (const auto& entry : fs::directory_iterator(path(""))) {
    EXPECT_FALSE(entry.path().filename().string().ends_with(".tmp")) << entry.path();
  }
}

}  // namespace
}  // namespace kestrel::host
