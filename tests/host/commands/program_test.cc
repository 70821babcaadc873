// The program as its users see it: arguments in, exit code and two outputs out.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

#include "host/basics/text_columns.h"
#include "tests/host/support/program_run.h"
#include "tests/host/support/temporary_directory.h"

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

TEST(ProgramTest, aConformingFileIsReported) {
  const std::string file = kMedia / "mxf_8mono_mca.mxf";
  const ProgramRun run = inspect(file);
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.errors, "");
  EXPECT_TRUE(run.output.starts_with("File      " + file +
                                     " (MXF, 8 tracks)\n"
                                     "Expected  T8=5.1 Mix,Stereo;T4=Stereo,Stereo;T2=Stereo\n"
                                     "Verdict   The file carries the expected services.\n"))
      << run.output;
  EXPECT_TRUE(holds(run.output,
                    "    1  2001    L      PCM 48000 Hz 24 bits  ┌ 5.1 Mix\n"
                    "    2  2002    R      PCM 48000 Hz 24 bits  │\n"))
      << run.output;
}

TEST(ProgramTest, channelsOfMultichannelTracksAreNamed) {
  const ProgramRun run = inspect(kMedia / "mov_51back_stereo.mov");
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_TRUE(holds(run.output,
                    "    6  1 channel 6  Rs     PCM 48000 Hz 16 bits  └\n"
                    "    7  2 channel 1  L      PCM 48000 Hz 16 bits  ┌ Stereo\n"))
      << run.output;
}

