// A column per track, after a gutter with the names of the rows. From above: the numbers, the
// expected services, a strip for the signs of the marks, the streams with the programmes of coded
// pairs below them, the labels, the services of the best supported layout. A box spans the columns
// of its tracks. All lengths are in CSS pixels.
#include "host/reporting/html_picture.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <string_view>

#include "host/reporting/html_tracks.h"

namespace kestrel::host {
namespace {

constexpr int kGutter = 104;
constexpr int kColumn = 64;
constexpr int kInset = 2;
constexpr int kRowGap = 6;
constexpr int kLineHeight = 20;
constexpr int kBoxHeight = 34;
// In a row. Those of a result of this program lie side by side, so that the columns bound them; the
// programmes of coded pairs lie below each other.
constexpr std::size_t kMostBoxes = 1024;
constexpr int kBaseline = 5;  // from the middle of a box down to the line its text stands on

struct ServiceKind {
  std::string_view begin;
  std::string_view name;
};
constexpr std::array<ServiceKind, 6> kServiceKinds = {{{"Mono", "mono"},
                                                       {"Stereo", "stereo"},
                                                       {"5.1", "surround"},
                                                       {"7.1", "surround"},
                                                       {"EMCA", "coded"},
                                                       {"Dolby E", "coded"}}};

std::string kindOf(std::string_view service) {
  for (const ServiceKind& kind : kServiceKinds) {
    if (service.starts_with(kind.begin)) {
      return std::string(kind.name);
    }
  }
  return "other";
}

int leftOf(int track) { return kGutter + (track - 1) * kColumn; }

struct Box {
  std::string text;
  std::string kind;   ///< CSS classes
  std::string title;  ///< what a pointer over it shows
  int charWidth = 8;
};

class Picture {
 public:
  Picture(const Json& document, const TrackMarks& marks)
      : document_(document),
        marks_(marks),
        columns_(trackColumns(document)),
        total_(document.at("trackTotal").get<int>()) {}

  Json view() {
    addNumbers();
    addExpected();
    const int stripTop = y_;
    y_ += marks_.empty() ? 0 : kLineHeight;
    addStreams();
    addProgrammes();
    addLabels();
    addBest();
    return {{"width", leftOf(columns_ + 1) + kInset},
            {"height", y_},
            {"marks", marksView(stripTop)},
            {"rows", rows_}};
  }

 private:
  void beginRow(const char* kind, const char* name, int height) {
    rows_.push_back({{"class", kind},
                     {"name", name},
                     {"nameY", y_ + height / 2 + kBaseline},
                     {"boxes", Json::array()}});
    height_ = height;
  }
  void endRow() { y_ += height_ + kRowGap; }

  void addRun(const TrackRun& run, int y, const Box& box) {
    const int last = std::min(run.first + run.count - 1, columns_);
    if (run.first > last || rows_.back()["boxes"].size() >= kMostBoxes) {
      return;
    }
    const int width = (last - run.first + 1) * kColumn - 2 * kInset;
    const int x = leftOf(run.first) + kInset;
    const auto characters = static_cast<int>(box.text.size());
    rows_.back()["boxes"].push_back(
        {{"class", box.kind},
         {"title", box.title},
         {"x", x},
         {"y", y},
         {"width", width},
         {"height", height_},
         {"middle", x + width / 2},
         {"textY", y + height_ / 2 + kBaseline},
         {"squeeze", characters * box.charWidth > width - 4 ? Json(width - 8) : Json()},
         {"text", box.text}});
  }

  void addBoxes(const Json& tracks, const Box& box) {
    for (const TrackRun& run : runsOf(tracks)) {
      addRun(run, y_, box);
    }
  }

  void addNumbers() {
    beginRow("numbers", "Track", kLineHeight);
    for (int track = 1; track <= columns_; ++track) {
      addRun({track, 1}, y_, {std::to_string(track), "number", fmt::format("Track {}", track)});
    }
    endRow();
  }

