// getServiceMap on inputs that are too long for care, with little stack.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "tests/interface/service_map_support.h"
#include "tests/library_under_test.h"
#include "tests/plain/plain_service_map.h"
#include "tests/small_stack.h"

namespace kestrel::test {
namespace {

using plain::Outcome;
using plain::PlainResult;
using plain::ServiceMapInput;

constexpr std::size_t kMegabyte = 1024 * 1024;

std::string repeated(const std::string& text, std::size_t size) {
  std::string out;
  while (out.size() < size) out += text;
  return out;
}

// The outcome of a call made with little stack.
PlainResult callOnSmallStack(const ServiceMapInput& input) {
  PlainResult result;
  runOnSmallStack([&] { result = callServiceMap(input); });
  return result;
}

// Does not print the input, which is long.
testing::AssertionResult fillsOnSmallStack(const ServiceMapInput& input, const Records& records) {
  const PlainResult actual = callOnSmallStack(input);
  if (plain::sameResults(actual, {Outcome::kFilled, records})) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "actual: " << actual;
}

TEST(ServiceMapLimits, APairCodedStreamOfAllTracksThatCanBeSaid) {
  const std::int32_t most = std::numeric_limits<std::int32_t>::max();
  const Records expected = {emca(tracks(5, 32, 0, 7))};
  EXPECT_TRUE(fillsOnSmallStack(call("T2=EMCA", {pairCoded(L"5", most, 7)}), expected));
  EXPECT_TRUE(fillsOnSmallStack(call("T2=EMCA", {sharedPair(L"5", most, 7)}), expected));
}

TEST(ServiceMapLimits, AnOrdinaryStreamOfTwoThousandMillionTracks) {
  const Streams streams = {stream(L"1", 2'000'000'000, 1, kSixLabels),
                           stream(L"2", -1'999'999'992)};
  const Records expected = {service(tracks(1, 6), kSixLabels), service(tracks(1, 2, 6))};
  EXPECT_TRUE(fillsOnSmallStack(callChecking("T8=5.1 Mix,Stereo", streams), expected));
}

TEST(ServiceMapLimits, ALongDescriptionOfManyEntries) {
  const Records expected = {service(tracks(1, 2))};
  const Streams streams = {stream(L"1", 2)};
  for (const char* entry : {"T1=Mono;", "T3=Stereo,Mono;", "T1=;", "T123=x;", "T1=T;"}) {
    const std::string description = repeated(entry, kMegabyte) + "T2=Stereo";
    EXPECT_TRUE(fillsOnSmallStack(call(description, streams), expected)) << entry;
  }
}

TEST(ServiceMapLimits, ALongListOfUnknownServices) {
  const Records expected = {service(tracks(1, 2))};
  const std::string description = "T2=" + repeated("-x,", kMegabyte) + "Stereo";
  EXPECT_TRUE(fillsOnSmallStack(call(description, {stream(L"1", 2)}), expected));
  const std::string oneName = "T2=Stereo,-" + repeated("x", kMegabyte);
  EXPECT_TRUE(fillsOnSmallStack(call(oneName, {stream(L"1", 2)}), expected));
}

TEST(ServiceMapLimits, ALongListOfServicesThatAreNotReported) {
  const std::string list = repeated("-Mono,", kMegabyte);
  const auto count = static_cast<std::int32_t>(list.size() / 6);
  const ServiceMapInput shortFile = call("T2=" + list + "Stereo", {stream(L"1", 2)});
  EXPECT_EQ(callOnSmallStack(shortFile).outcome, Outcome::kUntouched);
  const Streams streams = {stream(L"1", count + 2), stream(L"2", -count)};
  EXPECT_TRUE(
      fillsOnSmallStack(call("T2=" + list + "Stereo", streams), {service(tracks(1, 2, count))}));
}

TEST(ServiceMapLimits, ALongDescriptionThatNeverBecomesAnEntry) {
  for (const char* text : {"T", "T1", "T12", "=", ",", "T1 ", "-", "\xFF"}) {
    const ServiceMapInput input = call(repeated(text, kMegabyte), {stream(L"1", 2)});
    EXPECT_EQ(callOnSmallStack(input).outcome, Outcome::kUntouched) << text;
  }
}

TEST(ServiceMapLimits, AHundredThousandOrdinaryStreams) {
  constexpr std::int32_t kStreams = 100'000;
  Streams streams;
  for (std::int32_t i = 0; i < kStreams; ++i) {
    streams.push_back(stream(std::to_wstring(kStreams - i), 1, i, L"L"));
  }
  streams.push_back(stream(L"0", 8 - kStreams));
  Records expected = {record(6, {}, kOrder), record(2, {})};
  for (std::int32_t i = 0; i < 8; ++i) {
    const TrackSlot slot = {kStreams - i, i, i, 0};
    (i < 6 ? expected[0].slots[static_cast<std::size_t>(i)]
           : expected[1].slots[static_cast<std::size_t>(i - 6)]) = slot;
  }
  EXPECT_TRUE(fillsOnSmallStack(callChecking("T8=5.1 Mix,Stereo", streams), expected));
}

TEST(ServiceMapLimits, AHundredThousandStreamsOfOnePair) {
  const Streams streams(100'000, pairCoded(L"5-1", 1, 7));
  Slots slots;
  for (int i = 0; i < 32; ++i) slots.push_back({5, 7, 7, 0});
  EXPECT_TRUE(fillsOnSmallStack(call("T2=EMCA", streams), {emca(slots)}));
}

TEST(ServiceMapLimits, AHundredThousandStreamsOfOneSharedPair) {
  const Streams streams(100'000, sharedPair(L"5", 1, 7));
  EXPECT_TRUE(fillsOnSmallStack(call("T2=EMCA", streams), {emca(tracks(5, 32, 0, 7))}));
}

TEST(ServiceMapLimits, AStreamIdOfTenThousandDigits) {
  const std::wstring digits(10'000, L'9');
  EXPECT_TRUE(fillsOnSmallStack(call("T2=Stereo", {stream(digits, 2)}),
                                {service(tracks(kLargestNumber, 2))}));
  EXPECT_TRUE(fillsOnSmallStack(call("T2=Stereo", {stream(L"-" + digits, 2)}),
                                {service(tracks(-kLargestNumber - 1, 2))}));
  const std::wstring zeros(10'000, L'0');
  EXPECT_TRUE(
      fillsOnSmallStack(call("T2=Stereo", {stream(zeros + L"12", 2)}), {service(tracks(12, 2))}));
}

TEST(ServiceMapLimits, LongTextsBesideTheDescription) {
  ServiceMapInput input =
      callChecking("T6=5.1 Mix", {stream(L"1", 6, 1, std::wstring(kMegabyte, L' ') + kSixLabels)});
  EXPECT_TRUE(fillsOnSmallStack(input, {service(tracks(1, 6), kSixLabels)}));
  input.order = std::wstring(kMegabyte, L'L');
  input.streams[0].trackLabels = input.order;
  EXPECT_TRUE(fillsOnSmallStack(input, {service(tracks(1, 6), input.order)}));
}

TEST(ServiceMapLimits, BadArgumentsNeedLittleStack) {
  const Streams streams = {stream(L"1", 2)};
  std::vector<std::int32_t> returned;
  runOnSmallStack([&] {
    const Library& functions = library();
    Records results;
    const std::int32_t least = std::numeric_limits<std::int32_t>::min();
    const AudioStreamInfo* first = streams.data();
    returned = {
        functions.getServiceMap("T2=Stereo", L"", 0, first, least, &results, 0, 0),
        functions.getServiceMap(nullptr, nullptr, 0, nullptr, least, &results, 0, 0),
        functions.getServiceMap("T2=Stereo", nullptr, 0, nullptr, 1, &results, 0, 0),
        functions.getServiceMap("T2=Stereo", nullptr, 0, first, 1, nullptr, 0, 0),
    };
  });
  EXPECT_EQ(returned, std::vector<std::int32_t>(4, 0));
}

}  // namespace
}  // namespace kestrel::test
