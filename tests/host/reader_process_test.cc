#include "host/reader_process.h"

#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>

#include "host/raw_media_json.h"
#include "tests/host/program_run.h"
#include "tests/host/temporary_directory.h"

namespace kestrel::host {
namespace {

const std::filesystem::path kMedia = KESTREL_TEST_MEDIA;

TEST(ReaderProcessTest, onlyTheWholeCommandIsOne) {
  std::vector<std::string> arguments = readerArguments("file", "");
  EXPECT_TRUE(isReaderCommand(arguments));
  arguments.push_back("more");
  EXPECT_FALSE(isReaderCommand(arguments));
  arguments.resize(3);
  EXPECT_FALSE(isReaderCommand(arguments));
  EXPECT_FALSE(isReaderCommand({}));
  EXPECT_FALSE(isReaderCommand({"inspect", "a", "b", "c"}));
}

TEST(ReaderProcessTest, writesTheFieldsOfItsFile) {
  const ProgramRun run = runProgramProcess(readerArguments(kMedia / "wav_51back.wav", ""));
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.errors, "");
  const RawMedia media = rawMediaFromJson(run.output);
  EXPECT_EQ(media.container, "Wave");
  ASSERT_EQ(media.audioStreams.size(), 1u);
  EXPECT_EQ(media.audioStreams[0].channelLayout, "L R C LFE Lb Rb");
}

TEST(ReaderProcessTest, aFileThatCannotBeOpenedHasItsOwnExitCode) {
  EXPECT_EQ(runProgramProcess(readerArguments("/no/such/file", "")).exitCode, kReaderCannotOpen);
}

TEST(ReaderProcessTest, doesNothingForAnotherProcessThanItsParent) {
  std::vector<std::string> arguments = readerArguments(kMedia / "wav_51back.wav", "");
  arguments[1] = "1";
  const ProgramRun run = runProgramProcess(arguments);
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(run.output, "");
}

[[noreturn]] void startReaderAndWait(const std::filesystem::path& file) {
  const std::vector<std::string> arguments = readerArguments(file, "");
  if (::fork() == 0) {
    ::execl(KESTREL_PROGRAM, KESTREL_PROGRAM, arguments[0].c_str(), arguments[1].c_str(),
            arguments[2].c_str(), arguments[3].c_str(), nullptr);
    ::_exit(127);
  }
  for (;;) {
    ::pause();
  }
}

// The reader never returns from this file. That it has opened it tells that it is past its start;
// the end of `alive`, which the parent and the reader alone hold open, tells that both are gone.
TEST(ReaderProcessTest, doesNotOutliveItsParent) {
  const TemporaryDirectory directory;
  const std::filesystem::path file = directory / "file.mxf";
  std::filesystem::copy_file(kMedia / "mxf_reader_never_returns.mxf", file);
  const int watch = ::inotify_init1(IN_CLOEXEC);
  ASSERT_GE(::inotify_add_watch(watch, file.c_str(), IN_OPEN), 0);
  std::array<int, 2> alive{};
  ASSERT_EQ(::pipe(alive.data()), 0);
  const pid_t parent = ::fork();
  if (parent == 0) {
    startReaderAndWait(file);
  }
  ::close(alive[1]);
  inotify_event opened{};
  ASSERT_GT(::read(watch, &opened, sizeof opened), 0);
  ::kill(parent, SIGKILL);
  ::waitpid(parent, nullptr, 0);
  char unit = 0;
  EXPECT_EQ(::read(alive[0], &unit, 1), 0);
  ::close(watch);
  ::close(alive[0]);
}

}  // namespace
}  // namespace kestrel::host
