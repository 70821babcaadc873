#include "host/reading/child_process.h"

#include <gtest/gtest.h>

#include <csignal>
#include <thread>

#include "host/reading/media_facts.h"

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

bool never(std::string_view /*text*/) { return false; }
bool isLine(std::string_view text) { return text.ends_with('\n'); }

ChildOutcome run(const std::vector<std::string>& words, std::chrono::milliseconds timeLimit) {
  return ChildProcess(words).ask({"", timeLimit, 1U << 20, never});
}

ChildOutcome runShell(const std::string& script, std::chrono::milliseconds timeLimit = kLong) {
  return run({"/bin/sh", "-c", script}, timeLimit);
}

TEST(ChildProcessTest, theOutputAndTheExitCodeComeBack) {
  const ChildOutcome outcome = runShell("echo out; echo lost >&2; exit 7");
  EXPECT_EQ(outcome.end, ChildEnd::kExited);
  EXPECT_EQ(outcome.code, 7);
  EXPECT_EQ(outcome.output, "out\n");
}

TEST(ChildProcessTest, argumentsArriveAsTheyAre) {
  const ChildOutcome outcome =
      run({"/bin/sh", "-c", "printf '%s|' \"$@\"", "sh", "a b", "", "c\nd", "'"}, kLong);
  EXPECT_EQ(outcome.output, "a b||c\nd|'|");
}

TEST(ChildProcessTest, muchOutputComesWhole) {
  const ChildOutcome outcome = runShell("head -c 1000000 /dev/zero");
  EXPECT_EQ(outcome.end, ChildEnd::kExited);
  EXPECT_EQ(outcome.output.size(), 1000000u);
}

TEST(ChildProcessTest, itAnswersOneRequestAfterAnother) {
  ChildProcess child({"/bin/sh", "-c", "while read -r word; do echo \"<$word>\"; done"});
  for (const char* word : {"one", "two", "three"}) {
    const ChildOutcome outcome = child.ask({word + std::string("\n"), kLong, 99, isLine});
    EXPECT_EQ(outcome.end, ChildEnd::kAnswered);
    EXPECT_EQ(outcome.output, "<" + std::string(word) + ">\n");
  }
}

TEST(ChildProcessTest, aWholeAnswerThatComesInPiecesIsWaitedFor) {
  const auto isSix = [](std::string_view text) { return text.size() == 6; };
  ChildProcess child({"/bin/sh", "-c", "printf abc; read -r word; printf \"$word\"; cat"});
  const ChildOutcome outcome = child.ask({"def\n", kLong, 99, isSix});
  EXPECT_EQ(outcome.end, ChildEnd::kAnswered);
  EXPECT_EQ(outcome.output, "abcdef");
}

TEST(ChildProcessTest, theTimeLimitIsThatOfEachAnswer) {
  ChildProcess child({"/bin/sh", "-c", "read -r word; echo; exec tail -f /dev/null"});
  EXPECT_EQ(child.ask({"1\n", kLong, 99, isLine}).end, ChildEnd::kAnswered);
  EXPECT_EQ(child.ask({"2\n", kShort, 99, isLine}).end, ChildEnd::kOverTime);
}

TEST(ChildProcessTest, aChildThatHasEndedDoesNotAnswer) {
  ChildProcess child({"/bin/sh", "-c", "echo; exit 3"});
  EXPECT_EQ(child.ask({"", kLong, 99, never}).end, ChildEnd::kExited);
  EXPECT_EQ(child.ask({"again", kLong, 99, isLine}).end, ChildEnd::kExited);
}

TEST(ChildProcessTest, whatAskingRaisesEndsTheChild) {
  const auto raises = [](std::string_view text) -> bool {
    return text.empty() ? false : throw NotExamined("id", "sentence");
  };
  ChildProcess child({"/bin/sh", "-c", "echo; exec tail -f /dev/null"});
  EXPECT_THROW(child.ask({"", kLong, 99, raises}), NotExamined);
}

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
  EXPECT_THROW(run({"/no/such/program"}, kLong), NotExamined);
  EXPECT_THROW(run({"/"}, kLong), NotExamined);
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
