#include "host/commands/command_line.h"

#include <gtest/gtest.h>

#include <chrono>

#include "host/basics/usage_error.h"
#include "host/commands/inspect_arguments.h"

namespace kestrel::host {
namespace {

using Words = std::vector<std::string>;

std::string refusal(const Words& words) {
  try {
    parseCommandLine(words);
    return "accepted";
  } catch (const UsageError& error) {
    return error.what();
  }
}

TEST(CommandLineTest, everyCommandIsKnown) {
  for (const Words& words : {Words{"inspect", "a file"},
                             {"inspect", "--strict", "--", "-c", "a"},
                             {"inspect", "--streams-from", "-"},
                             {"catalogue"},
                             {"codes"},
                             {"explain", "T2=Stereo"},
                             {"--help"},
                             {"inspect", "--help"},
                             {"--version"}}) {
    EXPECT_EQ(refusal(words), "accepted") << testing::PrintToString(words);
  }
}

TEST(CommandLineTest, whatMakesNoSenseIsAUsageErrorOnOneLine) {
  const Words rows[] = {
      {},
      {"inspect", "file", "--layout"},
      {"inspect", "file", "--layout", "T2=Stereo", "--layout", "T4=Stereo,Stereo"},
      {"inspect", "file", "--lay\nout"},
      {"inspect", "file", "--timeout", "0"},
      {"inspect", "file", "--timeout", "-1"},
      {"inspect", "file", "--timeout", "1.5"},
      {"inspect", "file", "--timeout", "86401"},
      {"inspect", "file", "--timeout", "soon"},
      {"inspect", "file", "--format", "xml"},
      {"inspector", "file"},
      {"explain"},
      {"explain", "T2=Stereo", "T4=Stereo"},
      {"catalogue", "more"},
      {"--layout", "T2=Stereo", "file"},
  };
  for (const Words& words : rows) {
    const std::string answer = refusal(words);
    EXPECT_NE(answer, "accepted") << testing::PrintToString(words);
    EXPECT_NE(answer, "") << testing::PrintToString(words);
    EXPECT_EQ(answer.find('\n'), std::string::npos) << answer;
  }
}

InspectArguments all() {
  InspectArguments arguments;
  arguments.layout = "T2=Stereo";
  arguments.order = "C L R Ls Rs LFE";
  arguments.skipLabels = arguments.reportAll = arguments.isStrict = true;
  return arguments;
}

TEST(InspectArgumentsTest, everyOptionArrives) {
  const InspectOptions options = inspectOptions(all());
  EXPECT_EQ(options.expectation->description, "T2=Stereo");
  EXPECT_EQ(options.surroundChannelOrder, "C L R Ls Rs LFE");
  EXPECT_FALSE(options.checkLabels);
  EXPECT_TRUE(options.reportAll);
  EXPECT_TRUE(options.isStrict);
}

TEST(InspectArgumentsTest, withoutOptionsNothingIsExpected) {
  const InspectOptions options = inspectOptions({});
  EXPECT_FALSE(options.expectation);
  EXPECT_EQ(options.surroundChannelOrder, "L R C LFE Ls Rs");
  EXPECT_TRUE(options.checkLabels);
  EXPECT_FALSE(options.isStrict);
}

std::string refusal(const InspectArguments& arguments) {
  try {
    inspectOptions(arguments);
    return "accepted";
  } catch (const UsageError& error) {
    return error.what();
  }
}

TEST(InspectArgumentsTest, onlyOneExpectationMayBeGiven) {
  InspectArguments arguments = all();
  arguments.code = "8b";
  EXPECT_EQ(refusal(arguments), "--layout, --layout-file, --item and --code exclude each other");
}

TEST(InspectArgumentsTest, aBadTextNamesItsOption) {
  InspectArguments item;
  item.item = "9999";
  EXPECT_EQ(refusal(item), "--item: there is no item 9999; the items are 0 to 40");
  InspectArguments empty;
  empty.layout = "";
  EXPECT_TRUE(refusal(empty).starts_with("--layout: there is no entry"));
  InspectArguments order;
  order.order = "\xff";
  EXPECT_EQ(refusal(order), "--order: the text is not UTF-8");
}

}  // namespace
}  // namespace kestrel::host
