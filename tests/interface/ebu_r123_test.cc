// getServiceMapEbuR123 of the library that ships. Its table of configurations is empty, so what a
// call leaves behind depends on nothing but the item that the host passes.
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

#include "tests/library_under_test.h"
#include "tests/small_stack.h"

namespace kestrel::test {
namespace {

using Streams = std::vector<AudioStreamInfo>;

constexpr std::int32_t kCountBefore = -77;
constexpr std::int32_t kItems[] = {0, 7, 40, 41, 42, -1, INT_MAX, INT_MIN};

AudioStreamInfo stream(const std::wstring& id, std::int32_t channelCount, std::int32_t group = 0) {
  AudioStreamInfo info;
  info.streamId = id;
  info.group = group;
  info.channelCount = channelCount;
  return info;
}

AudioStreamInfo pairCoded(const std::wstring& id, std::int32_t channelCount,
                          std::int32_t group = 0) {
  AudioStreamInfo info = stream(id, channelCount, group);
  info.isPairCoded = 1;
  return info;
}

// The address that stands in an out-pointer before the call.
ServiceMapResult* blockBefore() {
  static ServiceMapResult record;
  return &record;
}

struct Call {
  const char* description = "T2=Stereo;T4=Stereo,EMCA";
  std::uint32_t allowTwoTrackStreams = 1;
  const AudioStreamInfo* streams = nullptr;
  std::int32_t streamCount = 0;
  std::int32_t item = NO_SERVICE_MAP_ITEM;
};

Call callFor(const Streams& streams, std::int32_t item) {
  return {.streams = streams.data(),
          .streamCount = static_cast<std::int32_t>(streams.size()),
          .item = item};
}

// Makes the call and says whether it left no records: nothing written where the item is
// NO_SERVICE_MAP_ITEM, else a count of 0 and a block of its own, which is released here.
testing::AssertionResult leavesNoRecords(const Call& call) {
  ServiceMapResult* block = blockBefore();
  std::int32_t count = kCountBefore;
  std::int32_t item = call.item;
  library().getServiceMapEbuR123(call.description, call.allowTwoTrackStreams, call.streams,
                                 call.streamCount, &block, &count, &item);
  const bool written = block != blockBefore();
  const bool isNull = block == nullptr;
  if (written) std::free(block);
  const bool expectsWriting = call.item != NO_SERVICE_MAP_ITEM;
  if (item == call.item && written == expectsWriting && !isNull &&
      count == (expectsWriting ? 0 : kCountBefore)) {
    return testing::AssertionSuccess();
  }
  return testing::AssertionFailure()
         << "item " << call.item << " became " << item << ", count " << count << ", block "
         << (written ? "written" : "untouched") << (isNull ? ", NULL" : "");
}

testing::AssertionResult leavesNoRecords(const Streams& streams) {
  for (const std::int32_t item : kItems) {
    const testing::AssertionResult result = leavesNoRecords(callFor(streams, item));
    if (!result) return result;
  }
  return testing::AssertionSuccess();
}

TEST(EbuR123, WithoutTracksAnExpectedItemYieldsABlockOfNoRecords) {
  for (const std::int32_t item : kItems) {
    if (item == NO_SERVICE_MAP_ITEM) continue;
    EXPECT_TRUE(leavesNoRecords(Call{.item = item}));
  }
}

TEST(EbuR123, WithoutTracksAndWithoutAnItemNothingIsWritten) {
  EXPECT_TRUE(leavesNoRecords(Call{.item = NO_SERVICE_MAP_ITEM}));
}

TEST(EbuR123, AStreamCountBelowOneCountsAsNoStreams) {
  const Streams streams = {stream(L"1", 2)};
  for (const std::int32_t count : {0, -1, INT_MIN}) {
    for (const std::int32_t item : kItems) {
      EXPECT_TRUE(
          leavesNoRecords(Call{.streams = streams.data(), .streamCount = count, .item = item}));
    }
  }
}

TEST(EbuR123, NullStreamsCountAsNoStreams) {
  for (const std::int32_t count : {-1, 0, 1, 1000, INT_MAX}) {
    for (const std::int32_t item : kItems) {
      EXPECT_TRUE(leavesNoRecords(Call{.streamCount = count, .item = item})) << count;
    }
  }
}

TEST(EbuR123, ATrackThatIsTooWideIsNotAnalysable) {
  const Streams streams = {stream(L"1", 2)};
  for (const std::int32_t item : kItems) {
    Call call = callFor(streams, item);
    call.allowTwoTrackStreams = 0;
    EXPECT_TRUE(leavesNoRecords(call));
  }
  EXPECT_TRUE(leavesNoRecords({stream(L"1", 3)}));
  EXPECT_TRUE(leavesNoRecords({stream(L"1", 1), stream(L"2", INT_MAX)}));
}

TEST(EbuR123, OnlyTheLowByteOfAllowTwoTrackStreamsIsRead) {
  const Streams streams = {stream(L"1", 2)};
  for (const std::uint32_t allow : {0U, 1U, 2U, 255U, 256U, 257U, 0xFFFFFF00U, 0xFFFFFFFFU}) {
    for (const std::int32_t item : kItems) {
      Call call = callFor(streams, item);
      call.allowTwoTrackStreams = allow;
      EXPECT_TRUE(leavesNoRecords(call)) << allow;
    }
  }
}

TEST(EbuR123, TracksOfAnyKindAreJudgedAlike) {
  EXPECT_TRUE(leavesNoRecords({stream(L"1", 2)}));
  EXPECT_TRUE(leavesNoRecords({stream(L"1", 0)}));
  EXPECT_TRUE(leavesNoRecords({stream(L"1", -1)}));
  EXPECT_TRUE(leavesNoRecords({stream(L"1", INT_MIN), stream(L"2", INT_MIN)}));
  EXPECT_TRUE(leavesNoRecords({stream(L"1", 1, -1), stream(L"2", 1, INT_MAX)}));
  EXPECT_TRUE(leavesNoRecords(
      {pairCoded(L"5-1", 2), pairCoded(L"5-2", 2), stream(L"7", 1, 2), stream(L"8", 1, 2)}));
  EXPECT_TRUE(leavesNoRecords({pairCoded(L"-1", INT_MAX), pairCoded(L"", INT_MIN)}));
  EXPECT_TRUE(leavesNoRecords(Streams(16, stream(L"1", 1))));
}

TEST(EbuR123, TheDescriptionDoesNotMatter) {
  const Streams streams = {stream(L"1", 2), pairCoded(L"3", 2)};
  for (const char* description : {"", "T4=Stereo,EMCA", "T4=5.1 Mix", "T0=x", "T", "\xFF"}) {
    for (const std::int32_t item : kItems) {
      Call call = callFor(streams, item);
      call.description = description;
      EXPECT_TRUE(leavesNoRecords(call)) << description;
    }
  }
}

TEST(EbuR123, ANullDescriptionCountsAsEmpty) {
  const Streams streams = {stream(L"1", 2)};
  for (const std::int32_t item : kItems) {
    Call call = callFor(streams, item);
    call.description = nullptr;
    EXPECT_TRUE(leavesNoRecords(call));
  }
}

TEST(EbuR123, TheStreamsAreOnlyRead) {
  Streams streams = {stream(L"1-2", 2, 7), pairCoded(L"5-1", 6, 9)};
  streams[0].trackLabels = L"L R";
  EXPECT_TRUE(leavesNoRecords(streams));
  EXPECT_EQ(streams[0].streamId, L"1-2");
  EXPECT_EQ(streams[0].trackLabels, L"L R");
  EXPECT_EQ(streams[0].group, 7);
  EXPECT_EQ(streams[0].channelCount, 2);
  EXPECT_EQ(streams[1].streamId, L"5-1");
  EXPECT_EQ(streams[1].group, 9);
  EXPECT_EQ(streams[1].channelCount, 6);
  EXPECT_EQ(streams[1].isPairCoded, 1);
}

TEST(EbuR123, EachCallMakesABlockOfItsOwn) {
  ServiceMapResult* blocks[2] = {};
  for (ServiceMapResult*& block : blocks) {
    std::int32_t count = kCountBefore;
    std::int32_t item = 7;
    library().getServiceMapEbuR123("", 0, nullptr, 0, &block, &count, &item);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(count, 0);
  }
  EXPECT_NE(blocks[0], blocks[1]);
  for (ServiceMapResult* block : blocks) std::free(block);
}

TEST(EbuR123, AMissingOutPointerMakesTheCallDoNothing) {
  const Streams streams = {stream(L"1", 2)};
  for (const std::int32_t itemBefore : {7, NO_SERVICE_MAP_ITEM}) {
    ServiceMapResult* block = blockBefore();
    std::int32_t count = kCountBefore;
    std::int32_t item = itemBefore;
    const auto call = [&](ServiceMapResult** blockOut, std::int32_t* countOut,
                          std::int32_t* itemOut) {
      library().getServiceMapEbuR123("T2=Stereo", 1, streams.data(), 1, blockOut, countOut,
                                     itemOut);
    };
    call(nullptr, &count, &item);
    call(&block, nullptr, &item);
    call(&block, &count, nullptr);
    call(nullptr, nullptr, nullptr);
    EXPECT_EQ(block, blockBefore());
    EXPECT_EQ(count, kCountBefore);
    EXPECT_EQ(item, itemBefore);
  }
}

// --- Inputs that are too long for care

testing::AssertionResult leavesNoRecordsOnSmallStack(const Call& call) {
  testing::AssertionResult result = testing::AssertionFailure() << "not called";
  runOnSmallStack([&] { result = leavesNoRecords(call); });
  return result;
}

TEST(EbuR123Limits, AHundredThousandStreamsNeedLittleStack) {
  Streams ordinary;
  Streams pairs;
  for (std::int32_t i = 0; i < 100'000; ++i) {
    ordinary.push_back(stream(std::to_wstring(i), 1, i));
    pairs.push_back(pairCoded(std::to_wstring(i / 2), 1, i));
  }
  for (const std::int32_t item : {7, NO_SERVICE_MAP_ITEM}) {
    EXPECT_TRUE(leavesNoRecordsOnSmallStack(callFor(ordinary, item)));
    EXPECT_TRUE(leavesNoRecordsOnSmallStack(callFor(pairs, item)));
  }
}

TEST(EbuR123Limits, TracksOfManyChannelsAreNotWalkedThrough) {
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  const Streams streams(1000, pairCoded(L"5", kMost));
  EXPECT_TRUE(leavesNoRecordsOnSmallStack(callFor(streams, 7)));
}

TEST(EbuR123Limits, LongTextsNeedLittleStack) {
  const std::string description(1024 * 1024, 'T');
  const Streams streams = {pairCoded(std::wstring(100'000, L'9'), 2)};
  for (const std::int32_t item : {7, NO_SERVICE_MAP_ITEM}) {
    Call call = callFor(streams, item);
    call.description = description.c_str();
    EXPECT_TRUE(leavesNoRecordsOnSmallStack(call));
  }
}

}  // namespace
}  // namespace kestrel::test
