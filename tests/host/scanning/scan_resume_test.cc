// Scans that do not come to their end, and those that go on with them.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/host/support/scan_program.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

const fs::path kScannedMedia = KESTREL_TEST_MEDIA;
const Names kAll = {"a.mxf", "b.mxf", "c.mxf", "d.mxf", "e.mxf", "f.mxf"};

class ScanResumeTest : public ::testing::Test {
 protected:
  // The reader takes a second for each of the files.
  void makeSlowFiles() const { makeFiles("mxf_reader_never_returns.mxf"); }
  void makeFastFiles() const { makeFiles("rf64_stereo.wav"); }

  ProgramRun scan(const std::string& more = "--resume") const {
    return runScript(directory_ / "", "\"$KESTREL\" scan in -o r.jsonl " + more);
  }

  Names arguments() const {
    return {"scan", path("in"), "-o", path("r.jsonl"), "--jobs", "2", "--timeout", "1", "--resume"};
  }

  std::string path(const std::string& name) const { return directory_ / name; }
  std::string results() const { return contentOf(path("r.jsonl")); }

  TemporaryDirectory directory_;

 private:
  void makeFiles(const char* source) const {
    fs::create_directory(directory_ / "in");
    for (const std::string& name : kAll) {
      fs::copy_file(kScannedMedia / source, directory_ / ("in/" + name));
    }
  }
};

TEST_F(ScanResumeTest, anInterruptedScanEndsWithWholeLinesAndGoesOn) {
  for (const int signal : {SIGINT, SIGTERM}) {
    fs::remove_all(path("in"));
    fs::remove(path("r.jsonl"));
    makeSlowFiles();
    const RunningProgram program(arguments());
    waitForLines(path("r.jsonl"), 1);
    program.signal(signal);
    EXPECT_EQ(program.wait(), 128 + signal);
    const Names done = namesIn(results());
    EXPECT_LT(done.size(), kAll.size());
    EXPECT_EQ(std::ranges::count(results(), '\n'), static_cast<std::ptrdiff_t>(done.size()));
    EXPECT_FALSE(results().find("ended by signal") != std::string::npos);
    const RunningProgram rest(arguments());
    EXPECT_EQ(rest.wait(), 0);
    EXPECT_EQ(namesIn(results()), kAll);
  }
}

TEST_F(ScanResumeTest, aSecondInterruptEndsItAtOnce) {
  makeSlowFiles();
  const RunningProgram program(arguments());
  waitForLines(path("r.jsonl"), 1);
  program.signal(SIGINT);
  program.signal(SIGINT);
  program.signal(SIGINT);
  EXPECT_EQ(program.wait(), 128 + SIGINT);
  EXPECT_LT(namesIn(results()).size(), kAll.size());
}

TEST_F(ScanResumeTest, aKilledScanLosesNoFileAndDoesNoneTwice) {
  makeSlowFiles();
  const RunningProgram program(arguments());
  waitForLines(path("r.jsonl"), 1);
  program.signal(SIGKILL);
  EXPECT_EQ(program.wait(), 128 + SIGKILL);
  const RunningProgram rest(arguments());
  EXPECT_EQ(rest.wait(), 0);
  EXPECT_EQ(namesIn(results()), kAll);
}

TEST_F(ScanResumeTest, aTornLastLineIsDoneAgain) {
  makeFastFiles();
  ASSERT_EQ(scan("--jobs 1").exitCode, 0);
  const std::string whole = results();
  const std::size_t lastLine = whole.rfind('\n', whole.size() - 2) + 1;
  for (const std::size_t size : {lastLine + 1, lastLine + 12, whole.size() - 2, whole.size() - 1}) {
    directory_.write("r.jsonl", whole.substr(0, size));
    EXPECT_EQ(scan().exitCode, 0);
    EXPECT_EQ(results(), whole) << size;
  }
}

TEST_F(ScanResumeTest, onlyWhatIsNewOrChangedIsDone) {
  makeFastFiles();
  ASSERT_EQ(scan("").exitCode, 0);
  const std::string before = results();
  const ProgramRun again = scan();
  EXPECT_EQ(results(), before);
  EXPECT_NE(again.errors.find("identified  6\n"), std::string::npos) << again.errors;
  fs::last_write_time(path("in/b.mxf"),
                      fs::last_write_time(path("in/b.mxf")) + std::chrono::nanoseconds(1000));
  fs::copy_file(path("in/a.mxf"), path("in/new.mxf"));
  const ProgramRun more = scan();
  EXPECT_EQ(results().substr(0, before.size()), before);
  EXPECT_EQ(namesIn(results().substr(before.size())), (Names{"b.mxf", "new.mxf"}));
  EXPECT_NE(more.errors.find("identified  7\n"), std::string::npos) << more.errors;
}