TEST(ProgramTest, pairCodedServicesAreNamedByTheReadersIds) {
  const ProgramRun run =
      runProgramProcess({"inspect", kMedia / "mxf_8ch_dolby_e_split.mxf", "--report-all",
                         "--layout", "T8=Stereo,EMCA,-Stereo,EMCA"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_TRUE(holds(run.output,
                    "    3  2001-3 / 4         Dolby E (6+2 channels) 48000 Hz 20 "
                    "bits  ┌ EMCA\n"))
      << run.output;
  EXPECT_TRUE(holds(run.output, "┌ Stereo (not requested)\n")) << run.output;
}

TEST(ProgramTest, aFileWithOtherServicesShowsWhatItIs) {
  const ProgramRun run = inspect(kMedia / "as11_12d_dolby_e.mxf", {"--layout", "T12=6 Stereo"});
  EXPECT_EQ(run.exitCode, 2);
  const ProgramRun other =
      runProgramProcess({"inspect", kMedia / "as11_12d_dolby_e.mxf", "--item", "6 Stereo"});
  EXPECT_EQ(other.exitCode, 1);
  EXPECT_EQ(other.errors, "");
  EXPECT_TRUE(holds(other.output, "┌ Stereo ✗  ┌ Dolby E\n")) << other.output;
  EXPECT_TRUE(holds(other.output, "The file looks like \"2x Stereo/Dolby E Pairs + 2 Stereo"));
}

TEST(ProgramTest, aFileOfAnotherTotalIsSaid) {
  const ProgramRun run = inspect(kMedia / "mxf_16mono.mxf");
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_TRUE(holds(run.output,
                    "\nerror     The file has 16 tracks; the expected layout is for 8, "
                    "4 and 2 tracks.\n"))
      << run.output;
}

TEST(ProgramTest, withoutAnExpectationTheDeclaredCodeCounts) {
  const ProgramRun run = runProgramProcess({"inspect", kMedia / "as11_8b_mca.mxf"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_TRUE(holds(run.output, "\nVerdict   The file carries \"5.1 Mix + Stereo Downmix\".\n"));
  const ProgramRun other = runProgramProcess({"inspect", kMedia / "mxf_8mono_mca.mxf"});
  EXPECT_EQ(other.exitCode, 0);
  EXPECT_TRUE(holds(other.output,
                    "\nVerdict   Nothing was expected; the file looks like \"5.1 Mix "
                    "+ Stereo Downmix\".\n"));
}

TEST(ProgramTest, everyWayToNameTheExpectationIsTaken) {
  const TemporaryDirectory directory;
  const std::string layoutFile = directory.write("layout", "# ours\nT8=5.1 Mix,Stereo\n");
  const std::string file = kMedia / "as11_8b_mca.mxf";
  const struct {
    const char* option;
    std::string value;
    int exitCode;
  } rows[] = {{"--item", "7", 0},
              {"--item", "5.1 Mix + Stereo Downmix", 0},
              {"--item", "5.1 Mix,Stereo", 0},
              {"--item", "Dolby E", 2},
              {"--item", "12 Mono", 1},
              {"--code", "8b", 0},
              {"--code", "Layout_EBU_R_123_8B", 0},
              {"--code", "8z", 2},
              {"--code", "EBU R 48: 8b", 2},
              {"--layout-file", layoutFile, 0},
              {"--layout-file", directory / "none", 2},
              {"--layout", "T8=5.1 Mix,Sterio", 2}};
  for (const auto& row : rows) {
    EXPECT_EQ(runProgramProcess({"inspect", file, row.option, row.value}).exitCode, row.exitCode)
        << row.option << " " << row.value;
  }
}

TEST(ProgramTest, aWrongDeclarationIsAWarningAndFailsWhenStrict) {
  const std::vector<std::string> words = {"inspect", kMedia / "as11_8b_mca.mxf", "--code", "8a"};
  const ProgramRun run = runProgramProcess(words);
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_TRUE(holds(run.output,
                    "\nwarning   The declared code 8b says 5.1 Mix, Stereo on tracks 1 "
                    "to 8, the expected map says Stereo, 5.1 Mix.\n"))
      << run.output;
  EXPECT_TRUE(holds(run.output,
                    "\nEvidence  The declared code is contradicted (see the warnings). "
                    "3 of 4 sources (declared code, tracks, labels) speak for \"5.1 Mix "
                    "+ Stereo Downmix\".\n"))
      << run.output;
  std::vector<std::string> strict = words;
  strict.emplace_back("--strict");
  EXPECT_EQ(runProgramProcess(strict).exitCode, 1);
}

TEST(ProgramTest, neighboursOfDifferentFormatDoNotConform) {
  for (const char* name : {"mov_mixed_rates.mov", "mov_mixed_depths.mov"}) {
    const ProgramRun run = inspect(kMedia / name);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(holds(run.output, "\nerror     The Stereo on tracks 1 and 2 joins different "))
        << name;
  }
}

TEST(ProgramTest, aTruncatedFileIsReportedWithAWarning) {
  const ProgramRun run = inspect(kMedia / "mxf_truncated.mxf");
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.errors, "");
  EXPECT_TRUE(holds(run.output, "\nwarning   The file is truncated: its end is missing. "));
  EXPECT_EQ(inspect(kMedia / "mxf_truncated.mxf", {"--strict"}).exitCode, 1);
}

TEST(ProgramTest, aFileOnWhichTheReaderHangsIsReportedWithAWarning) {
  const ProgramRun run = inspect(kMedia / "mxf_reader_never_returns.mxf", {"--timeout", "1"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.errors, "");
  EXPECT_TRUE(holds(run.output,
                    "\nVerdict   The file carries the expected services, with a "
                    "warning.\n"));
  EXPECT_TRUE(holds(run.output, "\nwarning   libmediainfo did not return within 1s; "));
  EXPECT_EQ(
      inspect(kMedia / "mxf_reader_never_returns.mxf", {"--timeout", "1", "--strict"}).exitCode, 1);
}

TEST(ProgramTest, severalFilesGiveTheHighestExitCode) {
  const std::string good = kMedia / "mxf_8mono_mca.mxf";
  const std::string bad = kMedia / "mxf_16mono.mxf";
  const std::vector<std::string> layout = {"--layout", kLayout};
  const auto exitCode = [&](std::vector<std::string> files) {
    files.insert(files.begin(), "inspect");
    files.insert(files.end(), layout.begin(), layout.end());
    return runProgramProcess(files).exitCode;
  };
  EXPECT_EQ(exitCode({good, good}), 0);
  EXPECT_EQ(exitCode({bad, good}), 1);
  EXPECT_EQ(exitCode({"/no/such/file", bad, good}), 2);
}

TEST(ProgramTest, aBadFileDoesNotStopTheOthers) {
  const ProgramRun run =
      runProgramProcess({"inspect", "/none", kMedia / "rf64_stereo.wav", "--layout", kLayout});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.errors, "kestrel: \"/none\": no such file\n");
  EXPECT_TRUE(holds(run.output, "rf64_stereo.wav (Wave, 2 tracks)\n"));
}

TEST(ProgramTest, jsonHoldsFilesThatCouldNotBeExaminedToo) {
  const ProgramRun one = runProgramProcess({"inspect", "/none", "--format", "json"});
  EXPECT_EQ(one.exitCode, 2);
  EXPECT_TRUE(one.output.starts_with("{\n  \"schema\": \"kestrel-result-1\",\n"));
  EXPECT_TRUE(holds(one.output, "\"id\": \"no-such-file\""));
  const ProgramRun two = runProgramProcess({"inspect", "/none", "/none2", "--format", "json"});
  EXPECT_TRUE(two.output.starts_with("[\n")) << two.output;
}

TEST(ProgramTest, streamsMayComeFromMediainfo) {
  const TemporaryDirectory directory;
  const std::string json = directory.write(
      "a.json", R"({"media": {"@ref": "a.wav", "track": [{"@type": "General", "Format": "Wave"},
                   {"@type": "Audio", "Format": "PCM", "Channels": "2"}]}})");
  const ProgramRun run = runProgramProcess({"inspect", "--streams-from", json});
  EXPECT_EQ(run.exitCode, 0) << run.errors;
  EXPECT_TRUE(run.output.starts_with("File      a.wav (Wave, 2 tracks)\n")) << run.output;
  RunOptions piped;
  piped.inputFile = json;
  EXPECT_EQ(runProgramProcess({"inspect", "--streams-from", "-"}, piped).output, run.output);
}

