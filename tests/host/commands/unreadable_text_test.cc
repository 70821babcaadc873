// A text that breaks off by a read error is no shorter text: the program says so and writes
// nothing.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/host/support/scan_program.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

class UnreadableTextTest : public ::testing::Test {
 protected:
  UnreadableTextTest() {
    std::string list;
    for (int number = 0; number < 100; ++number) {
      list += KESTREL_TEST_MEDIA "/rf64_stereo.wav\n";
    }
    directory_.write("list", list);
    directory_.write("layout", "T2=Stereo\nT4=Stereo,Stereo\n");
    directory_.write("media.json", R"({"media": {"@ref": "a.wav", "track": []}})");
    run("\"$KESTREL\" scan '" KESTREL_TEST_MEDIA "/rf64_stereo.wav' -q -o r.jsonl");
    directory_.write("r.jsonl", results() + results());
  }

  ProgramRun run(const std::string& script) const { return runScript(directory_ / "", script); }
  std::string results() const { return contentOf(directory_ / "r.jsonl"); }

  /// The file breaks off behind `size` bytes, which end a line.
  void expectRefusal(const std::string& file, std::size_t size, const std::string& words,
                     const std::string& name) const {
    const std::string before = results();
    const ProgramRun broken =
        run("export " KESTREL_FAILING_CALLS " KESTREL_FAIL_CALL=read " +
            ("KESTREL_FAIL_FILE=/" + file) + " KESTREL_FAIL_AFTER=" + std::to_string(size) +
            "\nexec \"$KESTREL\" " + words);
    expectFailure(broken, name + " cannot be read beyond its first " + std::to_string(size) +
                              " bytes: Input/output error");
    EXPECT_EQ(results(), before);
    EXPECT_FALSE(std::filesystem::exists(directory_ / "out"));
  }

  TemporaryDirectory directory_;
};

TEST_F(UnreadableTextTest, resultsOfAReport) {
  const std::size_t line = results().size() / 2;
  for (const char* format : {"html", "text", "jsonl"}) {
    expectRefusal("r.jsonl", line, std::string("report r.jsonl -o out --format ") + format,
                  "\"r.jsonl\"");
  }
}

TEST_F(UnreadableTextTest, resultsThatAScanGoesOnWith) {
  expectRefusal("r.jsonl", results().size() / 2,
                "scan '" KESTREL_TEST_MEDIA "/wav_mono.wav' -q -o r.jsonl --resume", "\"r.jsonl\"");
}

TEST_F(UnreadableTextTest, listsOfFiles) {
  const std::size_t line = contentOf(directory_ / "list").size() / 100;
  expectRefusal("list", line, "scan --files-from list -o out", "\"list\"");
  expectRefusal("list", line, "scan --files-from - -o out <list", "the standard input");
  expectRefusal("list", line, "report r.jsonl --files-from list -o out", "\"list\"");
  expectRefusal("list", line, "report r.jsonl --files-from - -o out <list", "the standard input");
}

TEST_F(UnreadableTextTest, streams) {
  expectRefusal("media.json", 5, "inspect --streams-from media.json -o out", "\"media.json\"");
  expectRefusal("media.json", 5, "inspect --streams-from - -o out <media.json",
                "the standard input");
}

TEST_F(UnreadableTextTest, aLayout) {
  expectRefusal("layout", 10,
                "inspect '" KESTREL_TEST_MEDIA "/rf64_stereo.wav' --layout-file layout -o out",
                "\"layout\"");
}

}  // namespace
}  // namespace kestrel::host
