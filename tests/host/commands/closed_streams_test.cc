// The program is started with some of its standard streams closed, as by ">&-" of a shell.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/host/support/scan_program.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;

constexpr char kNotWritten[] =
    "kestrel: the result cannot be written to the standard output: Bad file descriptor\n";

class ClosedStreamsTest : public ::testing::Test {
 protected:
  ClosedStreamsTest() {
    fs::copy_file(fs::path(KESTREL_TEST_MEDIA) / "rf64_stereo.wav", directory_ / "a.wav");
    run("scan a.wav -q -o r.jsonl");
  }

  ProgramRun run(const std::string& words) const {
    return runScript(directory_ / "", "\"$KESTREL\" " + words);
  }
  std::string content(const std::string& name) const { return contentOf(directory_ / name); }

  TemporaryDirectory directory_;
};

TEST_F(ClosedStreamsTest, aResultForAClosedOutputIsNotWritten) {
  for (const std::string words : {"inspect a.wav", "inspect a.wav --format json", "report r.jsonl",
                                  "catalogue", "explain T2=Stereo", "--version"}) {
    for (const std::string closed : {" >&-", " <&- >&-"}) {
      const ProgramRun failed = run(words + closed);
      EXPECT_EQ(failed.exitCode, 2) << words;
      EXPECT_EQ(failed.errors, kNotWritten) << words;
    }
    EXPECT_EQ(run(words + " >&- 2>&-").exitCode, 2) << words;
    EXPECT_EQ(run(words + " <&- >&- 2>&-").exitCode, 2) << words;
  }
  const ProgramRun scan = run("scan a.wav -q >&-");
  EXPECT_EQ(scan.exitCode, 2);
  EXPECT_EQ(scan.errors, "kestrel: the standard output cannot be written: Bad file descriptor\n");
  EXPECT_EQ(content("a.wav"), contentOf(fs::path(KESTREL_TEST_MEDIA) / "rf64_stereo.wav"));
}

TEST_F(ClosedStreamsTest, messagesThatCannotBeWrittenAreLost) {
  const ProgramRun good = run("inspect a.wav");
  for (const std::string errors : {" 2>&-", " 2>/dev/full", " <&- 2>&-"}) {
    const ProgramRun run1 = run("inspect a.wav" + errors);
    EXPECT_EQ(run1.exitCode, 0) << errors;
    EXPECT_EQ(run1.output, good.output) << errors;
    EXPECT_EQ(run("inspect none.wav" + errors).exitCode, 2) << errors;
    EXPECT_EQ(run("inspect --bad" + errors).exitCode, 2) << errors;
    const ProgramRun scan = run("scan a.wav" + errors);
    EXPECT_EQ(scan.exitCode, 0) << errors;
    EXPECT_EQ(namesIn(scan.output).size(), 1U) << errors;
  }
}

TEST_F(ClosedStreamsTest, aFileOfResultsGetsNothingElse) {
  ASSERT_EQ(run("inspect a.wav -o expected").exitCode, 0);
  for (const std::string closed : {" >&-", " 2>&-", " >&- 2>&-", " <&- >&- 2>&-"}) {
    EXPECT_EQ(run("inspect a.wav -o out" + closed).exitCode, 0) << closed;
    EXPECT_EQ(content("out"), content("expected")) << closed;
    EXPECT_EQ(run("scan a.wav --force -o s.jsonl" + closed).exitCode, 0) << closed;
    EXPECT_EQ(content("s.jsonl"), content("r.jsonl")) << closed;
  }
}

TEST_F(ClosedStreamsTest, aClosedInputIsNoEmptyOne) {
  for (const std::string words :
       {"inspect --streams-from -", "scan --files-from -", "report r.jsonl --files-from -"}) {
    expectFailure(run(words + " <&-"), "the standard input cannot be read: Bad file descriptor");
  }
}

}  // namespace
}  // namespace kestrel::host
