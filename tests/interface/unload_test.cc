// The library leaves the process when it is closed, after calls of every kind and from threads that
// have ended or live on, and leaves nothing behind.
#include <gtest/gtest.h>

#include <future>
#include <string>
#include <thread>
#include <vector>

#include "api/service_map.h"
#include "tests/interface/first_calls.h"
#include "tests/interface/loaded_library.h"
#include "tests/test_rounds.h"

namespace kestrel::test {
namespace {

// Loads, makes the calls by `use`, unloads; tells what went wrong.
template <class Use>
std::string round(const Use& use) {
  LoadedLibrary library;
  if (!isLoaded()) return "not loaded";
  std::string wrong = use(library);
  library.unload();
  if (isLoaded()) wrong += "still loaded";
  return wrong;
}

// The search of all mappings costs more than a round, so it is made now and then.
template <class Use>
void makeRounds(int count, const Use& use) {
  constexpr int kRoundsPerSearch = 100;
  ASSERT_FALSE(isLoaded());
  for (int i = 0; i < count; ++i) {
    ASSERT_EQ(round(use), "") << "round " << i;
    ASSERT_FALSE(i % kRoundsPerSearch == 0 && isMapped()) << "round " << i;
  }
  EXPECT_FALSE(isMapped());
}

// The first tenth of the rounds is for what the C library and the loader keep once. Behind it a
// block lost in every hundredth round would show in the heap, a page lost in as many in the pages.
TEST(Unloading, LeavesNothingBehind) {
  const int count = rounds(10'000);
  makeRounds(count / 10, wrongCalls);
  const Memory before = memoryInUse();
  EXPECT_GT(before.pages, 0) << "the platform tells";
  makeRounds(count - count / 10, wrongCalls);
  const Memory after = memoryInUse();
#if !defined(KESTREL_SANITIZED)
  EXPECT_LE(after.heap - before.heap, 2 * 1024) << "of " << before.heap;
  EXPECT_LE(after.pages - before.pages, 256 * 1024) << "of " << before.pages;
#endif
  RecordProperty("heap", std::to_string(after.heap - before.heap));
  RecordProperty("pages", std::to_string(after.pages - before.pages));
}

TEST(Unloading, AThreadThatHasEndedDoesNotKeepTheLibrary) {
  makeRounds(rounds(1'000), [](const LoadedLibrary& library) {
    std::string wrong;
    std::thread([&] { wrong = wrongCalls(library); }).join();
    return wrong;
  });
}

// The thread waits for its end while the library is unloaded, with all that its calls have left in
// its thread-local storage.
TEST(Unloading, AThreadThatLivesOnDoesNotKeepTheLibrary) {
  for (int i = 0; i < rounds(200); ++i) {
    std::promise<std::string> calls;
    std::promise<void> end;
    std::thread user;
    EXPECT_EQ(round([&](const LoadedLibrary& library) {
                user = std::thread([&] {
                  calls.set_value(wrongCalls(library));
                  end.get_future().wait();
                });
                return calls.get_future().get();
              }),
              "");
    EXPECT_FALSE(isMapped());
    end.set_value();
    user.join();
  }
}

TEST(Unloading, ResultsOutliveTheLibrary) {
  AudioStreamInfo stream;
  stream.streamId = L"1";
  stream.channelCount = 6;
  std::vector<ServiceMapResult> results;
  LoadedLibrary library;
  library.find<decltype(getServiceMap)>("getServiceMap")("T6=5.1 Mix", L"L R C LFE Ls Rs", 0,
                                                         &stream, 1, &results, 0, 0);
  library.unload();
  EXPECT_FALSE(isLoaded());
  ASSERT_EQ(results.size(), 1U);
  EXPECT_EQ(results[0].label, L"L R C LFE Ls Rs");
}

}  // namespace
}  // namespace kestrel::test
