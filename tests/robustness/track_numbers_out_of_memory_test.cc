// The track-number counter when memory runs out. All numbers of a call are taken at one stroke,
// behind the allocation of its expected services. So a call that fails has consumed either nothing
// or as many numbers as the call that passes, never a part of them, and gives none back; the next
// call's numbers follow without a gap and without one handed out twice.
#include <gtest/gtest.h>

#include <cstdint>
#include <new>
#include <string>
#include <vector>

#include "analyser/track_number_counter.h"
#include "api/service_map.h"
#include "tests/analyser/analyser_support.h"
#include "tests/robustness/failing_memory.h"

namespace kestrel::test {
namespace {

constexpr std::int32_t kServices = 99;  // their streams alone fill what stands on the stack

std::string description() {
  std::string text = "T99=Mono";
  for (std::int32_t i = 1; i < kServices; ++i) text += ",Mono";
  return text;
}

std::vector<AudioStreamInfo> fileStreams() {
  std::vector<AudioStreamInfo> streams(kServices);
  for (AudioStreamInfo& stream : streams) stream.channelCount = 1;
  return streams;
}

// The number that the next service will be given.
std::uint32_t nextNumber() { return static_cast<std::uint32_t>(takeTrackNumbers(0)); }

// Makes the call; returns how many numbers it consumed.
std::uint32_t consumedBy(std::int64_t failing, MemoryUse& use) {
  const std::string text = description();
  const std::vector<AudioStreamInfo> streams = fileStreams();
  std::vector<ServiceMapResult> results;
  const std::uint32_t before = nextNumber();
  use = withFailing(failing, Lasting::kNo, [&] {
    try {
      getServiceMap(text.c_str(), L"", 0, streams.data(), kServices, &results, 0, 0);
    } catch (const std::bad_alloc&) {
      results.clear();
    }
  });
  EXPECT_EQ(results.size(), use.failed ? 0U : std::size_t{kServices});
  return nextNumber() - before;
}

// Each service of the next call has its number after that of the service before it.
void expectNumbersFollow(std::uint32_t next) {
  const Analyser analyser(fileStreams(), description());
  const AudioServiceMapManager& manager = analyser.manager;
  ASSERT_EQ(manager.expectedServices().size(), std::size_t{kServices});
  for (const ExpectedService& service : manager.expectedServices()) {
    EXPECT_EQ(static_cast<std::uint32_t>(service.firstTrack), next);
    ++next;
  }
}

TEST(TrackNumbersOutOfMemory, AreConsumedAllOrNotAtAll) {
  constexpr std::uint32_t kAll = kServices;
  bool noneConsumed = false;
  bool allConsumed = false;
  for (std::int64_t failing = 1;; ++failing) {
    SCOPED_TRACE(failing);
    MemoryUse use;
    const std::uint32_t consumed = consumedBy(failing, use);
    expectNumbersFollow(nextNumber());
    if (!use.failed) {
      EXPECT_EQ(consumed, kAll);
      break;
    }
    EXPECT_TRUE(consumed == 0 || consumed == kAll) << consumed;
    (consumed == 0 ? noneConsumed : allConsumed) = true;
  }
  EXPECT_TRUE(noneConsumed && allConsumed) << "failures on both sides of the stroke";
}

}  // namespace
}  // namespace kestrel::test