TEST_F(ScanResumeTest, aSwappedFileWhoseTimeWasSetBackIsDone) {
  makeFastFiles();
  ASSERT_EQ(scan("").exitCode, 0);
  std::string before = results();
  const auto modified = fs::last_write_time(path("in/b.mxf"));
  fs::copy_file(path("in/a.mxf"), path("other"));
  fs::last_write_time(path("other"), modified);
  fs::rename(path("other"), path("in/b.mxf"));
  ASSERT_EQ(scan().exitCode, 0);
  EXPECT_EQ(namesIn(results().substr(before.size())), Names{"b.mxf"});
  before = results();
  directory_.write("in/c.mxf", contentOf(path("in/a.mxf")));  // the same inode
  fs::last_write_time(path("in/c.mxf"), modified);
  ASSERT_EQ(scan().exitCode, 0);
  EXPECT_EQ(namesIn(results().substr(before.size())), Names{"c.mxf"});
}

TEST_F(ScanResumeTest, linesThatKnowAFileByLessAreDoneAgain) {
  makeFastFiles();
  ASSERT_EQ(scan("").exitCode, 0);
  for (const char* member : {"size", "modified", "changed", "device", "inode"}) {
    std::string older;
    for (nlohmann::ordered_json document : documentsIn(results())) {
      document["identity"].erase(member);
      older += document.dump() + "\n";
    }
    directory_.write("r.jsonl", older);
    ASSERT_EQ(scan().exitCode, 0);
    EXPECT_EQ(namesIn(results().substr(older.size())), kAll) << member;
    directory_.write("r.jsonl", results().substr(older.size()));
  }
}

TEST_F(ScanResumeTest, aRecheckExaminesAllAndTellsWhatChanged) {
  makeFastFiles();
  ASSERT_EQ(scan("").exitCode, 0);
  const std::string before = results();
  const ProgramRun same = scan("--recheck");
  EXPECT_EQ(same.exitCode, 0);
  EXPECT_EQ(namesIn(results().substr(before.size())), kAll);
  EXPECT_TRUE(holds(same.errors, "\nRecheck    Files\nunchanged  6\nchanged    0\n"))
      << same.errors;
  directory_.write("in/b.mxf", "broken");
  fs::copy_file(path("in/a.mxf"), path("in/new.mxf"));
  const ProgramRun changed = scan("--recheck --resume");
  EXPECT_EQ(changed.exitCode, 2);
  EXPECT_TRUE(changed.errors.starts_with(
      "kestrel: \"in/b.mxf\": it was \"identified\", now it is \"not examined\"\n"))
      << changed.errors;
  EXPECT_TRUE(
      holds(changed.errors, "\nRecheck    Files\nunchanged  5\nchanged    1\nnew        1\n"))
      << changed.errors;
  EXPECT_EQ(scan("--recheck -q").errors, "") << "the last line of a file counts";
}

TEST_F(ScanResumeTest, aRecheckNeedsResultsOfTheSameOptions) {
  makeFastFiles();
  ASSERT_EQ(scan("").exitCode, 0);
  const std::string before = results();
  expectFailure(scan("--recheck --strict"),
                "\"r.jsonl\" holds results of other options "
                "(--strict): go on with those, or take another file");
  expectFailure(scan("--recheck --force"),
                "--recheck goes on with results and --force replaces them: give one of them");
  expectFailure(runScript(path(""), "\"$KESTREL\" scan in --recheck"),
                "--recheck needs -o with a file");
  EXPECT_EQ(results(), before);
}

TEST_F(ScanResumeTest, theExitCodeCountsWhatWasDoneBefore) {
  makeFastFiles();
  fs::copy_file(kScannedMedia / "wav_mono.wav", path("in/unknown.wav"));
  EXPECT_EQ(scan("").exitCode, 1);
  const std::string before = results();
  EXPECT_EQ(scan().exitCode, 1);
  EXPECT_EQ(results(), before);
}

TEST_F(ScanResumeTest, whatCouldNotBeExaminedIsTriedAgainAndItsLastLineCounts) {
  makeFastFiles();
  fs::copy_file(kScannedMedia / "rf64_stereo.wav", path("in/bad.mxf"));
  const auto changed = fs::last_write_time(path("in/bad.mxf"));
  const std::string good = contentOf(path("in/bad.mxf"));
  directory_.write("in/bad.mxf", std::string(good.size(), '.'));
  fs::last_write_time(path("in/bad.mxf"), changed);
  const ProgramRun first = scan("");
  EXPECT_EQ(first.exitCode, 2);
  EXPECT_NE(first.errors.find("not examined  1\n"), std::string::npos) << first.errors;
  const std::string before = results();
  const ProgramRun second = scan();
  EXPECT_EQ(second.exitCode, 2);
  EXPECT_NE(second.errors.find("not examined  1\n"), std::string::npos) << second.errors;
  EXPECT_EQ(results().substr(0, before.size()), before);
  EXPECT_EQ(namesIn(results().substr(before.size())), Names{"bad.mxf"});
  directory_.write("in/bad.mxf", good);
  fs::last_write_time(path("in/bad.mxf"), changed);
  const ProgramRun third = scan();
  EXPECT_EQ(third.exitCode, 0);
  EXPECT_NE(third.errors.find("identified  7\n"), std::string::npos) << third.errors;
  EXPECT_EQ(third.errors.find("not examined"), std::string::npos) << third.errors;
  const std::string after = results();
  EXPECT_EQ(scan().exitCode, 0);
  EXPECT_EQ(results(), after);
}

