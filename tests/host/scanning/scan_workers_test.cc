#include "host/scanning/scan_workers.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <future>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <vector>

#include "host/basics/json.h"
#include "host/reading/media_facts.h"
#include "host/scanning/scan.h"
#include "tests/host/support/temporary_directory.h"

namespace kestrel::host {
namespace {

bool never() { return false; }

TEST(ScanWorkersTest, eachPieceIsDoneOnce) {
  for (const std::size_t jobs : {1U, 2U, 7U, 200U}) {
    for (const std::size_t count : {0U, 1U, 100U}) {
      std::vector<std::atomic<int>> done(count);
      shareWork({count, jobs, never, [&](std::size_t piece) { ++done.at(piece); }});
      for (const std::atomic<int>& times : done) {
        EXPECT_EQ(times, 1) << jobs << " jobs";
      }
    }
  }
}

TEST(ScanWorkersTest, aStopLeavesTheRestUndone) {
  std::atomic<std::size_t> done = 0;
  shareWork({100, 1, [&] { return done == 3; }, [&](std::size_t) { ++done; }});
  EXPECT_EQ(done, 3U);
}

TEST(ScanWorkersTest, whatAPieceRaisesIsRaised) {
  std::atomic<int> done = 0;
  const SharedWork work{1000, 2, never, [&](std::size_t piece) {
                          ++done;
                          if (piece == 0) {
                            throw std::runtime_error("full");
                          }
                        }};
  EXPECT_THROW(shareWork(work), std::runtime_error);
  EXPECT_GE(done, 1);
}

// Refuses every file, two at the same moment, in words that take a pipe several times its room.
class RefusingReader : public MediaReader {
 public:
  ReadMedia read(const std::filesystem::path& /*file*/) const override {
    const std::size_t place = ++begun_;
    while (begun_ < place + place % 2) {
      std::this_thread::yield();
    }
    throw NotExamined("refused", std::string(1U << 20, '-'));
  }

 private:
  mutable std::atomic<std::size_t> begun_ = 0;
};

std::string allFrom(const std::filesystem::path& pipe) {
  std::ifstream stream(pipe, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// What two threads write at once into a pipe that is full comes out mixed; one lock keeps them from
// that and from counting at once.
TEST(ScanWorkersTest, theThreadsOfAScanWriteAndCountOneAfterTheOther) {
  constexpr std::ptrdiff_t kFiles = 20;
  const TemporaryDirectory directory;
  std::filesystem::create_directory(directory / "in");
  for (int number = 0; number < kFiles; ++number) {
    directory.write(fmt::format("in/{}.wav", number), "");
  }
  ASSERT_EQ(::mkfifo((directory / "pipe").c_str(), 0600), 0);
  std::future<std::string> written = std::async(std::launch::async, allFrom, directory / "pipe");
  ScanRequest request;
  request.paths = {directory / "in"};
  request.inspect.reader = std::make_shared<RefusingReader>();
  request.output = directory / "pipe";
  request.jobs = 2;
  testing::internal::CaptureStderr();
  EXPECT_EQ(scan(request), ExitCode::kNotExamined);
  EXPECT_NE(testing::internal::GetCapturedStderr().find(fmt::format("refused  {}\n", kFiles)),
            std::string::npos);
  const std::string text = written.get();
  EXPECT_EQ(std::ranges::count(text, '\n'), kFiles);
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_TRUE(Json::accept(line)) << line.substr(0, 40);
  }
}

}  // namespace
}  // namespace kestrel::host
