// Threads that make analyses of the plain C interface, and threads that share one.
#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "api/kestrel.h"
#include "tests/c_api/c_analysis_support.h"
#include "tests/c_api/c_request.h"

namespace kestrel::test {
namespace {

// All that an analysis tells, as one text.
std::string told(const Analysis& analysis) {
  std::string text;
  for (std::int32_t i = 0; i < serviceCount(analysis); ++i) {
    const KestrelService service = serviceAt(analysis, i);
    text += std::to_string(service.slots[0].trackNumber) + service.label + "\n";
  }
  for (std::int32_t i = 0; i < findingCount(analysis); ++i) {
    text += std::to_string(findingAt(analysis, i).code) + sentenceAt(analysis, i) + "\n";
  }
  std::int32_t total = -1;
  std::size_t needed = 0;
  EXPECT_EQ(kestrelDescribedTotals(analysis.get(), &total, 1, &needed), KESTREL_OK);
  return text + std::to_string(total);
}

TEST(CThreads, OneAnalysisMayBeReadByAll) {
  const std::vector<KestrelStream> streams = {stream("1", 6, "L L C LFE Ls"), stream("2", 8)};
  const Analysis analysis = analysed(request("T14=5.1 Mix,Stereo,Mono,Other", streams));
  const std::string expected = told(analysis);
  std::atomic<int> differences = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 200; ++i) differences += told(analysis) == expected ? 0 : 1;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(differences, 0);
}

TEST(CThreads, AnalysesMayBeMadeByAll) {
  const std::vector<KestrelStream> streams = {stream("1", 6, kSixLabels), stream("2", 2)};
  const KestrelRequest asked = request("T8=5.1 Mix,Stereo,Other", streams);
  const std::string expected = told(analysed(asked));
  std::atomic<int> differences = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 200; ++i) differences += told(analysed(asked)) == expected ? 0 : 1;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(differences, 0);
}

}  // namespace
}  // namespace kestrel::test