TEST(ProgramTest, jsonThatIsNotMediainfosIsSaid) {
  const TemporaryDirectory directory;
  const std::string other = directory.write("other.json", "{\"streams\": []}");
  expectFailure(runProgramProcess({"inspect", "--streams-from", other}),
                "the JSON is not that of mediainfo: a file has no \"media\"");
  const std::string none = directory / "none.json";
  expectFailure(runProgramProcess({"inspect", "--streams-from", none}),
                '"' + none + "\" cannot be read: No such file or directory");
}

TEST(ProgramTest, aJsonOf100MegabytesIsRefusedAtOnce) {
  const TemporaryDirectory directory;
  const auto file = directory.write("long.json", "[");
  std::filesystem::resize_file(file, 100'000'000);
  expectFailure(runProgramProcess({"inspect", "--streams-from", file}),
                "the JSON is longer than 64 MiB");
}

TEST(ProgramTest, anOutputFileIsWrittenWholeOrNotAtAll) {
  const TemporaryDirectory directory;
  const std::string file = kMedia / "rf64_stereo.wav";
  const std::string result = directory / "result.json";
  const ProgramRun run = runProgramProcess({"inspect", file, "--format", "json", "-o", result});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.output + run.errors, "");
  EXPECT_GT(std::filesystem::file_size(result), 1000u);
  RunOptions noSpace;
  noSpace.largestFile = 100;
  const ProgramRun full =
      runProgramProcess({"inspect", file, "--format", "json", "-o", result}, noSpace);
  expectFailure(full, "the result cannot be written to \"" + result + "\": File too large");
  EXPECT_GT(std::filesystem::file_size(result), 1000u) << "the old file is to stay";
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(directory / ""), {}), 1);
}

TEST(ProgramTest, anOutputIntoAFullOrReadOnlyPlaceIsSaid) {
  const TemporaryDirectory directory;
  const std::string file = kMedia / "rf64_stereo.wav";
  expectFailure(runProgramProcess({"inspect", file, "-o", "/dev/full"}),
                "the result cannot be written to \"/dev/full\": No space left on device");
  ASSERT_EQ(::chmod((directory / "").c_str(), 0500), 0);
  RunOptions obeyFileModes;
  obeyFileModes.obeyFileModes = true;
  const std::string result = directory / "result";
  expectFailure(runProgramProcess({"inspect", file, "-o", result}, obeyFileModes),
                "the result cannot be written to \"" + result + "\": Permission denied");
}

TEST(ProgramTest, pipesGetNoColours) {
  EXPECT_EQ(inspect(kMedia / "rf64_stereo.wav").output.find('\x1b'), std::string::npos);
}

