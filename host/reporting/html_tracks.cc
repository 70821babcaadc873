#include "host/reporting/html_tracks.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>

namespace kestrel::host {
namespace {

void mark(TrackMarks& marks, const Json& source, bool isError, bool differs) {
  for (const Json& number : source.at("tracks")) {
    if (number.get<int>() > kMostTracks) {
      break;
    }
    TrackMark& own = marks[number.get<int>()];
    own.isError = own.isError || isError;
    own.differs = own.differs || differs;
    addToCell(own.text, "; ", source.at("sentence").get_ref<const std::string&>());
  }
}

std::string channelsText(const Json& stream) {
  const int channels = stream.at("channels").get<int>();
  return fmt::format("{} channel{}", channels, channels == 1 ? "" : "s");
}

// ", 48000 Hz"; nothing for 0, which is "not known".
std::string amountText(const Json& amount, const char* unit) {
  const auto value = amount.get<std::int64_t>();
  return value == 0 ? "" : fmt::format(", {} {}", value, unit);
}

}  // namespace

void addToCell(std::string& cell, std::string_view separator, std::string_view text) {
  constexpr std::string_view kCut = "…";
  if (cell.ends_with(kCut)) {
    return;
  }
  if (cell.size() + separator.size() + text.size() > kLongestCell) {
    cell.append(cell.empty() ? "" : separator).append(kCut);
    return;
  }
  cell.append(cell.empty() ? "" : separator).append(text);
}

std::vector<TrackRun> runsOf(const Json& tracks) {
  std::vector<TrackRun> runs;
  for (const Json& number : tracks) {
    const int track = number.get<int>();
    if (runs.empty() || runs.back().first + runs.back().count != track) {
      runs.push_back({track, 0});
    }
    ++runs.back().count;
  }
  return runs;
}

std::string tracksText(const Json& tracks) {
  std::string text;
  for (const auto& [first, count] : runsOf(tracks)) {
    text += text.empty() ? "" : ", ";
    text += count == 1 ? fmt::format("{}", first) : fmt::format("{}–{}", first, first + count - 1);
  }
  return text;
}

bool holdsTrack(const Json& tracks, int track) {
  return std::ranges::find(tracks, Json(track)) != tracks.end();
}

int trackColumns(const Json& document) {
  int columns = document.at("trackTotal").get<int>();
  for (const Json& service : document.at("services")) {
    for (const Json& track : service.at("tracks")) {
      columns = std::max(columns, track.get<int>());
    }
  }
  return std::min(columns, kMostTracks);
}

TrackMarks marksOf(const Json& document) {
  TrackMarks marks;
  for (const Json& finding : document.at("findings")) {
    const bool isError = finding.at("severity") == "error";
    if (isError || finding.at("severity") == "warning") {
      mark(marks, finding, isError, isError);
    }
  }
  if (const Json& check = document.at("crossCheck"); check.is_object()) {
    for (const Json& disagreement : check.at("disagreements")) {
      mark(marks, disagreement, false, true);
    }
  }
  return marks;
}

std::string labelsText(const Json& labels) {
  std::string text;
  for (const Json& label : labels) {
    text += (text.empty() ? "" : " ") + label.get<std::string>();
  }
  return text;
}

std::string streamText(const Json& stream) {
  const Json& programme = stream.at("programme");
  const std::string labels = labelsText(stream.at("labels"));
  return fmt::format("Stream {}: {}{}, {}{}{}{}", stream.at("id").get<std::string>(),
                     stream.at("format").get<std::string>(),
                     programme.is_null() ? "" : fmt::format(", programme {}", programme.get<int>()),
                     channelsText(stream), amountText(stream.at("sampleRate"), "Hz"),
                     amountText(stream.at("bitDepth"), "bits"),
                     labels.empty() ? "" : ", " + labels);
}

std::string programmeText(const Json& stream) {
  const Json& programme = stream.at("programme");
  const std::string labels = labelsText(stream.at("labels"));
  return fmt::format("{}: {}", programme.is_null() ? 1 : programme.get<int>(),
                     labels.empty() ? channelsText(stream) : labels);
}

}  // namespace kestrel::host
