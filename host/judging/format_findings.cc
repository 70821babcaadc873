#include "host/judging/format_findings.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "api/kestrel.h"
#include "host/evidence/track_map.h"

namespace kestrel::host {
namespace {

struct FormatProperty {
  std::int32_t code;
  const char* id;
  const char* words;
  std::string (*valueOf)(const AudioStream& stream);
};

std::string rateOf(const AudioStream& stream) { return fmt::format("{} Hz", stream.sampleRate); }
std::string depthOf(const AudioStream& stream) { return fmt::format("{} bits", stream.bitDepth); }
std::string formatOf(const AudioStream& stream) { return stream.format; }

constexpr std::array<FormatProperty, 3> kProperties = {{
    {KESTREL_KEY1_DIFFERS, "sample-rates-differ", "sampling rates", rateOf},
    {KESTREL_KEY2_DIFFERS, "bit-depths-differ", "bit depths", depthOf},
    {KESTREL_KEY3_DIFFERS, "formats-differ", "formats", formatOf},
}};

using TracksByValue = std::vector<std::pair<std::string, TrackNumbers>>;

TracksByValue tracksByValue(const FormatProperty& property, const TrackMap& map,
                            const TrackNumbers& tracks) {
  TracksByValue values;
  for (const std::int32_t number : tracks) {
    if (number > std::ssize(map.tracks)) {
      break;
    }
    const AudioTrack& track = map.tracks[static_cast<std::size_t>(number - 1)];
    const std::string value = property.valueOf(map.streams[track.streams.front()]);
    auto place = std::ranges::find(values, value, &TracksByValue::value_type::first);
    if (place == values.end()) {
      place = values.insert(place, {value, {}});
    }
    place->second.push_back(number);
  }
  return values;
}

std::string inWords(const TracksByValue& values) {
  std::string words;
  for (const auto& [value, tracks] : values) {
    words += words.empty() ? "" : ", ";
    words += values.size() == 1 ? value : fmt::format("{} on {}", value, tracksInWords(tracks));
  }
  return words;
}

}  // namespace

std::optional<Finding> unequalFormats(std::int32_t code, const std::vector<ResultService>& services,
                                      std::size_t service, const TrackMap& map) {
  const auto* const property = std::ranges::find(kProperties, code, &FormatProperty::code);
  if (property == kProperties.end()) {
    return std::nullopt;
  }
  const ResultService& concerned = services.at(service);
  const TracksByValue values = tracksByValue(*property, map, concerned.tracks);
  return Finding{property->id, Severity::kError,
                 fmt::format("The {} on {} joins different {}: {}.", concerned.name,
                             tracksInWords(concerned.tracks), property->words, inWords(values)),
                 service, concerned.tracks};
}

}  // namespace kestrel::host
