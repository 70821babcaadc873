#include "tests/interface/service_map_support.h"

#include <utility>

#include "tests/library_under_test.h"

namespace kestrel::test {

using plain::Outcome;
using plain::PlainResult;
using plain::ServiceMapInput;

namespace {

testing::AssertionResult endsAs(const ServiceMapInput& input, const PlainResult& expected) {
  const PlainResult actual = callServiceMap(input);
  if (plain::sameResults(actual, expected)) return testing::AssertionSuccess();
  return testing::AssertionFailure() << input << "expected: " << expected << "actual: " << actual;
}

}  // namespace

AudioStreamInfo stream(const std::wstring& id, std::int32_t channelCount, std::int32_t group,
                       const std::wstring& labels) {
  AudioStreamInfo info;
  info.streamId = id;
  info.trackLabels = labels;
  info.group = group;
  info.channelCount = channelCount;
  return info;
}

AudioStreamInfo pairCoded(const std::wstring& id, std::int32_t channelCount, std::int32_t group) {
  AudioStreamInfo info = stream(id, channelCount, group);
  info.isPairCoded = 1;
  return info;
}

AudioStreamInfo sharedPair(const std::wstring& id, std::int32_t channelCount, std::int32_t group) {
  AudioStreamInfo info = pairCoded(id, channelCount, group);
  info.isPairShared = 1;
  return info;
}

AudioStreamInfo withFormat(AudioStreamInfo info, std::int32_t key1, std::int32_t key2,
                           std::int32_t key3) {
  info.formatKey1 = key1;
  info.formatKey2 = key2;
  info.formatKey3 = key3;
  return info;
}

AudioStreamInfo withFlag(AudioStreamInfo info, std::uint8_t isPairCoded) {
  info.isPairCoded = isPairCoded;
  return info;
}

Streams monoStreams(const std::vector<std::wstring>& labels) {
  Streams streams;
  for (const std::wstring& label : labels) {
    streams.push_back(stream(std::to_wstring(streams.size() + 1), 1, 1, label));
  }
  return streams;
}

Streams monoStreams(std::size_t count) {
  return monoStreams(std::vector<std::wstring>(count, L"M"));
}

Slots tracks(std::int64_t number, std::int32_t count, std::int32_t first, std::int32_t group) {
  Slots slots;
  for (std::int32_t i = 0; i < count; ++i) slots.push_back({number, group, group, first + i});
  return slots;
}

Slots monoTracks(std::int64_t firstNumber, std::int32_t count) {
  Slots slots;
  for (std::int32_t i = 0; i < count; ++i) slots.push_back({firstNumber + i, 1, 1, 0});
  return slots;
}

Slots operator+(Slots left, const Slots& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

ServiceMapResult record(std::int32_t trackCount, const Slots& slots, const std::wstring& label) {
  ServiceMapResult result;
  for (std::size_t i = 0; i < slots.size(); ++i) result.slots[i] = slots[i];
  result.trackCount = trackCount;
  result.reported = 1;
  result.label = label;
  return result;
}

ServiceMapResult service(const Slots& slots, const std::wstring& label) {
  return record(static_cast<std::int32_t>(slots.size()), slots, label);
}

ServiceMapResult emca(const Slots& slots) {
  ServiceMapResult result = service(slots);
  result.isEmca = 1;
  return result;
}

ServiceMapResult requested(ServiceMapResult result) {
  result.requested = 1;
  return result;
}

ServiceMapResult unknownService() { return record(-1, {}); }

testing::AssertionResult fills(const ServiceMapInput& input, Records records) {
  return endsAs(input, {Outcome::kFilled, std::move(records)});
}

testing::AssertionResult empties(const ServiceMapInput& input) {
  return endsAs(input, {Outcome::kEmptied, {}});
}

testing::AssertionResult leavesUntouched(const ServiceMapInput& input) {
  return endsAs(input, {Outcome::kUntouched, {}});
}

ServiceMapInput call(std::string description, Streams streams) {
  return {std::move(description), kOrder, std::move(streams), false, false};
}

ServiceMapInput callReportingAll(std::string description, Streams streams) {
  return {std::move(description), kOrder, std::move(streams), true, false};
}

ServiceMapInput callChecking(std::string description, Streams streams) {
  return {std::move(description), kOrder, std::move(streams), false, true};
}

}  // namespace kestrel::test
