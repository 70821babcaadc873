// A file's streams laid out as tracks, numbered as the layouts count them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/evidence/tracks.h"

namespace kestrel::host {

/// Counts as the library does: a plain stream has a track for each channel; the pair-coded streams
/// of one number, and all that share a pair, stand on two tracks together.
TrackMap trackMap(const MappedMedia& media);

/// How many tracks the map would have. A forged number of channels takes no memory here.
std::int64_t claimedTracks(const MappedMedia& media);

std::int32_t trackTotal(const TrackMap& map);

/// The labels of some tracks, in track order; an empty text for a track that has none.
std::vector<std::string> labelsOn(const TrackMap& map, const TrackNumbers& tracks);

/// Tracks in words: "track 3", "tracks 1 to 6", "tracks 1, 2 and 5".
std::string tracksInWords(const TrackNumbers& tracks);

/// The numbers from first on.
TrackNumbers trackRange(std::int32_t first, std::int32_t count);

}  // namespace kestrel::host
