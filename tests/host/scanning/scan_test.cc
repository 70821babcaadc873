// `kestrel scan` as its users see it.
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include "host/reporting/result_json.h"
#include "tests/host/support/scan_program.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

const fs::path kMedia = KESTREL_TEST_MEDIA;

void copyMedia(const char* name, const fs::path& to) {
  fs::create_directories(to.parent_path());
  fs::copy_file(kMedia / name, to);
}

class ScanTest : public ::testing::Test {
 protected:
  ScanTest() {
    copyMedia("mxf_8mono_mca.mxf", directory_ / "in/b.mxf");
    copyMedia("rf64_stereo.wav", directory_ / "in/deep/er/c.WAV");
    copyMedia("as11_8b_mca.mxf", directory_ / "in/a.mxf");
    directory_.write("in/notes.txt", "no media file by its name");
  }

  ProgramRun run(const std::string& script) const { return runScript(directory_ / "", script); }
  fs::path path(const std::string& name) const { return directory_ / name; }
  std::string results() const { return contentOf(directory_ / "r.jsonl"); }

  TemporaryDirectory directory_;
};

TEST_F(ScanTest, eachMediaFileBelowADirectoryBecomesALine) {
  const ProgramRun scan = run("\"$KESTREL\" scan in -o r.jsonl");
  EXPECT_EQ(scan.exitCode, 0) << scan.errors;
  EXPECT_EQ(scan.output, "");
  EXPECT_EQ(namesIn(results()), (Names{"a.mxf", "b.mxf", "c.WAV"}));
  for (const auto& document : documentsIn(results())) {
    const fs::path file = path(fileNameIn(document));
    EXPECT_EQ(document.at("schema"), "kestrel-result-1");
    EXPECT_EQ(document.at("identity").at("size"), fs::file_size(file));
  }
}

TEST_F(ScanTest, theSummaryGoesToTheStandardError) {
  const ProgramRun scan = run("\"$KESTREL\" scan in");
  EXPECT_EQ(namesIn(scan.output), (Names{"a.mxf", "b.mxf", "c.WAV"}));
  EXPECT_TRUE(holds(scan.errors, "Verdict     Files\nidentified  2\nconforms    1\n"))
      << scan.errors;
  EXPECT_TRUE(holds(scan.errors, "5.1 Mix + Stereo Downmix  2\n")) << scan.errors;
  EXPECT_EQ(run("\"$KESTREL\" scan in --quiet").errors, "");
}

TEST_F(ScanTest, theExitCodeIsTheHighest) {
  EXPECT_EQ(run("\"$KESTREL\" scan in/b.mxf --layout 'T8=5.1 Mix,Stereo'").exitCode, 0);
  EXPECT_EQ(run("\"$KESTREL\" scan in --layout 'T8=5.1 Mix,Stereo;T2=5.1 Mix'").exitCode, 1);
  EXPECT_EQ(run("\"$KESTREL\" scan in none.mxf --layout 'T8=5.1 Mix,Stereo'").exitCode, 2);
}

TEST_F(ScanTest, badFilesDoNotStopIt) {
  directory_.write("in/text.mxf", "plain text\n");
  directory_.write("in/empty.mxf", "");
  directory_.write("in/closed.mxf", "no right to read");
  fs::create_symlink("nowhere", path("in/dangling.mxf"));
  ASSERT_EQ(::mkfifo(path("in/pipe.mxf").c_str(), 0600), 0);
  ASSERT_EQ(::chmod(path("in/closed.mxf").c_str(), 0), 0);
  copyMedia("mxf_reader_never_returns.mxf", path("in/never.mxf"));
  RunOptions obeyFileModes;
  obeyFileModes.obeyFileModes = true;
  const ProgramRun scan = runProgramProcess(
      {"scan", path("in"), "none.mxf", "--timeout", "1", "--jobs", "3"}, obeyFileModes);
  EXPECT_EQ(scan.exitCode, 2);
  EXPECT_EQ(namesIn(scan.output),
            (Names{"a.mxf", "b.mxf", "c.WAV", "closed.mxf", "dangling.mxf", "empty.mxf",
                   "never.mxf", "none.mxf", "pipe.mxf", "text.mxf"}));
  EXPECT_TRUE(holds(scan.errors, "not examined  6\n")) << scan.errors;
  EXPECT_TRUE(holds(scan.errors, "quick-read ")) << scan.errors;
}

