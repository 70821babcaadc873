// Rows for the fields of the streams that getServiceMap() reads. Where the plain form can be asked
// it says what is expected; a `channelCount` in the thousand millions is not for it.
#include <climits>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/robustness/asking.h"
#include "tests/robustness/hostile_values.h"
#include "tests/robustness/service_map_call.h"

namespace kestrel::test {
namespace {

constexpr std::int32_t kExtremes[] = {INT_MIN, INT_MIN + 1, -1, 0, 1, INT_MAX};

void add(CallRows& rows, const std::string& value, const ServiceMapArguments& arguments) {
  rows.push_back(serviceMapRow("streams", value, plainAnswer(arguments), arguments));
}

void add(CallRows& rows, const std::string& value, const ServiceMapArguments& arguments,
         const Answer& expected) {
  rows.push_back(serviceMapRow("streams", value, expected, arguments));
}

void addTexts(CallRows& rows) {
  std::vector<NamedText<wchar_t>> texts = hostileWideTexts();
  for (const wchar_t* number : {L"-1", L"+1", L" 7", L"0", L"007-008", L"9223372036854775807",
                                L"9223372036854775808", L"99999999999999999999999"})
    texts.push_back({std::string(number, number + std::wcslen(number)), number});
  ServiceMapArguments labels;
  labels.description = "T6=5.1 Mix";
  labels.surroundCheck = 1;
  for (const auto& [name, text] : texts) {
    ServiceMapArguments ids;
    ids.streams[0].streamId = text;
    add(rows, "streamId = " + name, ids);
    labels.streams = {streamOf(L"1", 6, text)};
    add(rows, "trackLabels = " + name, labels);
    labels.streams = {streamOf(L"1", 6, L"Rs Ls LFE C R L " + text)};
    add(rows, "trackLabels = a set and " + name, labels);
  }
}

void addChannelCounts(CallRows& rows) {
  const auto streamsOf = [](const std::vector<std::int32_t>& channelCounts) {
    ServiceMapArguments arguments;
    arguments.streams.clear();
    for (const std::int32_t count : channelCounts)
      arguments.streams.push_back(streamOf(std::to_wstring(arguments.streams.size() + 1), count));
    return arguments;
  };
  for (const std::int32_t count : kExtremes)
    add(rows, "channelCount = " + std::to_string(count), streamsOf({count}), kUntouched);
  add(rows, "channelCount = 2 and 0", streamsOf({2, 0}), kStereoFound);
  // A stream of less than no tracks has none, but makes the file's total smaller.
  add(rows, "channelCount = 2 and -1", streamsOf({2, -1}), kUntouched);
  add(rows, "channelCount = 4 and -2", streamsOf({4, -2}), kStereoFound);
  add(rows, "channelCount = 2 and the smallest twice", streamsOf({2, INT_MIN, INT_MIN}),
      kStereoFound);
  // The sum of tracks wraps in 32 bits, to 2 here; the first stream still has all its tracks.
  add(rows, "channelCounts whose sum wraps", streamsOf({INT_MAX, INT_MAX, 4}), kStereoFound);
  add(rows, "100,000 streams", streamsOf(std::vector<std::int32_t>(100'000, 1)), kUntouched);
  add(
      rows, "100,000 streams without tracks before two",
      [&] {
        std::vector<std::int32_t> counts(100'000, 0);
        counts.front() = 2;
        return streamsOf(counts);
      }(),
      kStereoFound);
}

void addNumbers(CallRows& rows) {
  for (const auto key :
       {&AudioStreamInfo::formatKey1, &AudioStreamInfo::formatKey2, &AudioStreamInfo::formatKey3}) {
    for (const std::int32_t value : kExtremes) {
      ServiceMapArguments arguments;
      arguments.streams = {streamOf(L"1", 1), streamOf(L"2", 1)};
      arguments.streams[0].*key = value;
      add(rows, "a format key = " + std::to_string(value), arguments);
    }
  }
  for (const std::int32_t value : kExtremes) {
    ServiceMapArguments arguments;
    arguments.streams[0].group = value;
    add(rows, "group = " + std::to_string(value), arguments);
    arguments.description = "T2=EMCA";
    arguments.streams[0].isPairCoded = 1;
    add(rows, "group of a pair = " + std::to_string(value), arguments);
  }
}

void addFlags(CallRows& rows) {
  for (const int coded : {0, 1, 2, 255}) {
    for (const int shared : {0, 1, 2, 255}) {
      for (const char* description :
           {"T2=EMCA", "T4=EMCA,EMCA", "T2=Stereo", "T4=Stereo,Mono,Mono"}) {
        ServiceMapArguments arguments;
        arguments.description = description;
        arguments.streams = {streamOf(L"1", 2), streamOf(L"2", 2)};
        for (AudioStreamInfo& stream : arguments.streams) {
          stream.isPairCoded = static_cast<std::uint8_t>(coded);
          stream.isPairShared = static_cast<std::uint8_t>(shared);
        }
        add(rows,
            "flags = " + std::to_string(coded) + ", " + std::to_string(shared) + " for " +
                description,
            arguments);
      }
    }
  }
}

// Every integer of a record at an end of its range, more records than stand on the stack.
void addWholeRecords(CallRows& rows) {
  for (const std::int32_t value : kExtremes) {
    AudioStreamInfo stream = streamOf(std::to_wstring(value), value);
    stream.group = stream.formatKey1 = stream.formatKey2 = stream.formatKey3 = value;
    ServiceMapArguments arguments;
    arguments.streams.assign(40, stream);
    add(rows, "every integer = " + std::to_string(value), arguments, kUntouched);
    for (AudioStreamInfo& each : arguments.streams) each.isPairCoded = each.isPairShared = 255;
    add(rows, "every integer and flag = " + std::to_string(value), arguments, kUntouched);
  }
  for (const std::size_t count : {31U, 32U, 33U, 64U, 99U}) {
    ServiceMapArguments arguments;
    arguments.description = "T" + std::to_string(count) + "=Mono";
    for (std::size_t i = 1; i < count; ++i) *arguments.description += ",Mono";
    arguments.streams.clear();
    for (std::size_t i = count; i > 0; --i)
      arguments.streams.push_back(streamOf(std::to_wstring(i * 7 % count), 1));
    add(rows, std::to_string(count) + " streams and services", arguments);
  }
}

}  // namespace

void addServiceMapStreamRows(CallRows& rows) {
  addTexts(rows);
  addChannelCounts(rows);
  addNumbers(rows);
  addFlags(rows);
  addWholeRecords(rows);
}

}  // namespace kestrel::test
