// The reader process as its parent sees it: requests in, answers out.
#include "host/reading/reader_process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <thread>

#include "host/reading/child_process.h"
#include "host/reading/reader_protocol.h"
#include "tests/host/support/program_run.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

const std::filesystem::path kMedia = KESTREL_TEST_MEDIA;
constexpr ProcessLimits kLimits{std::uint64_t{1} << 30, std::chrono::hours(1)};
constexpr char kHanging[] = "mxf_reader_never_returns.mxf";

std::vector<std::string> readerWords() {
  std::vector<std::string> words = readerArguments(kLimits);
  words.insert(words.begin(), KESTREL_PROGRAM);
  return words;
}

ReaderAnswer ask(ChildProcess& reader, const std::string& file) {
  const auto isWhole = [](std::string_view text) { return answerIn(text).has_value(); };
  const ChildOutcome outcome =
      reader.ask({textOf(ReaderRequest{"", file}), std::chrono::hours(1), 1U << 20, isWhole});
  EXPECT_EQ(outcome.end, ChildEnd::kAnswered);
  return answerIn(outcome.output).value_or(ReaderAnswer{true, -1, {}});
}

// The id of the reason in an answer.
std::string reasonFor(const ReaderAnswer& answer) {
  try {
    return "read: " + rawMediaFromJson(answer.output).container;
  } catch (const NotExamined& reason) {
    return reason.id();
  }
}

// Waits until a file is opened.
class OpenWatch {
 public:
  explicit OpenWatch(const std::filesystem::path& file) {
    EXPECT_GE(::inotify_add_watch(watch_, file.c_str(), IN_OPEN), 0);
  }
  OpenWatch(const OpenWatch&) = delete;
  OpenWatch& operator=(const OpenWatch&) = delete;
  ~OpenWatch() { ::close(watch_); }

  void wait() const {
    inotify_event opened{};
    EXPECT_GT(::read(watch_, &opened, sizeof opened), 0);
  }

 private:
  int watch_ = ::inotify_init1(IN_CLOEXEC);
};

TEST(ReaderProcessTest, onlyTheWholeCommandIsOne) {
  std::vector<std::string> arguments = readerArguments(kLimits);
  const auto limits = readerCommandIn(arguments);
  ASSERT_TRUE(limits);
  EXPECT_EQ(limits->memory, kLimits.memory);
  EXPECT_EQ(limits->processorTime, kLimits.processorTime);
  arguments.emplace_back("more");
  EXPECT_FALSE(readerCommandIn(arguments));
  EXPECT_FALSE(readerCommandIn({}));
  EXPECT_FALSE(readerCommandIn({"inspect"}));
  EXPECT_FALSE(readerCommandIn({"inspect", "1", "1"}));
  EXPECT_FALSE(readerCommandIn({arguments[0], "many", "1"}));
  EXPECT_FALSE(readerCommandIn({arguments[0], "1", ""}));
}

TEST(ReaderProcessTest, answersWithTheFieldsOfEachFile) {
  ChildProcess reader(readerWords());
  for (int round = 0; round < 2; ++round) {
    const ReaderAnswer answer = ask(reader, kMedia / "wav_51back.wav");
    EXPECT_FALSE(answer.isSignalled);
    EXPECT_EQ(answer.code, 0);
    const RawMedia media = rawMediaFromJson(answer.output);
    EXPECT_EQ(media.container, "Wave");
    ASSERT_EQ(media.audioStreams.size(), 1u);
    EXPECT_EQ(media.audioStreams[0].channelLayout, "L R C LFE Lb Rb");
    EXPECT_EQ(reasonFor(ask(reader, "/no/such/file")), "no-such-file");
  }
}

// An element of Matroska; no number in the length takes less than eight bytes.
std::string element(const std::string& id, const std::string& content) {
  std::string text = id + '\x01';
  for (int shift = 48; shift >= 0; shift -= 8) {
    text.push_back(static_cast<char>((content.size() >> shift) & 0xFF));
  }
  return text + content;
}

// A file with one track whose codec has a name of so many characters, all of which are reported.
std::string mediaWithCodec(std::size_t length) {
  const std::string head = element("\x1A\x45\xDF\xA3", element("\x42\x82", "matroska"));
  const std::string track = element("\xD7", "\x01") + element("\x83", "\x02") +
                            element("\x86", "A_" + std::string(length, 'x'));
  const std::string tracks = element("\x16\x54\xAE\x6B", element("\xAE", track));
  return head + element("\x18\x53\x80\x67", tracks);
}

