// The lock of a file of results, between processes: a scan is killed, or another one comes.
#include "host/scanning/results_writer.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <fstream>
#include <functional>
#include <nlohmann/json.hpp>

#include "host/basics/output.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

using Pipe = std::array<int, 2>;

Pipe pipeOf() {
  Pipe pipe{};
  EXPECT_EQ(::pipe(pipe.data()), 0);
  return pipe;
}

void tell(const Pipe& pipe) { EXPECT_EQ(::write(pipe[1], "!", 1), 1); }

void await(const Pipe& pipe) {
  char mark = 0;
  EXPECT_EQ(::read(pipe[0], &mark, 1), 1);
}

pid_t inChild(const std::function<void()>& work) {
  const pid_t child = ::fork();
  if (child == 0) {
    work();
    ::_exit(0);
  }
  return child;
}

int codeOf(pid_t child) {
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

bool isRefused(const std::function<void()>& work) {
  try {
    work();
    return false;
  } catch (const OutputError& error) {
    return std::string(error.what()).find("another scan is writing to it") != std::string::npos;
  }
}

bool isRefusedToAnother(const std::filesystem::path& file) {
  return codeOf(inChild([&] { ::_exit(isRefused([&] { ResultsWriter{file}; }) ? 1 : 0); })) == 1;
}

// A reader that has been forked and waits for its turn to become the reader's program.
TEST(ResultsWriterTest, aChildOfAKilledScanDoesNotHoldTheLock) {
  const TemporaryDirectory directory;
  const std::filesystem::path file = directory / "r.jsonl";
  const Pipe isForked = pipeOf();
  const Pipe isOver = pipeOf();
  const pid_t scan = inChild([&] {
    const ResultsWriter results(file);
    inChild([&] {
      tell(isForked);
      await(isOver);
    });
    ::pause();
  });
  await(isForked);
  EXPECT_TRUE(isRefusedToAnother(file));
  ::kill(scan, SIGKILL);
  EXPECT_EQ(codeOf(scan), 128 + SIGKILL);
  EXPECT_FALSE(isRefusedToAnother(file));
  tell(isOver);
}

TEST(ResultsWriterTest, itIsHeldAgainAfterTheFileWasRead) {
  const TemporaryDirectory directory;
  const std::filesystem::path file = directory / "r.jsonl";
  ResultsWriter results(file);
  results.mend(readResultsFile(file, [](const Json&) {}));
  EXPECT_TRUE(isRefusedToAnother(file));
  { const std::ifstream look(file); }
  results.append("{}");
  EXPECT_TRUE(isRefusedToAnother(file));
}

TEST(ResultsWriterTest, whatAnotherScanWroteWhileItWasReadIsLeftAlone) {
  const TemporaryDirectory directory;
  const std::filesystem::path file = directory / "r.jsonl";
  ResultsWriter results(file);
  const ResultsEnd end = readResultsFile(file, [](const Json&) {});
  EXPECT_EQ(codeOf(inChild([&] { ResultsWriter(file).append("{}"); })), 0);
  EXPECT_TRUE(isRefused([&] { results.mend(end); }));
}

TEST(ResultsWriterTest, aLineIsNotWrittenWhileAnotherScanHoldsTheFile) {
  const TemporaryDirectory directory;
  const std::filesystem::path file = directory / "r.jsonl";
  ResultsWriter results(file);
  { const std::ifstream look(file); }
  const Pipe isHeld = pipeOf();
  const Pipe isOver = pipeOf();
  const pid_t other = inChild([&] {
    const ResultsWriter theirs(file);
    tell(isHeld);
    await(isOver);
  });
  await(isHeld);
  EXPECT_TRUE(isRefused([&] { results.append("{}"); }));
  tell(isOver);
  EXPECT_EQ(codeOf(other), 0);
  EXPECT_EQ(std::filesystem::file_size(file), 0U);
}

}  // namespace
}  // namespace kestrel::host
