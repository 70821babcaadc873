#include "host/reporting/html_track_table.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <string>

#include "host/reporting/html_stream_text.h"
#include "host/reporting/html_tracks.h"

namespace kestrel::host {
namespace {

// The names of the services, each once, that lie on the track.
std::string servicesOn(const Json& services, int track) {
  std::string text;
  for (const Json& service : services) {
    if (holdsTrack(service.at("tracks"), track)) {
      text += (text.empty() ? "" : ", ") + service.at("name").get<std::string>();
    }
  }
  return text;
}

std::string carriedBy(const Json& document, const Json& track) {
  std::string text;
  for (const Json& index : track.at("streams")) {
    text += text.empty() ? "" : "; ";
    text += streamText(document.at("streams").at(index.get<std::size_t>()));
  }
  return text;
}

Json row(const Json& document, int number) {
  const Json& tracks = document.at("tracks");
  const auto index = static_cast<std::size_t>(number - 1);
  if (index >= tracks.size()) {
    return {{"name", ""}, {"carries", "no track"}, {"label", ""}};
  }
  const Json& track = tracks.at(index);
  return {{"name", track.at("name")},
          {"carries", carriedBy(document, track)},
          {"label", track.at("label")}};
}

}  // namespace

Json trackRows(const Json& document, const TrackMarks& marks) {
  Json rows = Json::array();
  const Json& candidates = document.at("identification");
  for (int number = 1; number <= trackColumns(document); ++number) {
    const auto mark = marks.find(number);
    Json view = row(document, number);
    view["track"] = number;
    view["expected"] = servicesOn(document.at("services"), number);
    view["identified"] =
        candidates.empty() ? "" : servicesOn(candidates.at(0).at("services"), number);
    view["marked"] = mark == marks.end() ? "" : mark->second.text;
    rows.push_back(std::move(view));
  }
  return rows;
}

}  // namespace kestrel::host
