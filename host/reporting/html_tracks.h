// The tracks and streams of a result, as the page writes and draws them.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
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

/// In bytes. What is said of each of many tracks could make a page far larger than the result.
inline constexpr std::size_t kLongestCell = 4096;

/// Adds a text, behind a separator unless it is the first; where it does not fit, "…" for it and
/// for all that follow. The page says each of these texts in full at another place.
void addToCell(std::string& cell, std::string_view separator, std::string_view text);

/// What a finding or a disagreement says about a track.
struct TrackMark {
  bool isError = false;  ///< else a warning
  bool differs = false;  ///< two sides disagree about the track
  std::string text;      ///< the sentences that concern it
};

/// By the track's number. Notes mark nothing.
using TrackMarks = std::map<int, TrackMark>;

TrackMarks marksOf(const Json& document);

/// "L R C" of an array of texts.
std::string labelsText(const Json& labels);

/// "Stream 2003 / 2004-1: Dolby E, programme 1, 6 channels, 48000 Hz, 16 bits, L R C LFE Ls Rs".
std::string streamText(const Json& stream);

/// "1: L R C LFE Ls Rs", or "1: 6 channels" without labels.
std::string programmeText(const Json& stream);

}  // namespace kestrel::host