  void addExpected() {
    if (document_.at("expectation").is_null()) {
      return;
    }
    beginRow("expected", "Expected", kBoxHeight);
    for (const Json& service : document_.at("services")) {
      const auto name = service.at("name").get<std::string>();
      const bool isHeld = service.at("held").get<bool>();
      const bool isRequested = service.at("requested").get<bool>();
      addBoxes(service.at("tracks"),
               {name, kindOf(name) + (isHeld ? "" : " broken") + (isRequested ? "" : " extra"),
                fmt::format("Expected on {}: {}{}{}", tracksText(service.at("tracks")), name,
                            isHeld ? "" : ", not held", isRequested ? "" : ", not requested")});
    }
    if (document_.at("services").empty()) {
      addRun({1, columns_}, y_,
             {columns_ < 4 ? "nothing" : "nothing for this number of tracks", "absent broken",
              "The expectation says nothing for this number of tracks"});
    }
    endRow();
  }

  void addStreams() {
    beginRow("carried", "Carried", kBoxHeight);
    for (const Json& stream : document_.at("streams")) {
      const bool isCoded = stream.at("pairCoded").get<bool>();
      if (!isCoded || isFirstOnItsPair(stream)) {
        addBoxes(stream.at("tracks"), {stream.at("format").get<std::string>(),
                                       isCoded ? "coded" : "other", streamText(stream)});
      }
    }
    for (int track = total_ + 1; track <= columns_; ++track) {
      addRun({track, 1}, y_, {"no track", "absent broken", "The file ends before this track"});
    }
    endRow();
  }

  bool isFirstOnItsPair(const Json& stream) {
    return pairs_.insert(stream.at("tracks").dump()).second;
  }

  // Each programme of a pair stands one line below the one before.
  void addProgrammes() {
    std::map<std::string, int> onPair;
    int lines = 0;
    for (const Json& stream : document_.at("streams")) {
      if (!stream.at("pairCoded").get<bool>() || stream.at("tracks").empty()) {
        continue;
      }
      if (lines == 0) {
        beginRow("programmes", "Programmes", kLineHeight);
      }
      const int line = onPair[stream.at("tracks").dump()]++;
      lines = std::max(lines, line + 1);
      addRun(runsOf(stream.at("tracks")).front(), y_ + line * (kLineHeight + kInset),
             {programmeText(stream), "coded programme", streamText(stream), 6});
    }
    y_ += lines > 0 ? lines * (kLineHeight + kInset) + kRowGap : 0;
  }

  void addLabels() {
    beginRow("labels", "Labels", kLineHeight);
    for (const Json& track : document_.at("tracks")) {
      const auto label = track.at("label").get<std::string>();
      const bool isPlain = !track.at("pairCoded").get<bool>();
      if (isPlain) {
        addRun({track.at("number").get<int>(), 1}, y_,
               {label.empty() ? "–" : label, label.empty() ? "label none" : "label",
                label.empty() ? "No label" : "Label " + label, label.empty() ? 1 : 8});
      }
    }
    endRow();
  }

  void addBest() {
    if (document_.at("identification").empty()) {
      return;
    }
    const Json& best = document_.at("identification").at(0);
    beginRow("best", "Best layout", kBoxHeight);
    for (const Json& service : best.at("services")) {
      const auto name = service.at("name").get<std::string>();
      addBoxes(service.at("tracks"), {name, kindOf(name),
                                      fmt::format("{}, in the layout {}", name,
                                                  best.at("item").at("name").get<std::string>())});
    }
    endRow();
  }

  Json marksView(int stripTop) const {
    Json views = Json::array();
    const int top = kLineHeight + kRowGap / 2;
    for (const auto& [track, mark] : marks_) {
      if (track > columns_) {
        break;
      }
      views.push_back({{"class", mark.isError ? "error" : "warning"},
                       {"track", track},
                       {"title", fmt::format("Track {}: {}", track, mark.text)},
                       {"x", leftOf(track)},
                       {"y", top},
                       {"width", kColumn},
                       {"height", y_ - top},
                       {"middle", leftOf(track) + kColumn / 2},
                       {"hatched", mark.isError},
                       {"signY", stripTop + kLineHeight / 2 + kBaseline - kRowGap / 2},
                       {"sign", mark.differs ? "≠" : "!"}});
    }
    return views;
  }

  const Json& document_;
  const TrackMarks& marks_;
  int columns_;
  int total_;
  int y_ = 0;
  int height_ = 0;
  Json rows_ = Json::array();
  std::set<std::string> pairs_;  // of which a stream was drawn
};

}  // namespace

Json pictureView(const Json& document, const TrackMarks& marks) {
  return trackColumns(document) == 0 ? Json() : Picture(document, marks).view();
}

}  // namespace kestrel::host
