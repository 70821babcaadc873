// The ids of the parts of one multichannel track that the reader split into channels and
// pair-coded programmes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kestrel::host {

struct SplitId {
  std::int64_t track;                   ///< the track that was split
  std::int64_t channel;                 ///< the part's first channel in it, from 1
  std::optional<std::int64_t> partner;  ///< the second channel of a pair
  std::string programme;                ///< "-p", the programme within a pair; empty when alone
};

/// Nothing when the text is not the id of a part.
std::optional<SplitId> parseSplitId(std::string_view id);

/// The id with the part's channels in the place of the track's number, so that each channel counts
/// as a track: "n", "n / m" or "n / m-p".
/// @param besideOtherTracks  the file has other audio tracks: the numbers are 100 * track + channel
std::string channelId(const SplitId& id, bool besideOtherTracks);

}  // namespace kestrel::host
