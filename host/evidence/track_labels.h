// The labels of a stream's tracks, from the reader's text of its channel layout.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/reading/media_facts.h"

namespace kestrel::host {

using TrackLabels = std::vector<std::string>;

struct LabelSource {
  const RawAudioStream& raw;
  bool isPairCoded;
  std::optional<std::int64_t> splitChannel;  ///< as in IdentifiedStream
  std::int32_t channelCount;
};

/// One label per channel as the file itself gives them, or none.
TrackLabels labelsInFile(const LabelSource& source);

/// Reads the back channels Lb and Rb as the surround channels Ls and Rs, the usual way to store
/// 5.1, in every stream that has no surround channels beside them. The single labels of mono
/// streams are taken as one set.
/// @param streams  the labels of each stream; those of pair-coded ones are left out of that set
void readBackAsSurround(std::vector<TrackLabels>& streams, const std::vector<bool>& isPairCoded);

}  // namespace kestrel::host
