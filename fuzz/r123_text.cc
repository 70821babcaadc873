#include "fuzz/r123_text.h"

#include <algorithm>

#include "fuzz/call_text.h"
#include "fuzz/text_fields.h"

namespace kestrel::fuzz {
namespace {

constexpr std::int32_t kWidestPlainTrack = 4096;

std::string_view takeNumber(std::string_view& field) {
  const std::string_view number = field.substr(0, field.find(','));
  field.remove_prefix(std::min(field.size(), number.size() + 1));
  return number;
}

R123GroupRequirement readGroup(std::string_view field) {
  R123GroupRequirement group;
  group.streamType = static_cast<std::uint32_t>(numberOf32(takeNumber(field)));
  group.report = static_cast<std::uint8_t>(numberOf(takeNumber(field)));
  group.extra = static_cast<std::uint32_t>(numberOf32(takeNumber(field)));
  return group;
}

void readConfiguration(std::string_view line, R123Configurations& configurations) {
  line.remove_prefix(1);  // the "="
  R123Configuration& configuration = configurations[numberOf32(takeField(line))];
  configuration.item = numberOf32(takeField(line));
  configuration.groups.clear();
  while (!line.empty()) configuration.groups.push_back(readGroup(takeField(line)));
}

}  // namespace

R123Text readR123(std::string_view text) {
  R123Text read;
  std::string_view line = takeLine(text);
  read.input.allowTwoTrackStreams = takeField(line).find('t') != line.npos;
  read.input.item = numberOf32(takeField(line));
  read.description = upToNul(unescaped(takeField(line)));
  while (text.starts_with('=')) readConfiguration(takeLine(text), read.input.configurations);
  while (!text.empty() && read.input.streams.size() < kMostStreams) {
    read.input.streams.push_back(wideStream(readStream(takeLine(text))));
  }
  return read;
}

std::string writeR123(const R123Text& evaluation) {
  const plain::R123Input& input = evaluation.input;
  std::string text = input.allowTwoTrackStreams ? "t|" : "|";
  text += std::to_string(input.item) + "|" + escaped(evaluation.description) + "\n";
  for (const auto& [channels, configuration] : input.configurations) {
    text += "=" + std::to_string(channels) + "|" + std::to_string(configuration.item);
    for (const R123GroupRequirement& group : configuration.groups) {
      text += "|" + std::to_string(static_cast<std::int32_t>(group.streamType)) + "," +
              std::to_string(group.report) + "," + std::to_string(group.extra);
    }
    text += "\n";
  }
  for (const AudioStreamInfo& stream : input.streams) {
    // Not to be taken for a configuration.
    if (stream.streamId.starts_with(L'=')) text += '\\';
    text += writeStream(stream);
  }
  return text;
}

bool suitsPlainForm(const plain::R123Input& input) {
  return std::all_of(input.streams.begin(), input.streams.end(), [](const auto& stream) {
    return stream.channelCount >= -kWidestPlainTrack && stream.channelCount <= kWidestPlainTrack;
  });
}

}  // namespace kestrel::fuzz
