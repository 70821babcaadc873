// Compares the EBU R 123 evaluation with its plain form on random tracks and configurations. An
// input is made backwards: first the groups, then tracks that carry them, then the configuration
// under the number of channels that these tracks have. Most evaluations therefore come far, and one
// or two changed things turn them into near misses.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "api/catalogue_ids.h"
#include "standards/ebu_r123_evaluation.h"
#include "tests/plain/plain_ebu_r123.h"
#include "tests/random_inputs.h"
#include "tests/test_rounds.h"

namespace kestrel::test {
namespace {

using plain::R123End;
using plain::R123Input;
using plain::R123Result;

constexpr int kInputs = 200'000;
constexpr int kMismatchesShown = 3;

constexpr std::array<std::uint32_t, 9> kStreamTypes = {0, 0, 0, 1, 1, 2, 3, 4, 4};
constexpr std::array<std::uint32_t, 5> kWrongStreamTypes = {4, 5, 6, 0x80000001U, 0xFFFFFFFFU};
constexpr std::array<std::int32_t, 4> kChannelsOfType = {1, 2, 6, 8};
constexpr std::array<std::uint8_t, 6> kReports = {0, 0, 1, 1, 2, 255};
constexpr std::array<std::int32_t, 12> kWidths = {-3, -1, 0, 1, 2, 3, 4, 6, 7, 9, 33, 40};
constexpr std::array<std::int32_t, 6> kItems = {
    NO_SERVICE_MAP_ITEM, NO_SERVICE_MAP_ITEM, 7, 0, -1, 42};
constexpr std::array<std::wstring_view, 9> kOddIds = {
    L"", L"-1", L" 3", L"+2-1", L"x", L"4294967297", L"99999999999999999999", L"-1-2", L"1"};

class InputMaker {
 public:
  explicit InputMaker(Random& random) : random_(random) {}

  R123Input make() {
    input_.allowTwoTrackStreams = !random_.oneIn(3);
    input_.item = random_.oneOf(kItems);
    makeGroupsAndTracks();
    if (random_.oneIn(4)) addTracks(random_.between(1, 4));
    if (random_.oneIn(3)) changeSomething();
    if (random_.oneIn(6)) changeSomething();
    makeConfigurations();
    return input_;
  }

 private:
  // Ordinary groups are gathered, so that they may share a track.
  void makeGroupsAndTracks() {
    std::int32_t channels = 0;
    const std::size_t count = random_.below(12) == 0 ? 0 : 1 + random_.below(5);
    while (groups_.size() < count) {
      const std::uint32_t type = random_.oneOf(kStreamTypes);
      groups_.push_back(
          {type, random_.oneOf(kReports), static_cast<std::uint32_t>(random_.below(3))});
      if (type != static_cast<std::uint32_t>(kDolbyE)) {
        channels += kChannelsOfType[type];
        continue;
      }
      addTracks(channels);
      channels = 0;
      addProgramme();
    }
    addTracks(channels);
  }

  void addTracks(std::int32_t channels) {
    const std::size_t first = input_.streams.size();
    const bool namesFirst = random_.oneIn(5);
    const std::int32_t key = random_.between(1, 3);
    while (channels > 0) {
      const bool two =
          input_.allowTwoTrackStreams && (channels > 1 || random_.oneIn(15)) && !random_.oneIn(3);
      const std::int32_t width = random_.oneIn(40) ? 0 : two ? 2 : 1;
      AudioStreamInfo& track = addTrack(namesFirst ? first : input_.streams.size());
      track.streamId = std::to_wstring(input_.streams.size());
      track.channelCount = width;
      track.formatKey2 = key;
      channels -= width;
    }
  }

  void addProgramme() {
    const std::size_t first = input_.streams.size();
    const std::wstring number = std::to_wstring(random_.oneIn(5) ? 1 : 50 + first);
    const std::int32_t count = random_.between(1, 3);
    for (std::int32_t i = 0; i < count; ++i) {
      AudioStreamInfo& track = addTrack(first);
      track.streamId = number + L"-" + std::to_wstring(i + 1);
      track.channelCount = random_.between(0, 8);
      track.isPairCoded = random_.oneIn(4) ? 2 : 1;
      track.isPairShared = random_.oneIn(4) ? 1 : 0;
    }
  }

  AudioStreamInfo& addTrack(std::size_t group) {
    AudioStreamInfo& track = input_.streams.emplace_back();
    track.group = static_cast<std::int32_t>(group);
    return track;
  }

  void changeSomething() {
    if (input_.streams.empty() || groups_.empty()) return;
    AudioStreamInfo& track = input_.streams[random_.below(input_.streams.size())];
    R123GroupRequirement& group = groups_[random_.below(groups_.size())];
    switch (random_.below(9)) {
      case 0:
        track.group = random_.between(-1, static_cast<std::int32_t>(input_.streams.size()));
        break;
      case 1:
        track.channelCount = random_.between(-2, 2);
        break;
      case 2:
        track.isPairCoded = track.isPairCoded == 0 ? 1 : 0;
        break;
      case 3:
        track.formatKey1 = random_.between(0, 1);
        track.formatKey3 = random_.between(0, 1);
        break;
      case 4:
        track.streamId = random_.oneOf(kOddIds);
        break;
      case 5:
        group.streamType =
            random_.oneIn(2) ? random_.oneOf(kWrongStreamTypes) : random_.oneOf(kStreamTypes);
        break;
      case 6:
        input_.streams.pop_back();
        break;
      case 7:
        addWideTrack();
        break;
      default:
        for (R123GroupRequirement& each : groups_) each.report = 0;
    }
  }

