#include "tests/standards/ebu_r123_evaluation_support.h"

namespace kestrel::test {

AudioStreamInfo track(const std::wstring& id, std::int32_t channelCount, std::int32_t group) {
  AudioStreamInfo info;
  info.streamId = id;
  info.group = group;
  info.channelCount = channelCount;
  return info;
}

AudioStreamInfo pairTrack(const std::wstring& id, std::int32_t channelCount, std::int32_t group) {
  AudioStreamInfo info = track(id, channelCount, group);
  info.isPairCoded = 1;
  return info;
}

Streams tracks(std::size_t count, std::int32_t channelCount) {
  Streams streams;
  for (std::size_t i = 0; i < count; ++i) {
    streams.push_back(track(std::to_wstring(i + 1), channelCount, static_cast<std::int32_t>(i)));
  }
  return streams;
}

R123GroupRequirement reported(StreamType type) { return {static_cast<std::uint32_t>(type), 1, 0}; }

R123GroupRequirement unreported(StreamType type) {
  return {static_cast<std::uint32_t>(type), 0, 0};
}

Slots channels(std::int64_t number, std::int32_t group, std::int32_t first, std::int32_t count) {
  Slots slots;
  for (std::int32_t i = 0; i < count; ++i) slots.push_back({number, group, -1, first + i});
  return slots;
}

Slots operator+(Slots left, const Slots& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

ServiceMapResult record(std::int32_t trackCount, const Slots& slots) {
  ServiceMapResult result;
  for (std::size_t i = 0; i < slots.size(); ++i) result.slots[i] = slots[i];
  result.trackCount = trackCount;
  result.reported = 1;
  return result;
}

ServiceMapResult dolbyE(std::int64_t number, std::int32_t group, std::int32_t trackCount,
                        std::uint8_t report) {
  ServiceMapResult result = record(trackCount, {{number, group, -1, -1}});
  result.reported = report;
  result.isEmca = 1;
  return result;
}

R123Result evaluate(const R123Input& input) {
  R123Result result{input.item, {}};
  result.records =
      evaluateEbuR123(input.streams, input.allowTwoTrackStreams, input.configurations, result.item);
  return result;
}

testing::AssertionResult endsAs(const R123Input& input, const R123Result& expected) {
  const R123Result actual = evaluate(input);
  if (plain::sameResults(actual, expected)) return testing::AssertionSuccess();
  return testing::AssertionFailure() << input << "expected: " << expected << "actual: " << actual;
}

R123Input inputFor(const Streams& streams, const Groups& groups) {
  const std::int32_t count = plain::countR123Channels(streams, true);
  return {streams, true, {{count, {kItem, groups}}}, NO_SERVICE_MAP_ITEM};
}

testing::AssertionResult conforms(const Streams& streams, const Groups& groups,
                                  const Records& records) {
  return endsAs(inputFor(streams, groups), {kItem, records});
}

testing::AssertionResult fails(const Streams& streams, const Groups& groups) {
  R123Input input = inputFor(streams, groups);
  for (const std::int32_t item : {NO_SERVICE_MAP_ITEM, 7, -1}) {
    input.item = item;
    const testing::AssertionResult result = endsAs(input, {NO_SERVICE_MAP_ITEM, {}});
    if (!result) return result;
  }
  return testing::AssertionSuccess();
}

}  // namespace kestrel::test
