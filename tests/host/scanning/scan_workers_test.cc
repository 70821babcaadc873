#include "host/scanning/scan_workers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <vector>

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

}  // namespace
}  // namespace kestrel::host