  // Wide tracks are pair-coded, or they would not be analysable; an ordinary track leads to them.
  void addWideTrack() {
    const std::size_t at = random_.below(input_.streams.size());
    AudioStreamInfo track = input_.streams[at];
    track.isPairCoded = 1;
    track.channelCount = random_.oneOf(kWidths);
    const std::size_t copies = 1 + random_.below(3);
    const auto where = static_cast<std::int32_t>(input_.streams.size());
    for (std::size_t i = 0; i < copies; ++i) {
      input_.streams.push_back(track);
      track.channelCount = random_.oneOf(kWidths);
    }
    input_.streams[at].group = where;
    if (at > 0 && random_.oneIn(2)) input_.streams[at - 1].group = where;
  }

  void makeConfigurations() {
    const std::int32_t count =
        plain::countR123Channels(input_.streams, input_.allowTwoTrackStreams);
    for (std::size_t i = random_.below(3); i > 0; --i) {
      input_.configurations[random_.between(-1, 16)] = {random_.between(0, 40), {{0, 1, 0}}};
    }
    if (random_.oneIn(12)) return;
    const std::int32_t item = random_.oneIn(50) ? NO_SERVICE_MAP_ITEM : random_.between(0, 40);
    input_.configurations[count] = {item, groups_};
  }

  Random& random_;
  R123Input input_;
  std::vector<R123GroupRequirement> groups_;
};

// How many inputs reached each end, and each kind of result that a comparison of poor inputs would
// leave out.
class Spread {
 public:
  Spread() {
    for (int end = 0; end <= static_cast<int>(R123End::kConforms); ++end) {
      counts_[nameOf(static_cast<R123End>(end))] = 0;
    }
  }

  void count(const R123Input& input, const R123Result& result) {
    ++counts_[nameOf(result.end)];
    using Record = const ServiceMapResult&;
    countIf("conforms, with Dolby E", result, [](Record r) { return r.isEmca == 1; });
    countIf("conforms, channels and Dolby E", result,
            [&](Record r) { return r.isEmca == 1 && result.records[0].isEmca == 0; });
    countIf("conforms, offset across groups", result,
            [&](Record) { return result.groupBeganInsideTrack; });
    countIf("conforms, more slots than channels needed", result, [](Record r) {
      const auto used = std::count_if(r.slots.begin(), r.slots.end(), [](const TrackSlot& slot) {
        return slot.indexInGroup != -1;
      });
      return used > r.trackCount && r.isEmca == 0;
    });
    countIf("conforms, all 32 slots used", result,
            [](Record r) { return r.slots.back().indexInGroup != -1; });
    countIf("conforms, unreported Dolby E", result, [](Record r) { return r.reported == 0; });
    countIf("conforms, item given", result,
            [&](Record) { return input.item != NO_SERVICE_MAP_ITEM; });
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
  static std::string nameOf(R123End end) {
    std::ostringstream name;
    name << end;
    return name.str();
  }

  template <class Test>
  void countIf(const char* kind, const R123Result& result, const Test& test) {
    const bool found = std::any_of(result.records.begin(), result.records.end(), test);
    counts_[kind] += found ? 1 : 0;
  }

  std::map<std::string, int> counts_;
};

// Compares one input, and says whether the two agree.
bool agree(const R123Input& input, const R123Result& expected) {
  R123Result actual{input.item, {}};
  actual.records =
      evaluateEbuR123(input.streams, input.allowTwoTrackStreams, input.configurations, actual.item);
  const bool same = plain::sameResults(expected, actual);
  EXPECT_TRUE(same) << input << "expected: " << expected.end << ", " << expected
                    << "actual: " << actual;
  const std::int32_t count = countR123Channels(input.streams, input.allowTwoTrackStreams);
  const std::int32_t plainCount =
      plain::countR123Channels(input.streams, input.allowTwoTrackStreams);
  EXPECT_EQ(count, plainCount) << input;
  return same && count == plainCount;
}

TEST(R123Random, EveryEvaluationEndsAsThePlainFormSays) {
  Random random(20'260'504);
  Spread spread;
  int mismatches = 0;
  const int inputs = rounds(kInputs);
  for (int i = 0; i < inputs && mismatches < kMismatchesShown; ++i) {
    const R123Input input = InputMaker(random).make();
    const R123Result expected = plain::evaluateEbuR123(input);
    spread.count(input, expected);
    if (!agree(input, expected)) ++mismatches;
  }
  ASSERT_EQ(mismatches, 0);
  std::cout << spread.text();
  EXPECT_GE(spread.of("conforms") * 3, inputs);
  EXPECT_GT(spread.rarest(), inputs / 4000) << spread.text();
}

}  // namespace
}  // namespace kestrel::test
