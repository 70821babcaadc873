// Compares the library with the plain form on random inputs. The inputs of a seed are always the
// same, so a failure comes back on every run; it prints the whole input.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iostream>
#include <map>
#include <string>

#include "tests/library_under_test.h"
#include "tests/plain/plain_layout_description.h"
#include "tests/plain/plain_service_map.h"
#include "tests/random_inputs.h"
#include "tests/test_rounds.h"

namespace kestrel::test {
namespace {

using plain::Outcome;
using plain::PlainResult;
using plain::ServiceMapInput;

constexpr int kServiceMapInputs = 100'000;
constexpr int kDescriptions = 10'000;
constexpr int kMismatchesShown = 3;

// Compares one input, and says whether the two agree.
bool agree(const ServiceMapInput& input, const PlainResult& expected) {
  const PlainResult actual = callServiceMap(input);
  const bool same = plain::sameResults(expected, actual);
  EXPECT_TRUE(same) << input << "expected: " << expected << "actual: " << actual;
  return same;
}

bool hasServices(const ServiceMapInput& input) {
  const auto count = static_cast<std::int32_t>(input.streams.size());
  const std::uint32_t total = plain::fileTrackCount(input.streams.data(), count);
  std::int32_t counter = -1;
  return count > 0 && !plain::parse(input.description, total, false, counter).empty();
}

bool hasMissingSlot(const ServiceMapResult& record) {
  return record.trackCount == 1 && record.slots[0].indexInGroup == -1;
}

bool hasJoinedTrack(const ServiceMapResult& record) {
  return std::any_of(record.slots.begin(), record.slots.end(),
                     [](const TrackSlot& slot) { return slot.group != slot.sourceGroup; });
}

// How many inputs reached each outcome, and each kind of result that a comparison of poor inputs
// would leave out.
class Spread {
 public:
  void count(const ServiceMapInput& input, const PlainResult& result) {
    for (const char* kind : kKinds) counts_.try_emplace(kind, 0);
    if (result.outcome == Outcome::kUntouched) {
      ++counts_[hasServices(input) ? "untouched: not aligned" : "untouched: no services"];
    }
    if (result.outcome == Outcome::kEmptied) ++counts_["emptied"];
    if (result.outcome != Outcome::kFilled) return;
    ++counts_["filled"];
    if (result.results.empty()) ++counts_["filled with no record"];
    countRecords(input, result);
  }

  int of(const std::string& kind) const { return counts_.at(kind); }

  int rarest() const {
    const auto fewer = [](const auto& a, const auto& b) { return a.second < b.second; };
    return std::min_element(counts_.begin(), counts_.end(), fewer)->second;
  }

  std::string text() const {
    std::string text;
    for (const auto& [kind, number] : counts_) text += kind + ": " + std::to_string(number) + "\n";
    return text;
  }

 private:
  static constexpr const char* kKinds[] = {
      "untouched: not aligned",
      "untouched: no services",
      "emptied",
      "filled",
      "filled with no record",
      "filled, derived label",
      "filled, EMCA",
      "filled, joined track",
      "filled, all 32 slots used",
      "filled, unknown service",
      "filled, missing track",
      "filled, not requested",
  };

  void countRecords(const ServiceMapInput& input, const PlainResult& result) {
    const auto countIf = [&](const char* kind, const auto& test) {
      if (std::any_of(result.results.begin(), result.results.end(), test)) ++counts_[kind];
    };
    using Record = const ServiceMapResult&;
    countIf("filled, derived label",
            [&](Record r) { return !r.label.empty() && r.label != input.order; });
    countIf("filled, EMCA", [](Record r) { return r.isEmca == 1; });
    countIf("filled, joined track", hasJoinedTrack);
    countIf("filled, all 32 slots used", [](Record r) { return r.trackCount == kSlotCount; });
    countIf("filled, unknown service", [](Record r) { return r.trackCount == -1; });
    countIf("filled, missing track", hasMissingSlot);
    countIf("filled, not requested", [&](Record r) { return input.reportAll && !r.requested; });
  }

  std::map<std::string, int> counts_;
};

TEST(ServiceMapRandom, EveryCallEndsAsThePlainFormSays) {
  Random random(20'260'501);
  Spread spread;
  int mismatches = 0;
  const int inputs = rounds(kServiceMapInputs);
  for (int i = 0; i < inputs && mismatches < kMismatchesShown; ++i) {
    const ServiceMapInput input = randomServiceMapInput(random);
    const PlainResult expected = plain::serviceMap(input);
    spread.count(input, expected);
    if (!agree(input, expected)) ++mismatches;
  }
  ASSERT_EQ(mismatches, 0);
  std::cout << spread.text();
  EXPECT_GE(spread.of("filled") * 3, inputs);
  EXPECT_GT(spread.rarest(), allRounds() ? 0 : -1) << spread.text();
}

// Streams that carry any list of ordinary services, so that the description alone decides.
ServiceMapInput inputOf(const std::string& description, std::uint32_t total, bool reportAll) {
  ServiceMapInput input{description, L"L R C LFE Ls Rs", {}, reportAll, false};
  input.streams.resize(2);
  // Enough tracks for the longest list; the second stream brings the sum down to the total.
  input.streams[0].channelCount = 200;
  input.streams[1].channelCount = static_cast<std::int32_t>(total) - 200;
  return input;
}

TEST(ServiceMapRandom, EveryDescriptionIsReadAsThePlainFormReadsIt) {
  Random random(77);
  int mismatches = 0;
  int filled = 0;
  const int descriptions = rounds(kDescriptions);
  for (int i = 0; i < descriptions && mismatches < kMismatchesShown; ++i) {
    const std::string description = randomDescription(random);
    const bool reportAll = random.oneIn(2);
    for (const std::uint32_t total : kDescribedTotals) {
      const ServiceMapInput input = inputOf(description, total, reportAll);
      const PlainResult expected = plain::serviceMap(input);
      if (expected.outcome == Outcome::kFilled) ++filled;
      if (!agree(input, expected)) ++mismatches;
    }
  }
  EXPECT_EQ(mismatches, 0);
  EXPECT_GE(filled * 4, descriptions) << "too few descriptions have an entry";
}

}  // namespace
}  // namespace kestrel::test
