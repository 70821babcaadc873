// The labels of tracks: those of a stream, from the reader's text of its channel layout, and what
// labels make together.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
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

/// One of L R C LFE Ls Rs.
bool isSurroundSetLabel(std::string_view label);

/// What the labels of some tracks make together.
enum class LabelSet {
  kNone,    ///< no track has a label
  k51,      ///< L R C LFE Ls Rs, each once
  k71,      ///< L R C LFE and four surround channels, all different
  kStereo,  ///< L R, or Lt Rt
  kMono,    ///< one label
  kOther,   ///< labels that make no set
};

LabelSet labelSet(const std::vector<std::string>& labels);

/// Whether the labels of a full 5.1 set stand in one of the orders that are in use.
bool isUsualOrder(const std::vector<std::string>& labels);

}  // namespace kestrel::host
