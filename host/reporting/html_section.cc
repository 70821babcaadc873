#include "host/reporting/html_section.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <string>

#include "host/reporting/html_picture.h"
#include "host/reporting/html_sources.h"
#include "host/reporting/html_template.h"
#include "host/reporting/html_tracks.h"

namespace kestrel::host {
namespace {

std::string textAt(const Json& object, const char* name) {
  return object.at(name).get<std::string>();
}

std::string itemText(const Json& item) {
  return item.is_null() ? "" : fmt::format(", {}", textAt(item, "name"));
}

std::string expectationText(const Json& expectation) {
  return fmt::format("{} “{}”{}", textAt(expectation, "kind"), textAt(expectation, "text"),
                     itemText(expectation.at("item")));
}

void addFact(Json& facts, const char* name, const std::string& value) {
  if (!value.empty()) {
    facts.push_back({{"name", name}, {"value", value}});
  }
}

Json factsView(const Json& document) {
  Json facts = Json::array();
  addFact(facts, "Container", textAt(document, "container"));
  addFact(facts, "Tracks", document.at("trackTotal").dump());
  addFact(facts, "Streams", std::to_string(document.at("streams").size()));
  if (const Json& declared = document.at("declared"); declared.is_object()) {
    addFact(facts, "Declared", textAt(declared, "text") + itemText(declared.at("item")));
  }
  if (const Json& expectation = document.at("expectation"); expectation.is_object()) {
    addFact(facts, "Expected", expectationText(expectation));
    addFact(facts, "Layout description", textAt(expectation, "description"));
  }
  addFact(facts, "Read by", textAt(document, "reader"));
  return facts;
}

Json crossCheckView(const Json& check) {
  if (check.is_null()) {
    return nullptr;
  }
  Json rows = Json::array();
  for (const Json& disagreement : check.at("disagreements")) {
    rows.push_back({{"sentence", disagreement.at("sentence")},
                    {"id", disagreement.at("id")},
                    {"tracks", tracksText(disagreement.at("tracks"))},
                    {"values", disagreement.at("values")}});
  }
  const bool hasRows = !rows.empty();
  return {{"sentence", check.at("majority").at("sentence")}, {"hasRows", hasRows}, {"rows", rows}};
}

Json candidatesView(const Json& candidates) {
  Json views = Json::array();
  for (const Json& candidate : candidates) {
    Json reasons = Json::array();
    for (const Json& reason : candidate.at("reasons")) {
      reasons.push_back({{"sentence", reason.at("sentence")},
                         {"points", fmt::format("{:+}", reason.at("points").get<int>())}});
    }
    std::string codes;
    for (const Json& code : candidate.at("codes")) {
      codes += (codes.empty() ? "" : ", ") + code.get<std::string>();
    }
    views.push_back({{"name", candidate.at("item").at("name")},
                     {"score", candidate.at("score")},
                     {"codes", codes},
                     {"reasons", reasons}});
  }
  return views;
}

std::string servicesText(const Json& services) {
  std::string text;
  for (const Json& service : services) {
    text +=
        fmt::format("{}{} on {}", text.empty() ? "" : ", ", textAt(service, "name"),
                    service.at("tracks").empty() ? "no track" : tracksText(service.at("tracks")));
  }
  return text;
}

// The picture in words: what a screen reader says in its place.
std::string pictureText(const Json& document, const TrackMarks& marks) {
  std::string text = fmt::format("{} tracks.", document.at("trackTotal").get<int>());
  if (const std::string expected = servicesText(document.at("services")); !expected.empty()) {
    text += fmt::format(" Expected: {}.", expected);
  }
  if (const Json& candidates = document.at("identification"); !candidates.empty()) {
    text += fmt::format(" Best layout: {}.", servicesText(candidates.at(0).at("services")));
  }
  for (const auto& [track, mark] : marks) {
    text += fmt::format(" Track {} is marked: {}.", track, mark.text);
  }
  return text + " The table of the tracks below says the same in full.";
}

std::string captionText(const Json& document, const TrackMarks& marks) {
  std::string text = "Each column is a track.";
  if (!marks.empty()) {
    text += " ≠ marks tracks on which the two sides disagree, ! those with a warning.";
  }
  if (document.at("trackTotal").get<int>() > kMostTracks) {
    text += fmt::format(" Only the first {} tracks are drawn.", kMostTracks);
  }
  return text;
}

Json framedPicture(const Json& document, const TrackMarks& marks) {
  Json picture = pictureView(document, marks);
  if (picture.is_object()) {
    picture["title"] = fmt::format("The tracks of {}", textAt(document, "file"));
    picture["text"] = pictureText(document, marks);
    picture["caption"] = captionText(document, marks);
  }
  return picture;
}

// The names of the services, each once, that lie on the track.
std::string servicesOn(const Json& services, int track) {
  std::string text;
  for (const Json& service : services) {
    if (holdsTrack(service.at("tracks"), track)) {
      addToCell(text, ", ", service.at("name").get_ref<const std::string&>());
    }
  }
  return text;
}

std::string carriedBy(const Json& document, const Json& track) {
  std::string text;
  for (const Json& index : track.at("streams")) {
    addToCell(text, "; ", streamText(document.at("streams").at(index.get<std::size_t>())));
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

// The picture of the tracks in rows and columns of text: a row per column of it.
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

std::string joined(const std::vector<std::string>& words) {
  return fmt::format("{}", fmt::join(words, " "));
}

// Beside the name: what the file is, or why nobody knows.
std::string whatText(const Json& error, const std::string& layout) {
  if (error.is_object()) {
    return textAt(error, "id");
  }
  return layout == kNoLayout ? "no layout of the catalogue fits" : layout;
}

Json headView(const Json& document, const ResultFacts& facts) {
  return {{"file", document.at("file")},
          {"verdict", facts.verdict},
          {"verdictText", verdictText(facts.verdict)},
          {"layout", facts.layout},
          {"findingIds", joined(facts.findings)},
          {"what", whatText(document.at("error"), facts.layout)},
          {"sentence", document.at("verdict").at("sentence")},
          {"facts", factsView(document)}};
}

void addDetails(Json& view, const Json& document) {
  const TrackMarks marks = marksOf(document);
  const Json& candidates = document.at("identification");
  const int columns = trackColumns(document);
  view["picture"] = framedPicture(document, marks);
  view["hasFindings"] = !document.at("findings").empty();
  view["findings"] = document.at("findings");
  view["crossCheck"] = crossCheckView(document.at("crossCheck"));
  view["hasTracks"] = columns > 0;
  view["cut"] = document.at("trackTotal").get<int>() > columns ? Json(columns) : Json();
  view["hasExpected"] = document.at("expectation").is_object();
  view["hasIdentified"] = !candidates.empty();
  view["trackRows"] = trackRows(document, marks);
  view["hasCandidates"] = !candidates.empty();
  view["candidateCount"] = candidates.size();
  view["candidates"] = candidatesView(candidates);
}

}  // namespace

HtmlSection htmlSection(const Json& document, std::size_t number, bool isOpen) {
  thread_local const HtmlTemplate kResult(kResultSource);
  const ResultFacts facts = factsOf(document);
  Json view = headView(document, facts);
  view["number"] = number;
  view["open"] = isOpen;
  addDetails(view, document);
  return {kResult.render(view), facts};
}

}  // namespace kestrel::host
