// The ids of a file's audio records: which number each record's tracks get, and the order in which
// the records are handed to the library.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/reading/media_facts.h"

namespace kestrel::host {

struct IdentifiedStream {
  RawAudioStream raw;
  std::string shownId;   ///< the reader's id, or the record's number where it gives none
  std::string streamId;  ///< the id for the library
  /// The channel, from 1, of a multichannel track that this record is a part of.
  std::optional<std::int64_t> splitChannel;
};

/// Wave and its kin: containers of one single track, which has no id.
bool isWaveLike(const std::string& container);

/// The records in the order for the library, each with its ids.
std::vector<IdentifiedStream> identifyStreams(const RawMedia& media);

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
