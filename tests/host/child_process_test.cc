#include "host/child_process.h"

#include <gtest/gtest.h>

#include <csignal>
#include <thread>

#include "host/not_examined.h"

#if defined(__SANITIZE_THREAD__)
// libuv closes descriptors by plain system calls, which the thread sanitizer does not see: a number
// that another thread gets next looks to it like one that two threads use.
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_suppressions();
extern "C" const char* __tsan_default_suppressions() { return "called_from_lib:libuv.so.1\n"; }
#endif

namespace kestrel::host {
namespace {

using namespace std::chrono_literals;

constexpr auto kLong = 1h;
constexpr auto kShort = 50ms;

ChildOutcome runShell(const std::string& script, std::chrono::milliseconds timeLimit = kLong) {
  return runChild({{"/bin/sh", "-c", script}, timeLimit, 1u << 20});
}

TEST(ChildProcessTest, theOutputAndTheExitCodeComeBack) {
  const ChildOutcome outcome = runShell("echo out; echo lost >&2; exit 7");
  EXPECT_EQ(outcome.end, ChildEnd::kExited);
  EXPECT_EQ(outcome.code, 7);
  EXPECT_EQ(outcome.output, "out\n");
}

TEST(ChildProcessTest, argumentsArriveAsTheyAre) {
  const ChildOutcome outcome =
      runChild({{"/bin/sh", "-c", "printf '%s|' \"$@\"", "sh", "a b", "", "c\nd", "'"}, kLong, 99});
  EXPECT_EQ(outcome.output, "a b||c\nd|'|");
}

TEST(ChildProcessTest, muchOutputComesWhole) {
  const ChildOutcome outcome = runShell("head -c 1000000 /dev/zero");
  EXPECT_EQ(outcome.end, ChildEnd::kExited);
  EXPECT_EQ(outcome.output.size(), 1000000u);
}

TEST(ChildProcessTest, itsInputIsEmpty) { EXPECT_EQ(runShell("cat; echo end").output, "end\n"); }

TEST(ChildProcessTest, aSignalIsToldFromAnExit) {
  const ChildOutcome outcome = runShell("kill -SEGV $$");
  EXPECT_EQ(outcome.end, ChildEnd::kSignalled);
  EXPECT_EQ(outcome.code, SIGSEGV);
}

TEST(ChildProcessTest, aChildOverItsTimeIsKilled) {
  EXPECT_EQ(runShell("exec tail -f /dev/null", kShort).end, ChildEnd::kOverTime);
}

TEST(ChildProcessTest, closingTheOutputDoesNotEscapeTheTimeLimit) {
  EXPECT_EQ(runShell("exec tail -f /dev/null >/dev/null", kShort).end, ChildEnd::kOverTime);
}

TEST(ChildProcessTest, signalsThatCanBeIgnoredDoNotMatter) {
  EXPECT_EQ(runShell("trap '' TERM INT HUP; exec tail -f /dev/null", kShort).end,
            ChildEnd::kOverTime);
}

TEST(ChildProcessTest, aChildOverItsOutputIsKilled) {
  EXPECT_EQ(runShell("exec yes").end, ChildEnd::kOverOutput);
}

TEST(ChildProcessTest, aProgramThatIsNotThereIsAnError) {
  EXPECT_THROW(runChild({{"/no/such/program"}, kLong, 1}), NotExamined);
  EXPECT_THROW(runChild({{"/"}, kLong, 1}), NotExamined);
}

TEST(ChildProcessTest, manyThreadsMayCallAtOnce) {
  std::vector<std::thread> threads;
  std::vector<std::string> outputs(8);
  for (std::size_t index = 0; index < outputs.size(); ++index) {
    threads.emplace_back(
        [&outputs, index] { outputs[index] = runShell("echo " + std::to_string(index)).output; });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  for (std::size_t index = 0; index < outputs.size(); ++index) {
    EXPECT_EQ(outputs[index], std::to_string(index) + "\n");
  }
}

}  // namespace
}  // namespace kestrel::host
