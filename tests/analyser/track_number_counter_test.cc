// A test program of its own: its first test must see the counter as it is when a process starts.
#include "analyser/track_number_counter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <barrier>
#include <climits>
#include <cstddef>
#include <thread>
#include <vector>

#include "tests/analyser/analyser_support.h"

namespace kestrel {
namespace {

std::vector<std::int32_t> tracksOf(const AudioServiceMapManager& manager) {
  std::vector<std::int32_t> tracks;
  for (const ExpectedService& service : manager.expectedServices())
    for (std::int32_t i = 0; i < service.trackCount; ++i)
      tracks.push_back(trackNumberAfter(service.firstTrack, static_cast<std::uint32_t>(i)));
  return tracks;
}

std::vector<std::int32_t> parse(const char* description, std::int32_t channels) {
  AudioStreamInfo stream;
  stream.channelCount = channels;
  return tracksOf(Analyser({stream}, description).manager);
}

TEST(TrackNumberCounter, StartsAtZeroGrowsByKnownNamesAndWraps) {
  EXPECT_EQ(parse("T2=Stereo", 2), (std::vector<std::int32_t>{0, 1}));
  EXPECT_EQ(parse("T2=Stereo", 2), (std::vector<std::int32_t>{2, 3}));
  EXPECT_EQ(parse("T4=Dolby E,-Mono,,EMCA", 4), (std::vector<std::int32_t>{4, 5, 6}));
  EXPECT_EQ(parse("T9=Stereo", 2), (std::vector<std::int32_t>{})) << "no entry, no numbers";
  EXPECT_EQ(parse("T2=stereo", 2), (std::vector<std::int32_t>{})) << "unknown, no numbers";
  EXPECT_EQ(parse("T2=Mono", 2), (std::vector<std::int32_t>{7}));

  takeTrackNumbers(static_cast<std::uint32_t>(INT_MAX - 8));  // the next is INT_MAX
  EXPECT_EQ(parse("T6=5.1 Mix", 6),
            (std::vector<std::int32_t>{INT_MAX, INT_MIN, INT_MIN + 1, INT_MIN + 2, INT_MIN + 3,
                                       INT_MIN + 4}));
}

TEST(TrackNumberCounter, HandsNoNumberOutTwice) {
  constexpr int kThreads = 8, kCalls = 2000;
  std::vector<std::vector<std::int32_t>> taken(kThreads);
  std::vector<std::thread> threads;
  for (auto& numbers : taken)
    threads.emplace_back([&numbers] {
      for (int i = 0; i < kCalls; ++i)
        for (const std::int32_t number : parse("T4=Stereo,EMCA", 4)) numbers.push_back(number);
    });
  for (auto& thread : threads) thread.join();
  std::vector<std::int32_t> all;
  for (const auto& numbers : taken) all.insert(all.end(), numbers.begin(), numbers.end());
  std::ranges::sort(all);
  EXPECT_EQ(all.size(), static_cast<std::size_t>(kThreads * kCalls * 4));
  EXPECT_EQ(std::ranges::adjacent_find(all), all.end());
}

TEST(TrackNumberCounter, HandsThreadsThatAskForOneNumberDifferentOnes) {
  std::vector<std::int32_t> taken(64);
  std::vector<std::thread> threads;  // all there at once, so that each has an identity of its own
  std::barrier allThere(static_cast<std::ptrdiff_t>(taken.size()));
  for (std::int32_t& number : taken)
    threads.emplace_back([&] {
      number = takeTrackNumbers(1);
      allThere.arrive_and_wait();
    });
  for (auto& thread : threads) thread.join();
  std::ranges::sort(taken);
  EXPECT_EQ(std::ranges::adjacent_find(taken), taken.end());
}

TEST(TrackNumberCounter, HandsOnWithoutGapWhateverThreadsAsk) {
  const std::int32_t first = takeTrackNumbers(1);
  std::vector<std::int32_t> taken;
  for (int i = 0; i < 20; ++i) {
    std::thread([&] { taken.push_back(takeTrackNumbers(2)); }).join();
    taken.push_back(takeTrackNumbers(1));
  }
  std::int32_t next = trackNumberAfter(first, 1);
  for (std::size_t i = 0; i < taken.size(); ++i) {
    EXPECT_EQ(taken[i], next) << i;
    next = trackNumberAfter(next, i % 2 == 0 ? 2 : 1);
  }
}

TEST(TrackNumberCounter, HandsOutHalfOfAllNumbersAtOnceAndGoesOnAfterThem) {
  for (const std::uint32_t count : {0x7FFF'FFFFU, 0x8000'0000U, 0xFFFF'FFFFU}) {
    const std::int32_t first = takeTrackNumbers(count);
    EXPECT_EQ(takeTrackNumbers(1), trackNumberAfter(first, count)) << count;
  }
}

}  // namespace
}  // namespace kestrel
