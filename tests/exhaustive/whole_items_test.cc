// Lays every item of the catalogue over its own tracks, cut in every way. A cut carries the item
// when no stream holds both plain and coded tracks, and when shared pairs, which all count as one,
// are asked to be one pair only; else the result is left untouched.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <string>
#include <vector>

#include "tests/exhaustive/carrier.h"
#include "tests/exhaustive/catalogue_items.h"
#include "tests/exhaustive/tally.h"
#include "tests/exhaustive/word_rule.h"
#include "tests/library_under_test.h"

namespace kestrel::test {
namespace {

using plain::Outcome;
using plain::PlainResult;

constexpr char kCallsOfEveryItem[] = R"(
calls that fill: 100104
calls that leave untouched: 94412
cuts: 26698
items: 41
ways: 48629
)";

// The plain form is slow, so it is asked for the smaller items alone, with both flags.
constexpr std::size_t kMostForThePlainForm = 12;

constexpr std::size_t kOrdersOfSixLabels = 720;

bool carries(const Item& item, const Way& way) {
  if (hasMixedStream(item, way.cut)) return false;
  return way.pairing != Pairing::kShared || item.codedServices() == 1;
}

void expectOutcome(const Item& item, const Carrier& carrier, bool carries) {
  const PlainResult expected = predict(item, carrier);
  const PlainResult actual = callServiceMap(carrier);
  ASSERT_EQ(actual.outcome, carries ? Outcome::kFilled : Outcome::kUntouched) << carrier;
  ASSERT_TRUE(plain::sameResults(expected, actual))
      << carrier << "expected: " << expected << "actual: " << actual;
  if (item.trackCount > kMostForThePlainForm) return;
  if (!carrier.reportAll || !carrier.surroundCheck) return;
  ASSERT_TRUE(plain::sameResults(plain::serviceMap(carrier), actual)) << carrier;
}

void expectOutcomes(const Item& item, const Way& way, Tally& calls) {
  Carrier carrier = carrierOf(item, way);
  for (const bool reportAll : {false, true}) {
    for (const bool surroundCheck : {false, true}) {
      carrier.reportAll = reportAll;
      carrier.surroundCheck = surroundCheck;
      expectOutcome(item, carrier, carries(item, way));
      calls.count(carries(item, way) ? "calls that fill" : "calls that leave untouched");
    }
  }
}

TEST(WholeItems, AreCarriedByEveryCutThatKeepsPlainAndCodedTracksApart) {
  Tally calls;
  for (const Item& item : catalogueItems(2, 16)) {
    calls.count("items");
    for (std::size_t i = 0; i < cutsOf(item.trackCount).size(); ++i) calls.count("cuts");
    for (const Way& way : waysToCarry(item)) {
      calls.count("ways");
      expectOutcomes(item, way, calls);
      if (HasFailure()) return;
    }
  }
  std::cout << calls.text();
  EXPECT_EQ("\n" + calls.text(), kCallsOfEveryItem);
}

TEST(WholeItems, HaveAsManyCutsAsThereAreOrderedSumsOfTheStreamWidths) {
  // The sums for n end in 1, 2, 6 or 8, so their number is that for n-1, n-2, n-6 and n-8 together.
  std::vector<std::size_t> sums{1};
  for (std::size_t n = 1; n <= 16; ++n) {
    sums.push_back(0);
    for (const std::size_t width : {1U, 2U, 6U, 8U}) {
      if (width <= n) sums[n] += sums[n - width];
    }
    EXPECT_EQ(cutsOf(n).size(), sums[n]) << n;
  }
  EXPECT_EQ(cutsOf(16).size(), 2646U);
}

std::wstring joined(const std::vector<std::wstring>& labels) {
  AudioStreamInfo stream;
  setLabels(stream, labels);
  return stream.trackLabels;
}

void giveLabels(Carrier& carrier, const std::vector<std::wstring>& labels) {
  std::size_t track = 0;
  for (AudioStreamInfo& stream : carrier.streams) {
    const auto first = labels.begin() + static_cast<std::ptrdiff_t>(track);
    setLabels(stream, {first, first + stream.channelCount});
    track += static_cast<std::size_t>(stream.channelCount);
  }
}

void expectLabel(Carrier carrier, bool surroundCheck, const std::wstring& label) {
  carrier.surroundCheck = surroundCheck;
  const PlainResult actual = callServiceMap(carrier);
  ASSERT_EQ(actual.results.size(), 1U) << carrier;
  ASSERT_EQ(actual.results[0].label, label) << carrier;
}

TEST(WholeItems, KeepTheSixLabelsInWhateverOrderTheyStandAndElseThatOfTheCall) {
  const std::vector<Item> sixTracks = catalogueItems(6, 6);
  const Item& surround = sixTracks.front();
  ASSERT_EQ(surround.description, "T6=5.1 Mix");
  std::vector<std::wstring> labels = {L"C", L"L", L"LFE", L"Ls", L"R", L"Rs"};
  std::size_t orders = 0;
  do {
    for (const Way& way : waysToCarry(surround)) {
      Carrier carrier = carrierOf(surround, way);
      giveLabels(carrier, labels);
      carrier.order = joined({labels.rbegin(), labels.rend()});
      expectLabel(carrier, true, joined(labels));
      expectLabel(carrier, false, carrier.order);
      if (HasFatalFailure()) return;
    }
    ++orders;
  } while (std::next_permutation(labels.begin(), labels.end()));
  EXPECT_EQ(orders, kOrdersOfSixLabels);
}

}  // namespace
}  // namespace kestrel::test
