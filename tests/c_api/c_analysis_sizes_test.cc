// Requests of the plain C interface of sizes that a file never has.
#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "api/kestrel.h"
#include "tests/c_api/c_analysis_support.h"
#include "tests/c_api/c_request.h"
#include "tests/small_stack.h"

namespace kestrel::test {
namespace {

constexpr std::size_t kMegabyte = 1024 * 1024;

TEST(CSizes, LongTextsNeedLittleStack) {
  for (const std::string filler : {",", "T2=Stereo;", "-", "1", " ", "L ", "\xF0\x9F\x8E\xA7"}) {
    std::string text;
    while (text.size() < kMegabyte) text += filler;
    for (const std::string& whole : {text, "T6=Stereo,x" + text, "1" + text}) {
      runOnSmallStack([&] {
        forEachPlaceOf(whole, [](const KestrelRequest& asked, std::int32_t) {
          const Analysis analysis = analysed(asked);
          if (findingCount(analysis) == 0) return;
          EXPECT_NE(sentenceAt(analysis, findingCount(analysis) - 1), "");
        });
      });
    }
  }
}

TEST(CSizes, AHundredThousandStreamsOfOnePair) {
  std::vector<KestrelStream> streams;
  for (std::int32_t i = 0; i < 100'000; ++i) streams.push_back(sharedPair("7", 1, i));
  const Analysis analysis = analysed(request("T2=EMCA", streams));
  EXPECT_EQ(outcomeOf(analysis), KESTREL_FILLED);
  ASSERT_EQ(serviceCount(analysis), 100'000);
  std::int64_t sum = 0;
  for (std::int32_t i = 0; i < 100'000; ++i) sum += serviceAt(analysis, i).slots[0].sourceGroup;
  EXPECT_EQ(sum, std::int64_t{100'000} * 99'999 / 2);
}

TEST(CSizes, AHundredThousandStreamsWithoutTracks) {
  std::vector<KestrelStream> streams(100'000, stream("1", 0));
  streams.push_back(stream("2", 2));
  const Analysis analysis = analysed(request("T2=Stereo", streams));
  EXPECT_EQ(outcomeOf(analysis), KESTREL_FILLED);
  EXPECT_EQ(serviceAt(analysis, 0).slots[0].trackNumber, 2);
}

TEST(CSizes, TracksThatNobodyAsksForTakeNoRoom) {
  // The total of these is 2 in 32 bits.
  const std::vector<KestrelStream> streams = {stream("1", INT_MAX), stream("2", INT_MAX),
                                              stream("3", 4)};
  const Analysis analysis = analysed(request("T2=Stereo", streams));
  EXPECT_EQ(outcomeOf(analysis), KESTREL_FILLED);
  ASSERT_EQ(findingCount(analysis), 1);
  EXPECT_EQ(findingAt(analysis, 0).code, KESTREL_TRACKS_LEFT_OVER);
  EXPECT_EQ(findingAt(analysis, 0).second, 2 * std::int64_t{INT_MAX} + 4);
}

TEST(CSizes, ARunOfTwoThousandMillionTracksIsOneRecord) {
  const std::vector<KestrelStream> streams = {sharedPair("1", INT_MAX, 1)};
  const Analysis analysis = analysed(request("T2=EMCA", streams));
  ASSERT_EQ(serviceCount(analysis), 1);
  EXPECT_EQ(serviceAt(analysis, 0).trackCount, KESTREL_SLOTS);
  EXPECT_EQ(findingAt(analysis, 0).code, KESTREL_RUN_TOO_LONG);
  EXPECT_EQ(findingAt(analysis, 0).second, INT_MAX);
}

}  // namespace
}  // namespace kestrel::test
