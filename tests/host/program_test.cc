// The program as its users see it: arguments in, exit code and two outputs out.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "tests/host/program_run.h"
#include "tests/host/temporary_directory.h"

namespace kestrel::host {
namespace {

const std::filesystem::path kMedia = KESTREL_TEST_MEDIA;
constexpr char kLayout[] = "T8=5.1 Mix,Stereo;T4=Stereo,Stereo;T2=Stereo";

ProgramRun inspect(const std::string& file, const std::vector<std::string>& more = {},
                   const RunOptions& options = {}) {
  std::vector<std::string> arguments = {"inspect", file, "--layout", kLayout};
  arguments.insert(arguments.end(), more.begin(), more.end());
  return runProgramProcess(arguments, options);
}

void expectFailure(const ProgramRun& run, const std::string& error) {
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.errors, "kestrel: " + error + "\n");
}

bool holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST(ProgramTest, aConformingFileIsReported) {
  const std::string file = kMedia / "mxf_8mono_mca.mxf";
  const ProgramRun run = inspect(file);
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.errors, "");
  EXPECT_EQ(run.output, "File      " + file +
                            " (MXF)\n"
                            "Audio     8 streams\n"
                            "Expected  T8=5.1 Mix,Stereo;T4=Stereo,Stereo;T2=Stereo\n"
                            "Result    the file carries these services\n"
                            "\n"
                            "Service  Tracks                              Labels\n"
                            "5.1 Mix  2001, 2002, 2003, 2004, 2005, 2006  L R C LFE Ls Rs\n"
                            "Stereo   2007, 2008\n");
}

TEST(ProgramTest, channelsOfMultichannelTracksAreNamed) {
  const ProgramRun run = inspect(kMedia / "mov_51back_stereo.mov");
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_TRUE(holds(run.output,
                    "\n5.1 Mix  1 channels 1-6  L R C LFE Ls Rs\n"
                    "Stereo   2 channels 1-2\n"))
      << run.output;
}

