// How often a call asks for memory: for what the host receives, and now and then for working memory
// once that on the stack is used up.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "api/service_map.h"
#include "tests/robustness/failing_memory.h"

namespace kestrel::test {
namespace {

using Streams = std::vector<AudioStreamInfo>;

// Streams "1", "2" and so on.
Streams streamsOf(const std::vector<std::int32_t>& channelCounts) {
  Streams streams(channelCounts.size());
  for (std::size_t i = 0; i < streams.size(); ++i) {
    streams[i].streamId = std::to_wstring(i + 1);
    streams[i].channelCount = channelCounts[i];
  }
  return streams;
}

Streams monoStreams(std::int32_t count) {
  return streamsOf(std::vector<std::int32_t>(static_cast<std::size_t>(count), 1));
}

std::string monoDescription(std::int32_t count) {
  std::string text = "T" + std::to_string(count) + "=Mono";
  for (std::int32_t i = 1; i < count; ++i) text += ",Mono";
  return text;
}

struct Call {
  std::string description;
  Streams streams;
};

struct Outcome {
  std::int32_t returned = 0;
  std::int64_t allocations = 0;

  bool operator==(const Outcome&) const = default;
};

void PrintTo(const Outcome& outcome, std::ostream* out) {
  *out << "returned " << outcome.returned << ", " << outcome.allocations << " allocations";
}

Outcome outcomeOf(const Call& call) {
  Outcome outcome;
  std::vector<ServiceMapResult> results;
  const auto count = static_cast<std::int32_t>(call.streams.size());
  const MemoryUse use = withFailing(0, Lasting::kNo, [&] {
    outcome.returned = getServiceMap(call.description.c_str(), L"L R C LFE Ls Rs", 0,
                                     call.streams.data(), count, &results, 0, 1);
  });
  outcome.allocations = use.allocations;
  return outcome;
}

Call surroundAndStereo() {
  Call call{"T8=5.1 Mix,Stereo", streamsOf({6, 2})};
  call.streams[0].trackLabels = L"L R C LFE Ls Rs";
  return call;
}

TEST(Allocations, AreThoseOfTheResult) {
  EXPECT_EQ(outcomeOf({"T2=Stereo", streamsOf({2})}), (Outcome{1, 1})) << "the vector's storage";
  EXPECT_EQ(outcomeOf(surroundAndStereo()), (Outcome{1, 2})) << "that and a label";
  EXPECT_EQ(outcomeOf({monoDescription(16), monoStreams(16)}), (Outcome{1, 1}));
  EXPECT_EQ(outcomeOf({"T2=-Stereo", streamsOf({2})}), (Outcome{1, 0})) << "nothing is reported";
}

TEST(Allocations, AreNoneWhereNothingIsAligned) {
  Call misaligned{monoDescription(16), monoStreams(16)};
  misaligned.streams.back().isPairCoded = 1;
  misaligned.description.replace(0, 3, "T17");
  EXPECT_EQ(outcomeOf(misaligned), (Outcome{0, 0}));
  EXPECT_EQ(outcomeOf({"T3=Stereo", streamsOf({2})}), (Outcome{0, 0})) << "no entry";
  EXPECT_EQ(outcomeOf({"", {}}), (Outcome{0, 0}));
}

TEST(Allocations, OfLongListsAreFew) {
  EXPECT_EQ(outcomeOf({monoDescription(32), monoStreams(32)}), (Outcome{1, 1})) << "on the stack";
  EXPECT_EQ(outcomeOf({monoDescription(99), monoStreams(99)}), (Outcome{1, 2}));
  Call many{"T2=Stereo", monoStreams(100'000)};
  for (std::size_t i = 2; i < many.streams.size(); ++i) many.streams[i].channelCount = 0;
  EXPECT_EQ(outcomeOf(many), (Outcome{1, 3}));
}

}  // namespace
}  // namespace kestrel::test
