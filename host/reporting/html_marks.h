// The tracks that a page marks: those that a finding or a disagreement concerns.
#pragma once

#include <map>
#include <string>

#include "host/basics/json.h"

namespace kestrel::host {

struct TrackMark {
  bool isError = false;  ///< else a warning
  bool differs = false;  ///< two sides disagree about the track
  std::string text;      ///< the sentences that concern it
};

/// By the track's number. Notes mark nothing.
using TrackMarks = std::map<int, TrackMark>;

TrackMarks marksOf(const Json& document);

}  // namespace kestrel::host