TEST(ProgramTest, aTerminalGetsColoursUnlessNoColorIsSet) {
  const std::vector<std::string> words = {"inspect", kMedia / "rf64_stereo.wav"};
  RunOptions options;
  options.terminalColumns = 200;
  options.environment = {"TERM=xterm", "NO_COLOR="};
  const ProgramRun coloured = runProgramOnTerminal(words, options);
  EXPECT_EQ(coloured.exitCode, 0);
  EXPECT_TRUE(holds(coloured.output, "\x1b[36m┌ Stereo")) << coloured.output;
  options.environment.back() = "NO_COLOR=1";
  const ProgramRun plain = runProgramOnTerminal(words, options);
  EXPECT_TRUE(holds(plain.output, "┌ Stereo")) << plain.output;
  EXPECT_EQ(plain.output.find('\x1b'), std::string::npos);
}

TEST(ProgramTest, linesFitTheTerminal) {
  RunOptions options;
  options.terminalColumns = 40;
  options.environment = {"NO_COLOR=1"};
  const ProgramRun run =
      runProgramOnTerminal({"inspect", kMedia / "as11_12d_dolby_e.mxf"}, options);
  std::istringstream lines(run.output);
  int count = 0;
  for (std::string line; std::getline(lines, line); ++count) {
    EXPECT_LE(columnsOf(line), 40u) << line;
  }
  EXPECT_GT(count, 20);
}

TEST(ProgramTest, theCatalogueAndTheCodesAreListed) {
  const ProgramRun catalogue = runProgramProcess({"catalogue"});
  EXPECT_EQ(catalogue.exitCode, 0);
  EXPECT_EQ(std::ranges::count(catalogue.output, '\n'), 42);
  EXPECT_TRUE(holds(catalogue.output, "\n   7       8  5.1 Mix + Stereo Downmix "))
      << catalogue.output;
  const ProgramRun codes = runProgramProcess({"codes"});
  EXPECT_EQ(codes.exitCode, 0);
  EXPECT_EQ(std::ranges::count(codes.output, '\n'), 23);
  EXPECT_TRUE(holds(codes.output, "\n8b         8     7  5.1 Mix + Stereo Downmix\n"))
      << codes.output;
  EXPECT_TRUE(holds(codes.output, "ambiguous: ")) << codes.output;
}

TEST(ProgramTest, theTablesComeAsJsonToo) {
  const ProgramRun catalogue = runProgramProcess({"catalogue", "--format", "json"});
  EXPECT_EQ(catalogue.exitCode, 0);
  EXPECT_EQ(nlohmann::json::parse(catalogue.output).size(), 41u);
  const ProgramRun codes = runProgramProcess({"codes", "--format=json"});
  EXPECT_EQ(codes.exitCode, 0);
  EXPECT_EQ(nlohmann::json::parse(codes.output).size(), 22u);
  expectFailure(runProgramProcess({"codes", "--format", "html"}),
                "--format: html not in {text,json} (kestrel --help tells more)");
  EXPECT_EQ(runProgramProcess({"catalogue", "--format", "text"}).output,
            runProgramProcess({"catalogue"}).output);
}

TEST(ProgramTest, aLayoutIsExplained) {
  const ProgramRun run = runProgramProcess({"explain", "T2=Stereo"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_TRUE(run.output.starts_with("For 2 tracks:\n"));
  EXPECT_EQ(runProgramProcess({"explain", "T2=Sterio"}).exitCode, 1);
  EXPECT_EQ(runProgramProcess({"explain", "T2=Ster\xff"}).exitCode, 2);
}

TEST(ProgramTest, wrongArgumentsAreSaidOnOneLine) {
  const std::string file = kMedia / "mxf_8mono.mxf";
  const std::vector<std::string> rows[] = {{},
                                           {"inspect"},
                                           {"inspect", file, "--item", "none of\nthem"},
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
  EXPECT_TRUE(version.output.starts_with("kestrel " KESTREL_EXPECTED_VERSION "\n"));
  const ProgramRun help = runProgramProcess({"inspect", "--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_TRUE(holds(help.output, "--layout"));
  EXPECT_EQ(version.errors + help.errors, "");
}

TEST(ProgramTest, aResultThatCannotBeWrittenIsAFailure) {
  RunOptions fullDisk;
  fullDisk.outputFile = "/dev/full";
  expectFailure(inspect(kMedia / "mxf_8mono.mxf", {}, fullDisk),
                "the result cannot be written to the standard output: No space left on device");
}

}  // namespace
}  // namespace kestrel::host
