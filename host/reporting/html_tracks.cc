#include "host/reporting/html_tracks.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>

namespace kestrel::host {

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

}  // namespace kestrel::host
