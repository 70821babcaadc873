#include "host/reporting/html_marks.h"

#include <nlohmann/json.hpp>

#include "host/reporting/html_tracks.h"

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
    own.text += (own.text.empty() ? "" : "; ") + source.at("sentence").get<std::string>();
  }
}

}  // namespace

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

}  // namespace kestrel::host