TEST(ReaderProcessTest, whoWritesTooMuchIsEnded) {
  const TemporaryDirectory directory;
  const auto isWhole = [](std::string_view text) { return answerIn(text).has_value(); };
  ChildProcess reader(readerWords());
  const auto answerFor = [&](std::size_t length) {
    const auto file = directory.write("file.mkv", mediaWithCodec(length));
    const ChildOutcome outcome = reader.ask({textOf(ReaderRequest{"", file.string()}),
                                             std::chrono::hours(1), 4 * kLongestAnswer, isWhole});
    EXPECT_EQ(outcome.end, ChildEnd::kAnswered);
    return answerIn(outcome.output).value_or(ReaderAnswer{false, -1, {}});
  };
  EXPECT_EQ(answerFor(1000).code, 0);
  const ReaderAnswer tooLong = answerFor(kLongestAnswer + kLongestAnswer / 4);
  EXPECT_TRUE(tooLong.isSignalled);
  EXPECT_EQ(tooLong.code, SIGKILL);
  EXPECT_LT(tooLong.output.size(), kLongestAnswer + kLongestAnswer / 4);
}

TEST(ReaderProcessTest, whoTakesTooMuchMemoryIsEnded) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  GTEST_SKIP() << "a sanitizer needs more addresses than any limit";
#endif
  const TemporaryDirectory directory;
  const auto file = directory.write("file.mkv", mediaWithCodec(100U << 20));
  std::vector<std::string> words =
      readerArguments({std::uint64_t{160} << 20, kLimits.processorTime});
  words.insert(words.begin(), KESTREL_PROGRAM);
  ChildProcess reader(words);
  const ReaderAnswer answer = ask(reader, file);
  EXPECT_FALSE(answer.isSignalled);
  EXPECT_EQ(answer.code, kReaderOverMemory);
  EXPECT_EQ(ask(reader, kMedia / "wav_51back.wav").code, 0);
}

TEST(ReaderProcessTest, endsWithItsInput) {
  RunOptions noInput;
  noInput.inputFile = "/dev/null";
  const ProgramRun run = runProgramProcess(readerArguments(kLimits), noInput);
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.output + run.errors, "");
}

// The reader never returns from this file. That it has opened it tells that it is at work.
TEST(ReaderProcessTest, aFileWhoseReadingBreaksDownIsSaidAndTheNextOneIsRead) {
  const TemporaryDirectory directory;
  const std::filesystem::path file = directory / "file.mxf";
  std::filesystem::copy_file(kMedia / kHanging, file);
  const OpenWatch watch(file);
  ChildProcess reader(readerWords());
  const std::vector<pid_t> readers = childrenOf(::getpid());
  ASSERT_EQ(readers.size(), 1u);
  const std::jthread breaker([&] {
    watch.wait();
    const std::vector<pid_t> atWork = childrenOf(readers.front());
    ASSERT_EQ(atWork.size(), 1u);
    ::kill(atWork.front(), SIGABRT);
  });
  const ReaderAnswer broken = ask(reader, file);
  EXPECT_TRUE(broken.isSignalled);
  EXPECT_EQ(broken.code, SIGABRT);
  EXPECT_EQ(ask(reader, kMedia / "wav_51back.wav").code, 0);
}

[[noreturn]] void askAndWait(const std::filesystem::path& file) {
  ChildProcess reader(readerWords());
  ask(reader, file);
  ::_exit(0);
}

// The end of `alive`, which the parent, the reader and its fork alone hold open, tells that all are
// gone.
TEST(ReaderProcessTest, doesNotOutliveItsParent) {
  const TemporaryDirectory directory;
  const std::filesystem::path file = directory / "file.mxf";
  std::filesystem::copy_file(kMedia / kHanging, file);
  const OpenWatch watch(file);
  std::array<int, 2> alive{};
  ASSERT_EQ(::pipe(alive.data()), 0);
  const pid_t parent = ::fork();
  if (parent == 0) {
    askAndWait(file);
  }
  ::close(alive[1]);
  watch.wait();
  ::kill(parent, SIGKILL);
  ::waitpid(parent, nullptr, 0);
  char unit = 0;
  EXPECT_EQ(::read(alive[0], &unit, 1), 0);
  ::close(alive[0]);
}

}  // namespace
}  // namespace kestrel::host
