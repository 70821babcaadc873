// Track numbers, as the page writes and draws them.
#pragma once

#include <string>
#include <vector>

#include "host/basics/json.h"

namespace kestrel::host {

/// Tracks that follow each other.
struct TrackRun {
  int first = 0;
  int count = 0;
};

/// The runs in a JSON array of track numbers, in its order.
std::vector<TrackRun> runsOf(const Json& tracks);

/// "1–6, 8"; empty for no tracks.
std::string tracksText(const Json& tracks);

/// Whether a JSON array of track numbers holds one.
bool holdsTrack(const Json& tracks, int track);

/// How many columns the page has for a file: its tracks, and those past its end that an expected
/// service would take; kMostTracks at most.
int trackColumns(const Json& document);

inline constexpr int kMostTracks = 128;

}  // namespace kestrel::host
