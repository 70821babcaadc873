// The ids of a file's audio records: which number each record's tracks get, and the order in which
// the records are handed to the library.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
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

}  // namespace kestrel::host
