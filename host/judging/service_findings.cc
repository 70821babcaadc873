#include "host/judging/service_findings.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "api/kestrel.h"
#include "host/evidence/track_labels.h"
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

// The tracks of one service by what their labels are.
struct LabelCount {
  TrackNumbers missing;
  TrackNumbers unknown;
  TrackNumbers doubled;
  std::vector<std::string> labels;  // those that are known, in track order
};

LabelCount countLabels(const TrackNumbers& tracks, const TrackMap& map) {
  LabelCount count;
  for (const std::int32_t number : tracks) {
    const std::string& label = map.tracks.at(static_cast<std::size_t>(number - 1)).label;
    if (label.empty()) {
      count.missing.push_back(number);
    } else if (!isSurroundSetLabel(label)) {
      count.unknown.push_back(number);
    } else if (std::ranges::find(count.labels, label) != count.labels.end()) {
      count.doubled.push_back(number);
    } else {
      count.labels.push_back(label);
    }
  }
  return count;
}

std::string quotedLabels(const TrackNumbers& tracks, const TrackMap& map) {
  std::string words;
  for (const std::int32_t number : tracks) {
    words += fmt::format("{}\"{}\" on track {}", words.empty() ? "" : ", ",
                         map.tracks.at(static_cast<std::size_t>(number - 1)).label, number);
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

std::vector<Finding> labelFindings(const ResultService& service, std::size_t index,
                                   const TrackMap& map, const std::string& order) {
  const LabelCount count = countLabels(service.tracks, map);
  const std::string name = fmt::format("The {} on {}", service.name, tracksInWords(service.tracks));
  std::vector<Finding> findings;
  const auto add = [&](const char* id, Severity severity, const TrackNumbers& tracks,
                       const std::string& words) {
    findings.push_back({id, severity, name + " " + words, index, tracks});
  };
  if (count.missing == service.tracks) {
    add("labels-absent", Severity::kNote, count.missing, "has no labels.");
    return findings;
  }
  if (!count.missing.empty()) {
    add("labels-incomplete", Severity::kWarning, count.missing,
        fmt::format("has no label on {}.", tracksInWords(count.missing)));
  }
  if (!count.unknown.empty()) {
    add("labels-unknown", Severity::kWarning, count.unknown,
        fmt::format("has labels that are none of L, R, C, LFE, Ls and Rs: {}.",
                    quotedLabels(count.unknown, map)));
  }
  if (!count.doubled.empty()) {
    add("labels-doubled", Severity::kWarning, count.doubled,
        fmt::format("has labels that stand on an earlier track already: {}.",
                    quotedLabels(count.doubled, map)));
  }
  const std::string found = fmt::format("{}", fmt::join(count.labels, " "));
  if (count.labels.size() == service.tracks.size() && !order.empty() && found != order) {
    add("labels-reordered", Severity::kWarning, service.tracks,
        fmt::format("has a full set of labels in the order {} instead of {}.", found, order));
  }
  return findings;
}

}  // namespace kestrel::host
