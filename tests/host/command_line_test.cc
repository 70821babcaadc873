#include "host/command_line.h"

#include <gtest/gtest.h>

namespace kestrel::host {
namespace {

using Words = std::vector<std::string>;

TEST(CommandLineTest, inspectTakesAFileAndALayout) {
  const CommandLine line = parseCommandLine({"inspect", "a file", "--layout", "T2=Stereo"});
  ASSERT_TRUE(line.inspect);
  EXPECT_EQ(line.inspect->file, "a file");
  EXPECT_EQ(line.inspect->request.layoutDescription, "T2=Stereo");
  EXPECT_EQ(line.inspect->request.surroundChannelOrder, L"");
  EXPECT_TRUE(line.inspect->request.checkLabels);
  EXPECT_FALSE(line.inspect->request.reportAll);
  EXPECT_EQ(line.inspect->timeLimit, std::chrono::seconds(30));
}

TEST(CommandLineTest, everyOptionArrives) {
  const CommandLine line = parseCommandLine({"inspect", "--layout=T8=5.1 Mix,-Stereo;T2=Stereo",
                                             "--order", "L R C LFE Ls Rs", "--no-label-check",
                                             "--report-all", "--timeout", "5", "--", "-file"});
  ASSERT_TRUE(line.inspect);
  EXPECT_EQ(line.inspect->file, "-file");
  EXPECT_EQ(line.inspect->request.layoutDescription, "T8=5.1 Mix,-Stereo;T2=Stereo");
  EXPECT_EQ(line.inspect->request.surroundChannelOrder, L"L R C LFE Ls Rs");
  EXPECT_FALSE(line.inspect->request.checkLabels);
  EXPECT_TRUE(line.inspect->request.reportAll);
  EXPECT_EQ(line.inspect->timeLimit, std::chrono::seconds(5));
}

TEST(CommandLineTest, helpAndVersionAreAnswers) {
  const CommandLine version = parseCommandLine({"--version"});
  EXPECT_FALSE(version.inspect);
  EXPECT_EQ(version.answer, "kestrel " KESTREL_EXPECTED_VERSION "\n");
  const CommandLine help = parseCommandLine({"--help"});
  EXPECT_FALSE(help.inspect);
  EXPECT_NE(help.answer.find("inspect"), std::string::npos);
  EXPECT_NE(help.answer.find("Exit codes: 0"), std::string::npos);
  EXPECT_NE(parseCommandLine({"inspect", "--help"}).answer.find("--layout"), std::string::npos);
}

TEST(CommandLineTest, whatMakesNoSenseIsAUsageErrorOnOneLine) {
  const Words rows[] = {
      {},
      {"inspect"},
      {"inspect", "file"},
      {"inspect", "--layout", "T2=Stereo"},
      {"inspect", "file", "--layout"},
      {"inspect", "file", "--layout", ""},
      {"inspect", "file", "other", "--layout", "T2=Stereo"},
      {"inspect", "file", "--layout", "T2=Stereo", "--layout", "T4=Stereo,Stereo"},
      {"inspect", "file", "--layout", "T2=Stereo", "--lay\nout"},
      {"inspect", "file", "--layout", "T2=Stereo", "--order", "\xff"},
      {"inspect", "file", "--layout", "T2=Stereo", "--timeout", "0"},
      {"inspect", "file", "--layout", "T2=Stereo", "--timeout", "-1"},
      {"inspect", "file", "--layout", "T2=Stereo", "--timeout", "1.5"},
      {"inspect", "file", "--layout", "T2=Stereo", "--timeout", "86401"},
      {"inspect", "file", "--layout", "T2=Stereo", "--timeout", "soon"},
      {"inspector", "file", "--layout", "T2=Stereo"},
      {"--layout", "T2=Stereo", "file"},
  };
  for (const Words& words : rows) {
    SCOPED_TRACE(testing::PrintToString(words));
    try {
      parseCommandLine(words);
      ADD_FAILURE() << "accepted";
    } catch (const UsageError& error) {
      EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos) << error.what();
      EXPECT_STRNE(error.what(), "");
    }
  }
}

}  // namespace
}  // namespace kestrel::host