TEST_F(ScanResumeTest, ofSeveralLinesForAFileOnlyTheLastIsLookedAt) {
  makeFastFiles();
  ASSERT_EQ(scan("--jobs 1").exitCode, 0);
  const std::string whole = results();
  nlohmann::ordered_json failed = documentsIn(whole).front();
  failed["verdict"] = {{"result", "not-examined"}, {"exitCode", 2}, {"sentence", ""}};
  directory_.write("r.jsonl", whole + failed.dump() + "\n");
  const ProgramRun again = scan();
  EXPECT_EQ(again.exitCode, 0);
  EXPECT_EQ(namesIn(results()).size(), kAll.size() + 2);
  EXPECT_NE(again.errors.find("identified  6\n"), std::string::npos) << again.errors;
}

TEST_F(ScanResumeTest, withoutItAFileOfResultsIsLeftAlone) {
  makeFastFiles();
  directory_.write("r.jsonl", "precious\n");
  const ProgramRun refused = scan("");
  EXPECT_EQ(refused.exitCode, 2);
  EXPECT_EQ(refused.errors,
            "kestrel: \"r.jsonl\" holds something already; --resume goes on with results, "
            "--force replaces it\n");
  EXPECT_EQ(results(), "precious\n");
  EXPECT_EQ(runScript(path(""), "\"$KESTREL\" scan in --resume").exitCode, 2);
}

TEST_F(ScanResumeTest, aFileThatIsNotOursIsLeftAlone) {
  makeFastFiles();
  for (const char* content :
       {"precious", "precious\n", "{\"schema\":\"kestrel-result-2\"}\n", "{}\n", "[]", "\n",
        "{\"schema\":\"kestrel-result-1\",\"file\":\"x\"}\nprecious", "\xff\xfe\n"}) {
    directory_.write("r.jsonl", content);
    const ProgramRun refused = scan();
    EXPECT_EQ(refused.exitCode, 2) << content;
    EXPECT_TRUE(refused.errors.starts_with("kestrel: \"r.jsonl\" is no file of results: line ") ||
                refused.errors.starts_with("kestrel: \"r.jsonl\": line 1 is not a whole result: "))
        << refused.errors;
    EXPECT_EQ(results(), content);
  }
}

TEST_F(ScanResumeTest, twoScansDoNotWriteToOneFile) {
  makeFastFiles();
  const int other = ::open(path("r.jsonl").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  struct flock whole {};
  whole.l_type = F_WRLCK;
  ASSERT_EQ(::fcntl(other, F_SETLK, &whole), 0);
  const ProgramRun refused = scan();
  ::close(other);
  EXPECT_EQ(refused.exitCode, 2);
  EXPECT_EQ(refused.errors, "kestrel: \"r.jsonl\": another scan is writing to it\n");
  EXPECT_EQ(results(), "");
}

TEST_F(ScanResumeTest, aFullDiskEndsItWithWholeLines) {
  makeFastFiles();
  const ProgramRun full = runScript(path(""), "\"$KESTREL\" scan in -o /dev/full");
  EXPECT_EQ(full.exitCode, 2);
  EXPECT_EQ(full.errors, "kestrel: \"/dev/full\" cannot be written: No space left on device\n");
  EXPECT_EQ(runScript(path(""), "\"$KESTREL\" scan in >/dev/full").exitCode, 2);
  // A limit on the size of files, in blocks of 512 bytes, cuts the write of a line short.
  const ProgramRun cut = runScript(
      path(""), "trap '' XFSZ; ulimit -f 5; exec \"$KESTREL\" scan in -o r.jsonl --jobs 1");
  EXPECT_EQ(cut.exitCode, 2) << cut.errors;
  EXPECT_EQ(cut.errors, "kestrel: \"r.jsonl\" cannot be written: File too large\n");
  EXPECT_GT(namesIn(results()).size(), 0U);
  EXPECT_LT(namesIn(results()).size(), kAll.size());
  EXPECT_EQ(scan().exitCode, 0);
  EXPECT_EQ(namesIn(results()), kAll);
}

TEST_F(ScanResumeTest, aPlaceThatCannotBeWrittenIsSaid) {
  makeFastFiles();
  fs::create_directory(path("closed"));
  ASSERT_EQ(::chmod(path("closed").c_str(), 0555), 0);
  RunOptions obeyFileModes;
  obeyFileModes.obeyFileModes = true;
  for (const std::string& place : {path("closed/r.jsonl"), path("none/r.jsonl"), path("in")}) {
    const ProgramRun refused = runProgramProcess({"scan", path("in"), "-o", place}, obeyFileModes);
    EXPECT_EQ(refused.exitCode, 2);
    EXPECT_TRUE(refused.errors.starts_with("kestrel: \"" + place + "\" cannot be written: "))
        << refused.errors;
    EXPECT_EQ(refused.output, "");
  }
}

}  // namespace
}  // namespace kestrel::host
