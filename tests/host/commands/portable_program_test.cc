// The program on every platform: it reads no media file, but what mediainfo said about the files.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>

#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

const std::filesystem::path kJson = KESTREL_MEDIA_JSON;

struct Answer {
  int exitCode;
  std::string output;
  std::string errors;
};

std::string contentOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::string inQuotes(const std::string& word) { return "\"" + word + "\""; }

// By the command interpreter of the platform, with words that need no more than quotes.
Answer run(const std::vector<std::string>& words) {
  const TemporaryDirectory directory;
  std::string command = inQuotes(KESTREL_PROGRAM);
  for (const std::string& word : words) {
    command += " " + inQuotes(word);
  }
  command += " >" + inQuotes((directory / "out").string()) + " 2>" +
             inQuotes((directory / "err").string());
#if defined(_WIN32)
  const int exitCode = std::system(inQuotes(command).c_str());
#else
  const int exitCode = WEXITSTATUS(std::system(command.c_str()));
#endif
  return {exitCode, contentOf(directory / "out"), contentOf(directory / "err")};
}

std::string jsonOf(const std::string& name) { return (kJson / (name + ".json")).string(); }

TEST(PortableProgramTest, everyMediaFileIsExaminedFromItsJson) {
  const struct {
    const char* name;
    int exitCode;
    const char* verdict;
  } rows[] = {{"as11_8b_mca.mxf", 0, "The file carries \"5.1 Mix + Stereo Downmix\"."},
              {"as11_12d_dolby_e.mxf", 0,
               "The file carries \"2x Stereo/Dolby E Pairs + 2 Stereo (R123 12d)\"."},
              {"mov_51back_stereo.mov", 0,
               "Nothing was expected; the file looks like \"5.1 Mix + Stereo Downmix\"."},
              {"mov_6ch_dolby_e.mov", 1,
               "Nothing was expected, and no layout of the catalogue fits the file."},
              {"mov_mixed_rates.mov", 0, "Nothing was expected; the file looks like \"2 Mono\"."},
              {"mxf_no_audio.mxf", 2, "The file could not be examined: no audio stream in it."}};
  for (const auto& row : rows) {
    const Answer one = run({"inspect", "--streams-from", jsonOf(row.name), "--format", "json"});
    EXPECT_EQ(one.exitCode, row.exitCode) << row.name << one.errors;
    const auto document = nlohmann::json::parse(one.output);
    EXPECT_EQ(document["file"], row.name);
    EXPECT_EQ(document["reader"], "mediainfo-json");
    EXPECT_EQ(document["verdict"]["sentence"], row.verdict);
  }
}

TEST(PortableProgramTest, expectationsAreHeldAgainstTheStreams) {
  const std::string json = jsonOf("as11_8b_mca.mxf");
  const auto code = [&](const std::string& option, const std::string& value) {
    return run({"inspect", "--streams-from", json, option, value}).exitCode;
  };
  EXPECT_EQ(code("--code", "EBU R 123: 8b"), 0);
  EXPECT_EQ(code("--item", "7"), 0);
  EXPECT_EQ(code("--layout", "T8=Stereo,EMCA,Stereo,Stereo"), 1);
  EXPECT_EQ(code("--layout", "T8=Sterio"), 2);
}

TEST(PortableProgramTest, textAndPageAreWritten) {
  const std::string json = jsonOf("mxf_8mono_mca.mxf");
  const Answer text = run({"inspect", "--streams-from", json});
  EXPECT_EQ(text.exitCode, 0) << text.errors;
  EXPECT_EQ(text.output.find('\r'), std::string::npos);
  EXPECT_NE(text.output.find("    1  2001    L      PCM 48000 Hz 24 bits  ┌ 5.1 Mix\n"),
            std::string::npos)
      << text.output;
  const Answer page = run({"inspect", "--streams-from", json, "--format", "html"});
  EXPECT_TRUE(page.output.starts_with("<!DOCTYPE html>")) << page.output.substr(0, 100);
}

TEST(PortableProgramTest, anOutputFileIsWritten) {
  const TemporaryDirectory directory;
  const Answer one = run({"inspect", "--streams-from", jsonOf("rf64_stereo.wav"), "--format",
                          "json", "-o", (directory / "result.json").string()});
  EXPECT_EQ(one.exitCode, 0) << one.errors;
  EXPECT_EQ(one.output, "");
  EXPECT_EQ(nlohmann::json::parse(contentOf(directory / "result.json"))["trackTotal"], 2);
}

TEST(PortableProgramTest, badJsonIsSaid) {
  const TemporaryDirectory directory;
  const std::string json = directory.write("bad.json", "{}").string();
  const Answer one = run({"inspect", "--streams-from", json});
  EXPECT_EQ(one.exitCode, 2);
  EXPECT_EQ(one.output, "");
  EXPECT_EQ(one.errors, "kestrel: the JSON is not that of mediainfo: a file has no \"media\"\n");
}

TEST(PortableProgramTest, fourteenTracksHaveNoLayout) {
  const TemporaryDirectory directory;
  const std::string json =
      directory
          .write("14.json", R"({"media": {"@ref": "a.wav", "track": [{"@type": "General",
              "Format": "Wave"}, {"@type": "Audio", "Format": "PCM", "Channels": "14"}]}})")
          .string();
  const Answer unknown = run({"inspect", "--streams-from", json});
  EXPECT_EQ(unknown.exitCode, 1);
  EXPECT_NE(unknown.output.find("\nVerdict   Nothing was expected, and no layout of the catalogue "
                                "fits the file.\n"),
            std::string::npos);
  EXPECT_EQ(run({"inspect", "--streams-from", json, "--item", "8 Stereo"}).exitCode, 1);
}

TEST(PortableProgramTest, theTablesAndTheHelpAreThere) {
  EXPECT_EQ(run({"catalogue"}).exitCode, 0);
  EXPECT_EQ(run({"codes"}).exitCode, 0);
  EXPECT_EQ(nlohmann::json::parse(run({"catalogue", "--format", "json"}).output).size(), 41u);
  EXPECT_EQ(run({"explain", "T8=5.1 Mix,Stereo"}).exitCode, 0);
  EXPECT_TRUE(run({"--version"}).output.starts_with("kestrel " KESTREL_EXPECTED_VERSION "\n"));
  EXPECT_NE(run({"--help"}).output.find("Exit codes: 0"), std::string::npos);
  for (const char* command : {"inspect", "catalogue", "codes", "explain"}) {
    EXPECT_NE(run({command, "--help"}).output.find("Example"), std::string::npos) << command;
  }
}

#if defined(_WIN32)
TEST(PortableProgramTest, withoutAReaderMediaFilesAreRefused) {
  const Answer one = run({"inspect", "a.mxf"});
  EXPECT_EQ(one.exitCode, 2);
  EXPECT_EQ(one.errors,
            "kestrel: this build reads no media files itself: --streams-from is needed\n");
}
#endif

}  // namespace
}  // namespace kestrel::host