TEST(ProgramTest, pairCodedServicesAreNamedByTheReadersIds) {
  const ProgramRun run =
      runProgramProcess({"inspect", kMedia / "mxf_8ch_dolby_e_split.mxf", "--report-all",
                         "--layout", "T8=Stereo,EMCA,-Stereo,EMCA"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_TRUE(holds(run.output,
                    "Stereo                  2001-1, 2001-2\n"
                    "EMCA                    2001-3 / 4-1 (6 channels)\n"
                    "EMCA                    2001-3 / 4-2 (2 channels)\n"
                    "Stereo (not requested)  2001-5, 2001-6\n"))
      << run.output;
}

TEST(ProgramTest, theOrderLabelsTracksThatHaveNone) {
  const std::string file = kMedia / "mxf_51_stereo.mxf";
  EXPECT_TRUE(holds(inspect(file).output, "5.1 Mix  3 channels 1-6\n"));
  EXPECT_TRUE(holds(inspect(file, {"--order", "C L R LFE Ls Rs"}).output,
                    "5.1 Mix  3 channels 1-6  C L R LFE Ls Rs\n"));
  const ProgramRun unchecked = inspect(kMedia / "mxf_8mono_mca.mxf", {"--no-label-check"});
  EXPECT_TRUE(holds(unchecked.output, "2005, 2006\n")) << unchecked.output;
}

TEST(ProgramTest, aFileWithOtherServicesIsReportedByItsStreams) {
  const ProgramRun run = inspect(kMedia / "mxf_16mono.mxf");
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(run.errors, "");
  EXPECT_TRUE(holds(run.output, "\nResult    the file does not carry these services\n"));
  EXPECT_TRUE(holds(run.output, "\n18      1         PCM     48000  16\n")) << run.output;
}

TEST(ProgramTest, neighboursOfDifferentFormatDoNotConform) {
  for (const char* name : {"mov_mixed_rates.mov", "mov_mixed_depths.mov"}) {
    const ProgramRun run = inspect(kMedia / name);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(holds(run.output, "neighbouring tracks of one service differ in format\n")) << name;
  }
}

TEST(ProgramTest, aTruncatedFileIsReportedWithAWarning) {
  const ProgramRun run = inspect(kMedia / "mxf_truncated.mxf");
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.errors, "");
  EXPECT_TRUE(holds(run.output, "\nWarning   the file is truncated: its end is missing\n"));
}

TEST(ProgramTest, aFileOnWhichTheReaderHangsIsReportedWithAWarning) {
  const ProgramRun run = inspect(kMedia / "mxf_reader_never_returns.mxf", {"--timeout", "1"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.errors, "");
  EXPECT_TRUE(holds(run.output, "\nWarning   libmediainfo did not return within 1s; "));
}

TEST(ProgramTest, whatIsNoMediaFileIsSaid) {
  const TemporaryDirectory directory;
  const std::string text = directory.write("text.mxf", "plain text\n");
  expectFailure(inspect(text), '"' + text + "\": not a media file that libmediainfo knows");
  const std::string empty = directory.write("empty.mxf", "");
  expectFailure(inspect(empty), '"' + empty + "\": empty, or cannot be read");
  const std::string picture = kMedia / "mxf_no_audio.mxf";
  expectFailure(inspect(picture), '"' + picture + "\": no audio stream in it");
}

TEST(ProgramTest, whatIsNoFileIsSaid) {
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

TEST(ProgramTest, aFileWithoutPermissionIsSaid) {
  const TemporaryDirectory directory;
  const std::string file = directory / "closed.mxf";
  std::filesystem::copy_file(kMedia / "mxf_8mono.mxf", file);
  ASSERT_EQ(::chmod(file.c_str(), 0), 0);
  RunOptions obeyFileModes;
  obeyFileModes.obeyFileModes = true;
  expectFailure(inspect(file, {}, obeyFileModes), '"' + file + "\": cannot be opened for reading");
}

TEST(ProgramTest, aNameMayHoldAnything) {
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
    EXPECT_TRUE(holds(run.output, std::string("/") + row.shown + " (MXF)\n")) << run.output;
  }
}

TEST(ProgramTest, aRelativeNameIsNeverAnAddress) {
  const TemporaryDirectory directory;
  std::filesystem::create_directories(directory / "http:/localhost");
  std::filesystem::copy_file(kMedia / "mxf_8mono.mxf", directory / "http:/localhost/a.mxf");
  RunOptions there;
  there.workingDirectory = directory / "";
  const ProgramRun run = inspect("http://localhost/a.mxf", {}, there);
  EXPECT_EQ(run.exitCode, 0) << run.errors;
  EXPECT_TRUE(holds(run.output, "File      http://localhost/a.mxf (MXF)\n")) << run.output;
}

TEST(ProgramTest, aMissingNameWithANewlineIsSaidOnOneLine) {
  expectFailure(inspect("/no\nsuch"), "\"/no\\nsuch\": no such file");
}

TEST(ProgramTest, wrongArgumentsAreSaidOnOneLine) {
  const std::string file = kMedia / "mxf_8mono.mxf";
  const std::vector<std::string> rows[] = {{},
                                           {"inspect", file},
                                           {"inspect", file, "--layout", kLayout, "--bad"},
                                           {"inspect", file, "--layout", kLayout, "--timeout", "0"},
                                           {"bad\ncommand"}};
  for (const auto& arguments : rows) {
    const ProgramRun run = runProgramProcess(arguments);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.output, "");
    EXPECT_TRUE(run.errors.starts_with("kestrel: ")) << run.errors;
    EXPECT_EQ(std::ranges::count(run.errors, '\n'), 1) << run.errors;
  }
}

TEST(ProgramTest, helpAndVersionGoToTheStandardOutput) {
  const ProgramRun version = runProgramProcess({"--version"});
  EXPECT_EQ(version.exitCode, 0);
  EXPECT_EQ(version.output, "kestrel " KESTREL_EXPECTED_VERSION "\n");
  const ProgramRun help = runProgramProcess({"inspect", "--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_TRUE(holds(help.output, "--layout"));
  EXPECT_EQ(version.errors + help.errors, "");
}

TEST(ProgramTest, aResultThatCannotBeWrittenIsAFailure) {
  RunOptions fullDisk;
  fullDisk.outputFile = "/dev/full";
  expectFailure(inspect(kMedia / "mxf_8mono.mxf", {}, fullDisk),
                "the result cannot be written to the standard output");
}

}  // namespace
}  // namespace kestrel::host