TEST_F(ScanTest, aDirectoryWithoutPermissionIsSaidAndTheRestIsDone) {
  copyMedia("rf64_stereo.wav", path("in/closed/d.wav"));
  ASSERT_EQ(::chmod(path("in/closed").c_str(), 0), 0);
  RunOptions obeyFileModes;
  obeyFileModes.obeyFileModes = true;
  const ProgramRun scan = runProgramProcess({"scan", path("in")}, obeyFileModes);
  ::chmod(path("in/closed").c_str(), 0700);
  EXPECT_EQ(scan.exitCode, 2);
  EXPECT_EQ(namesIn(scan.output), (Names{"a.mxf", "b.mxf", "c.WAV"}));
  EXPECT_TRUE(holds(scan.errors, "/in/closed\": the directory cannot be read: ")) << scan.errors;
}

TEST_F(ScanTest, withoutFilesThereIsNothingToDo) {
  fs::create_directory(path("empty"));
  for (const char* what : {"empty", "--files-from /dev/null", ""}) {
    const ProgramRun scan = run(std::string("\"$KESTREL\" scan -o r.jsonl ") + what);
    EXPECT_EQ(scan.exitCode, 2);
    EXPECT_TRUE(scan.errors.starts_with("kestrel: ")) << scan.errors;
    EXPECT_EQ(std::ranges::count(scan.errors, '\n'), 1) << scan.errors;
    EXPECT_FALSE(fs::exists(path("r.jsonl")));
  }
}

TEST_F(ScanTest, namesMayHoldAnything) {
  const Names names = {" two words .mxf", "caf\xe9.mxf", "new\nline.mxf", "\xc3\xa9t\xc3\xa9.mxf"};
  for (const std::string& name : names) {
    copyMedia("rf64_stereo.wav", path("odd") / name);
  }
  EXPECT_EQ(namesIn(run("\"$KESTREL\" scan odd").output), names);
  const ProgramRun listed =
      run("find odd -name '*.mxf' -print0 | \"$KESTREL\" scan --files-from - -0 -o r.jsonl");
  EXPECT_EQ(listed.exitCode, 0) << listed.errors;
  EXPECT_EQ(namesIn(results()), names);
  EXPECT_EQ(run("\"$KESTREL\" scan odd -o r.jsonl --resume").exitCode, 0);
  EXPECT_EQ(namesIn(results()), names);
}

TEST_F(ScanTest, namesComeFromALineEach) {
  directory_.write("list", "in/a.mxf\n\nin/deep\nin/b.mxf");
  const ProgramRun scan = run("\"$KESTREL\" scan --files-from list");
  EXPECT_EQ(namesIn(scan.output), (Names{"a.mxf", "b.mxf", "c.WAV"}));
  EXPECT_EQ(run("\"$KESTREL\" scan --files-from none").exitCode, 2);
  EXPECT_EQ(run("\"$KESTREL\" scan --files-from in").exitCode, 2);
  EXPECT_EQ(run("\"$KESTREL\" scan in -0").exitCode, 2);
}

TEST_F(ScanTest, aFileIsDoneOnceHoweverOftenItIsNamed) {
  const ProgramRun scan = run("\"$KESTREL\" scan in ./in/a.mxf in//b.mxf \"$PWD/in\" in/a.mxf");
  EXPECT_EQ(namesIn(scan.output), (Names{"a.mxf", "b.mxf", "c.WAV"}));
}

TEST_F(ScanTest, aFileThatIsNamedIsTakenWhateverItsExtension) {
  const ProgramRun scan = run("\"$KESTREL\" scan in/notes.txt");
  EXPECT_EQ(namesIn(scan.output), (Names{"notes.txt"}));
}

TEST_F(ScanTest, anyNumberOfJobsGivesTheSameResults) {
  auto sorted = [this](const std::string& jobs) {
    std::vector<nlohmann::ordered_json> documents =
        documentsIn(run("\"$KESTREL\" scan in --jobs " + jobs).output);
    std::ranges::sort(documents, {}, [](const auto& document) { return fileNameIn(document); });
    return documents;
  };
  EXPECT_EQ(sorted("1"), sorted("8"));
  EXPECT_EQ(run("\"$KESTREL\" scan in --jobs 0").exitCode, 2);
}

TEST_F(ScanTest, aProgressBarIsDrawnOnATerminalOnly) {
  const ProgramRun piped = run("\"$KESTREL\" scan in >/dev/null");
  EXPECT_FALSE(holds(piped.errors, "\x1b")) << piped.errors;
  const ProgramRun terminal =
      run("script -qec \"'$KESTREL' scan in -o r.jsonl\" /dev/null </dev/null");
  EXPECT_TRUE(holds(terminal.output, "3 of 3")) << terminal.output;
  EXPECT_TRUE(holds(terminal.output, " files/s")) << terminal.output;
  EXPECT_FALSE(holds(results(), "\x1b"));
}

TEST_F(ScanTest, itsHelpHasAnExample) {
  const ProgramRun help = run("\"$KESTREL\" scan --help");
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_TRUE(holds(help.output, "kestrel scan /media/deliveries -o results.jsonl"));
}

}  // namespace
}  // namespace kestrel::host
