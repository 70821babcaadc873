#include "fuzz/call_text.h"

#include <algorithm>
#include <array>

#include "fuzz/text_fields.h"
#include "tests/plain/plain_utf8.h"

namespace kestrel::fuzz {
StreamText readStream(std::string_view line) {
  StreamText stream;
  stream.streamId = unescaped(takeField(line));
  stream.trackLabels = unescaped(takeField(line));
  AudioStreamInfo& numbers = stream.numbers;
  for (std::int32_t* number : {&numbers.channelCount, &numbers.group, &numbers.formatKey1,
                               &numbers.formatKey2, &numbers.formatKey3}) {
    *number = numberOf32(takeField(line));
  }
  numbers.isPairCoded = static_cast<std::uint8_t>(numberOf(takeField(line)));
  numbers.isPairShared = static_cast<std::uint8_t>(numberOf(takeField(line)));
  return stream;
}

CallText readCall(std::string_view text) {
  CallText call;
  std::string_view line = takeLine(text);
  const std::string_view flags = takeField(line);
  call.reportAll = flags.find('r') != flags.npos;
  call.surroundCheck = flags.find('s') != flags.npos;
  call.allowTwoTrackStreams = flags.find('t') != flags.npos;
  call.order = upToNul(unescaped(takeField(line)));
  call.description = upToNul(unescaped(takeField(line)));
  while (!text.empty() && call.streams.size() < kMostStreams) {
    call.streams.push_back(readStream(takeLine(text)));
  }
  return call;
}

std::string writeStream(const AudioStreamInfo& stream) {
  const std::array<std::int32_t, 7> numbers = {
      stream.channelCount, stream.group,       stream.formatKey1,  stream.formatKey2,
      stream.formatKey3,   stream.isPairCoded, stream.isPairShared};
  // What is missing at the end of a line is 0.
  std::size_t written = numbers.size();
  while (written > 0 && numbers[written - 1] == 0) --written;
  std::string line = escaped(plain::toUtf8(stream.streamId));
  line += "|" + escaped(plain::toUtf8(stream.trackLabels));
  for (std::size_t i = 0; i < written; ++i) line += "|" + std::to_string(numbers[i]);
  return line + "\n";
}

std::string writeCall(const CallText& call) {
  std::string text;
  if (call.reportAll) text += "r";
  if (call.surroundCheck) text += "s";
  if (call.allowTwoTrackStreams) text += "t";
  text += "|" + escaped(call.order) + "|" + escaped(call.description) + "\n";
  for (const StreamText& stream : call.streams) text += writeStream(wideStream(stream));
  return text;
}

AudioStreamInfo wideStream(const StreamText& stream) {
  AudioStreamInfo info = stream.numbers;
  info.streamId = plain::widened(stream.streamId);
  info.trackLabels = plain::widened(stream.trackLabels);
  return info;
}

plain::ServiceMapInput wideCall(const CallText& call) {
  plain::ServiceMapInput input{
      call.description, plain::widened(call.order), {}, call.reportAll, call.surroundCheck};
  for (const StreamText& stream : call.streams) input.streams.push_back(wideStream(stream));
  return input;
}

CallText callOf(const plain::ServiceMapInput& input) {
  CallText call{input.description,
                plain::toUtf8(input.order),
                input.reportAll,
                input.surroundCheck,
                false,
                {}};
  for (const AudioStreamInfo& info : input.streams) {
    StreamText& stream = call.streams.emplace_back();
    stream.streamId = plain::toUtf8(info.streamId);
    stream.trackLabels = plain::toUtf8(info.trackLabels);
    stream.numbers = info;
    stream.numbers.streamId.clear();
    stream.numbers.trackLabels.clear();
  }
  return call;
}

bool suitsPlainForm(const plain::ServiceMapInput& input) {
  std::int64_t tracks = 0;
  for (const AudioStreamInfo& stream : input.streams) tracks += std::max(stream.channelCount, 0);
  return tracks <= kMostPlainTracks && input.description.size() <= kLongestPlainDescription;
}

}  // namespace kestrel::fuzz
