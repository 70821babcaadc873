// The names of files that the program is given, and what may stand after them.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/host/support/program_run.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

const std::filesystem::path kMedia = KESTREL_TEST_MEDIA;

ProgramRun inspect(const std::string& file, const RunOptions& options = {}) {
  return runProgramProcess({"inspect", file}, options);
}

TEST(ProgramNamesTest, whatIsNoMediaFileIsSaid) {
  const TemporaryDirectory directory;
  const std::string text = directory.write("text.mxf", "plain text\n");
  expectFailure(inspect(text), '"' + text + "\": not a media file that libmediainfo knows");
  const std::string empty = directory.write("empty.mxf", "");
  expectFailure(inspect(empty), '"' + empty + "\": empty");
  const std::string picture = kMedia / "mxf_no_audio.mxf";
  expectFailure(inspect(picture), '"' + picture + "\": no audio stream in it");
}

TEST(ProgramNamesTest, whatIsNoFileIsSaid) {
  const TemporaryDirectory directory;
  std::filesystem::create_symlink("nothing", directory / "link");
  ASSERT_EQ(::mkfifo((directory / "pipe").c_str(), 0600), 0);
  const std::string path = directory / "";
  expectFailure(inspect(path + "none"), '"' + path + "none\": no such file");
  expectFailure(inspect(path), '"' + path + "\": a directory, not a file");
  expectFailure(inspect(path + "link"),
                '"' + path + "link\": a link to a file that does not exist");
  expectFailure(inspect(path + "pipe"),
                '"' + path + "pipe\": a pipe or a device, not a regular file");
}

TEST(ProgramNamesTest, aFileWithoutPermissionIsSaid) {
  const TemporaryDirectory directory;
  const std::string file = directory / "closed.mxf";
  std::filesystem::copy_file(kMedia / "mxf_8mono.mxf", file);
  ASSERT_EQ(::chmod(file.c_str(), 0), 0);
  RunOptions obeyFileModes;
  obeyFileModes.obeyFileModes = true;
  expectFailure(inspect(file, obeyFileModes), '"' + file + "\": cannot be opened for reading");
}

TEST(ProgramNamesTest, aNameMayHoldAnything) {
  const TemporaryDirectory directory;
  const struct {
    const char* name;
    const char* shown;
  } rows[] = {{"two words.mxf", "two words.mxf"},
              {"two\nlines.mxf", "two\\nlines.mxf"},
              {"\xc3\xa9t\xc3\xa9 \xe2\x99\xab.mxf", "\xc3\xa9t\xc3\xa9 \xe2\x99\xab.mxf"},
              {"\xe9t\xe9.mxf", "\\xe9t\\xe9.mxf"},
              {"what?*[a]%20.mxf", "what?*[a]%20.mxf"},
              {"http:a.mxf", "http:a.mxf"}};
  for (const auto& row : rows) {
    const std::string file = directory / row.name;
    std::filesystem::copy_file(kMedia / "mxf_8mono.mxf", file);
    const ProgramRun run = inspect(file);
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_TRUE(holds(run.output, std::string("/") + row.shown + " (MXF, 8 tracks)\n"))
        << run.output;
  }
}

TEST(ProgramNamesTest, aRelativeNameIsNeverAnAddress) {
  const TemporaryDirectory directory;
  std::filesystem::create_directories(directory / "http:/localhost");
  std::filesystem::copy_file(kMedia / "mxf_8mono.mxf", directory / "http:/localhost/a.mxf");
  RunOptions there;
  there.workingDirectory = directory / "";
  const ProgramRun run = inspect("http://localhost/a.mxf", there);
  EXPECT_EQ(run.exitCode, 0) << run.errors;
  EXPECT_TRUE(holds(run.output, "File      http://localhost/a.mxf (MXF, 8 tracks)\n"))
      << run.output;
}

TEST(ProgramNamesTest, aMissingNameWithANewlineIsSaidOnOneLine) {
  expectFailure(inspect("/no\nsuch"), "\"/no\\nsuch\": no such file");
}

TEST(ProgramNamesTest, namesBehindTwoDashesAreFiles) {
  const TemporaryDirectory directory;
  RunOptions there;
  there.workingDirectory = directory / "";
  std::filesystem::copy_file(kMedia / "rf64_stereo.wav", directory / "-c");
  std::filesystem::copy_file(kMedia / "rf64_stereo.wav", directory / "--strict");
  for (const std::vector<std::string>& words :
       {std::vector<std::string>{"inspect", "--", "-c", "--strict"},
        {"inspect", "--item", "1", "--", "-c"},
        {"inspect", "--format", "json", "--", "--strict"},
        {"scan", "-q", "--", "-c", "--strict"},
        {"scan", "--jobs", "1", "-q", "--", "./-c", "--strict"}}) {
    const ProgramRun run = runProgramProcess(words, there);
    EXPECT_EQ(run.exitCode, 0) << testing::PrintToString(words) << run.errors;
    EXPECT_TRUE(holds(run.output, words.back())) << run.output;
    EXPECT_EQ(run.errors, "");
  }
  ASSERT_EQ(runProgramProcess({"scan", "-q", "-o", "results", "--", "-c"}, there).exitCode, 0);
  std::filesystem::rename(directory / "results", directory / "--results");
  EXPECT_EQ(runProgramProcess({"report", "--", "--results"}, there).exitCode, 0);
  EXPECT_EQ(runProgramProcess({"explain", "--", "T2=Stereo"}, there).exitCode, 0);
}

}  // namespace
}  // namespace kestrel::host
