// Eight threads call the library at once, each with a vector of its own. A thread only counts what
// differs from results made beforehand; the counts are read after the threads have ended.
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "tests/library_under_test.h"
#include "tests/plain/plain_service_map.h"
#include "tests/random_inputs.h"

namespace kestrel::test {
namespace {

constexpr std::size_t kThreads = 8;
constexpr std::size_t kInputs = 500;
constexpr int kRounds = 4;

struct Case {
  plain::ServiceMapInput input;
  plain::PlainResult expected;
};

std::vector<Case> makeCases() {
  Random random(8);
  std::vector<Case> cases;
  for (std::size_t i = 0; i < kInputs; ++i) {
    plain::ServiceMapInput input = randomServiceMapInput(random);
    plain::PlainResult expected = plain::serviceMap(input);
    cases.push_back({std::move(input), std::move(expected)});
  }
  return cases;
}

// Starts all threads together, waits for them, and adds up what each returned.
template <class Work>
int runThreads(const Work& work) {
  std::atomic<std::size_t> waiting = kThreads;
  std::array<int, kThreads> differences{};
  std::vector<std::thread> threads;
  for (std::size_t t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      --waiting;
      while (waiting != 0) std::this_thread::yield();
      differences[t] = work(t);
    });
  }
  for (std::thread& thread : threads) thread.join();
  int sum = 0;
  for (const int difference : differences) sum += difference;
  return sum;
}

// What the catalogue says about one item and its row, as one text.
std::string describeItem(const Library& functions, std::int32_t item) {
  const auto nameLength = static_cast<std::size_t>(functions.getServiceMapItemNameLength(item));
  std::string text(nameLength + 1, '?');
  functions.getServiceMapItemName(item, text.data());
  const auto count = static_cast<std::size_t>(functions.getStreamTypesCount(item));
  std::vector<std::int32_t> types(count, -1);
  const std::int64_t written = functions.getStreamTypes(item, types.data());
  for (const std::int32_t type : types) text += std::to_string(type);
  const std::int32_t row = functions.getServiceMapItemRow(item);
  return text + " " + std::to_string(written) + " row " + std::to_string(row) + " tracks " +
         std::to_string(functions.getTracksCount(row)) + " default " +
         std::to_string(functions.getDefaultServiceMapItem(row));
}

std::string describeRow(const Library& functions, std::int32_t row) {
  const auto count = static_cast<std::size_t>(functions.getServiceMapItemsCount(row));
  std::vector<std::int32_t> items(count, -1);
  std::string text = std::to_string(functions.getServiceMapItems(row, items.data())) + ":";
  for (const std::int32_t item : items) text += " " + std::to_string(item);
  return text;
}

bool catalogueIsRight(const Library& functions) {
  // The NUL that the library writes ends up in the middle of the text.
  const std::string item40 = std::string("5.1 Mix + 2x Mono + Stereo + 6x Mono") + '\0';
  const std::string item0 = std::string("Stereo") + '\0';
  return functions.getRowCount() == 7 &&
         describeItem(functions, 40) == item40 + "2001000000 10 row 6 tracks 16 default 33" &&
         describeItem(functions, 0) == item0 + "1 1 row 0 tracks 2 default 0" &&
         describeRow(functions, 6) == "8: 33 34 35 36 37 38 39 40" &&
         describeRow(functions, 2) == "3: 4 5 6";
}

int countWrongCalls(const std::vector<Case>& cases, std::size_t first) {
  int wrong = 0;
  for (std::size_t i = 0; i < cases.size(); ++i) {
    // Each thread begins elsewhere, so that different inputs meet.
    const Case& one = cases[(first + i) % cases.size()];
    if (!plain::sameResults(callServiceMap(one.input), one.expected)) ++wrong;
  }
  return wrong;
}

TEST(Threads, CallsOfGetServiceMapDoNotDisturbEachOther) {
  const std::vector<Case> cases = makeCases();
  library();
  EXPECT_EQ(0, runThreads([&](std::size_t t) {
              int wrong = 0;
              for (int round = 0; round < kRounds; ++round) {
                wrong += countWrongCalls(cases, t * (cases.size() / kThreads));
              }
              return wrong;
            }));
}

TEST(Threads, TheCatalogueCanBeAskedDuringCallsOfGetServiceMap) {
  const std::vector<Case> cases = makeCases();
  const Library& functions = library();
  EXPECT_EQ(0, runThreads([&](std::size_t t) {
              if (t % 2 == 0) return countWrongCalls(cases, t);
              int wrong = 0;
              for (std::size_t i = 0; i < kInputs; ++i)
                wrong += catalogueIsRight(functions) ? 0 : 1;
              return wrong;
            }));
}

// The streams are only read, so threads may share them.
TEST(Threads, OneStreamArrayServesAllThreads) {
  plain::ServiceMapInput input;
  input.description = "T8=5.1 Mix,EMCA";
  input.order = L"L R C LFE Ls Rs";
  input.streams.resize(2);
  input.streams[0].streamId = L"1";
  input.streams[0].channelCount = 6;
  input.streams[1].streamId = L"7-8";
  input.streams[1].channelCount = 2;
  input.streams[1].group = 1;
  input.streams[1].isPairCoded = 1;
  const plain::PlainResult expected = plain::serviceMap(input);
  ASSERT_EQ(expected.results.size(), 2U);
  EXPECT_EQ(0, runThreads([&](std::size_t) {
              int wrong = 0;
              for (std::size_t i = 0; i < kInputs; ++i) {
                wrong += plain::sameResults(callServiceMap(input), expected) ? 0 : 1;
              }
              return wrong;
            }));
}

}  // namespace
}  // namespace kestrel::test
